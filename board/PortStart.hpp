#pragma once

#include <string>
#include <vector>

#include "board/BoardAccess.hpp"
#include "board/BoardReading.hpp"
#include "chips/PortAddress.hpp"
#include "chips/PortSettings.hpp"

namespace board {

/// Starts the ports that a document has forwarding and that a bring-up leaves stopped: a host's part, without
/// which no external port of a VSC7390 passes traffic. Ports that their chip has up stay as they are.
class PortStart {
public:
    /// The library's port objects are made for it, after the bring-up, and touch nothing but the port and
    /// what its chip ties to it. \param speed of ports that need one.
    PortStart(BoardReading const& document, BoardAccess& board, chips::PortSettings::Speed speed);

    /// The ports that the chip has, of those that the library knows of the switch.
    static std::vector<unsigned> portsOf(BoardReading::Switch const& owner);

    /// By switch and port.
    std::vector<chips::PortAddress> const& getStarted() const { return _started; }
    std::vector<chips::PortAddress> const& getUpBefore() const { return _upBefore; }

    struct Failure {
        chips::PortAddress port;
        std::string reason;
    };
    std::vector<Failure> const& getFailures() const { return _failures; }

private:
    void start(BoardAccess& board, BoardReading::Switch const& owner, chips::PortAddress const& port,
               chips::PortSettings::Speed speed);

    std::vector<chips::PortAddress> _started;
    std::vector<chips::PortAddress> _upBefore;
    std::vector<Failure> _failures;
};

} // namespace board
