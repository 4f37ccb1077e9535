#include "switchctl/register/RegisterReading.hpp"

#include <iomanip>

#include "chips/NumberText.hpp"

namespace switchctl::registers {

using simulation::Register;

namespace {

constexpr int widthOfAddress = 11;
constexpr int widthOfName = 22;
constexpr int widthOfBits = 5;

std::string bitsText(Register::Field const& field) {
    return field.high == field.low ? std::to_string(field.high)
                                   : std::to_string(field.high) + ":" + std::to_string(field.low);
}

std::string fieldText(std::uint32_t value, Register::Field const& field) {
    return chips::NumberText::hexadecimal(field.get(value), 1);
}

} // namespace

std::string RegisterReading::getValueText() const {
    return chips::NumberText::hexadecimal(value, location.getDigits());
}

void RegisterReading::print(std::ostream& out) const {
    out << location.getText() << " (" << location.address.getText() << ") = " << getValueText() << '\n';
    if (location.description == nullptr) {
        return;
    }
    for (Register::Field const& field : location.description->getFields()) {
        out << "    " << std::left << std::setw(widthOfName) << field.name << ' ' << std::right
            << std::setw(widthOfBits) << bitsText(field) << "  " << fieldText(value, field) << '\n';
    }
}

void RegisterReading::printShort(std::ostream& out) const {
    out << "  " << std::left << std::setw(widthOfName) << location.name << ' ' << std::setw(widthOfAddress)
        << location.address.getText() << ' ' << getValueText() << std::right;
    if (location.description != nullptr) {
        for (Register::Field const& field : location.description->getFields()) {
            out << "  " << field.name << '=' << fieldText(value, field);
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

} // namespace switchctl::registers
