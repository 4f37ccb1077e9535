#pragma once

#include <memory>
#include <ostream>
#include <string>

#include "board/BoardSession.hpp"
#include "board/ClockAdoption.hpp"
#include "board/trace/RegisterTrace.hpp"
#include "chips/AccessErrors.hpp"
#include "chips/RegisterTransport.hpp"
#include "host/Xml.hpp"
#include "reference_host/HostApplication.hpp"
#include "reference_host/PhysicalMemory.hpp"
#include "simulation/SerialController.hpp"
#include "simulation/SimulatedBoard.hpp"
#include "switchctl/register/TransportOptions.hpp"
#include "switchctl/terminal/OutputDiversion.hpp"

namespace switchctl::registers {

/// A chip within reach: the hardware, or a simulated board, with the transport that was asked for.
///
/// While it exists, what the library prints goes to `errors`. Belongs to the thread that constructs it.
class RegisterSession {
public:
    /// Throws ToolError when the chip is out of reach.
    /// \param options and `errors` must outlive the session.
    /// \param memoryDevice where hardware is reached when it is real.
    /// \param out gets the trace when that goes to the standard output; has to outlive the session, too.
    RegisterSession(TransportOptions const& options, std::string const& memoryDevice, std::ostream& out,
                    std::ostream& errors);

    /// Shows the traffic of a simulated serial line when that was asked for.
    ~RegisterSession();
    RegisterSession(RegisterSession const&) = delete;
    RegisterSession& operator=(RegisterSession const&) = delete;

    chips::RegisterTransport& getTransport() { return *_transport; }

    /// All accesses were made; their trace is complete. Throws ToolError (noTrace).
    void finish();

private:
    void simulate();
    void bringUp();
    void requireHardware() const;
    void connect(std::ostream& out);
    void showTraffic() const;

    TransportOptions const& _options;
    std::string _memoryDevice;
    std::ostream& _errors;
    OutputDiversion _diversion;

    // From the board up; destroyed from the transport down.
    std::unique_ptr<Xml> _document;
    std::unique_ptr<board::BoardSession> _session;
    std::unique_ptr<simulation::SimulatedBoard> _ownBoard;
    simulation::SimulatedBoard* _board = nullptr;
    std::unique_ptr<board::ClockAdoption> _clock;
    std::unique_ptr<board::ClockAdoption> _realTime;
    std::unique_ptr<simulation::SerialController> _controller;
    std::unique_ptr<reference_host::PhysicalMemory> _memory;
    chips::AccessErrors _accessErrors;
    std::unique_ptr<reference_host::HostApplication> _application;
    std::unique_ptr<board::RegisterTrace> _trace;
    std::unique_ptr<chips::RegisterTransport> _transport;
};

} // namespace switchctl::registers
