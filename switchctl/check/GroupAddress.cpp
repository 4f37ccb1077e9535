#include "switchctl/check/GroupAddress.hpp"

#include <arpa/inet.h>

namespace switchctl::check {

namespace {

constexpr char const* blanks = " \t\r\n";
constexpr std::uint64_t multicastPrefix = 0x01005E000000;
constexpr std::uint32_t firstGroup = 0xE0000000; // 224.0.0.0
constexpr std::uint32_t lastGroup = 0xEFFFFFFF;  // 239.255.255.255
constexpr unsigned int bitsOfMac = 48;
constexpr unsigned int bitsOfRow = 11;
constexpr std::uint64_t rowMask = (1U << bitsOfRow) - 1;
constexpr std::uint64_t hashedVlanBits = 0x3F;

} // namespace

std::optional<GroupAddress> GroupAddress::fromText(std::string const& text) {
    std::size_t const begin = text.find_first_not_of(blanks);
    if (begin == std::string::npos) {
        return std::nullopt;
    }
    std::string const trimmed = text.substr(begin, text.find_last_not_of(blanks) + 1 - begin);
    in_addr parsed{};
    if (inet_pton(AF_INET, trimmed.c_str(), &parsed) != 1) {
        return std::nullopt;
    }
    std::uint32_t const address = ntohl(parsed.s_addr);
    return address < firstGroup || address > lastGroup ? std::nullopt
                                                       : std::optional<GroupAddress>(GroupAddress(address));
}

std::uint64_t GroupAddress::getMac() const {
    return multicastPrefix | getHardwareBits();
}

unsigned int GroupAddress::getRow(unsigned int vlanId) const {
    std::uint64_t rest = getMac() | ((static_cast<std::uint64_t>(vlanId) & hashedVlanBits) << bitsOfMac);
    std::uint64_t row = 0;
    for (; rest != 0; rest >>= bitsOfRow) {
        row ^= rest & rowMask;
    }
    return static_cast<unsigned int>(row);
}

} // namespace switchctl::check
