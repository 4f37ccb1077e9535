#include "switchctl/register/DumpReader.hpp"

#include <algorithm>
#include <limits>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "chips/NumberText.hpp"
#include "simulation/Field.hpp"

namespace switchctl::registers {

namespace {

constexpr char const* chipWord = "chip ";
constexpr char const* overWord = "over ";

bool startsWith(std::string const& text, char const* start) {
    return text.rfind(start, 0) == 0;
}

std::size_t lineOf(std::string const& text, std::size_t position) {
    auto const end = text.begin() + static_cast<std::ptrdiff_t>(std::min(position, text.size()));
    return 1 + static_cast<std::size_t>(std::count(text.begin(), end, '\n'));
}

} // namespace

DumpReader::DumpReader(std::string name) : _name(std::move(name)) {}

RegisterDump DumpReader::read(std::string const& text) {
    std::size_t const first = text.find_first_not_of(" \t\r\n");
    if (first != std::string::npos && text[first] == '{') {
        readJson(text);
    } else {
        readText(text);
    }
    return std::move(_dump);
}

void DumpReader::readText(std::string const& text) {
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        ++_line;
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        readLine(line);
    }
    if (_dump.catalogue == nullptr) {
        refuse(_name + ":1", "not a dump of registers");
    }
}

void DumpReader::readLine(std::string const& line) {
    if (_line == 1) {
        if (!startsWith(line, chipWord)) {
            refuse(here(), "not a dump of registers");
        }
        return setChip(line.substr(std::string(chipWord).size()), here());
    }
    if (line.empty() || startsWith(line, overWord)) {
        return;
    }
    if (line.front() != ' ') {
        _unit = line;
        return;
    }
    std::istringstream words(line);
    std::string name;
    std::string address;
    std::string text;
    words >> name >> address >> text;
    auto const value = chips::NumberText::parse(text);
    if (!value) {
        refuse(here(), "not of the form NAME ADDRESS VALUE");
    }
    addRegister(_unit, name, *value, here());
}

void DumpReader::readJson(std::string const& text) {
    nlohmann::json const document = parseJson(text);
    std::size_t number = 0;
    try {
        setChip(document.at("chip").get<std::string>(), _name);
        for (nlohmann::json const& entry : document.at("registers")) {
            ++number;
            std::string const where = _name + ": register " + std::to_string(number);
            nlohmann::json const& number32 = entry.at("value");
            // Asked for as an integer, a number with a fraction or an exponent becomes any integer.
            auto const value = number32.is_number_integer() ? number32.get<std::int64_t>() : -1;
            if (value < 0 || value > std::numeric_limits<std::uint32_t>::max()) {
                refuse(where, "the value does not fit");
            }
            addRegister(entry.at("unit").get<std::string>(), entry.at("register").get<std::string>(),
                        static_cast<std::uint32_t>(value), where);
        }
    } catch (nlohmann::json::exception const&) {
        refuse(_name, number == 0 ? "not a dump of registers"
                                  : "register " + std::to_string(number) + " is not complete");
    }
}

nlohmann::json DumpReader::parseJson(std::string const& text) {
    try {
        return nlohmann::json::parse(text);
    } catch (nlohmann::json::parse_error const& error) {
        refuse(_name + ":" + std::to_string(lineOf(text, error.byte)), "not well-formed JSON");
    } catch (nlohmann::json::exception const&) {
        // A number beyond all bounds is well-formed, and has no place of its own in the report.
        refuse(_name, "not a dump of registers");
    }
}

void DumpReader::setChip(std::string const& model, std::string const& where) {
    try {
        _dump.catalogue = std::make_shared<chips::ChipCatalogue const>(model);
    } catch (std::out_of_range const& error) {
        refuse(where, error.what());
    }
}

void DumpReader::addRegister(std::string const& unit, std::string const& name, std::uint32_t value,
                             std::string const& where) {
    chips::RegisterLocation location;
    try {
        location = _dump.catalogue->find(unit + "/" + name);
    } catch (chips::ToolError const& error) {
        refuse(where, error.what());
    }
    if ((value & ~simulation::Field("", location.address.getBits() - 1, 0).getMask()) != 0) {
        refuse(where, "the value of " + location.getText() + " does not fit");
    }
    for (RegisterReading const& known : _dump.readings) {
        if (known.location.getText() == location.getText()) {
            refuse(where, location.getText() + " is there twice");
        }
    }
    _dump.readings.push_back({location, value});
}

std::string DumpReader::here() const {
    return _name + ":" + std::to_string(_line);
}

void DumpReader::refuse(std::string const& where, std::string const& reason) {
    throw chips::ToolError(chips::ExitStatus::badDocument, where + ": " + reason);
}

} // namespace switchctl::registers
