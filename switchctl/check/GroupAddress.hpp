#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace switchctl::check {

/// An IPv4 multicast address, and where a VSC7390 keeps the group.
class GroupAddress {
public:
    /// Nothing when the text, blanks at its ends aside, is not four numbers of which the first is 224 to
    /// 239.
    static std::optional<GroupAddress> fromText(std::string const& text);

    /// The 23 bits of the address that are part of the group's MAC address.
    std::uint32_t getHardwareBits() const { return _address & 0x7FFFFFU; }

    /// The MAC address, first byte on the wire highest.
    std::uint64_t getMac() const;

    /// The row of the MAC table, 0 to 2047. Of the VLAN id, the low six bits count.
    unsigned int getRow(unsigned int vlanId) const;

private:
    explicit GroupAddress(std::uint32_t address) : _address(address) {}

    std::uint32_t _address;
};

} // namespace switchctl::check
