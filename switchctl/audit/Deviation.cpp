#include "switchctl/audit/Deviation.hpp"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "board/Wording.hpp"

namespace switchctl::audit {

namespace {

std::string textOf(std::string const& field, std::optional<std::uint32_t> const& value) {
    return value ? board::fieldValue(field, *value) : "none";
}

nlohmann::ordered_json jsonOf(std::optional<std::uint32_t> const& value) {
    return value ? nlohmann::ordered_json(*value) : nlohmann::ordered_json(nullptr);
}

} // namespace

std::vector<Deviation> Deviation::between(std::string const& chip, chips::ChipImage const& expected,
                                          chips::ChipImage const& found) {
    std::vector<Deviation> deviations;
    bool const endedEarly = found.isUnread("");
    for (chips::ChipImage::Item const& item : expected.getItems()) {
        chips::ChipImage::Item const* const other = found.find(item.unit, item.name);
        if (other == nullptr) {
            // What could not be read is told elsewhere.
            if (!endedEarly && !found.isUnread(item.unit)) {
                deviations.push_back({chip, item.unit, item.name, "", 1, std::nullopt});
            }
            continue;
        }
        for (std::size_t index = 0; index < item.fields.size() && index < other->fields.size(); ++index) {
            chips::ChipImage::Field const& field = item.fields[index];
            if (other->fields[index].value != field.value) {
                deviations.push_back(
                    {chip, item.unit, item.name, field.name, field.value, other->fields[index].value});
            }
        }
    }
    for (chips::ChipImage::Item const& item : found.getItems()) {
        if (expected.find(item.unit, item.name) == nullptr) {
            deviations.push_back({chip, item.unit, item.name, "", std::nullopt, 1});
        }
    }
    return deviations;
}

std::string Deviation::getText() const {
    std::string const what = !field.empty() ? fmt::format("{}  expected {}, found {}", field,
                                                          textOf(field, expected), textOf(field, found))
                             : expected     ? "expected the entry, found none"
                                            : "expected none, found the entry";
    return fmt::format("{}  {}  {}  {}", chip, unit, board::entryName(item), what);
}

nlohmann::ordered_json Deviation::toJson() const {
    return {{"chip", chip},
            {"unit", unit},
            {"item", item},
            {"field", field},
            {"expected", jsonOf(expected)},
            {"found", jsonOf(found)}};
}

} // namespace switchctl::audit
