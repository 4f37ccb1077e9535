#include "board/PortSelection.hpp"

#include <fmt/format.h>
#include <libxml/tree.h>

#include <algorithm>

#include "board/Element.hpp"
#include "chips/ToolError.hpp"

namespace board {

namespace {

std::string idsOf(BoardReading const& document) {
    std::string text;
    for (auto const& [id, entry] : document.getSwitches()) {
        text += (text.empty() ? "" : ", ") + entry.getName();
    }
    return text.empty() ? "none" : text;
}

} // namespace

PortSelection::PortSelection(BoardReading const& document, std::string const& path,
                             std::vector<std::string> const& texts, Texts allowed) {
    if (texts.empty()) {
        for (auto const& [id, entry] : document.getSwitches()) {
            addAll(document, entry);
        }
    }
    for (std::string const& text : texts) {
        add(document, path, text, allowed);
    }
    if (_ports.empty()) {
        throw chips::ToolError(chips::ExitStatus::badDocument,
                               path + ": the document has no port of a known switch");
    }
}

void PortSelection::addAll(BoardReading const& document, BoardReading::Switch const& entry) {
    chips::ChipKind::Facts const& chip = entry.kind->getFacts();
    for (auto const& [portId, port] : entry.ports) {
        if (portId < chip.ports) {
            add(document, entry, portId);
        } else {
            _leftOut.push_back(fmt::format(
                "port {} of switch {}, line {}: the chip ({}) has the ports 0 to {}", port.getName(),
                entry.id, xmlGetLineNo(port.element), chip.model, chip.ports - 1));
        }
    }
}

void PortSelection::add(BoardReading const& document, std::string const& path, std::string const& text,
                        Texts allowed) {
    bool const isSwitch = allowed == Texts::portsAndSwitches && isDigits(text);
    auto const refuse = [&](std::string const& reason) {
        return chips::ToolError(chips::ExitStatus::usage,
                                (isSwitch ? "switch \"" : "port \"") + text + "\": " + reason);
    };
    // A switch is looked for as the switch of its port 0.
    auto const address = chips::PortAddress::fromText(isSwitch ? text + ".0" : text);
    if (!address) {
        throw refuse(allowed == Texts::ports ? "not of the form SWITCH.PORT"
                                             : "neither SWITCH.PORT nor SWITCH");
    }
    auto const entry = document.getSwitches().find(address->switchId);
    if (entry == document.getSwitches().end()) {
        throw refuse(path + " has no switch " + std::to_string(address->switchId) + " (it has " +
                     idsOf(document) + ")");
    }
    if (isSwitch) {
        addAll(document, entry->second);
        return;
    }
    chips::ChipKind::Facts const& facts = entry->second.kind->getFacts();
    std::string const chip = fmt::format("switch {} ({}) ", address->switchId, facts.model);
    if (address->portId >= facts.ports) {
        throw refuse(fmt::format("{}has the ports 0 to {}", chip, facts.ports - 1));
    }
    if (entry->second.ports.count(address->portId) == 0) {
        throw refuse(chip + "has no port " + std::to_string(address->portId) + " in " + path);
    }
    add(document, entry->second, address->portId);
}

void PortSelection::add(BoardReading const& document, BoardReading::Switch const& entry, unsigned portId) {
    chips::PortAddress const address{entry.id, portId};
    if (find(address) == nullptr) {
        _ports.push_back({address, entry.kind->getFacts().model, entry.ports.at(portId).connectedTo,
                          document.getLabels().find(address.getText()).value_or("")});
    }
}

PortSelection::Port const* PortSelection::find(chips::PortAddress const& address) const {
    auto const found = std::find_if(_ports.begin(), _ports.end(), [&](Port const& port) {
        return port.address.switchId == address.switchId && port.address.portId == address.portId;
    });
    return found == _ports.end() ? nullptr : &*found;
}

} // namespace board
