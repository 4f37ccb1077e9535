#include "board/Wording.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <iterator>

namespace board {

namespace {

/// By the library's numbers; the first and the last stand for no word.
constexpr char const* portTypeNames[] = {"unknown", "external",        "smac",   "hmac", "cpu",
                                         "dsp",     "switchInterlink", "unknown"};
static_assert(std::size(portTypeNames) == ManagedSwitchPort::numberOfPortTypes);

} // namespace

std::string hexadecimal(unsigned int number) {
    return fmt::format("0x{:x}", number);
}

std::string portAddress(int switchId, int portId) {
    return std::to_string(switchId) + "." + std::to_string(portId);
}

std::string listed(std::vector<std::string> const& items) {
    std::string text;
    for (std::size_t index = 0; index < items.size(); ++index) {
        if (index != 0) {
            text += index + 1 == items.size() ? " and " : ", ";
        }
        text += items[index];
    }
    return text;
}

std::string listed(std::vector<unsigned int> const& numbers) {
    std::vector<std::string> items;
    items.reserve(numbers.size());
    for (unsigned int const number : numbers) {
        items.push_back(std::to_string(number));
    }
    return listed(items);
}

std::string vlanName(unsigned int id, std::optional<std::string> const& written) {
    return fmt::format("VLAN {} (0x{:x}{})", id, id, written ? ", written \"" + *written + "\"" : "");
}

std::string idName(int id, std::optional<std::string> const& written) {
    std::string const number = std::to_string(id);
    return !written || *written == number ? number : number + " (written \"" + *written + "\")";
}

std::string entryName(std::string const& name) {
    static std::string const digits = "0123456789";
    std::string text = name;
    for (std::string const kind : {"VID ", "SID "}) {
        std::size_t const start = text.find(kind);
        std::size_t const number = start + kind.size();
        if (start == std::string::npos || digits.find(text[number]) == std::string::npos) {
            continue;
        }
        std::size_t const end = std::min(text.find_first_not_of(digits, number), text.size());
        text.insert(end,
                    " (" + hexadecimal(static_cast<unsigned int>(std::stoul(text.substr(number)))) + ")");
    }
    return text;
}

std::string fieldValue(std::string const& field, unsigned int value) {
    constexpr unsigned int firstOfTwoDigits = 10;
    constexpr std::size_t nameLength = 3;
    std::string const end = field.size() < nameLength ? "" : field.substr(field.size() - nameLength);
    bool const isId = end == "VID" || end == "SID";
    return hexadecimal(value) + (isId && value >= firstOfTwoDigits ? fmt::format(" ({})", value) : "");
}

std::vector<std::string> knownPortTypes() {
    return {std::begin(portTypeNames) + 1, std::end(portTypeNames) - 1};
}

std::string portTypeName(ManagedSwitchPort::PortType type) {
    return portTypeNames[static_cast<std::size_t>(type)];
}

std::string portStateName(ManagedSwitchPort::PortEnabledStatus state) {
    static constexpr std::array<char const*, 4> names{"disabled", "listening", "learning", "forwarding"};
    return names.at(static_cast<std::size_t>(state));
}

std::string portsName(std::vector<unsigned int> const& numbers) {
    return (numbers.size() == 1 ? "port " : "ports ") + listed(numbers);
}

} // namespace board
