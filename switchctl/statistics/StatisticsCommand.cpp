#include "switchctl/statistics/StatisticsCommand.hpp"

#include <nlohmann/json.hpp>
#include <utility>

#include "chips/ToolError.hpp"
#include "reference_host/XmlDocument.hpp"
#include "switchctl/statistics/OpenMetrics.hpp"
#include "switchctl/statistics/RateDisplay.hpp"
#include "switchctl/statistics/RateLines.hpp"
#include "switchctl/statistics/RateWatch.hpp"
#include "switchctl/statistics/SampleJson.hpp"
#include "switchctl/terminal/OutputDiversion.hpp"
#include "switchctl/terminal/Progress.hpp"
#include "switchctl/terminal/RealPace.hpp"

namespace switchctl::statistics {

using reference_host::XmlDocument;

namespace {

constexpr char const* prefix = "switchctl: ";

constexpr double shortestRound = 0.1;
constexpr double longestRound = 86400;
constexpr unsigned mostRounds = 1000000000;

ExitStatus statusOf(std::vector<std::string> const& unread, std::ostream& errors) {
    for (std::string const& line : unread) {
        errors << prefix << line << '\n';
    }
    return unread.empty() ? ExitStatus::success : ExitStatus::noStatistics;
}

} // namespace

StatisticsCommand::StatisticsCommand(std::string memoryDevice)
    : Command("statistics", "Read the counters of a board's ports"), _memoryDevice(std::move(memoryDevice)) {}

void StatisticsCommand::declare(Arguments& arguments) {
    arguments.option("BOARD.xml", _path, "Configuration document of the board").required();
    arguments.option("SWITCH.PORT", _ports, "Ports to read, for example 0.1; all without one");
    addJson(arguments, {"text", "json", "openmetrics"});
    addWatch(arguments);
    addSimulation(arguments);
}

void StatisticsCommand::addWatch(Arguments& arguments) {
    auto const watch = arguments.option("--watch", _watch, "Show rates instead, every so many seconds")
                           .type("SECONDS")
                           .range(shortestRound, longestRound);
    arguments.option("--count", _count, "End after so many rates")
        .type("N")
        .range(1U, mostRounds)
        .needs(watch);
    arguments.finally([this] {
        if (_watch && getFormat() == "openmetrics") {
            throw Arguments::Wrong("--watch: shows rates as text or json, not as openmetrics");
        }
    });
}

void StatisticsCommand::addSimulation(Arguments& arguments) {
    auto const simulate = _simulation.addTo(arguments);
    arguments
        .option("--seed", _seeds,
                "What a counter of the simulated board holds; with +STEP, how much it goes on by between "
                "two rounds. May be repeated")
        .type("SWITCH.PORT/COUNTER=VALUE[+STEP]")
        .oneEach()
        .needs(simulate);
}

std::string StatisticsCommand::getHelp() const {
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
           "counter that wraps goes on; one of bytes may wrap twice in 34 s at 1 Gbit/s. With --format json\n"
           "each round is one object in a line of its own.\n"
           "\n"
           "Examples:\n"
           "  switchctl statistics board.xml 0.1 3.0\n"
           "  switchctl statistics board.xml 0.1 --simulate --seed 0.1/inUnicast=1000\n"
           "  switchctl statistics board.xml --format json | jq '.ports[].counters.inUnicast.value'\n"
           "  switchctl statistics board.xml --format openmetrics > /var/lib/metrics/switches.prom\n"
           "  switchctl statistics board.xml --watch 1\n"
           "  switchctl statistics board.xml --watch 1 --json | jq -c '[.time, "
           ".ports[0].counters.inUnicast]'\n"
           "  switchctl statistics board.xml --simulate --seed 0.1/inUnicast=7+50 --watch 1 --count 5\n"
           "\n";
}

std::vector<Command::StatusLine> StatisticsCommand::getStatuses() const {
    return {{ExitStatus::success, "all counters were read; of --watch: in the last round"},
            {ExitStatus::usage, "the command line, a port or a counter is wrong"},
            {ExitStatus::badDocument, "the document cannot be read, is not well-formed or has no ports"},
            ExitStatus::noHardware,
            {ExitStatus::startUpFailed, "the simulated board does not come up"},
            {ExitStatus::noStatistics, "at least one counter could not be read"}};
}

ExitStatus StatisticsCommand::perform(std::ostream& out, std::ostream& errors) const {
    board::PortSelection const selection = select();
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
    return getFormat() == "text" ? printText(chips, selection, out, errors)
                                 : printSample(chips, selection, out, errors);
}

board::PortSelection StatisticsCommand::select() const {
    auto const document = XmlDocument::fromFile(_path);
    return {board::BoardReading(*document), _path, _ports};
}

StatisticsCommand::Chips StatisticsCommand::open(board::PortSelection const& selection,
                                                 std::ostream& errors) const {
    Chips chips;
    for (std::string const& seed : _seeds) {
        chips.seeds.emplace_back(seed, selection);
    }
    if (!_simulation.isChosen()) {
        chips.board = std::make_unique<board::BoardAccess>(_memoryDevice);
        return chips;
    }
    Progress const progress(errors, "bringing up the models of " + _simulation.getPath(_path));
    chips.models = std::make_unique<board::ModelBringUp>(_simulation.getPath(_path));
    chips.board = std::make_unique<board::BoardAccess>(chips.models->getBoard());
    chips.seed();
    _simulation.strike(chips.models->getBoard());
    return chips;
}

void StatisticsCommand::Chips::seed() {
    for (SeededCounter& seed : seeds) {
        seed.set(models->getBoard());
        seed.step();
    }
}

ExitStatus StatisticsCommand::printText(Chips& chips, board::PortSelection const& selection,
                                        std::ostream& out, std::ostream& errors) const {
    BoardSampler sampler(*chips.board, selection);
    LibraryText library(*chips.board);
    std::vector<std::string> unread = selection.getLeftOut();
    for (board::PortSelection::Port const& port : selection.getPorts()) {
        out << "statistics of port "
            << chips::PortCounters{port.address, port.model, {}, port.label}.getName() << '\n';
        try {
            Progress const progress(errors, "reading switch " + std::to_string(port.address.switchId));
            sampler.requireChip(port);
            library.write(port, out);
        } catch (ToolError const& error) {
            out << "  not available\n";
            unread.push_back("port " + std::to_string(port.address.switchId) + "." +
                             std::to_string(port.address.portId) + ": " + error.what());
        }
    }
    return statusOf(unread, errors);
}

ExitStatus StatisticsCommand::printSample(Chips& chips, board::PortSelection const& selection,
                                          std::ostream& out, std::ostream& errors) const {
    chips::CounterSample sample;
    {
        Progress progress(errors, "reading counters of ports");
        sample = BoardSampler(*chips.board, selection).sample([&](std::size_t done, std::size_t all) {
            progress.update(done, all);
        });
    }
    if (isJson()) {
        printWithTime(out, SampleJson::of(sample, _path, getSource()));
    } else {
        OpenMetrics::print(sample, out);
    }
    return statusOf(sample.unread, errors);
}

ExitStatus StatisticsCommand::watch(Chips& chips, board::PortSelection const& selection, WatchPace& pace,
                                    std::ostream& out, std::ostream& errors) const {
    BoardSampler sampler(*chips.board, selection);
    std::unique_ptr<RateView> view;
    if (isJson()) {
        view = std::make_unique<RateLines>(out, printLineWithTime, _path, getSource());
    } else {
        view = std::make_unique<RateDisplay>(out);
    }
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
    chips::CounterSample const last = RateWatch(sample, *view, pace).run(*_watch, _count);
    return statusOf(last.unread, errors);
}

std::string StatisticsCommand::getSource() const {
    return !_simulation.isChosen() ? "the board's chips" : "the models of " + _simulation.getPath(_path);
}

} // namespace switchctl::statistics
