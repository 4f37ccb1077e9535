#include "chips/vsc7390/VitessePortStatus.hpp"

#include "simulation/PhyControl.hpp"
#include "simulation/vsc7390/Registers.hpp"

namespace chips {

using simulation::UnitKind;

namespace {

namespace analyser = simulation::vitesse::analyser;
namespace mii = simulation::vitesse::mii;
namespace port = simulation::vitesse::port;

using Text = PortStatus::Fact<std::string>;

constexpr simulation::Field phyLink{"Link", 2};
constexpr simulation::Field sendsPause{"ZERO_PAUSE_EN", 17};
constexpr simulation::Field obeysPause{"FLOW_CTRL_OBEY", 16};
constexpr simulation::Field externalClock{"CLK_EXTERNAL", 2};

bool isWorking(std::uint32_t config, simulation::Field const& enable, simulation::Field const& reset) {
    return enable.isSet(config) && !port::reset.isSet(config) && !reset.isSet(config);
}

PortStatus::Fact<unsigned> megabitsOf(std::uint32_t config) {
    constexpr unsigned megabits[] = {0, 1000, 100, 10};
    unsigned const speed = externalClock.isSet(config) ? 0 : megabits[port::clock.get(config)];
    return speed == 0 ? PortStatus::Fact<unsigned>() : speed;
}

char const* flowControlOf(std::uint32_t word) {
    if (sendsPause.isSet(word)) {
        return obeysPause.isSet(word) ? "on" : "sent";
    }
    return obeysPause.isSet(word) ? "obeyed" : "off";
}

std::string taggingOf(std::uint32_t word) {
    if (!port::insertTag.isSet(word)) {
        return "kept";
    }
    return port::untaggedVidEnable.isSet(word) ? "but " + std::to_string(port::untaggedVid.get(word))
                                               : "tagged";
}

} // namespace

void VitessePortStatus::readInto(unsigned port, PortStatus& status) {
    readMac(port, status);
    readVlan(port, status);
    readLink(port, status);
}

// The first look tells what was since the one before it, the second what is.
void VitessePortStatus::readLink(unsigned port, PortStatus& status) {
    status.phy = readIdentity(port);
    if (status.phy.isUnread()) {
        status.link = PortStatus::Fact<bool>::unread();
    }
    if (status.phy.isUnread() || status.phy.get() == "none") {
        return;
    }
    auto const before = tryRead(UnitKind::phy, port, simulation::phy::status);
    auto const now = before ? tryRead(UnitKind::phy, port, simulation::phy::status) : std::nullopt;
    status.link = PortStatus::Fact<bool>::of(now, [](auto word) { return phyLink.isSet(word); });
    status.wasLost = now && !phyLink.isSet(*before) && phyLink.isSet(*now);
}

bool VitessePortStatus::isPhyAbsent(RegisterTransport& transport, ChipCatalogue const& catalogue) {
    return mii::failure.isSet(transport.read(catalogue.at(UnitKind::mii, mii::controllerOfPhys, mii::data)));
}

void VitessePortStatus::readMac(unsigned port, PortStatus& status) {
    auto const config = tryRead(UnitKind::port, port, port::macConfig);
    auto const sources = tryRead(UnitKind::analyser, 0, analyser::sourceMasks + port);
    auto const receive = tryRead(UnitKind::analyser, 0, analyser::receiveMask);
    auto const learn = tryRead(UnitKind::analyser, 0, analyser::learnMask);
    status.megabits = config ? megabitsOf(*config) : PortStatus::Fact<unsigned>::unread();
    status.fullDuplex =
        PortStatus::Fact<bool>::of(config, [](auto word) { return port::fullDuplex.isSet(word); });
    status.flowControl = Text::of(tryRead(UnitKind::port, port, port::flowControl), flowControlOf);
    status.state = Text::unread();
    if (config && sources && receive && learn) {
        bool const works = isWorking(*config, port::receiveEnable, port::receiveReset) ||
                           isWorking(*config, port::transmitEnable, port::transmitReset);
        bool const isLearning = (*receive & *learn & simulation::bit(port)) != 0;
        bool const isForwarding =
            (*receive & simulation::bit(port)) != 0 && simulation::vitesse::ports.get(*sources) != 0;
        status.state = std::string(!works         ? "disabled"
                                   : isForwarding ? "forwarding"
                                   : isLearning   ? "learning"
                                                  : "blocking");
    }
}

void VitessePortStatus::readVlan(unsigned port, PortStatus& status) {
    auto const vlan = tryRead(UnitKind::port, port, port::classifierPortVlan);
    status.defaultVid =
        PortStatus::Fact<unsigned>::of(vlan, [](auto word) { return port::portVid.get(word); });
    status.tagging = Text::of(tryRead(UnitKind::port, port, port::transmitUpdate), taggingOf);
    status.filtering = Text::of(tryRead(UnitKind::analyser, 0, analyser::vlanMask), [&](auto word) {
        return (word & simulation::bit(port)) != 0 ? "members" : "any";
    });
}

} // namespace chips
