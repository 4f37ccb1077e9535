#include "switchctl/audit/AuditReport.hpp"

#include <nlohmann/json.hpp>
#include <string>
#include <utility>

#include "switchctl/terminal/Colours.hpp"

namespace switchctl::audit {

using board::Deviation;

namespace {

nlohmann::ordered_json jsonOf(std::optional<std::uint32_t> const& value) {
    return value ? nlohmann::ordered_json(*value) : nlohmann::ordered_json(nullptr);
}

nlohmann::ordered_json jsonOf(Deviation const& deviation) {
    return {{"chip", deviation.chip},
            {"unit", deviation.unit},
            {"item", deviation.item},
            {"field", deviation.field},
            {"expected", jsonOf(deviation.expected)},
            {"found", jsonOf(deviation.found)},
            {"afterReset", deviation.isAfterReset}};
}

nlohmann::ordered_json jsonOf(board::LeftOut const& leftOut) {
    nlohmann::ordered_json groups = nlohmann::ordered_json::array();
    for (board::LeftOut::Group const& group : leftOut.getGroups()) {
        groups.push_back({{"what", group.reason}, {"count", group.count}, {"names", group.names}});
    }
    return groups;
}

} // namespace

AuditReport::AuditReport(board::AuditRun const& run, std::string document, std::string audited)
    : _run(run), _document(std::move(document)), _audited(std::move(audited)) {}

void AuditReport::print(std::ostream& out) const {
    Colours const colours(out);
    for (Deviation const& deviation : _run.getDeviations()) {
        out << colours.paint(Colours::Colour::red, deviation.getText()) << '\n';
    }
    for (std::string const& line : _run.getUnread()) {
        out << colours.paint(Colours::Colour::red, "not read: " + line) << '\n';
    }
    out << _audited << " against " << _document << ": " << _run.getSummary() << '\n';
    out << "not compared: " << _run.getLeftOut().getText() << '\n';
}

nlohmann::ordered_json AuditReport::toJson() const {
    nlohmann::ordered_json deviations = nlohmann::ordered_json::array();
    for (Deviation const& deviation : _run.getDeviations()) {
        deviations.push_back(jsonOf(deviation));
    }
    if (deviations.empty() && !_run.getUnread().empty()) {
        deviations = nullptr;
    }
    return {{"file", _document},
            {"audited", _audited},
            {"switches", _run.getSwitches()},
            {"switchesRead", _run.getSwitchesRead()},
            {"registers", _run.getRegisters()},
            {"entries", _run.getEntries()},
            {"deviations", deviations},
            {"unread", _run.getUnread()},
            {"notCompared", jsonOf(_run.getLeftOut())}};
}

} // namespace switchctl::audit
