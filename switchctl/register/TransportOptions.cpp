#include "switchctl/register/TransportOptions.hpp"

#include <algorithm>
#include <iterator>

#include "board/OutputFile.hpp"
#include "chips/ChipKinds.hpp"

namespace switchctl::registers {

namespace {

constexpr unsigned highestMdioAddress = 31;

} // namespace

void TransportOptions::addTo(Arguments& action, std::function<void(Arguments&)> const& addArguments) {
    Arguments parallel = addTransport(action, "parallel", "The VSC7390 on the parallel bus");
    _serial = addTransport(action, "serial", "The VSC7390 behind the controller on a serial line");
    addSerialOptions(*_serial);
    _smi = addTransport(action, "smi", "An 88E6096 on the MDIO bus");
    addSwitchOption(*_smi, true);
    _phy = addTransport(action, "phy", "The PHYs behind a chip; locations are PHY/REGISTER");
    addSwitchOption(*_phy, false);
    _phy->flag("--parallel", _viaParallel, "PHYs of the VSC7390, over the parallel bus");
    _phy->flag("--serial", _viaSerial, "PHYs of the VSC7390, over the serial line");
    addSerialOptions(*_phy);
    // Option groups would move these options under another heading of the help.
    _phy->finally([this] {
        char const* const ways[] = {"--switch", "--parallel", "--serial"};
        if (std::count_if(std::begin(ways), std::end(ways),
                          [this](char const* way) { return _phy->isGiven(way); }) != 1) {
            throw Arguments::Wrong("phy: needs one of --switch, --parallel and --serial");
        }
    });
    for (Arguments* const transport : {&parallel, &*_serial, &*_smi, &*_phy}) {
        addArguments(*transport);
    }
}

Arguments TransportOptions::addTransport(Arguments& action, char const* name, char const* text) {
    Arguments transport = action.subcommand(name, text);
    _simulation.addTo(transport,
                      "Use a fresh chip model; with --simulate=BOARD.xml, the models of that board after it "
                      "was brought up",
                      "[=BOARD.xml]");
    transport
        .option("--trace", _trace,
                "Write every register access to FILE, for \"replay\"; \"-\" is the "
                "standard output, and results then go to standard error")
        .type("FILE");
    return transport;
}

void TransportOptions::addSwitchOption(Arguments& transport, bool required) {
    transport.option("--switch", _switchId, "Id of the switch, its address on the MDIO bus")
        .type("ID")
        .range(0U, highestMdioAddress)
        .required(required);
}

void TransportOptions::addSerialOptions(Arguments& transport) {
    auto const simulate = transport.get("--simulate");
    transport.option("--device", _device, "The serial line").type("PATH").showDefault().excludes(simulate);
    transport.flag("--traffic", _traffic, "Show on standard error what goes over the simulated line")
        .needs(simulate);
}

TransportOptions::Way TransportOptions::getWay() const {
    if (_smi->isChosen() || _phy->isGiven("--switch")) {
        return Way::smi;
    }
    return _serial->isChosen() || _phy->isGiven("--serial") ? Way::serial : Way::parallel;
}

bool TransportOptions::isPhysOnly() const {
    return _phy->isChosen();
}

std::string TransportOptions::getModel() const {
    return chips::ChipKinds::reachedOver(getWay()).getFacts().model;
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

bool TransportOptions::isSimulated() const {
    return _simulation.isChosen();
}

std::ostream& TransportOptions::chooseOutput(std::ostream& out, std::ostream& errors) const {
    return board::OutputFile::isStandardOutput(_trace) ? errors : out;
}

std::string TransportOptions::getDocumentPath() const {
    return _simulation.getPath("");
}

} // namespace switchctl::registers
