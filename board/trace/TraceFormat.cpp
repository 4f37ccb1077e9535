#include "board/trace/TraceFormat.hpp"

#include "board/Element.hpp"

#include "simulation/VirtualClock.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "chips/NumberText.hpp"

namespace board {

namespace {

using Transport = chips::TraceAccess::Transport;

constexpr std::size_t decimals = 9;
/// Some thirty years, which 64 bits of nanoseconds can hold.
constexpr std::size_t mostDigitsOfSeconds = 9;

/// In the order of the enumeration.
constexpr std::array<char const*, 3> transportNames = {"smi", "parallel", "serial"};

} // namespace

char const* TraceFormat::nameOf(Transport transport) {
    return transportNames.at(static_cast<std::size_t>(transport));
}

std::optional<Transport> TraceFormat::transportOf(std::string const& name) {
    auto const* const found = std::find(transportNames.begin(), transportNames.end(), name);
    return found == transportNames.end()
               ? std::nullopt
               : std::optional(static_cast<Transport>(found - transportNames.begin()));
}

std::string TraceFormat::timeText(std::uint64_t nanoseconds) {
    return fmt::format("{}.{:09}", nanoseconds / simulation::VirtualClock::nanosecondsPerSecond,
                       nanoseconds % simulation::VirtualClock::nanosecondsPerSecond);
}

std::optional<std::uint64_t> TraceFormat::timeOf(std::string const& text) {
    std::size_t const dot = text.find('.');
    std::string const seconds = text.substr(0, dot);
    std::string const fraction = dot == std::string::npos ? "" : text.substr(dot + 1);
    if (!isDigits(seconds) || seconds.size() > mostDigitsOfSeconds || !isDigits(fraction) ||
        fraction.size() != decimals) {
        return std::nullopt;
    }
    return std::stoull(seconds) * simulation::VirtualClock::nanosecondsPerSecond + std::stoull(fraction);
}

std::string TraceFormat::nameOf(chips::RegisterLocation const& location) {
    if (location.description == nullptr) {
        return none;
    }
    std::string name = location.getText();
    name.erase(std::remove(name.begin(), name.end(), ' '), name.end());
    return name;
}

// A chip has PHYs, by number, that its catalogue has no names for.
chips::RegisterLocation TraceFormat::find(chips::ChipCatalogue const& chip, std::string const& number) {
    std::string const phy = "phy";
    bool const isPhy = number.compare(0, phy.size(), phy) == 0;
    return chip.find(isPhy ? number.substr(phy.size()) : number, isPhy);
}

std::string TraceFormat::line(TraceChips const& chips, chips::TraceAccess const& access) {
    std::string number = none;
    std::string name = busyChip;
    unsigned digits = digitsOfSmiWord;
    if (access.address) {
        chips::RegisterLocation const location = chips.find(access.switchId)->locate(*access.address);
        number = location.address.getText();
        name = nameOf(location);
        digits = location.getDigits();
    }
    std::string const value = access.value ? chips::NumberText::hexadecimal(*access.value, digits) : none;
    return fmt::format("{} {} {} {} {} {} {} {}", timeText(access.nanoseconds), access.switchId,
                       nameOf(access.transport), access.isWrite ? write : read, number, name, value,
                       access.succeeded ? ok : failed);
}

std::string TraceFormat::chipLine(unsigned switchId, std::string const& model) {
    return "chip " + std::to_string(switchId) + ' ' + model;
}

} // namespace board
