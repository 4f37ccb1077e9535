#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "board/ModelBringUp.hpp"
#include "chips/PortAddress.hpp"

namespace switchctl::table {

/// A station at a port of a simulated board, as people write it: "0.1=02:00:00:00:00:01", "/VID" behind it
/// when it sends tagged.
class SimulatedStation {
public:
    /// Throws std::invalid_argument, which says what is wrong with the text.
    explicit SimulatedStation(std::string const& text);

    /// Sends a broadcast frame. Throws ToolError (usage) when the board has no such port.
    void send(board::ModelBringUp& models) const;

private:
    std::string _text;
    chips::PortAddress _port;
    std::uint64_t _address = 0;
    std::optional<unsigned> _vid;
};

} // namespace switchctl::table
