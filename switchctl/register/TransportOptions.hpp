#pragma once

#include <functional>
#include <optional>
#include <ostream>
#include <string>

#include "chips/TraceAccess.hpp"
#include "switchctl/Simulation.hpp"

namespace switchctl::registers {

/// What a command line says about the way to a chip: a subcommand for each transport, and its options.
class TransportOptions {
public:
    /// Which bus; PHYs alone are reached over one of them, too.
    using Way = chips::TraceAccess::Transport;

    TransportOptions() = default;
    TransportOptions(TransportOptions const&) = delete;
    TransportOptions& operator=(TransportOptions const&) = delete;

    /// Adds the transports to an action such as "read"; one of them has to be chosen.
    /// \param addArguments called for each of them, for what the action itself needs to know.
    void addTo(Arguments& action, std::function<void(Arguments&)> const& addArguments);

    Way getWay() const;

    /// Whether the transport is the one that only reaches PHYs.
    bool isPhysOnly() const;

    /// Of the chip, as in configuration documents.
    std::string getModel() const;

    /// The transport as a command line names it, for example "smi --switch 0".
    std::string getText() const;

    /// Of Way::smi the switch's id, its address on the MDIO bus; otherwise 0.
    unsigned getSwitchId() const { return _switchId; }

    /// Of Way::serial, on silicon.
    std::string const& getDevice() const { return _device; }

    bool isSimulated() const;

    /// See Simulation.
    void strike(simulation::SimulatedBoard& board, simulation::SerialController* line) const {
        _simulation.strike(board, line);
    }

    /// The board that is brought up first; empty when the simulated chip is fresh.
    std::string getDocumentPath() const;

    /// Where all accesses are to be written; empty when nowhere.
    std::string const& getTracePath() const { return _trace; }

    /// Where results go: to the standard error when the trace takes the standard output.
    std::ostream& chooseOutput(std::ostream& out, std::ostream& errors) const;

    /// Whether to show what goes over the simulated serial line.
    bool showsTraffic() const { return _traffic; }

private:
    Arguments addTransport(Arguments& action, char const* name, char const* text);
    void addSwitchOption(Arguments& transport, bool required);
    void addSerialOptions(Arguments& transport);

    std::optional<Arguments> _serial;
    std::optional<Arguments> _smi;
    std::optional<Arguments> _phy;
    unsigned _switchId = 0;
    std::string _device = "/dev/ttyS1";
    Simulation _simulation;
    std::string _trace;
    bool _viaParallel = false;
    bool _viaSerial = false;
    bool _traffic = false;
};

} // namespace switchctl::registers
