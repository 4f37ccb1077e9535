#include "switchctl/statistics/SeededCounter.hpp"

#include <charconv>
#include <optional>
#include <stdexcept>

#include "chips/ChipKinds.hpp"
#include "chips/ToolError.hpp"

namespace switchctl::statistics {

namespace {

chips::ToolError refusal(std::string const& text, std::string const& reason) {
    return {chips::ExitStatus::usage, "\"" + text + "\": " + reason};
}

/// Decimal, or nothing.
std::optional<std::uint64_t> numberIn(std::string const& text) {
    std::uint64_t number = 0;
    char const* const end = text.data() + text.size();
    auto const result = std::from_chars(text.data(), end, number);
    if (result.ec != std::errc() || result.ptr != end) {
        return std::nullopt;
    }
    return number;
}

chips::Counter const* counterOf(std::string const& model, std::string const& name) {
    for (chips::Counter const& counter : chips::ChipKinds::get(model, "statistics").getFacts().counters) {
        if (name == counter.name) {
            return &counter;
        }
    }
    return nullptr;
}

} // namespace

SeededCounter::SeededCounter(std::string const& text, board::PortSelection const& selection) : _text(text) {
    std::size_t const slash = text.find('/');
    std::size_t const equals = text.find('=', slash == std::string::npos ? 0 : slash);
    auto const address = chips::PortAddress::fromText(text.substr(0, slash));
    if (slash == std::string::npos || equals == std::string::npos || !address) {
        throw refusal(text, "not of the form SWITCH.PORT/COUNTER=VALUE[+STEP]");
    }
    board::PortSelection::Port const* const port = selection.find(*address);
    if (port == nullptr) {
        throw refusal(text, "port " + text.substr(0, slash) + " is not one of those that are read");
    }
    _port = *port;
    std::string const name = text.substr(slash + 1, equals - slash - 1);
    _counter = counterOf(_port.model, name);
    if (_counter == nullptr) {
        throw refusal(text, "a port of a " + _port.model + " has no counter \"" + name + "\"");
    }
    std::size_t const plus = text.find('+', equals);
    auto const value =
        numberIn(text.substr(equals + 1, plus == std::string::npos ? plus : plus - equals - 1));
    auto const step =
        plus == std::string::npos ? std::optional<std::uint64_t>(0) : numberIn(text.substr(plus + 1));
    std::uint64_t const largest = _counter->getLargest();
    if (!value || !step || *value > largest || *step > largest) {
        throw refusal(text, name + " takes decimal numbers up to " + std::to_string(largest));
    }
    _value = *value;
    _step = *step;
}

void SeededCounter::set(simulation::SimulatedBoard& board) const {
    try {
        chips::ChipKinds::get(_port.model, "statistics").seed(board, _port.address, *_counter, _value);
    } catch (std::out_of_range const&) {
        throw refusal(_text, "the simulated board has no such port");
    }
}

void SeededCounter::step() {
    _value = (_value + _step) & _counter->getLargest();
}

} // namespace switchctl::statistics
