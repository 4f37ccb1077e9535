#include "switchctl/explain/FrameQuestion.hpp"

#include <stdexcept>

#include "board/intent/IntendedBoard.hpp"
#include "chips/NumberText.hpp"

namespace switchctl::explain {

namespace {

constexpr unsigned highestVid = 4095;

/// "02:00:00:00:00:01", or nothing.
std::optional<std::uint64_t> hardwareAddress(std::string const& text) {
    constexpr std::size_t length = 17;
    constexpr unsigned hexadecimal = 16;
    if (text.size() != length) {
        return std::nullopt;
    }
    std::string digits;
    for (std::size_t index = 0; index < length; ++index) {
        bool const isColon = index % 3 == 2;
        if (isColon ? text[index] != ':' : std::isxdigit(static_cast<unsigned char>(text[index])) == 0) {
            return std::nullopt;
        }
        digits += isColon ? "" : text.substr(index, 1);
    }
    return std::stoull(digits, nullptr, hexadecimal);
}

} // namespace

FrameQuestion::FrameQuestion(std::vector<std::string> const& words) {
    std::size_t next = 0;
    auto const word = [&]() -> std::string { return next < words.size() ? words[next++] : ""; };
    std::string first = word();
    if (first == "tagged") {
        std::string const text = word();
        auto const vid = chips::NumberText::parse(text);
        if (!vid || *vid > highestVid) {
            throw std::invalid_argument("tagged \"" + text + "\": not a VID");
        }
        frame.tags = board::FrameKind::Tags::one(*vid);
        first = word();
    } else if (first == "untagged") {
        first = word();
    }
    target = word();
    if (first != "to" || target.empty() || next != words.size()) {
        throw std::invalid_argument("not of the form SWITCH.PORT [untagged|tagged VID] to "
                                    "SWITCH.PORT|MAC|GROUP|all");
    }
    readTarget();
}

void FrameQuestion::readTarget() {
    using Destination = board::FrameKind::Destination;
    constexpr std::uint64_t groupBit = 0x010000000000;
    to = chips::PortAddress::fromText(target);
    auto const group = board::IntendedBoard::hardwareAddressOf(target);
    auto const mac = hardwareAddress(target);
    if (target == "all") {
        frame.destination = Destination::broadcast;
    } else if (group || mac) {
        frame.address = group ? *group : *mac;
        frame.destination = (frame.address & groupBit) != 0 ? Destination::group : Destination::unicast;
    } else if (!to) {
        throw std::invalid_argument("\"" + target + R"(": neither a port nor an address nor "all")");
    }
}

} // namespace switchctl::explain
