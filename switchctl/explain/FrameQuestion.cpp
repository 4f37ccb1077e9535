#include "switchctl/explain/FrameQuestion.hpp"

#include <stdexcept>

#include "board/HardwareAddress.hpp"
#include "chips/NumberText.hpp"

namespace switchctl::explain {

namespace {

constexpr unsigned highestVid = 4095;

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
    auto const address = board::HardwareAddress::fromText(target);
    if (target == "all") {
        frame.destination = Destination::broadcast;
    } else if (address) {
        frame.address = *address;
        frame.destination = (frame.address & groupBit) != 0 ? Destination::group : Destination::unicast;
    } else if (!to) {
        throw std::invalid_argument("\"" + target + R"(": neither a port nor an address nor "all")");
    }
}

} // namespace switchctl::explain
