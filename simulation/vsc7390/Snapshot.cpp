#include "simulation/vsc7390/Snapshot.hpp"

#include "simulation/vsc7390/Registers.hpp"

namespace simulation::vitesse {

namespace {

void readMac(Snapshot::PortSettings& settings, Port const& port, bool hasLink) {
    Vsc7390TestSide::PortMac const mac = port.getMac();
    settings.receives = hasLink && mac.receives;
    settings.sends = hasLink && mac.sends;
    settings.megabits = mac.megabits;
    std::uint32_t const config = port.getStored(port::macConfig);
    settings.expectsTag = port::tagAware.isSet(config);
    settings.expectsTwoTags = port::doubleTagAware.isSet(config);
    settings.maximumLength = port.getStored(port::maximumLength);
}

void readClassifier(Snapshot::PortSettings& settings, Port const& port) {
    std::uint32_t const drop = port.getStored(port::classifierDrop);
    settings.dropsGroupSource = port::dropGroupSource.isSet(drop);
    settings.dropsNullAddress = port::dropNullAddress.isSet(drop);
    settings.dropsTagged = port::dropTagged.isSet(drop);
    settings.dropsUntagged = port::dropUntagged.isSet(drop);
    settings.forwardsControl = port::forwardControl.isSet(drop);
    settings.forwardsPause = port::forwardPause.isSet(drop);
    std::uint32_t const vlan = port.getStored(port::classifierVlan);
    settings.ignoresTag = port::ignoreTag.isSet(vlan);
    settings.keepsTag = port::keepTag.isSet(vlan);
    std::uint32_t const tag = port.getStored(port::classifierPortVlan);
    settings.tag = {port::portVid.get(tag), port::userPriority.get(tag), port::cfi.isSet(tag)};
}

void readSender(Snapshot::PortSettings& settings, Port const& port) {
    std::uint32_t const update = port.getStored(port::transmitUpdate);
    settings.insertsTag = port::insertTag.isSet(update);
    settings.untaggedVid.reset();
    if (port::untaggedVidEnable.isSet(update)) {
        settings.untaggedVid = port::untaggedVid.get(update);
    }
    settings.rewrites = port::rewriteDscp.isSet(update) || port::rewritePriority.isSet(update);
}

} // namespace

Snapshot::Snapshot(Context const& context, Analyser& analyser, std::deque<Port>& portUnits,
                   std::deque<Phy>& phyUnits)
    : _context(context), _analyser(analyser), _ports(portUnits), _phys(phyUnits) {
    _analyser.onChange([this](unsigned address) {
        if (address < numberOfWords) {
            _words[address] = _analyser.getStored(address);
        }
    });
    for (unsigned number = 0; number < _ports.size(); ++number) {
        _ports[number].onChange([this, number](unsigned) { refreshPort(number); });
        _phys[number].onChange([this, number](unsigned) { refreshPort(number); });
    }
    refresh();
}

void Snapshot::refresh() {
    for (unsigned address = 0; address < numberOfWords; ++address) {
        _words[address] = _analyser.getStored(address);
    }
    for (unsigned number = 0; number < _ports.size(); ++number) {
        refreshPort(number);
    }
}

void Snapshot::refreshPort(unsigned number) {
    PortSettings& settings = _settings[number];
    readMac(settings, _ports[number], hasLink(_phys[number]));
    readClassifier(settings, _ports[number]);
    readSender(settings, _ports[number]);
    _senders = (_senders & ~bit(number)) | (settings.sends ? bit(number) : 0);
}

bool Snapshot::hasLink(Phy const& phy) const {
    return phy.isLinkUntold() ? _context.options.untoldLink == Vsc7390Options::UntoldLink::up : phy.hasLink();
}

} // namespace simulation::vitesse
