#pragma once

#include <functional>
#include <memory>
#include <ostream>
#include <string>

#include "board/BoardReading.hpp"
#include "board/ClockAdoption.hpp"
#include "board/SessionLog.hpp"
#include "board/StartUpMonitor.hpp"
#include "chips/PortAddress.hpp"
#include "host/Xml.hpp"
#include "manager/SwitchManager.hpp"
#include "reference_host/DeviceMemory.hpp"
#include "reference_host/HostApplication.hpp"
#include "simulation/SimulatedBoard.hpp"

namespace board {

/// A host process in small: everything that a switch manager needs, for the real board or for a
/// simulated one, and the order of calls from construction to destruction.
///
/// Belongs to the thread that constructs it, which lives by the board's clock while a simulated one
/// exists. Any number may exist one after the other; on one thread, the last made goes first.
class BoardSession {
public:
    struct Options {
        /// Use chip models instead of hardware.
        bool simulate = false;
        /// What the simulated board is to be like.
        simulation::SimulatedBoard::Options board;
        /// Access no chip at all.
        bool noHardwareAccess = false;
        /// Where hardware is reached when it is real.
        std::string memoryDevice = reference_host::DeviceMemory::defaultDevicePath;
        /// Also gets every message; may be null.
        reference_host::LogSink* log = nullptr;
        /// Gets the board's memory, and returns what the session is to use in its place; may be empty.
        std::function<std::unique_ptr<reference_host::PhysicalMemory>(
            std::unique_ptr<reference_host::PhysicalMemory>)>
            wrapMemory;
    };

    /// What start-up cost, counted by the simulated board.
    struct Effort {
        std::uint64_t registerAccesses = 0;
        std::uint64_t busAccesses = 0;
        /// Time for which the buses were busy.
        std::uint64_t busNanoseconds = 0;
        /// Time until the switches were ready, waits included.
        std::uint64_t elapsedNanoseconds = 0;
    };

    /// The document must outlive the session.
    BoardSession(Xml& document, Options const& options);

    /// Ends the management thread and takes everything down.
    ~BoardSession();
    BoardSession(BoardSession const&) = delete;
    BoardSession& operator=(BoardSession const&) = delete;

    /// Starts the manager, reports the PHY interfaces, and waits until the switches are ready or
    /// start-up has given up. Call it once.
    StartUpMonitor::Outcome bringUp();

    /// Writes the port's counters as text.
    /// \return false, with nothing written, when there is no such port or it could not be read.
    bool writeStatistics(chips::PortAddress const& port, std::ostream& out);

    /// Whether that switch came up as the chip that the document says.
    bool isUp(BoardReading::Wanted const& entry);

    /// Whether there are switches in the document and each of them came up.
    bool isComplete(BoardReading const& document);

    SwitchManager& getManager() { return _manager; }

    /// The simulated board, or null.
    simulation::SimulatedBoard* getBoard();

    /// Of start-up alone; all zero when the board is real.
    Effort const& getEffort() const { return _effort; }

    SessionLog const& getLog() const { return _log; }

private:
    bool hasPort(chips::PortAddress const& port);

    // From the bus up; destroyed from the manager down.
    std::unique_ptr<simulation::SimulatedBoard> _board;
    std::unique_ptr<ClockAdoption> _clock;
    std::unique_ptr<reference_host::PhysicalMemory> _memory;
    StartUpMonitor _monitor;
    SessionLog _log;
    reference_host::HostApplication _application;
    SwitchManager _manager;
    Effort _effort;
};

} // namespace board
