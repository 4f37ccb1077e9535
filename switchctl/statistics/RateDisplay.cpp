#include "switchctl/statistics/RateDisplay.hpp"

#include <fmt/format.h>

#include <algorithm>

#include "switchctl/statistics/CounterRates.hpp"

namespace switchctl::statistics {

using Colour = Colours::Colour;

namespace {

constexpr char const* clearTerminal = "\033[2J";
constexpr char const* topLeft = "\033[H";
constexpr char const* eraseRestOfLine = "\033[K";
constexpr char const* eraseRestOfTerminal = "\033[J";

std::string lineOf(chips::Counter const& counter, CounterRates::Rate const& rate, std::uint64_t value,
                   double seconds) {
    if (rate.isCleared) {
        return fmt::format("  {:22} {:>14} {:8}  {}", counter.name, "cleared", "", value);
    }
    double const perSecond = static_cast<double>(rate.counted.value_or(0)) / seconds;
    return fmt::format("  {:22} {:14.1f} {:8}  {}", counter.name, perSecond,
                       std::string(counter.getUnitName()) + "/s", value);
}

void append(std::string& list, std::string const& text) {
    list += (list.empty() ? "" : " ") + text;
}

} // namespace

RateDisplay::RateDisplay(std::ostream& out) : RateDisplay(out, Terminal::descriptorOf(out)) {}

RateDisplay::RateDisplay(std::ostream& out, int descriptor)
    : _out(out), _descriptor(Terminal::isAt(descriptor) ? descriptor : -1), _colours(descriptor) {}

void RateDisplay::begin(double seconds) {
    if (_descriptor >= 0) {
        redraw({fmt::format("the first rates take {:.1f} s", seconds)}, Terminal::getSize(_descriptor));
    }
}

void RateDisplay::show(chips::CounterSample const& before, chips::CounterSample const& after,
                       double seconds) {
    ++_rounds;
    std::vector<std::string> lines = getLines(before, after, seconds);
    if (_descriptor >= 0) {
        redraw(std::move(lines), Terminal::getSize(_descriptor));
        return;
    }
    if (_rounds > 1) {
        _out << '\n';
    }
    for (std::string const& line : lines) {
        _out << line << '\n';
    }
    _out << std::flush;
}

std::vector<std::string> RateDisplay::getLines(chips::CounterSample const& before,
                                               chips::CounterSample const& after, double seconds) const {
    std::vector<std::string> lines = {fmt::format("round {}, rates over {:.1f} s", _rounds, seconds)};
    std::string idle;
    for (std::size_t index = 0; index < after.ports.size(); ++index) {
        chips::PortCounters const& port = after.ports[index];
        if (!addPort(before.ports[index], port, seconds, lines)) {
            append(idle, port.port.getText());
        }
    }
    if (!idle.empty()) {
        lines.push_back("nothing counted: " + idle);
    }
    for (std::string const& line : after.unread) {
        lines.push_back("not readable: " + line);
    }
    return lines;
}

bool RateDisplay::addPort(chips::PortCounters const& before, chips::PortCounters const& after, double seconds,
                          std::vector<std::string>& lines) const {
    std::vector<CounterRates::Rate> const rates = CounterRates::between(before, after, seconds);
    std::vector<std::string> counters;
    std::string unread;
    for (std::size_t index = 0; index < rates.size(); ++index) {
        chips::Counter const& counter = after.getCounters()[index];
        if (!after.values[index]) {
            append(unread, counter.name);
        } else if (rates[index].isCleared || rates[index].counted.value_or(0) != 0) {
            counters.push_back(lineOf(counter, rates[index], *after.values[index], seconds));
        }
    }
    if (counters.empty() && unread.empty()) {
        return false;
    }
    lines.push_back("port " + after.getName() + " (" + after.model + ")");
    lines.insert(lines.end(), counters.begin(), counters.end());
    if (!unread.empty()) {
        lines.push_back("  without a value: " + (after.isRead() ? unread : "all counters"));
    }
    return true;
}

/// Lines are cut where the terminal ends, before they are painted.
void RateDisplay::redraw(std::vector<std::string> lines, Terminal::Size const& size) {
    std::size_t const room = std::max(2U, size.rows) - 1;
    if (lines.size() > room) {
        std::size_t const hidden = lines.size() - room + 1;
        lines.resize(room - 1);
        lines.push_back("... " + std::to_string(hidden) + " more lines");
    }
    _out << (_rounds == 0 ? clearTerminal : "") << topLeft;
    for (std::string const& line : lines) {
        std::string const visible = line.substr(0, size.columns - 1);
        bool const isHead = line[0] != ' ';
        bool const isBad = line.compare(0, 12, "not readable") == 0;
        _out << (isBad    ? _colours.paint(Colour::red, visible)
                 : isHead ? _colours.paint(Colour::bold, visible)
                          : visible)
             << eraseRestOfLine << '\n';
    }
    _out << eraseRestOfTerminal << std::flush;
}

} // namespace switchctl::statistics
