#include "switchctl/plan/PlannedWrite.hpp"

#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "board/Wording.hpp"

namespace switchctl::plan {

bool PlannedWrite::operator==(PlannedWrite const& other) const {
    return address == other.address && value == other.value && registerName == other.registerName;
}

std::string PlannedWrite::getText() const {
    std::string text = fmt::format("{:21} 0x{:02x}  0x{:0{}x}", registerName, address, value, digits);
    char const* separator = "  ";
    for (simulation::AccessLog::FieldChange const& change : changes) {
        text += fmt::format("{}{} {}->{}", separator, change.field,
                            board::fieldValue(change.field, change.before),
                            board::fieldValue(change.field, change.after));
        separator = ", ";
    }
    return text;
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
