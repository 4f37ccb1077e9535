#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "vitesse/SerialPort.hpp"

namespace chips {

/// Questions to the controller on a VSC7390's serial line, and its answers as they are. Reads only.
class LineProbe {
public:
    /// Throws ToolError (noHardware) when the line cannot be opened or is none.
    explicit LineProbe(std::string const& device);

    /// What comes within 5 seconds, up to the length of an answer.
    std::string ask(unsigned block, unsigned subBlock, unsigned address);

    /// The value of a complete answer.
    static std::optional<std::uint32_t> valueOf(std::string const& answer);

    /// With line ends and other control characters written out.
    static std::string visible(std::string const& text);

private:
    SerialPort _port;
};

} // namespace chips
