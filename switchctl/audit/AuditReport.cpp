#include "switchctl/audit/AuditReport.hpp"

#include <nlohmann/json.hpp>
#include <string>
#include <utility>

#include "switchctl/terminal/Colours.hpp"

namespace switchctl::audit {

namespace {

std::string counted(std::size_t number, std::string const& one, std::string const& many) {
    return std::to_string(number) + " " + (number == 1 ? one : many);
}

} // namespace

AuditReport::AuditReport(AuditRun const& run, std::string document, std::string audited)
    : _run(run), _document(std::move(document)), _audited(std::move(audited)) {}

void AuditReport::print(std::ostream& out) const {
    Colours const colours(out);
    for (Deviation const& deviation : _run.getDeviations()) {
        out << colours.paint(Colours::Colour::red, deviation.getText()) << '\n';
    }
    out << _audited << " against " << _document << ": " << counted(_run.getSwitches(), "switch", "switches")
        << ", " << counted(_run.getRegisters(), "register", "registers") << ", "
        << counted(_run.getEntries(), "table entry", "table entries") << ", "
        << counted(_run.getDeviations().size(), "deviation", "deviations") << '\n';
}

nlohmann::ordered_json AuditReport::toJson() const {
    nlohmann::ordered_json deviations = nlohmann::ordered_json::array();
    for (Deviation const& deviation : _run.getDeviations()) {
        deviations.push_back(deviation.toJson());
    }
    return {{"file", _document},
            {"audited", _audited},
            {"switches", _run.getSwitches()},
            {"registers", _run.getRegisters()},
            {"entries", _run.getEntries()},
            {"deviations", deviations},
            {"unread", _run.getUnread()}};
}

} // namespace switchctl::audit
