#include "switchctl/statistics/StatisticsCommand.hpp"

#include <utility>

#include "chips/ToolError.hpp"
#include "reference_host/XmlDocument.hpp"
#include "switchctl/statistics/OpenMetrics.hpp"
#include "switchctl/statistics/RateWatch.hpp"
#include "switchctl/statistics/RealPace.hpp"
#include "switchctl/statistics/SampleJson.hpp"
#include "switchctl/terminal/OutputDiversion.hpp"
#include "switchctl/terminal/Progress.hpp"

namespace switchctl::statistics {

using reference_host::XmlDocument;

namespace {

constexpr char const* prefix = "switchctl: ";

/// What --simulate without a document is as a value.
constexpr char const* sameDocument = "true";

constexpr double shortestRound = 0.1;
constexpr double longestRound = 86400;
constexpr unsigned mostRounds = 1000000000;

std::string footer() {
    return "The chips are read as they are: no port and no table is set up or reset. To read its counters, "
           "an\n"
           "88E6096 is told to capture them, so nothing else may use its statistics unit meanwhile; "
           "reaching\n"
           "a VSC7390 writes its bus set-up. Without a port, all ports of the document are read.\n"
           "\n"
           "The text is the library's own, from its port objects: numbers are hexadecimal, the high half of\n"
           "inGoodOctets comes with its bytes turned over, and the library clears the counters of a VSC7390\n"
           "port that it has read. json, openmetrics and --watch clear nothing. A counter that cannot be\n"
           "read is left out of them, and standard error says why.\n"
           "\n"
           "--watch shows what was counted per second, in place on a terminal, until it is interrupted. A\n"
           "counter that wraps goes on; one of bytes may wrap twice in 34 s at 1 Gbit/s.\n"
           "\n"
           "Examples:\n"
           "  switchctl statistics board.xml 0.1 3.0\n"
           "  switchctl statistics board.xml 0.1 --simulate --seed 0.1/inUnicast=1000\n"
           "  switchctl statistics board.xml --format json | jq '.ports[].counters.inUnicast.value'\n"
           "  switchctl statistics board.xml --format openmetrics > /var/lib/metrics/switches.prom\n"
           "  switchctl statistics board.xml --watch 1\n"
           "  switchctl statistics board.xml --simulate --seed 0.1/inUnicast=7+50 --watch 1 --count 5\n"
           "\n" +
           chips::statisticsExitStatusHelp();
}

chips::ExitStatus statusOf(std::vector<std::string> const& unread, std::ostream& errors) {
    for (std::string const& line : unread) {
        errors << prefix << line << '\n';
    }
    return unread.empty() ? chips::ExitStatus::success : chips::ExitStatus::noStatistics;
}

} // namespace

StatisticsCommand::StatisticsCommand(CLI::App& program, std::string memoryDevice)
    : _command(program.add_subcommand("statistics", "Read the counters of a board's ports")),
      _memoryDevice(std::move(memoryDevice)) {
    _command->add_option("BOARD.xml", _path, "Configuration document of the board")->required();
    _command->add_option("SWITCH.PORT", _ports, "Ports to read, for example 0.1; all without one");
    _command->add_option("--format", _format, "text, json or openmetrics")
        ->check(CLI::IsMember({"text", "json", "openmetrics"}))
        ->capture_default_str();
    addWatch();
    addSimulation();
    _command->footer(footer());
}

void StatisticsCommand::addWatch() {
    CLI::Option* const watch =
        _command->add_option("--watch", _watch, "Show rates instead, every so many seconds")
            ->type_name("SECONDS")
            ->check(CLI::Range(shortestRound, longestRound));
    _command->add_option("--count", _count, "End after so many rates")
        ->type_name("N")
        ->check(CLI::Range(1U, mostRounds))
        ->needs(watch);
    _command->final_callback([this] {
        if (_watch && _format != "text") {
            throw CLI::ValidationError("--watch", "shows rates as text, not as " + _format);
        }
    });
}

void StatisticsCommand::addSimulation() {
    CLI::Option* const simulate =
        _command
            ->add_flag("--simulate", _simulate,
                       "Read chip models instead of hardware: those of BOARD.xml or of another document, "
                       "after they were brought up")
            ->type_name("[=OTHER.xml]");
    _command
        ->add_option(
            "--seed", _seeds,
            "What a counter of the simulated board holds; with +STEP, how much it goes on by between "
            "two rounds. May be repeated")
        ->type_name("SWITCH.PORT/COUNTER=VALUE[+STEP]")
        ->allow_extra_args(false)
        ->needs(simulate);
}

bool StatisticsCommand::isChosen() const {
    return _command->parsed();
}

chips::ExitStatus StatisticsCommand::run(std::ostream& out, std::ostream& errors) const {
    try {
        return read(out, errors);
    } catch (chips::ToolError const& error) {
        errors << prefix << error.what() << '\n';
        return error.getStatus();
    }
}

chips::ExitStatus StatisticsCommand::read(std::ostream& out, std::ostream& errors) const {
    PortSelection const selection = select();
    // Signals have to wait before there are other threads to take them.
    std::optional<RealPace> pace;
    if (_watch) {
        pace.emplace();
    }
    OutputDiversion const diversion(errors);
    Chips chips = open(selection, errors);
    if (pace) {
        return watch(chips, selection, *pace, out, errors);
    }
    return _format == "text" ? printText(chips, selection, out, errors)
                             : printSample(chips, selection, out, errors);
}

PortSelection StatisticsCommand::select() const {
    try {
        auto const document = XmlDocument::fromFile(_path);
        return {board::BoardReading(*document), _path, _ports};
    } catch (reference_host::XmlError const& error) {
        throw chips::ToolError(chips::ExitStatus::badDocument, error.what());
    }
}

StatisticsCommand::Chips StatisticsCommand::open(PortSelection const& selection, std::ostream& errors) const {
    Chips chips;
    for (std::string const& seed : _seeds) {
        chips.seeds.emplace_back(seed, selection);
    }
    if (_simulate.empty()) {
        chips.board = std::make_unique<board::BoardAccess>(_memoryDevice);
        return chips;
    }
    Progress const progress(errors, "bringing up the models of " + getSimulatedPath());
    chips.models = std::make_unique<board::ModelBringUp>(getSimulatedPath());
    chips.board = std::make_unique<board::BoardAccess>(chips.models->getBoard());
    chips.seed();
    return chips;
}

void StatisticsCommand::Chips::seed() {
    for (SeededCounter& seed : seeds) {
        seed.set(models->getBoard());
        seed.step();
    }
}

chips::ExitStatus StatisticsCommand::printText(Chips& chips, PortSelection const& selection,
                                               std::ostream& out, std::ostream& errors) const {
    BoardSampler sampler(*chips.board, selection);
    LibraryText library(*chips.board);
    std::vector<std::string> unread;
    for (PortSelection::Port const& port : selection.getPorts()) {
        out << "statistics of port " << port.address << '\n';
        try {
            Progress const progress(errors, "reading switch " + std::to_string(port.address.switchId));
            sampler.requireChip(port);
            library.write(port, out);
        } catch (chips::ToolError const& error) {
            out << "  not available\n";
            unread.push_back("port " + std::to_string(port.address.switchId) + "." +
                             std::to_string(port.address.portId) + ": " + error.what());
        }
    }
    return statusOf(unread, errors);
}

chips::ExitStatus StatisticsCommand::printSample(Chips& chips, PortSelection const& selection,
                                                 std::ostream& out, std::ostream& errors) const {
    chips::CounterSample sample;
    {
        Progress progress(errors, "reading counters of ports");
        sample = BoardSampler(*chips.board, selection).sample([&](std::size_t done, std::size_t all) {
            progress.update(done, all);
        });
    }
    if (_format == "json") {
        SampleJson::print(sample, _path, getSource(), out);
    } else {
        OpenMetrics::print(sample, out);
    }
    return statusOf(sample.unread, errors);
}

chips::ExitStatus StatisticsCommand::watch(Chips& chips, PortSelection const& selection, WatchPace& pace,
                                           std::ostream& out, std::ostream& errors) const {
    BoardSampler sampler(*chips.board, selection);
    RateDisplay display(out);
    bool isFirst = true;
    auto const sample = [&] {
        if (chips.models && !std::exchange(isFirst, false)) {
            chips.seed();
        }
        chips::CounterSample result = sampler.sample();
        if (chips.models) {
            // A watch may last for days.
            chips.models->getBoard().getLog().clear();
        }
        return result;
    };
    chips::CounterSample const last = RateWatch(sample, display, pace).run(*_watch, _count);
    return statusOf(last.unread, errors);
}

std::string StatisticsCommand::getSimulatedPath() const {
    return _simulate == sameDocument ? _path : _simulate;
}

std::string StatisticsCommand::getSource() const {
    return _simulate.empty() ? "the board's chips" : "the models of " + getSimulatedPath();
}

} // namespace switchctl::statistics
