#include "board/dump/DumpReader.hpp"

#include <algorithm>
#include <limits>
#include <nlohmann/json.hpp>
#include <regex>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "board/dump/EntryRange.hpp"
#include "chips/ChipKinds.hpp"
#include "chips/NumberText.hpp"
#include "simulation/Field.hpp"

namespace board {

namespace {

constexpr char const* chipWord = "chip ";
constexpr char const* overWord = "over ";

constexpr char const* entryForm = "(VID|SID) \\d{1,4}|(address|group|learned)( [0-9a-f]{2}(:[0-9a-f]{2}){5}) "
                                  "(VID|FID) \\d{1,4}( entry \\d)?";
constexpr char const* fieldForm = "[A-Za-z_]\\w*";

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
    _dump.path = _name;
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
    if (line.empty()) {
        return;
    }
    if (startsWith(line, overWord)) {
        _dump.transport = line.substr(std::string(overWord).size());
        return;
    }
    if (line.front() != ' ') {
        _isInTable = startsWith(line, tableWord);
        if (_isInTable) {
            return addTable(line.substr(std::string(tableWord).size()), here());
        }
        _unit = line;
        return;
    }
    if (_isInTable) {
        return readEntry(line);
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

void DumpReader::readEntry(std::string const& line) {
    RegisterDump::Entry entry{"", {}, here()};
    std::istringstream words(line);
    for (std::string word; words >> word;) {
        std::size_t const sign = word.find('=');
        if (sign == std::string::npos && entry.fields.empty()) {
            entry.name += (entry.name.empty() ? "" : " ") + word;
            continue;
        }
        auto const value =
            sign == std::string::npos ? std::nullopt : chips::NumberText::parse(word.substr(sign + 1));
        if (!value || sign == 0) {
            refuse(here(), "\"" + word + "\" is not of the form FIELD=VALUE");
        }
        entry.fields.push_back({word.substr(0, sign), *value});
    }
    addEntry(entry);
}

void DumpReader::readJson(std::string const& text) {
    nlohmann::json const document = parseJson(text);
    std::size_t number = 0;
    try {
        setChip(document.at("chip").get<std::string>(), _name);
        std::string const over = document.value("over", "");
        _dump.transport = over.substr(0, over.find('\n'));
        for (nlohmann::json const& entry : document.at("registers")) {
            ++number;
            std::string const where = _name + ": register " + std::to_string(number);
            addRegister(entry.at("unit").get<std::string>(), entry.at("register").get<std::string>(),
                        valueOf(entry.at("value"), where), where);
        }
    } catch (nlohmann::json::exception const&) {
        refuse(_name, number == 0 ? "not a dump of registers"
                                  : "register " + std::to_string(number) + " is not complete");
    }
    for (nlohmann::json const& table : document.value("tables", nlohmann::json::array())) {
        readJsonTable(table);
    }
}

void DumpReader::readJsonTable(nlohmann::json const& table) {
    std::size_t number = 0;
    try {
        addTable(table.at("table").get<std::string>(), _name);
        for (nlohmann::json const& entry : table.at("entries")) {
            ++number;
            std::string const where =
                _name + ": table " + _dump.tables.back().name + ": entry " + std::to_string(number);
            RegisterDump::Entry read{entry.at("entry").get<std::string>(), {}, where};
            for (nlohmann::json const& field : entry.at("fields")) {
                read.fields.push_back(
                    {field.at("name").get<std::string>(), valueOf(field.at("value"), where)});
            }
            addEntry(read);
        }
    } catch (nlohmann::json::exception const&) {
        refuse(_name, number == 0 ? "not the tables of a dump"
                                  : "table " + _dump.tables.back().name + ": entry " +
                                        std::to_string(number) + " is not complete");
    }
}

// Asked for as an integer, a number with a fraction or an exponent becomes any integer.
std::uint32_t DumpReader::valueOf(nlohmann::json const& number, std::string const& where) {
    auto const value = number.is_number_integer() ? number.get<std::int64_t>() : -1;
    if (value < 0 || value > std::numeric_limits<std::uint32_t>::max()) {
        refuse(where, "the value does not fit");
    }
    return static_cast<std::uint32_t>(value);
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

void DumpReader::addTable(std::string const& name, std::string const& where) {
    std::string const& model = _dump.catalogue->getModel();
    std::vector<std::string> const names =
        chips::ChipKinds::get(model, "dump").makeTables(*_dump.catalogue)->getNames();
    if (std::find(names.begin(), names.end(), name) == names.end()) {
        refuse(where, "a " + model + " has no table \"" + name + "\"");
    }
    if (_dump.findTable(name) != nullptr) {
        refuse(where, "table " + name + " is there twice");
    }
    _entryNames.clear();
    _dump.tables.push_back({name, {}});
}

void DumpReader::addEntry(RegisterDump::Entry const& entry) {
    static std::regex const entryPattern(entryForm);
    static std::regex const fieldPattern(fieldForm);
    for (chips::ChipImage::Field const& field : entry.fields) {
        if (!std::regex_match(field.name, fieldPattern)) {
            refuse(entry.where, "\"" + field.name + "\" is no field");
        }
    }
    for (std::string const& name : EntryRange(entry.name).getNames()) {
        if (!std::regex_match(name, entryPattern)) {
            refuse(entry.where, "\"" + name + "\" is no entry of a table");
        }
        if (!_entryNames.insert(name).second) {
            refuse(entry.where, name + " is there twice");
        }
        _dump.tables.back().entries.push_back({name, entry.fields, entry.where});
    }
}

std::string DumpReader::here() const {
    return _name + ":" + std::to_string(_line);
}

void DumpReader::refuse(std::string const& where, std::string const& reason) {
    throw chips::ToolError(chips::ExitStatus::badDocument, where + ": " + reason);
}

} // namespace board
