#include "switchctl/register/TransportOptions.hpp"

namespace switchctl::registers {

namespace {

constexpr unsigned highestMdioAddress = 31;

/// What --simulate without a document is as a value.
constexpr char const* fresh = "true";

} // namespace

void TransportOptions::addTo(CLI::App& action, std::function<void(CLI::App&)> const& addArguments) {
    action.require_subcommand(1);
    _parallel = &addTransport(action, "parallel", "The VSC7390 on the parallel bus");
    _serial = &addTransport(action, "serial", "The VSC7390 behind the controller on a serial line");
    addSerialOptions(*_serial);
    _smi = &addTransport(action, "smi", "An 88E6096 on the MDIO bus");
    addSwitchOption(*_smi, true);
    _phy = &addTransport(action, "phy", "The PHYs behind a chip; locations are PHY/REGISTER");
    addSwitchOption(*_phy, false);
    _phy->add_flag("--parallel", _viaParallel, "PHYs of the VSC7390, over the parallel bus");
    _phy->add_flag("--serial", _viaSerial, "PHYs of the VSC7390, over the serial line");
    addSerialOptions(*_phy);
    // CLI11's option groups would move these options under another heading of the help.
    _phy->final_callback([this] {
        if (_phy->count("--switch") + _phy->count("--parallel") + _phy->count("--serial") != 1) {
            throw CLI::ValidationError("phy", "needs one of --switch, --parallel and --serial");
        }
    });
    for (CLI::App* const transport : {_parallel, _serial, _smi, _phy}) {
        addArguments(*transport);
    }
}

CLI::App& TransportOptions::addTransport(CLI::App& action, char const* name, char const* text) {
    CLI::App* const transport = action.add_subcommand(name, text);
    transport
        ->add_flag("--simulate", _simulate,
                   "Use a fresh chip model; with --simulate=BOARD.xml, the models of that board after it "
                   "was brought up")
        ->type_name("[=BOARD.xml]");
    transport->add_option("--trace", _trace, "Write every register access to FILE, for \"replay\"")
        ->type_name("FILE");
    return *transport;
}

void TransportOptions::addSwitchOption(CLI::App& transport, bool required) {
    transport.add_option("--switch", _switchId, "Id of the switch, its address on the MDIO bus")
        ->type_name("ID")
        ->check(CLI::Range(0U, highestMdioAddress))
        ->required(required);
}

void TransportOptions::addSerialOptions(CLI::App& transport) {
    CLI::Option* const simulate = transport.get_option("--simulate");
    transport.add_option("--device", _device, "The serial line")
        ->type_name("PATH")
        ->capture_default_str()
        ->excludes(simulate);
    transport.add_flag("--traffic", _traffic, "Show on standard error what goes over the simulated line")
        ->needs(simulate);
}

TransportOptions::Way TransportOptions::getWay() const {
    if (isChosen(_smi) || isGiven(_phy, "--switch")) {
        return Way::smi;
    }
    return isChosen(_serial) || isGiven(_phy, "--serial") ? Way::serial : Way::parallel;
}

bool TransportOptions::isPhysOnly() const {
    return isChosen(_phy);
}

std::string TransportOptions::getModel() const {
    return getWay() == Way::smi ? "88e6096" : "vsc7390";
}

std::string TransportOptions::getText() const {
    std::string const prefix = isPhysOnly() ? "phy --" : "";
    switch (getWay()) {
    case Way::smi:
        return std::string(isPhysOnly() ? "phy" : "smi") + " --switch " + std::to_string(_switchId);
    case Way::serial:
        return prefix + "serial";
    case Way::parallel:
        break;
    }
    return prefix + "parallel";
}

unsigned TransportOptions::getSwitchId() const {
    return _switchId;
}

std::string const& TransportOptions::getDevice() const {
    return _device;
}

bool TransportOptions::isSimulated() const {
    return !_simulate.empty();
}

std::string TransportOptions::getDocumentPath() const {
    return _simulate == fresh ? "" : _simulate;
}

std::string const& TransportOptions::getTracePath() const {
    return _trace;
}

bool TransportOptions::showsTraffic() const {
    return _traffic;
}

bool TransportOptions::isGiven(CLI::App const* transport, char const* option) {
    return transport->parsed() && transport->count(option) != 0;
}

bool TransportOptions::isChosen(CLI::App const* transport) const {
    return transport->parsed();
}

} // namespace switchctl::registers
