#include "switchctl/plan/PlannedWrite.hpp"

#include <iomanip>
#include <nlohmann/json.hpp>

#include "chips/NumberText.hpp"

namespace switchctl::plan {

namespace {

constexpr int widthOfName = 21;
constexpr unsigned digitsOfAddress = 2;

} // namespace

bool PlannedWrite::operator==(PlannedWrite const& other) const {
    return address == other.address && value == other.value && registerName == other.registerName;
}

void PlannedWrite::print(std::ostream& out) const {
    out << std::left << std::setw(widthOfName) << registerName << std::right << ' '
        << chips::NumberText::hexadecimal(address, digitsOfAddress) << "  "
        << chips::NumberText::hexadecimal(value, digits);
    char const* separator = "  ";
    for (simulation::AccessLog::FieldChange const& change : changes) {
        out << separator << change.field << ' ' << chips::NumberText::hexadecimal(change.before, 1) << "->"
            << chips::NumberText::hexadecimal(change.after, 1);
        separator = ", ";
    }
}

nlohmann::ordered_json PlannedWrite::toJson() const {
    nlohmann::ordered_json fields = nlohmann::ordered_json::array();
    for (simulation::AccessLog::FieldChange const& change : changes) {
        fields.push_back({{"field", change.field}, {"before", change.before}, {"after", change.after}});
    }
    return {{"nanoseconds", nanoseconds},
            {"register", registerName},
            {"address", address},
            {"value", value},
            {"changes", fields}};
}

} // namespace switchctl::plan
