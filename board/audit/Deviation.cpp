#include "board/audit/Deviation.hpp"

#include <fmt/format.h>

#include "board/Wording.hpp"

namespace board {

namespace {

std::string textOf(std::string const& field, std::optional<std::uint32_t> const& value) {
    return value ? fieldValue(field, *value) : "none";
}

} // namespace

std::vector<Deviation> Deviation::between(std::string const& chip, chips::ChipImage const& expected,
                                          chips::ChipImage const& found) {
    std::vector<Deviation> deviations;
    for (chips::ChipImage::Item const& item : expected.getItems()) {
        if (!found.covers(item)) {
            continue;
        }
        chips::ChipImage::Item const* const other = found.find(item.unit, item.name);
        if (other == nullptr) {
            deviations.push_back({chip, item.unit, item.name, "", 1, std::nullopt, false});
            continue;
        }
        for (std::size_t index = 0; index < item.fields.size() && index < other->fields.size(); ++index) {
            chips::ChipImage::Field const& field = item.fields[index];
            if (other->fields[index].value != field.value) {
                deviations.push_back({chip, item.unit, item.name, field.name, field.value,
                                      other->fields[index].value, item.isAfterReset});
            }
        }
    }
    for (chips::ChipImage::Item const& item : found.getItems()) {
        if (found.covers(item) && expected.find(item.unit, item.name) == nullptr) {
            deviations.push_back({chip, item.unit, item.name, "", std::nullopt, 1, false});
        }
    }
    return deviations;
}

std::string Deviation::getText() const {
    std::string const what = !field.empty()
                                 ? fmt::format("{}  expected {}{}, found {}", field, textOf(field, expected),
                                               isAfterReset ? " after reset" : "", textOf(field, found))
                             : expected ? "expected the entry, found none"
                                        : "expected none, found the entry";
    return fmt::format("{}  {}  {}  {}", chip, unit, entryName(item), what);
}

} // namespace board
