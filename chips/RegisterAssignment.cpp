#include "chips/RegisterAssignment.hpp"

#include <algorithm>

#include "chips/NumberText.hpp"
#include "chips/ToolError.hpp"
#include "simulation/Field.hpp"

namespace chips {

using simulation::Register;

namespace {

ToolError refused(std::string const& assignment, std::string const& reason) {
    return {ExitStatus::usage, "\"" + assignment + "\": " + reason};
}

std::uint32_t valueFrom(std::string const& text, unsigned bits, std::string const& assignment) {
    auto const value = NumberText::parse(text);
    if (!value) {
        throw refused(assignment, "\"" + text + "\" is not a number");
    }
    if ((*value & ~simulation::Field("", bits - 1, 0).getMask()) != 0) {
        throw refused(assignment, text + " does not fit into " + std::to_string(bits) + " bits");
    }
    return *value;
}

Register::Field const& fieldOf(RegisterLocation const& location, std::string const& name,
                               std::string const& assignment) {
    Register::Field const* found = nullptr;
    if (location.description != nullptr) {
        for (Register::Field const& field : location.description->getFields()) {
            if (!ChipCatalogue::isSameName(field.name, name)) {
                continue;
            }
            if (found != nullptr) {
                throw refused(assignment, "there are several fields \"" + name + "\"");
            }
            found = &field;
        }
    }
    if (found == nullptr) {
        throw refused(assignment, location.getText() + " has no field \"" + name + "\"");
    }
    return *found;
}

} // namespace

RegisterAssignment RegisterAssignment::parse(ChipCatalogue const& catalogue, std::string const& text,
                                             bool physOnly) {
    std::size_t const equals = text.find('=');
    if (equals == std::string::npos) {
        throw refused(text, "not of the form LOCATION=VALUE");
    }
    std::size_t const colon = text.find(':');
    RegisterAssignment assignment;
    assignment._location = catalogue.find(text.substr(0, std::min(equals, colon)), physOnly);
    if (colon > equals) {
        assignment._value = valueFrom(text.substr(equals + 1), assignment._location.address.getBits(), text);
        return assignment;
    }
    for (std::size_t end = colon; end != std::string::npos;) {
        std::size_t const start = end + 1;
        end = text.find(',', start);
        assignment.addField(text.substr(start, end - start), text);
    }
    return assignment;
}

void RegisterAssignment::addField(std::string const& text, std::string const& assignment) {
    std::size_t const equals = text.find('=');
    if (equals == std::string::npos) {
        throw refused(assignment, "\"" + text + "\" is not of the form FIELD=VALUE");
    }
    Register::Field const& field = fieldOf(_location, text.substr(0, equals), assignment);
    std::uint32_t const value = valueFrom(text.substr(equals + 1), field.high - field.low + 1, assignment);
    _fields.push_back({field.name, field.getMask(), value, field.low});
}

bool RegisterAssignment::isPartial() const {
    return !_fields.empty();
}

std::uint32_t RegisterAssignment::getBits() const {
    std::uint32_t bits = isPartial() ? 0 : ~std::uint32_t{0};
    for (Part const& field : _fields) {
        bits |= field.mask;
    }
    return bits;
}

std::uint32_t RegisterAssignment::apply(std::uint32_t before) const {
    if (!isPartial()) {
        return _value;
    }
    std::uint32_t value = before;
    for (Part const& field : _fields) {
        value = (value & ~field.mask) | (field.value << field.low);
    }
    return value;
}

std::string RegisterAssignment::getText() const {
    std::string text = _location.getText() + " (" + _location.address.getText() + ")";
    if (!isPartial()) {
        return text + " = " + NumberText::hexadecimal(_value, _location.getDigits());
    }
    char const* separator = ": ";
    for (Part const& field : _fields) {
        text += separator + field.name + " = " + NumberText::hexadecimal(field.value, 1);
        separator = ", ";
    }
    return text;
}

} // namespace chips
