#include "switchctl/Command.hpp"

#include <fmt/chrono.h>
#include <fmt/format.h>

#include <ctime>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "board/ClockAdoption.hpp"
#include "reference_host/XmlDocument.hpp"

namespace switchctl {

namespace {

char const* usualMeaning(ExitStatus status) {
    switch (status) {
    case ExitStatus::usage:
        return "the command line is wrong";
    case ExitStatus::badDocument:
        return "the document cannot be read or is not well-formed";
    case ExitStatus::noHardware:
        return "the hardware cannot be reached (/dev/mem)";
    case ExitStatus::startUpFailed:
        return "a bring-up on models fails, or not every switch would come up";
    case ExitStatus::noTrace:
        return "the trace could not be written";
    default:
        throw std::logic_error("a status without a meaning");
    }
}

/// Of docs/schemas/; another one where a member changes its meaning or goes.
constexpr int versionOfJson = 1;

using Json = nlohmann::ordered_json;

constexpr int indentation = 2;
constexpr int inOneLine = -1;

Json withTime(std::string const& time, Json const& json) {
    Json stamped{{"time", time}};
    stamped.update(json);
    return stamped;
}

void printVersioned(std::ostream& out, Json const& json, int indent) {
    Json whole{{"version", versionOfJson}};
    whole.update(json);
    // Attributes of a document may hold what is no UTF-8 to a strict writer.
    out << whole.dump(indent, ' ', false, Json::error_handler_t::replace) << '\n';
}

} // namespace

Command::StatusLine::StatusLine(ExitStatus status) : StatusLine(status, usualMeaning(status)) {}

Command::Command(char const* name, char const* purpose) : _name(name), _purpose(purpose) {}

Command::~Command() = default;

void Command::addTo(Arguments& parent) {
    _arguments = parent.subcommand(_name, _purpose);
    _arguments->footer(getHelp() + explainStatuses());
    declare(*_arguments);
}

bool Command::isChosen() const {
    return _arguments && _arguments->isChosen();
}

ExitStatus Command::run(std::ostream& out, std::ostream& errors) const {
    auto const refuse = [&](std::exception const& error, ExitStatus status) {
        errors << "switchctl: " << error.what() << '\n';
        return status;
    };
    try {
        return perform(out, errors);
    } catch (ToolError const& error) {
        return refuse(error, error.getStatus());
    } catch (reference_host::XmlError const& error) {
        return refuse(error, ExitStatus::badDocument);
    } catch (std::exception const& error) {
        return refuse(error, ExitStatus::startUpFailed);
    }
}

std::string Command::explainStatuses() const {
    std::string text;
    auto statuses = getStatuses();
    statuses.emplace_back(ExitStatus::outputLost, "standard output could not be written completely");
    for (StatusLine const& line : statuses) {
        text += fmt::format("{:3}  {}\n", line.number, line.meaning);
    }
    return "Exit status:\n" + text;
}

void Command::addJson(Arguments& arguments, std::vector<std::string> const& formats,
                      std::string const& usual) {
    _format = usual;
    auto format = arguments.option("--format", _format, "What is printed").oneOf(formats);
    if (!usual.empty()) {
        format.showDefault();
    }
    arguments.flag("--json", _json, "Short for --format json").excludes(format);
}

std::string Command::timeOfDay() {
    board::ClockAdoption const realTime(nullptr);
    return fmt::format("{:%Y-%m-%dT%H:%M:%SZ}", fmt::gmtime(std::time(nullptr)));
}

void Command::print(std::ostream& out, nlohmann::ordered_json const& json) {
    printVersioned(out, json, indentation);
}

void Command::printWithTime(std::ostream& out, nlohmann::ordered_json const& json) {
    printVersioned(out, withTime(timeOfDay(), json), indentation);
}

void Command::printLineWithTime(std::ostream& out, nlohmann::ordered_json const& json) {
    printVersioned(out, withTime(timeOfDay(), json), inOneLine);
}

} // namespace switchctl
