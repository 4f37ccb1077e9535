#include "benchmarks/forwarding/PlainSwitch.hpp"

#include <optional>

namespace benchmarks {

std::vector<PlainSwitch::Copy> const& PlainSwitch::receive(unsigned port, Frame const& frame) {
    _copies.clear();
    std::optional<Frame::Tag> const tag = frame.getTag();
    Port const& from = ports[port];
    unsigned const vid = tag && tag->vid != 0 && !from.forcesVid ? tag->vid : from.vid;
    Vlan const& vlan = vlans[vid];
    std::size_t const length = frame.getWireLength();
    std::uint32_t const forwarding = states[vlan.sid];
    count(_received[port], frame);
    if (!frame.hasGoodFcs() || length < Frame::minimumLength ||
        length > from.longest + (tag ? Frame::tagLength : 0) ||
        (vlan.members & forwarding & 1U << port) == 0) {
        return _copies;
    }
    if (from.learns && !frame.hasGroupSource()) {
        Address& source = place(keyOf(vlan.fid, frame.getSource()));
        source = {keyOf(vlan.fid, frame.getSource()), port, ++_now};
    }
    Key const destination = keyOf(vlan.fid, frame.getDestination());
    Address const& found = place(destination);
    std::uint32_t left = found.key == destination ? 1U << found.port : flood;
    Frame::Address const mixed = frame.getDestination() ^ frame.getSource();
    left &= vlan.members & from.mask & forwarding & trunkMasks[mixed % trunkMasks.size()] & senders;
    Frame::Tag const outer{vid, tag ? tag->priority : 0, tag && tag->dropEligible};
    std::optional<Frame> tagged;
    std::optional<Frame> untagged;
    for (unsigned to = 0; left != 0; ++to, left >>= 1) {
        if ((left & 1) == 0) {
            continue;
        }
        bool const isTagged = vlan.forms[to] == Form::tagged;
        std::optional<Frame>& form = isTagged ? tagged : untagged;
        if (!form) {
            form = isTagged ? frame.withTag(outer) : frame.withTagPopped();
        }
        _copies.push_back({to, vlan.forms[to], *form});
        count(_sent[to], *form);
    }
    return _copies;
}

// The kind of frame, its bytes, its size.
void PlainSwitch::count(Counters& counters, Frame const& frame) {
    Frame::Address const destination = frame.getDestination();
    std::size_t const octets = frame.getWireLength();
    ++counters[!Frame::isGroup(destination) ? 0 : destination == Frame::broadcastAddress ? 1 : 2];
    counters[3] += static_cast<std::uint32_t>(octets);
    ++counters[octets <= 64 ? 4 : octets <= 255 ? 5 : octets <= 1023 ? 6 : 7];
}

PlainSwitch::Address& PlainSwitch::place(Key key) {
    constexpr Key spread = 0x9E3779B97F4A7C15;
    std::size_t at = key * spread >> (64 - addressBits);
    while (_addresses[at].key != 0 && _addresses[at].key != key) {
        at = (at + 1) % _addresses.size();
    }
    return _addresses[at];
}

void PlainSwitch::decode(unsigned port, std::array<std::uint32_t, 8> const& registers) {
    ports[port] = {registers[0] & 0xFFF, (registers[0] >> 12 & 1) != 0, registers[1], registers[3],
                   registers[4] != 0};
    senders = (senders & ~(1U << port)) | (registers[2] & 1) << port;
}

} // namespace benchmarks
