#include "switchctl/replay/ReplayCommand.hpp"

#include <nlohmann/json.hpp>
#include <optional>

#include "board/trace/TraceFormat.hpp"
#include "chips/NumberText.hpp"
#include "chips/ToolError.hpp"
#include "switchctl/terminal/OutputDiversion.hpp"
#include "switchctl/terminal/Progress.hpp"

namespace switchctl::replay {

namespace {

constexpr unsigned digitsOfSmiWord = 4;

std::string outcomeOf(chips::TraceAccess const& access, unsigned digits) {
    std::string value = access.value ? chips::NumberText::hexadecimal(*access.value, digits) : "";
    if (access.succeeded) {
        return value;
    }
    return access.isWrite ? value + " failed" : "a failed read";
}

void printFields(std::ostream& out, chips::RegisterLocation const& location, std::uint32_t expected,
                 std::uint32_t found) {
    for (simulation::Register::Field const& field : location.description->getFields()) {
        std::uint32_t const before = field.get(expected);
        std::uint32_t const after = field.get(found);
        if (before != after) {
            out << "    " << field.name << "  expected " << chips::NumberText::hexadecimal(before, 1)
                << ", found " << chips::NumberText::hexadecimal(after, 1) << '\n';
        }
    }
}

} // namespace

ReplayCommand::ReplayCommand() : Command("replay", "Run a trace against chip models") {}

void ReplayCommand::declare(Arguments& arguments) {
    arguments.option("FILE", _path, "The trace").required();
    addJson(arguments);
}

std::string ReplayCommand::getHelp() const {
    return "The trace comes from \"bring-up --trace\" or \"register ... --trace\"; below the prefix of the\n"
           "installation, share/doc/switchmanager/trace-format.md tells what is in it. Its accesses are "
           "made\n"
           "to fresh models of its chips, at its times.\n"
           "\n"
           "Examples:\n"
           "  switchctl bring-up board.xml --trace board.txt\n"
           "  switchctl replay board.txt\n"
           "  switchctl replay board.txt --json | jq .divergence\n"
           "\n";
}

std::vector<Command::StatusLine> ReplayCommand::getStatuses() const {
    return {{ExitStatus::success, "the models did what the trace says"},
            {ExitStatus::traceDiverges, "they did something else"},
            ExitStatus::usage,
            {ExitStatus::badDocument, "the trace cannot be read or is not well-formed"}};
}

ExitStatus ReplayCommand::perform(std::ostream& out, std::ostream& errors) const {
    board::TraceReader const trace = board::TraceReader::fromFile(_path);
    OutputDiversion const diversion(errors);
    std::optional<Progress> progress(std::in_place, errors, "replaying " + _path);
    auto const divergence = Replay(trace).run();
    progress.reset();
    if (isJson()) {
        Command::print(out, toJson(trace, divergence));
    } else if (!divergence) {
        out << _path << ": the models do the same in all " << trace.getLines().size() << " accesses\n";
    } else {
        print(out, trace, *divergence);
    }
    return divergence ? ExitStatus::traceDiverges : ExitStatus::success;
}

nlohmann::ordered_json ReplayCommand::toJson(board::TraceReader const& trace,
                                             std::optional<Replay::Divergence> const& divergence) const {
    nlohmann::ordered_json json{
        {"file", _path}, {"accesses", trace.getLines().size()}, {"divergence", nullptr}};
    if (!divergence) {
        return json;
    }
    chips::TraceAccess const& expected = divergence->line.access;
    auto const valueOf = [](chips::TraceAccess const& access) {
        return nlohmann::ordered_json{
            {"value", access.value ? nlohmann::ordered_json(*access.value) : nullptr},
            {"succeeded", access.succeeded}};
    };
    json["divergence"] = {{"line", divergence->line.number},
                          {"switch", expected.switchId},
                          {"access", expected.isWrite ? "write" : "read"},
                          {"unit", nullptr},
                          {"register", board::TraceFormat::busyChip},
                          {"address", nullptr},
                          {"expected", valueOf(expected)},
                          {"found", valueOf(divergence->found)}};
    if (expected.address) {
        auto const location = trace.getChips().find(expected.switchId)->locate(*expected.address);
        json["divergence"].update(
            {{"unit", location.unit}, {"register", location.name}, {"address", location.address.getText()}});
    }
    return json;
}

void ReplayCommand::print(std::ostream& out, board::TraceReader const& trace,
                          Replay::Divergence const& divergence) const {
    chips::TraceAccess const& expected = divergence.line.access;
    chips::TraceAccess const& found = divergence.found;
    std::string name = board::TraceFormat::busyChip;
    unsigned digits = digitsOfSmiWord;
    chips::RegisterLocation location;
    if (expected.address) {
        location = trace.getChips().find(expected.switchId)->locate(*expected.address);
        name = location.getText() + " (" + location.address.getText() + ")";
        digits = location.getDigits();
    }
    out << _path << ':' << divergence.line.number << ": switch " << expected.switchId << ", "
        << (expected.isWrite ? "write of " : "read of ") << name << ": expected "
        << outcomeOf(expected, digits) << ", found " << outcomeOf(found, digits) << '\n';
    if (location.description != nullptr && !expected.isWrite && expected.value && found.value) {
        printFields(out, location, *expected.value, *found.value);
    }
}

} // namespace switchctl::replay
