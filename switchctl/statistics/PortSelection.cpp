#include "switchctl/statistics/PortSelection.hpp"

#include <fmt/format.h>
#include <libxml/tree.h>

#include <algorithm>

#include "board/Element.hpp"
#include "chips/ChipKinds.hpp"
#include "chips/ToolError.hpp"

namespace switchctl::statistics {

namespace {

std::string idsOf(board::BoardReading const& document) {
    std::string text;
    for (auto const& [id, entry] : document.getSwitches()) {
        text += (text.empty() ? "" : ", ") + entry.getName();
    }
    return text.empty() ? "none" : text;
}

chips::ChipKind::Facts const& chipOf(board::BoardReading::Switch const& entry) {
    return chips::ChipKinds::get(*board::attribute(entry.element, "switchModel"), "statistics").getFacts();
}

std::string labelOf(board::BoardReading const& document, chips::PortAddress const& port) {
    return document.getLabels().find(port.getText()).value_or("");
}

} // namespace

PortSelection::PortSelection(board::BoardReading const& document, std::string const& path,
                             std::vector<std::string> const& texts) {
    if (texts.empty()) {
        addAll(document);
    }
    for (std::string const& text : texts) {
        add(document, path, text);
    }
    if (_ports.empty()) {
        throw chips::ToolError(chips::ExitStatus::badDocument,
                               path + ": the document has no port of a known switch");
    }
}

void PortSelection::addAll(board::BoardReading const& document) {
    for (auto const& [id, entry] : document.getSwitches()) {
        for (auto const& [portId, port] : entry.ports) {
            chips::ChipKind::Facts const& chip = chipOf(entry);
            if (portId < chip.ports) {
                _ports.push_back({{id, portId}, chip.model, labelOf(document, {id, portId})});
            } else {
                _leftOut.push_back(
                    fmt::format("port {} of switch {}, line {}: the chip ({}) has the ports 0 to {}",
                                port.getName(), id, xmlGetLineNo(port.element), chip.model, chip.ports - 1));
            }
        }
    }
}

void PortSelection::add(board::BoardReading const& document, std::string const& path,
                        std::string const& text) {
    auto const refuse = [&](std::string const& reason) {
        return chips::ToolError(chips::ExitStatus::usage, "port \"" + text + "\": " + reason);
    };
    auto const address = chips::PortAddress::fromText(text);
    if (!address) {
        throw refuse("not of the form SWITCH.PORT");
    }
    auto const entry = document.getSwitches().find(address->switchId);
    if (entry == document.getSwitches().end()) {
        throw refuse(path + " has no switch " + std::to_string(address->switchId) + " (it has " +
                     idsOf(document) + ")");
    }
    chips::ChipKind::Facts const& facts = chipOf(entry->second);
    std::string const chip = fmt::format("switch {} ({}) ", address->switchId, facts.model);
    if (address->portId >= facts.ports) {
        throw refuse(fmt::format("{}has the ports 0 to {}", chip, facts.ports - 1));
    }
    if (entry->second.ports.count(address->portId) == 0) {
        throw refuse(chip + "has no port " + std::to_string(address->portId) + " in " + path);
    }
    if (find(*address) == nullptr) {
        _ports.push_back({*address, facts.model, labelOf(document, *address)});
    }
}

PortSelection::Port const* PortSelection::find(chips::PortAddress const& address) const {
    auto const found = std::find_if(_ports.begin(), _ports.end(), [&](Port const& port) {
        return port.address.switchId == address.switchId && port.address.portId == address.portId;
    });
    return found == _ports.end() ? nullptr : &*found;
}

} // namespace switchctl::statistics
