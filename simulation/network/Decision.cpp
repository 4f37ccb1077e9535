#include "simulation/network/Decision.hpp"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>

namespace simulation {

void Decision::clear() {
    vid.reset();
    egress.clear();
    learnt = false;
    toProcessor = false;
    rules = {};
    dropReason.clear();
    notModelled.clear();
}

Decision::Egress const* Decision::find(unsigned port) const {
    auto const found =
        std::find_if(egress.begin(), egress.end(), [port](Egress const& copy) { return copy.port == port; });
    return found == egress.end() ? nullptr : &*found;
}

std::uint32_t Decision::getPorts() const {
    std::uint32_t ports = 0;
    for (Egress const& copy : egress) {
        ports |= 1U << copy.port;
    }
    return ports;
}

std::string Decision::describe() const {
    std::vector<std::string> destinations;
    for (Egress const& copy : egress) {
        destinations.push_back(fmt::format("{} {}", copy.port, name(copy.form)));
    }
    if (toProcessor) {
        destinations.emplace_back("the processor");
    }
    std::string text = vid ? fmt::format("VLAN {}: ", *vid) : std::string();
    if (isRefused()) {
        text += "not modelled: " + notModelled;
    } else if (isDropped()) {
        text += "dropped: " + dropReason;
    } else {
        text += fmt::format("to {}", fmt::join(destinations, ", "));
    }
    return fmt::format("{}{} ({})", text, learnt ? "; learnt" : "", fmt::join(rules, " "));
}

char const* Decision::name(Form form) {
    switch (form) {
    case Form::asReceived:
        return "as received";
    case Form::untagged:
        return "untagged";
    case Form::tagged:
        return "tagged";
    case Form::tagAdded:
        return "with a tag added";
    }
    return "";
}

} // namespace simulation
