#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace simulation {

/// A frame of IEEE 802.3 (clause 3) without its FCS, and whether the FCS was right. A value that does not
/// change: copies share the bytes, and threads may share copies.
///
/// Any number of bytes makes a frame; what is missing of a header reads as zero.
class EthernetFrame {
public:
    using Bytes = std::vector<std::uint8_t>;
    /// The first byte on the wire highest, 48 bits.
    using Address = std::uint64_t;

    enum class Fcs { good, bad };

    /// What the destination address, and for pause the EtherType, makes of a frame. Each frame has one.
    enum class DestinationClass {
        unicast,
        /// A group that none of the following is.
        multicast,
        /// 01:00:5E:00:00:00 to 01:00:5E:7F:FF:FF (RFC 1112).
        ipMulticast,
        broadcast,
        /// 01:80:C2:00:00:00 to 0F and 20 to 2F: bridges and their protocols (IEEE 802.1Q, tables 8-1, 10-1).
        reserved,
        /// EtherType 8808 to 01:80:C2:00:00:01, whatever its opcode (IEEE 802.3, annex 31B).
        pause
    };

    /// A C-tag (IEEE 802.1Q, 9.6): the 16 bits of its TCI.
    struct Tag {
        /// 0 to 4095; 0 in a tag that only carries a priority.
        unsigned vid = 0;
        /// 0 to 7.
        unsigned priority = 0;
        /// Bit 12, DEI, in older editions CFI.
        bool dropEligible = false;

        bool operator==(Tag const& other) const;
        bool operator!=(Tag const& other) const { return !(*this == other); }
    };

    /// \name EtherTypes
    /// @{
    static constexpr unsigned tagProtocol = 0x8100;
    static constexpr unsigned macControl = 0x8808;
    /// @}

    static constexpr Address broadcastAddress = 0xFFFFFFFFFFFF;
    static constexpr std::size_t fcsLength = 4;
    static constexpr std::size_t tagLength = 4;
    /// The shortest frame that may be sent, FCS included.
    static constexpr std::size_t minimumLength = 64;

    /// \param bytes from the destination address on, without FCS.
    explicit EthernetFrame(Bytes bytes, Fcs fcs = Fcs::good);

    /// A frame with addresses, EtherType and payload, filled up with zeros to the minimum length.
    static EthernetFrame make(Address destination, Address source, unsigned etherType,
                              Bytes const& payload = {});

    Bytes const& getBytes() const { return *_bytes; }
    bool hasGoodFcs() const { return _fcs == Fcs::good; }

    /// Bytes on the wire, FCS included, preamble and gap not.
    std::size_t getWireLength() const { return _bytes->size() + fcsLength; }

    Address getDestination() const { return getAddress(0); }
    Address getSource() const { return getAddress(addressLength); }
    bool hasGroupSource() const { return isGroup(getSource()); }
    DestinationClass getDestinationClass() const {
        return isGroup(getDestination()) ? getGroupClass() : DestinationClass::unicast;
    }

    /// What follows the addresses and the outer tag, if there is one. Behind two tags: 8100.
    unsigned getEtherType() const;

    /// The outer tag.
    std::optional<Tag> getTag() const {
        return getWord(typeOffset) == tagProtocol ? std::optional<Tag>(getTagAt(typeOffset)) : std::nullopt;
    }
    /// Tags with the protocol 8100, one behind the other.
    unsigned countTags() const;

    /// \name Frames made of this one, with the same flag
    /// @{

    /// One tag more, in front of those there are.
    EthernetFrame withTagPushed(Tag const& tag) const;
    /// Without its outer tag; the frame itself when it has none. Filled up with zeros when it would get
    /// shorter than the minimum length by that.
    EthernetFrame withTagPopped() const;
    /// With this tag for the outer one, or with one tag when it has none.
    EthernetFrame withTag(Tag const& tag) const;
    /// @}

    /// The same bytes and flag.
    bool operator==(EthernetFrame const& other) const;
    bool operator!=(EthernetFrame const& other) const { return !(*this == other); }

    /// For people, for example
    /// "02:00:00:00:00:01 to FF:FF:FF:FF:FF:FF, VLAN 4, priority 5, type 0806, 68 bytes, bad FCS".
    std::string describe() const;

    static bool isGroup(Address address) { return (address >> 40 & 1) != 0; }
    /// For example "02:00:00:00:00:01".
    static std::string format(Address address);

private:
    static constexpr std::size_t addressLength = 6;
    static constexpr std::size_t typeOffset = 2 * addressLength;

    DestinationClass getGroupClass() const;
    Tag getTagAt(std::size_t offset) const;
    Address getAddress(std::size_t offset) const {
        if (offset + addressLength > _bytes->size()) {
            return Address{getWord(offset)} << 32 | Address{getWord(offset + 2)} << 16 | getWord(offset + 4);
        }
        std::uint8_t const* const bytes = _bytes->data() + offset;
        return Address{bytes[0]} << 40 | Address{bytes[1]} << 32 | Address{bytes[2]} << 24 |
               Address{bytes[3]} << 16 | Address{bytes[4]} << 8 | Address{bytes[5]};
    }
    unsigned getWord(std::size_t offset) const {
        if (offset + 1 >= _bytes->size()) {
            return unsigned{getByte(offset)} << 8;
        }
        std::uint8_t const* const bytes = _bytes->data() + offset;
        return unsigned{bytes[0]} << 8 | unsigned{bytes[1]};
    }
    std::uint8_t getByte(std::size_t offset) const { return offset < _bytes->size() ? (*_bytes)[offset] : 0; }

    std::shared_ptr<Bytes const> _bytes;
    Fcs _fcs;
};

} // namespace simulation
