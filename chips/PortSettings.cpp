#include "chips/PortSettings.hpp"

#include <algorithm>
#include <array>
#include <map>

#include "chips/ToolError.hpp"

namespace chips {

using Words = std::vector<std::string>;
using Port = ManagedSwitchPort;

namespace {

/// What may stand behind a word.
std::map<std::string, Words> const& valuesByName() {
    static std::map<std::string, Words> const values = {
        {"up", {}},
        {"down", {}},
        {"speed", {"10", "100", "1000"}},
        {"flow-control", {"on", "off"}},
        {"mdix", {"on", "off", "auto"}},
        {"learning", {"on", "off"}},
    };
    return values;
}

constexpr std::array<char const*, 2> duplexes = {"full", "half"};

bool isAmong(Words const& words, std::string const& word) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

std::string inLine(Words const& words) {
    std::string line;
    for (std::string const& word : words) {
        line += (line.empty() ? "" : ", ") + word;
    }
    return line;
}

[[noreturn]] void refuse(std::string const& text) {
    throw ToolError(ExitStatus::usage, text);
}

Words names() {
    Words all;
    for (auto const& entry : valuesByName()) {
        all.push_back(entry.first);
    }
    return all;
}

} // namespace

PortSettings::PortSettings(Words const& words) {
    for (std::size_t at = 0; at < words.size();) {
        _texts.push_back(take(words, at));
    }
    if (_texts.empty()) {
        refuse("nothing to set: " + inLine(names()));
    }
    if (_flowControl && !_speed) {
        refuse("flow-control: the library sets it together with the speed, which is missing");
    }
}

/// One setting with its values; \return it in words.
std::string PortSettings::take(Words const& words, std::size_t& at) {
    std::string const& name = words[at++];
    auto const entry = valuesByName().find(name);
    if (entry == valuesByName().end()) {
        refuse("\"" + name + "\" is no setting of a port; there are " + inLine(names()));
    }
    if (entry->second.empty()) {
        requireOnce(!_link, name);
        _link = name == "up" ? Link::enabled : Link::disabled;
        return name;
    }
    if (at == words.size() || !isAmong(entry->second, words[at])) {
        refuse(name + ": " + (at == words.size() ? "its value is missing" : "\"" + words[at] + "\"") +
               "; it takes " + inLine(entry->second));
    }
    std::string text = name + " " + words[at];
    set(name, words[at++]);
    if (name == "speed") {
        _isHalfDuplex = at < words.size() && words[at] == "half";
        text += _isHalfDuplex ? " half" : " full";
        at += at < words.size() && isAmong({duplexes.begin(), duplexes.end()}, words[at]) ? 1 : 0;
    }
    return text;
}

void PortSettings::set(std::string const& name, std::string const& value) {
    if (name == "speed") {
        requireOnce(!_speed, name);
        _speed = speedOf(value);
    } else if (name == "flow-control") {
        requireOnce(!_flowControl, name);
        _flowControl = value == "on" ? FlowControl::forcedOn : FlowControl::forcedOff;
    } else if (name == "mdix") {
        requireOnce(!_mdix, name);
        _mdix = value == "auto" ? Port::MdixSetting::automatic
                                : (value == "on" ? Port::MdixSetting::mdix : Port::MdixSetting::mdi);
    } else {
        requireOnce(!_learning, name);
        _learning = value == "on";
    }
}

void PortSettings::requireOnce(bool isFirst, std::string const& name) const {
    if (!isFirst) {
        refuse(_link && (name == "up" || name == "down") ? "up and down: only one of them, once"
                                                         : name + ": twice");
    }
}

Words PortSettings::getNext(Words const& words) {
    if (!words.empty()) {
        auto const last = valuesByName().find(words.back());
        if (last != valuesByName().end() && !last->second.empty()) {
            return last->second;
        }
    }
    Words next = names();
    if (words.size() > 1 && words[words.size() - 2] == "speed") {
        next.insert(next.end(), duplexes.begin(), duplexes.end());
    }
    return next;
}

std::optional<PortSettings::Speed> PortSettings::speedOf(std::string const& megabits) {
    static std::map<std::string, Speed> const speeds = {
        {"10", Speed::speed10}, {"100", Speed::speed100}, {"1000", Speed::speed1000}};
    auto const entry = speeds.find(megabits);
    return entry == speeds.end() ? std::nullopt : std::optional<Speed>(entry->second);
}

void PortSettings::requirePossible(ChipKind::Facts const& chip, PortAddress const& port) const {
    std::string const which = port.getText() + " (" + chip.name + "): ";
    ChipKind::Settings const& settings = chip.settings;
    if (port.portId >= chip.ports) {
        refuse(which + "the chip has the ports 0 to " + std::to_string(chip.ports - 1));
    }
    if (_mdix && settings.firstGigabitPort == 0) {
        refuse(which + "the library cannot set mdix; its PHYs are no part of the chip");
    }
    if (_mdix && port.portId >= settings.firstGigabitPort) {
        refuse(which + "the library cannot set mdix; there are PHYs of the chip on ports 0 to " +
               std::to_string(settings.firstGigabitPort - 1) + " only");
    }
    if (_learning && !settings.hasLearning) {
        refuse(which + "the library cannot set learning on this chip");
    }
    if (_speed == Speed::speed1000 && port.portId < settings.firstGigabitPort) {
        refuse(which + "speed 1000 cannot be; ports 0 to " + std::to_string(settings.firstGigabitPort - 1) +
               " are Fast Ethernet, for 10 and 100");
    }
}

bool PortSettings::apply(Port& port, ChipKind::Settings const& chip) const {
    bool isSet = true;
    if (_speed) {
        auto const duplex = _isHalfDuplex ? chip.halfDuplex : Port::DuplexSetting::full;
        isSet = port.setPort(*_speed, duplex, _flowControl.value_or(FlowControl::forcedOn),
                             chooseLink(port, chip));
    } else if (_link) {
        isSet = port.setPort(*_link);
    }
    if (_learning) {
        isSet = port.setPortLearningEnable(*_learning) && isSet;
    }
    if (_mdix) {
        isSet = port.setMdix(*_mdix) && isSet;
    }
    return isSet;
}

/// As it was, where nobody says.
PortSettings::Link PortSettings::chooseLink(Port& port, ChipKind::Settings const& chip) const {
    if (_link) {
        return *_link;
    }
    std::size_t const state = port.portStatus();
    if (state != 0 && state + 1 != chip.states.size()) {
        refuse("speed: the port is " + chip.states.at(state) +
               ", which the library cannot keep; say up or down");
    }
    return state == 0 ? Link::disabled : Link::enabled;
}

bool PortSettings::start(Port& port, ChipKind::Settings const& chip, Speed speed) {
    return chip.speedRegister
               ? port.setPort(speed, Port::DuplexSetting::full, FlowControl::forcedOn, Link::enabled)
               : port.setPort(Link::enabled);
}

} // namespace chips
