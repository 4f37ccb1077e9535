#include "board/dump/RegisterReading.hpp"

#include <fmt/ostream.h>
#include <nlohmann/json.hpp>

#include "chips/NumberText.hpp"

namespace board {

using simulation::Register;

namespace {

std::string bitsText(Register::Field const& field) {
    return field.high == field.low ? fmt::format("{}", field.high)
                                   : fmt::format("{}:{}", field.high, field.low);
}

} // namespace

std::string RegisterReading::getValueText() const {
    return chips::NumberText::hexadecimal(value, location.getDigits());
}

void RegisterReading::print(std::ostream& out) const {
    fmt::print(out, "{} ({}) = {}\n", location.getText(), location.address.getText(), getValueText());
    if (location.description == nullptr) {
        return;
    }
    for (Register::Field const& field : location.description->getFields()) {
        fmt::print(out, "    {:22} {:>5}  0x{:x}\n", field.name, bitsText(field), field.get(value));
    }
}

void RegisterReading::printShort(std::ostream& out) const {
    fmt::print(out, "  {:22} {:11} {}", location.name, location.address.getText(), getValueText());
    if (location.description != nullptr) {
        for (Register::Field const& field : location.description->getFields()) {
            fmt::print(out, "  {}=0x{:x}", field.name, field.get(value));
        }
    }
    out << '\n';
}

nlohmann::ordered_json RegisterReading::toJson() const {
    nlohmann::ordered_json fields = nlohmann::ordered_json::array();
    if (location.description != nullptr) {
        for (Register::Field const& field : location.description->getFields()) {
            fields.push_back({{"name", field.name},
                              {"high", field.high},
                              {"low", field.low},
                              {"value", field.get(value)}});
        }
    }
    return {{"unit", location.unit},
            {"register", location.name},
            {"address", location.address.getText()},
            {"value", value},
            {"fields", fields}};
}

} // namespace board
