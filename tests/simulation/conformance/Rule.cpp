#include "tests/simulation/conformance/Rule.hpp"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace simulation_test {

namespace {

using Form = simulation::Decision::Form;
using Frame = Frames::Frame;

std::string tagsOf(Frame frame) {
    std::vector<std::string> tags;
    for (; frame.getTag(); frame = frame.withTagPopped()) {
        auto const tag = *frame.getTag();
        tags.push_back(fmt::format("{}.{}{}", tag.vid, tag.priority, tag.dropEligible ? "d" : ""));
    }
    return fmt::format("{}", fmt::join(tags, "+"));
}

std::string copyOf(simulation::Decision::Egress const& copy, Frame const& received) {
    std::string const tags = tagsOf(copy.frame);
    switch (copy.form) {
    case Form::asReceived:
        return copy.frame == received ? "r" : "r!" + tags;
    case Form::untagged:
        return copy.frame == received.withTagPopped() ? "u" + tags : "u!" + tags;
    case Form::tagged:
        return copy.frame.withTagPopped() == received.withTagPopped() ? "t" + tags : "t!" + tags;
    case Form::tagAdded:
        return copy.frame.withTagPopped() == received ? "a" + tags : "a!" + tags;
    }
    return "?";
}

} // namespace

std::string outcomeOf(simulation::Decision const& decision, Frame const& received) {
    std::string const vlan = decision.vid ? fmt::format("VLAN {}: ", *decision.vid) : std::string();
    if (decision.isDropped()) {
        return fmt::format("{}{} by {}", vlan, decision.isRefused() ? "refused" : "dropped",
                           decision.rules.back());
    }
    std::vector<std::string> copies;
    for (auto const& copy : decision.egress) {
        copies.push_back(fmt::format("{}{}", copy.port, copyOf(copy, received)));
    }
    if (decision.toProcessor) {
        copies.emplace_back("processor");
    }
    return fmt::format("{}{}", vlan, fmt::join(copies, " "));
}

} // namespace simulation_test
