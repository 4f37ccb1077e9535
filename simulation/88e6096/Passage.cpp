#include "simulation/88e6096/Passage.hpp"

#include <fmt/format.h>

#include <string_view>
#include <utility>

#include "simulation/88e6096/Registers.hpp"

namespace simulation::marvell {

namespace {

using Class = EthernetFrame::DestinationClass;
using Form = Decision::Form;
using Options = Marvell88E6096Options;

constexpr std::size_t longestUntagged = 1518;
constexpr std::size_t longestTagged = 1522;
constexpr std::size_t longestLong = 1632;

constexpr unsigned normalFrames = 0;
constexpr Field lastByte{"LastByte", 7, 0};
constexpr unsigned trunkHashes = 8;

/// By the codes of PortState.
constexpr char const* stateNames[] = {"disabled", "blocking", "learning", "forwarding"};

/// The ports of a mask that suit.
template <typename Suits> std::uint32_t keep(std::uint32_t ports, Suits const& suits) {
    for (unsigned port = 0; ports >> port != 0; ++port) {
        if ((ports & bit(port)) != 0 && !suits(port)) {
            ports &= ~bit(port);
        }
    }
    return ports;
}

bool isRegular(PortSettings const& settings) {
    return settings.frameMode == normalFrames && !settings.hasHeader;
}

} // namespace

Passage::Passage(Snapshot const& snapshot, Vtu const& vtu, Atu const& atu, Options const& options,
                 unsigned ingress, EthernetFrame const& frame, Decision& decision)
    : _snapshot(snapshot),
      _vtu(vtu),
      _atu(atu),
      _options(options),
      _ingress(ingress),
      _settings(snapshot.port(ingress)),
      _frame(frame),
      _destination(frame.getDestination()),
      _source(frame.getSource()),
      _tag(frame.getTag()),
      _class(frame.getDestinationClass()),
      _decision(decision) {}

void Passage::run(std::uint32_t among) {
    _among = among;
    static constexpr std::string_view numbers[] = {"M1", "M2", "M3",  "M4",  "M5",  "M6",  "M7",
                                                   "M8", "M9", "M10", "M11", "M12", "M13", "M14"};
    _decision.rules = {numbers,
                       askRules<&Passage::link, &Passage::mac, &Passage::portState, &Passage::frameMode,
                                &Passage::tag, &Passage::management, &Passage::vlan, &Passage::database,
                                &Passage::learn, &Passage::vlanState, &Passage::destination, &Passage::masks,
                                &Passage::egress, &Passage::form>(*this)};
}

bool Passage::link() {
    return _settings.hasLink || drop(fmt::format("port {} has no link", _ingress));
}

bool Passage::mac() {
    Reception const reception = receive();
    if (_settings.state != port::disabled || _options.disabledCounting == Options::DisabledCounting::on) {
        _reception = reception;
    }
    switch (reception) {
    case Reception::none:
    case Reception::good:
        return true;
    case Reception::pause:
        return drop("a pause frame ends at the MAC");
    case Reception::undersize:
    case Reception::fragment:
        return drop(fmt::format("{} bytes are too few", _frame.getWireLength()));
    case Reception::oversize:
    case Reception::jabber:
        return drop(fmt::format("{} bytes are too many", _frame.getWireLength()));
    case Reception::badFcs:
        return _settings.ignoresFcs ? refuse(fmt::format("port {} takes frames with a bad FCS", _ingress))
                                    : drop("the FCS is bad");
    }
    return true;
}

Passage::Reception Passage::receive() const {
    std::size_t const length = _frame.getWireLength();
    std::size_t const standard = _tag ? longestTagged : longestUntagged;
    bool const isGood = _frame.hasGoodFcs();
    if (length < EthernetFrame::minimumLength) {
        return isGood ? Reception::undersize : Reception::fragment;
    }
    if (length > (_snapshot.allowsLongFrames() ? longestLong : standard)) {
        return isGood ? Reception::oversize : Reception::jabber;
    }
    if (!isGood) {
        return Reception::badFcs;
    }
    return _class == Class::pause ? Reception::pause : Reception::good;
}

bool Passage::portState() {
    return _settings.state != port::disabled || drop(fmt::format("port {} is disabled", _ingress));
}

bool Passage::frameMode() {
    if (!isRegular(_settings)) {
        return refuse(fmt::format("port {} takes frames with a tag or header of the chip's own", _ingress));
    }
    return _settings.saFiltering == 0 || refuse(fmt::format("port {} filters by source address", _ingress));
}

bool Passage::tag() {
    bool const isTagged =
        _tag && (_tag->vid != 0 || _options.priorityTag == Options::PriorityTag::countsAsTagged);
    _isFilteredAtIngress = isTagged ? _settings.discardsTagged : _settings.discardsUntagged;
    if (isTagged) {
        _tagVid = _tag->vid;
    }
    return !_isFilteredAtIngress ||
           drop(fmt::format("port {} discards {} frames", _ingress, isTagged ? "tagged" : "untagged"));
}

bool Passage::management() {
    if (_class != Class::reserved ||
        !_snapshot.isForCpu(lastByte.get(static_cast<std::uint32_t>(_destination)))) {
        return true;
    }
    unsigned const cpu = _snapshot.getCpuPort();
    if (cpu >= Snapshot::numberOfPorts) {
        return drop("frames for the CPU have no port");
    }
    PortSettings const& settings = _snapshot.port(cpu);
    if (cpu == _ingress || !settings.hasLink || settings.state == port::disabled) {
        return drop(fmt::format("port {}, where frames for the CPU go, {}", cpu,
                                cpu == _ingress ? "is where it came in" : "is closed"));
    }
    if (!isRegular(settings)) {
        return refuse(fmt::format("port {} sends frames with a tag or header of the chip's own", cpu));
    }
    if ((_among & bit(cpu)) == 0) {
        return drop(fmt::format("frames for the CPU go to port {} only", cpu));
    }
    send(cpu, Form::asReceived);
    return false;
}

bool Passage::vlan() {
    bool const usesVtu = _settings.mode8021Q != port::off;
    bool const isForced =
        _settings.isVidForced && (usesVtu || _options.forcedVid == Options::ForcedVid::always);
    _decision.vid = isForced ? _settings.defaultVid : _tagVid.value_or(_settings.defaultVid);
    if (!usesVtu) {
        return true;
    }
    _entry = _vtu.findVlan(*_decision.vid);
    return _entry != nullptr ? hitVlan() : missVlan();
}

bool Passage::hitVlan() {
    if (_entry->memberTags[_ingress] != vtu::notMember) {
        return true;
    }
    _violation = Vtu::Violation::member;
    _isFilteredAtIngress = _settings.mode8021Q == port::secure;
    return !_isFilteredAtIngress ||
           drop(fmt::format("port {} is secure and no member of VLAN {}", _ingress, *_decision.vid));
}

bool Passage::missVlan() {
    _violation = Vtu::Violation::miss;
    _isFilteredAtIngress = _settings.mode8021Q != port::fallback;
    return !_isFilteredAtIngress ||
           drop(fmt::format("VID {} is not in the VTU, port {} {}", *_decision.vid, _ingress,
                            _settings.mode8021Q == port::secure ? "is secure" : "checks VLANs"));
}

bool Passage::database() {
    _fid = _entry != nullptr ? _entry->fid : _settings.fid;
    _states = _entry != nullptr ? _vtu.findStates(_entry->sid) : nullptr;
    _state = stateOf(_ingress);
    return true;
}

unsigned Passage::stateOf(unsigned port) const {
    unsigned const own = _snapshot.port(port).state;
    if (own == port::disabled && _options.disabledPort == Options::DisabledPort::alwaysCloses) {
        return own;
    }
    if (_states != nullptr) {
        unsigned const code = _states->portStates[port];
        return code == 0 ? own : code;
    }
    bool const isBlocking = _entry != nullptr && _options.unknownSid == Options::UnknownSid::blocking;
    return isBlocking ? port::blocking : own;
}

unsigned Passage::egressStateOf(unsigned port) const {
    return _options.spanningTreeScope == Options::SpanningTreeScope::ingressOnly ? _snapshot.port(port).state
                                                                                 : stateOf(port);
}

bool Passage::learn() {
    bool const isOpen = _state >= port::learning;
    std::uint32_t const ports = _settings.isTrunk
                                    ? atu::trunk.getMask() | atu::trunkId.placed(_settings.trunkId)
                                    : atu::portVector.placed(_settings.associationVector);
    if (isOpen && !EthernetFrame::isGroup(_source) && _settings.associationVector != 0 &&
        !_settings.isLocked) {
        _learning = Learning{_fid, _source, ports};
    }
    return true;
}

bool Passage::vlanState() {
    return _state == port::forwarding ||
           drop(fmt::format("port {} is {} in VLAN {}", _ingress, stateNames[_state], *_decision.vid));
}

bool Passage::destination() {
    std::uint32_t const data = _settings.mapsDa ? _atu.find(_fid, _destination) : 0;
    _isHit = data != 0;
    if (!_isHit) {
        _ports = flood() & _among;
        return _ports != 0 || drop("no port sends frames to unknown addresses");
    }
    _isStaticUnicast = _class == Class::unicast && Atu::isStatic(_destination, data);
    _ports = atu::trunk.isSet(data) ? _snapshot.getTrunkMembers(atu::trunkId.get(data))
                                    : atu::portVector.get(data);
    _ports &= _among;
    return _ports != 0 || drop("the destination's address leads to no port");
}

std::uint32_t Passage::flood() const {
    std::uint32_t ports = 0;
    for (unsigned port = 0; port < Snapshot::numberOfPorts; ++port) {
        PortSettings const& settings = _snapshot.port(port);
        ports |= (_class == Class::unicast ? settings.floodsUnicast : settings.floodsGroups) ? bit(port) : 0;
    }
    return ports;
}

bool Passage::masks() {
    bool const isTunnelled = _settings.isTunnel && _isStaticUnicast;
    bool const usesTable = _options.vlanTableScope == Options::VlanTableScope::everyMode || _entry == nullptr;
    if (!isTunnelled && usesTable && !limit(_settings.vlanTable, "VLANTable")) {
        return false;
    }
    if (!isTunnelled) {
        std::uint32_t const allowed = membersOf(_ports);
        _filteredAtEgress = _isHit && _entry != nullptr ? _ports & ~allowed : 0;
        if (!limit(allowed, "the members of the VLAN")) {
            return false;
        }
    }
    std::uint32_t const own = _options.ownPort == Options::OwnPort::never ? bit(_ingress) : 0;
    return limit(_snapshot.getTrunkMask(trunkHash()) & ~own, "the trunk mask");
}

bool Passage::limit(std::uint32_t ports, char const* what) {
    _ports &= ports;
    return _ports != 0 || drop(fmt::format("{} of port {} left no port", what, _ingress));
}

// All of them when no VLAN of the VTU says otherwise.
std::uint32_t Passage::membersOf(std::uint32_t ports) const {
    return keep(ports, [this](unsigned port) {
        bool const isOpen = _options.egressCheck == Options::EgressCheck::none ||
                            _snapshot.port(port).mode8021Q < port::check;
        return _entry == nullptr ? isOpen : _entry->memberTags[port] != vtu::notMember;
    });
}

// The chip's own hash, which bit 11 of the trunk masks selects, is not public: here all bytes count for it.
unsigned Passage::trunkHash() const {
    EthernetFrame::Address mixed = _destination ^ _source;
    if (_snapshot.hashesAddresses()) {
        mixed ^= mixed >> 24;
        mixed ^= mixed >> 16 ^ mixed >> 8;
    }
    return static_cast<unsigned>(mixed % trunkHashes);
}

bool Passage::egress() {
    _ports = keep(_ports, [this](unsigned port) {
        return _snapshot.port(port).hasLink && egressStateOf(port) == port::forwarding;
    });
    return _ports != 0 || drop("no port that it could leave by has link and forwards");
}

bool Passage::form() {
    _decision.egress.reserve(countBits(_ports));
    for (unsigned port = 0; _ports >> port != 0; ++port) {
        if ((_ports & bit(port)) == 0) {
            continue;
        }
        if (!isRegular(_snapshot.port(port))) {
            _decision.egress.clear();
            return refuse(fmt::format("port {} sends frames with a tag or header of the chip's own", port));
        }
        send(port, formAt(port));
    }
    return true;
}

// A tunnel leads to ports that are no members, too.
Form Passage::formAt(unsigned port) const {
    static constexpr Form forms[] = {Form::asReceived, Form::untagged, Form::tagged, Form::tagAdded};
    bool const isMember = _entry != nullptr && _entry->memberTags[port] != vtu::notMember;
    return forms[isMember ? _entry->memberTags[port] : _snapshot.port(port).egressMode];
}

void Passage::send(unsigned port, Form form) {
    EthernetFrame::Tag const tag{_decision.vid.value_or(0), _tag ? _tag->priority : _settings.defaultPriority,
                                 _tag && _tag->dropEligible};
    switch (form) {
    case Form::asReceived:
        return _decision.egress.push_back({port, form, _frame});
    case Form::untagged:
        return _decision.egress.push_back({port, form, _frame.withTagPopped()});
    case Form::tagged:
        if (!_tagged) {
            _tagged = _frame.withTag(tag);
        }
        return _decision.egress.push_back({port, form, *_tagged});
    case Form::tagAdded:
        return _decision.egress.push_back({port, form, _frame.withTagPushed(tag)});
    }
}

bool Passage::drop(std::string reason) {
    _decision.dropReason = std::move(reason);
    return false;
}

bool Passage::refuse(std::string reason) {
    _decision.notModelled = reason;
    return drop(std::move(reason));
}

} // namespace simulation::marvell
