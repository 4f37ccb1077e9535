#include "board/Wording.hpp"

#include <fmt/format.h>

namespace board {

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

std::string vlanName(unsigned int id) {
    return "VLAN " + hexadecimal(id);
}

std::string portsName(std::vector<unsigned int> const& numbers) {
    return (numbers.size() == 1 ? "port " : "ports ") + listed(numbers);
}

} // namespace board
