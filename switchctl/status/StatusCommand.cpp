#include "switchctl/status/StatusCommand.hpp"

#include <utility>

#include "reference_host/XmlDocument.hpp"
#include "switchctl/status/StatusJson.hpp"
#include "switchctl/status/StatusTable.hpp"
#include "switchctl/terminal/OutputDiversion.hpp"
#include "switchctl/terminal/Progress.hpp"
#include "switchctl/terminal/RealPace.hpp"

namespace switchctl::status {

namespace {

constexpr double shortestInterval = 0.1;
constexpr double longestInterval = 86400;
constexpr unsigned mostLooks = 1000000000;

nlohmann::ordered_json jsonOf(std::vector<StatusFollow::Change> const& changes) {
    auto json = nlohmann::ordered_json::array();
    for (StatusFollow::Change const& change : changes) {
        nlohmann::ordered_json entry = {{"what", change.now.name}};
        if (!change.before.isUnread) {
            entry["before"] = change.before.value;
        }
        if (!change.now.isUnread) {
            entry["now"] = change.now.value;
        }
        json.push_back(entry);
    }
    return json;
}

std::string textOf(std::vector<StatusFollow::Change> const& changes) {
    std::string text;
    for (StatusFollow::Change const& change : changes) {
        text += (text.empty() ? "" : ", ") + std::string(change.now.heading) + " " + change.before.text +
                " -> " + change.now.text + (change.remark.empty() ? "" : " (" + change.remark + ")");
    }
    return text;
}

} // namespace

StatusCommand::StatusCommand(std::string memoryDevice)
    : Command("status", "Show link, state and VLAN of a board's ports"),
      _memoryDevice(std::move(memoryDevice)) {}

void StatusCommand::declare(Arguments& arguments) {
    arguments.option("BOARD.xml", _path, "Configuration document of the board").required();
    arguments.option("SWITCH|SWITCH.PORT", _ports,
                     "Switches and ports to show, for example 3 or 0.1; all without one");
    addJson(arguments);
    auto const follow = arguments.flag("--follow", _follow, "Go on and tell what changes, until interrupted");
    arguments.option("--interval", _interval, "Look every so many seconds; without it, every second")
        .type("SECONDS")
        .range(shortestInterval, longestInterval)
        .needs(follow);
    arguments.option("--count", _count, "End after so many looks")
        .type("N")
        .range(1U, mostLooks)
        .needs(follow);
    _simulation.addTo(arguments);
}

std::string StatusCommand::getHelp() const {
    return "The chips are read as they are: no setting is changed and no counter cleared. An 88E6096 is told "
           "to\n"
           "capture counters, so nothing else may use its statistics unit meanwhile; reaching a VSC7390 "
           "writes\n"
           "its bus set-up, and its PHYs forget, by being read, that a link was lost.\n"
           "\n"
           "Columns: interlink is a switchInterlink, dup duplex, flow flow control (obeyed or sent: only\n"
           "that half), VLAN the default one, tags how frames leave (kept: as they are; but 5: tagged,\n"
           "those of VLAN 5 not), 802.1Q what becomes of frames of other VLANs (88E6096: its mode;\n"
           "VSC7390: members, if only members' frames are taken, or any), PHY its identifiers. errors is\n"
           "what the error counters hold at present.\n"
           "\"-\" is what no register tells: the speed of an 88E6096 without link, PHYs of its ports 8 to "
           "10,\n"
           "the link of a VSC7390 without a PHY. A VSC7390 has no register for the state: disabled is a MAC\n"
           "that is off, blocking and learning are ports whose frames its masks let go nowhere.\n"
           "\n"
           "--follow shows the ports first, then a line whenever one changes; with --format json, each is "
           "an\n"
           "object in a line of its own. What comes and goes between two looks is not seen, but for the "
           "link\n"
           "of a VSC7390, which is then \"lost meanwhile\".\n"
           "\n"
           "Examples:\n"
           "  switchctl status board.xml\n"
           "  switchctl status board.xml 3 0.1 --simulate\n"
           "  switchctl status board.xml --json | jq -r '.ports[] | select(.link == \"up\") | .port'\n"
           "  switchctl status board.xml --follow --interval 0.5\n"
           "  switchctl status board.xml --follow --json | jq -c '[.time, .switch, .port, .changes]'\n"
           "\n";
}

std::vector<Command::StatusLine> StatusCommand::getStatuses() const {
    return {{ExitStatus::success, "everything was read; of --follow: at the last look"},
            {ExitStatus::usage, "the command line, a switch or a port is wrong"},
            {ExitStatus::badDocument, "the document cannot be read, is not well-formed or has no ports"},
            ExitStatus::noHardware,
            {ExitStatus::startUpFailed, "the simulated board does not come up"},
            {ExitStatus::registerFailed, "at least one register could not be read"}};
}

ExitStatus StatusCommand::perform(std::ostream& out, std::ostream& errors) const {
    auto const xml = reference_host::XmlDocument::fromFile(_path);
    board::BoardReading const document(*xml);
    board::PortSelection const selection(document, _path, _ports,
                                         board::PortSelection::Texts::portsAndSwitches);
    // Signals have to wait before there are other threads to take them.
    std::optional<RealPace> pace;
    if (_follow) {
        pace.emplace();
    }
    OutputDiversion const diversion(errors);
    ChosenBoard board(_simulation, _path, _memoryDevice, errors);
    Ports const ports{document, selection, board};
    StatusSample const last = pace ? follow(ports, *pace, out) : look(ports, out, errors);
    for (std::string const& line : last.unread) {
        errors << "switchctl: " << line << '\n';
    }
    return last.unread.empty() ? ExitStatus::success : ExitStatus::registerFailed;
}

StatusSample StatusCommand::look(Ports const& ports, std::ostream& out, std::ostream& errors) const {
    StatusSample sample;
    {
        Progress progress(errors, "reading ports");
        sample = StatusSampler(ports.board.getAccess(), ports.selection)
                     .sample([&](std::size_t done, std::size_t all) { progress.update(done, all); });
    }
    if (isJson()) {
        printWithTime(out, StatusJson::of(sample, ports.document, _path, getSource()));
    } else {
        out << getSource() << "; errors: what the counters hold at present, nothing is cleared\n";
        StatusTable::print(sample, ports.document, out);
    }
    return sample;
}

StatusSample StatusCommand::follow(Ports const& ports, WatchPace& pace, std::ostream& out) const {
    StatusSampler sampler(ports.board.getAccess(), ports.selection);
    bool isFirst = true;
    auto const sample = [&] {
        StatusSample result = sampler.sample();
        if (ports.board.getModels() != nullptr) {
            // It may go on for days.
            ports.board.getModels()->getBoard().getLog().clear();
        }
        if (std::exchange(isFirst, false) && !isJson()) {
            out << getSource() << "; errors: what the counters hold at the start, nothing is cleared\n";
            StatusTable::print(result, ports.document, out);
            out << std::flush;
        }
        return result;
    };
    return StatusFollow(sample, ports.document, pace, [&] { return !out.fail(); })
        .run(_interval.value_or(1), _count,
             [&](auto const& row, auto const& changes) { tell(ports, row, changes, out); });
}

void StatusCommand::tell(Ports const& ports, StatusSample::Row const& row,
                         std::vector<StatusFollow::Change> const& changes, std::ostream& out) const {
    if (isJson()) {
        nlohmann::ordered_json json = {{"file", _path}, {"read", getSource()}};
        json.update(StatusJson::of(row, ports.document));
        json["changes"] = jsonOf(changes);
        printLineWithTime(out, json);
    } else if (!changes.empty()) {
        out << timeOfDay() << "  " << row.port.address << "  " << textOf(changes) << '\n';
    }
    out << std::flush;
}

} // namespace switchctl::status
