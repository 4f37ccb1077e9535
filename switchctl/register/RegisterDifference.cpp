#include "switchctl/register/RegisterDifference.hpp"

#include <nlohmann/json.hpp>
#include <string>

#include "chips/NumberText.hpp"

namespace switchctl::registers {

namespace {

board::RegisterReading const* findIn(RegisterDump const& dump, chips::RegisterLocation const& location) {
    for (board::RegisterReading const& reading : dump.readings) {
        if (reading.location.getText() == location.getText()) {
            return &reading;
        }
    }
    return nullptr;
}

std::string valueText(std::optional<std::uint32_t> value, unsigned digits) {
    return value ? chips::NumberText::hexadecimal(*value, digits) : "absent";
}

nlohmann::ordered_json jsonOf(std::optional<std::uint32_t> value) {
    return value ? nlohmann::ordered_json(*value) : nlohmann::ordered_json();
}

} // namespace

std::vector<RegisterDifference> RegisterDifference::between(RegisterDump const& first,
                                                            RegisterDump const& second) {
    std::vector<RegisterDifference> differences;
    for (board::RegisterReading const& reading : first.readings) {
        board::RegisterReading const* const other = findIn(second, reading.location);
        if (other == nullptr) {
            differences.push_back({reading.location, reading.value, std::nullopt});
        } else if (other->value != reading.value) {
            differences.push_back({reading.location, reading.value, other->value});
        }
    }
    for (board::RegisterReading const& reading : second.readings) {
        if (findIn(first, reading.location) == nullptr) {
            differences.push_back({reading.location, std::nullopt, reading.value});
        }
    }
    return differences;
}

void RegisterDifference::print(std::ostream& out) const {
    out << location.getText() << " (" << location.address.getText()
        << "): " << valueText(first, location.getDigits()) << " -> "
        << valueText(second, location.getDigits()) << '\n';
    for (Field const& field : getFields()) {
        out << "    " << field.name << ": " << valueText(field.first, 1) << " -> "
            << valueText(field.second, 1) << '\n';
    }
}

nlohmann::ordered_json RegisterDifference::toJson() const {
    nlohmann::ordered_json fields = nlohmann::ordered_json::array();
    for (Field const& field : getFields()) {
        fields.push_back({{"name", field.name}, {"first", field.first}, {"second", field.second}});
    }
    return {{"unit", location.unit},  {"register", location.name}, {"address", location.address.getText()},
            {"first", jsonOf(first)}, {"second", jsonOf(second)},  {"fields", fields}};
}

std::vector<RegisterDifference::Field> RegisterDifference::getFields() const {
    std::vector<Field> fields;
    if (!first || !second || location.description == nullptr) {
        return fields;
    }
    std::uint32_t named = 0;
    for (auto const& field : location.description->getFields()) {
        std::uint32_t const before = field.get(*first);
        std::uint32_t const after = field.get(*second);
        named |= field.getMask();
        if (before != after) {
            fields.push_back({field.name, before, after});
        }
    }
    if (((*first ^ *second) & ~named) != 0) {
        fields.push_back({"bits without a name", *first & ~named, *second & ~named});
    }
    return fields;
}

} // namespace switchctl::registers
