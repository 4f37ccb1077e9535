#include "simulation/network/EthernetFrame.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "simulation/Field.hpp"

namespace simulation {

namespace {

namespace tci {
constexpr Field priority{"PCP", 15, 13};
constexpr Field dropEligible{"DEI", 12};
constexpr Field vid{"VID", 11, 0};
} // namespace tci

constexpr unsigned reservedBits = 4;
constexpr EthernetFrame::Address bridgeGroup = 0x0180C2000000;
constexpr EthernetFrame::Address registrationGroup = 0x0180C2000020;
constexpr EthernetFrame::Address pauseGroup = 0x0180C2000001;
constexpr unsigned ipGroupBits = 23;
constexpr EthernetFrame::Address ipGroup = 0x01005E000000;

void append(EthernetFrame::Bytes& bytes, std::uint64_t value, unsigned length) {
    while (length-- > 0) {
        bytes.push_back(static_cast<std::uint8_t>(value >> 8 * length));
    }
}

bool agreeAbove(unsigned bits, EthernetFrame::Address one, EthernetFrame::Address other) {
    return one >> bits == other >> bits;
}

} // namespace

bool EthernetFrame::Tag::operator==(Tag const& other) const {
    return vid == other.vid && priority == other.priority && dropEligible == other.dropEligible;
}

EthernetFrame::EthernetFrame(Bytes bytes, Fcs fcs)
    : _bytes(std::make_shared<Bytes const>(std::move(bytes))), _fcs(fcs) {}

EthernetFrame EthernetFrame::make(Address destination, Address source, unsigned etherType,
                                  Bytes const& payload) {
    Bytes bytes;
    bytes.reserve(std::max(typeOffset + 2 + payload.size(), minimumLength - fcsLength));
    append(bytes, destination, addressLength);
    append(bytes, source, addressLength);
    append(bytes, etherType, 2);
    bytes.insert(bytes.end(), payload.begin(), payload.end());
    bytes.resize(std::max(bytes.size(), minimumLength - fcsLength));
    return EthernetFrame(std::move(bytes));
}

EthernetFrame::DestinationClass EthernetFrame::getGroupClass() const {
    Address const destination = getDestination();
    if (destination == broadcastAddress) {
        return DestinationClass::broadcast;
    }
    if (destination == pauseGroup && getWord(typeOffset) == macControl) {
        return DestinationClass::pause;
    }
    if (agreeAbove(reservedBits, destination, bridgeGroup) ||
        agreeAbove(reservedBits, destination, registrationGroup)) {
        return DestinationClass::reserved;
    }
    return agreeAbove(ipGroupBits, destination, ipGroup) ? DestinationClass::ipMulticast
                                                         : DestinationClass::multicast;
}

unsigned EthernetFrame::getEtherType() const {
    unsigned const type = getWord(typeOffset);
    return type == tagProtocol ? getWord(typeOffset + tagLength) : type;
}

EthernetFrame::Tag EthernetFrame::getTagAt(std::size_t offset) const {
    unsigned const word = getWord(offset + 2);
    return {tci::vid.get(word), tci::priority.get(word), tci::dropEligible.isSet(word)};
}

unsigned EthernetFrame::countTags() const {
    unsigned count = 0;
    while (getWord(typeOffset + count * tagLength) == tagProtocol) {
        ++count;
    }
    return count;
}

EthernetFrame EthernetFrame::withTagPushed(Tag const& tag) const {
    Bytes const& old = *_bytes;
    std::size_t const split = std::min(typeOffset, old.size());
    Bytes bytes;
    bytes.reserve(typeOffset + tagLength + old.size());
    bytes.assign(old.begin(), old.begin() + static_cast<std::ptrdiff_t>(split));
    bytes.resize(typeOffset);
    append(bytes, tagProtocol, 2);
    append(bytes,
           tci::priority.placed(tag.priority) | tci::dropEligible.placed(tag.dropEligible) |
               tci::vid.placed(tag.vid),
           2);
    bytes.insert(bytes.end(), old.begin() + static_cast<std::ptrdiff_t>(split), old.end());
    return EthernetFrame(std::move(bytes), _fcs);
}

EthernetFrame EthernetFrame::withTagPopped() const {
    if (!getTag()) {
        return *this;
    }
    Bytes bytes = *_bytes;
    auto const tag = bytes.begin() + typeOffset;
    bytes.erase(tag, tag + std::min<std::ptrdiff_t>(tagLength, bytes.end() - tag));
    bytes.resize(std::max(bytes.size(), std::min(_bytes->size(), minimumLength - fcsLength)));
    return EthernetFrame(std::move(bytes), _fcs);
}

EthernetFrame EthernetFrame::withTag(Tag const& tag) const {
    std::optional<Tag> const present = getTag();
    if (present == tag) {
        return *this;
    }
    if (!present) {
        return withTagPushed(tag);
    }
    Bytes bytes = *_bytes;
    auto const at = bytes.begin() + typeOffset;
    bytes.erase(at, at + std::min<std::ptrdiff_t>(tagLength, bytes.end() - at));
    return EthernetFrame(std::move(bytes), _fcs).withTagPushed(tag);
}

bool EthernetFrame::operator==(EthernetFrame const& other) const {
    return _fcs == other._fcs && (_bytes == other._bytes || *_bytes == *other._bytes);
}

std::string EthernetFrame::describe() const {
    std::string text = format(getSource()) + " to " + format(getDestination());
    if (auto const tag = getTag()) {
        text += fmt::format(", VLAN {}, priority {}", tag->vid, tag->priority);
    }
    text += fmt::format(", type {:04X}, {} bytes", getEtherType(), getWireLength());
    return hasGoodFcs() ? text : text + ", bad FCS";
}

std::string EthernetFrame::format(Address address) {
    std::string text;
    for (unsigned shift = 48; shift > 0; shift -= 8) {
        text += fmt::format("{}{:02X}", text.empty() ? "" : ":", address >> (shift - 8) & 0xFF);
    }
    return text;
}

} // namespace simulation
