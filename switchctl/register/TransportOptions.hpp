#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <string>

#include "chips/TraceAccess.hpp"

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
    void addTo(CLI::App& action, std::function<void(CLI::App&)> const& addArguments);

    Way getWay() const;

    /// Whether the transport is the one that only reaches PHYs.
    bool isPhysOnly() const;

    /// "88e6096" or "vsc7390".
    std::string getModel() const;

    /// The transport as a command line names it, for example "smi --switch 0".
    std::string getText() const;

    /// Of Way::smi the switch's id, its address on the MDIO bus; otherwise 0.
    unsigned getSwitchId() const;

    /// Of Way::serial, on silicon.
    std::string const& getDevice() const;

    bool isSimulated() const;

    /// The board that is brought up first; empty when the simulated chip is fresh.
    std::string getDocumentPath() const;

    /// Where all accesses are to be written; empty when nowhere.
    std::string const& getTracePath() const;

    /// Whether to show what goes over the simulated serial line.
    bool showsTraffic() const;

private:
    CLI::App& addTransport(CLI::App& action, char const* name, char const* text);
    void addSwitchOption(CLI::App& transport, bool required);
    void addSerialOptions(CLI::App& transport);

    /// By option, of whichever transport was chosen.
    static bool isGiven(CLI::App const* transport, char const* option);
    bool isChosen(CLI::App const* transport) const;

    CLI::App* _parallel = nullptr;
    CLI::App* _serial = nullptr;
    CLI::App* _smi = nullptr;
    CLI::App* _phy = nullptr;
    unsigned _switchId = 0;
    std::string _device = "/dev/ttyS1";
    std::string _simulate;
    std::string _trace;
    bool _viaParallel = false;
    bool _viaSerial = false;
    bool _traffic = false;
};

} // namespace switchctl::registers
