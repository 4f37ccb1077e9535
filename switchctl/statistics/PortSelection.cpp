#include "switchctl/statistics/PortSelection.hpp"

#include <algorithm>

#include "chips/ToolError.hpp"

namespace switchctl::statistics {

namespace {

std::string idsOf(board::BoardReading const& document) {
    std::string text;
    for (auto const& [id, entry] : document.getSwitches()) {
        text += (text.empty() ? "" : ", ") + std::to_string(id);
    }
    return text.empty() ? "none" : text;
}

char const* modelOf(board::BoardReading::Switch const& entry) {
    return entry.isVitesse() ? "vsc7390" : "88e6096";
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
            if (portId < entry.portsOfChip()) {
                _ports.push_back({{id, portId}, modelOf(entry)});
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
    std::string const chip =
        "switch " + std::to_string(address->switchId) + " (" + modelOf(entry->second) + ") ";
    if (address->portId >= entry->second.portsOfChip()) {
        throw refuse(chip + "has the ports 0 to " + std::to_string(entry->second.portsOfChip() - 1));
    }
    if (entry->second.ports.count(address->portId) == 0) {
        throw refuse(chip + "has no port " + std::to_string(address->portId) + " in " + path);
    }
    if (find(*address) == nullptr) {
        _ports.push_back({*address, modelOf(entry->second)});
    }
}

std::vector<PortSelection::Port> const& PortSelection::getPorts() const {
    return _ports;
}

PortSelection::Port const* PortSelection::find(chips::PortAddress const& address) const {
    auto const found = std::find_if(_ports.begin(), _ports.end(), [&](Port const& port) {
        return port.address.switchId == address.switchId && port.address.portId == address.portId;
    });
    return found == _ports.end() ? nullptr : &*found;
}

} // namespace switchctl::statistics
