#include "switchctl/port/PortReport.hpp"

#include <fmt/ostream.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <set>

#include "board/Wording.hpp"

namespace switchctl::port {

using board::Deviation;

namespace {

std::size_t countRegisters(std::vector<Deviation> const& changes) {
    std::set<std::pair<std::string, std::string>> registers;
    for (Deviation const& change : changes) {
        registers.emplace(change.unit, change.item);
    }
    return registers.size();
}

std::string locationOf(Deviation const& change) {
    return change.unit + "/" + change.item;
}

} // namespace

PortReport::PortReport(PortChange const& change, chips::PortSettings const& settings,
                       chips::PortAddress const& port, std::string const& chip, std::string const& examined)
    : _change(change), _settings(settings), _port(port), _chip(chip), _examined(examined) {}

void PortReport::print(std::ostream& out) const {
    fmt::print(out, "port {}, {}, of {}: {}\n", _port.getText(), _chip, _examined,
               board::listed(_settings.getTexts()));
    if (!_change.getFailure().empty()) {
        out << "not all of it was set: " << _change.getFailure() << '\n';
    }
    fmt::print(out, "state: {}; before: {}\n", _change.getStateAfter(), _change.getStateBefore());
    auto const& changes = _change.getChanges();
    fmt::print(out, "registers: {} changed, {} compared\n", countRegisters(changes), _change.getCompared());
    std::size_t location = 0;
    std::size_t field = 0;
    for (Deviation const& change : changes) {
        location = std::max(location, locationOf(change).size());
        field = std::max(field, change.field.size());
    }
    for (Deviation const& change : changes) {
        fmt::print(out, "  {:{}}  {:{}}  {} -> {}\n", locationOf(change), location, change.field, field,
                   board::fieldValue(change.field, change.expected.value()),
                   board::fieldValue(change.field, change.found.value()));
    }
    if (!_change.getUnread().empty()) {
        out << "unread: " << _change.getUnread() << '\n';
    }
}

nlohmann::ordered_json PortReport::toJson() const {
    nlohmann::ordered_json changes = nlohmann::ordered_json::array();
    for (Deviation const& change : _change.getChanges()) {
        changes.push_back({{"unit", change.unit},
                           {"register", change.item},
                           {"field", change.field},
                           {"before", change.expected.value()},
                           {"after", change.found.value()}});
    }
    auto const textOrNull = [](std::string const& text) {
        return text.empty() ? nlohmann::ordered_json() : nlohmann::ordered_json(text);
    };
    return {{"examined", _examined},
            {"switch", _port.switchId},
            {"port", _port.portId},
            {"chip", _chip},
            {"settings", _settings.getTexts()},
            {"failure", textOrNull(_change.getFailure())},
            {"stateBefore", _change.getStateBefore()},
            {"stateAfter", _change.getStateAfter()},
            {"compared", _change.getCompared()},
            {"changes", changes},
            {"unread", textOrNull(_change.getUnread())}};
}

} // namespace switchctl::port
