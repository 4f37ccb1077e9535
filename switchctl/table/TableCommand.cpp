#include "switchctl/table/TableCommand.hpp"

#include <stdexcept>
#include <utility>

#include "reference_host/XmlDocument.hpp"
#include "switchctl/table/SimulatedStation.hpp"
#include "switchctl/table/TableFlush.hpp"
#include "switchctl/table/TableJson.hpp"
#include "switchctl/table/TableText.hpp"
#include "switchctl/terminal/OutputDiversion.hpp"
#include "switchctl/terminal/Progress.hpp"

namespace switchctl::table {

namespace {

std::string complainOfStation(std::string const& text) {
    try {
        SimulatedStation const station(text);
        return "";
    } catch (std::invalid_argument const& error) {
        return error.what();
    }
}

} // namespace

TableCommand::TableCommand(std::string memoryDevice)
    : Command("table", "Show addresses, VLANs, states, groups, routes or trunks of the chips"),
      _memoryDevice(std::move(memoryDevice)) {}

void TableCommand::declare(Arguments& arguments) {
    arguments.option("BOARD.xml", _path, "Configuration document of the board").required();
    arguments.option("TABLE", _table, "What is shown").required().oneOf(TableFilter::getNames());
    _filter.addTo(arguments);
    auto const flush = arguments.flag("--flush", _flush,
                                      "Have the chips forget addresses that they have learnt: all, or by "
                                      "--switch, --port and --vlan");
    arguments.flag("--yes", _yes, "Do flush; without it, only tell what would be flushed").needs(flush);
    addJson(arguments);
    auto const simulate = _simulation.addTo(arguments);
    arguments
        .option("--station", _stations,
                "A station of the simulated board that sends a frame first, tagged with VID. May be repeated")
        .type("SWITCH.PORT=MAC[/VID]")
        .oneEach()
        .check(complainOfStation)
        .needs(simulate);
    arguments.finally([this] { requireSense(); });
}

void TableCommand::requireSense() const {
    _filter.requireUse(_table);
    if (_flush && _table != "addresses") {
        throw Arguments::Wrong("--flush: is for addresses, not for " + _table);
    }
    if (_flush && _filter.hasAddress()) {
        throw Arguments::Wrong("--flush: goes by --switch, --port and --vlan, not by --address");
    }
}

std::string TableCommand::getHelp() const {
    return "The tables are those of the chips: \"addresses\" are of stations, \"groups\" of multicast,\n"
           "\"spanning-tree\" has the states of ports, \"routes\" the ports that frames of a port may leave\n"
           "by (VLAN maps, source masks), \"trunks\" aggregated links. Ports are those of the chip that the\n"
           "table is of, \"-\" is none. Ids of VLANs are decimal; where another reading is possible,\n"
           "hexadecimal and what the document has come with them. What a chip does not have is said.\n"
           "\n"
           "Ages: an 88E6096 counts from 7 down to 0 and forgets; of a VSC7390, a look for old addresses\n"
           "makes those \"aged\" that were not heard since the look before, and the next one forgets them.\n"
           "\"static\" entries do not age and are not flushed.\n"
           "\n"
           "No setting is changed: reading writes to the registers by which tables are searched, so\n"
           "nothing else may use these meanwhile. --flush of a VLAN has an 88E6096 forget what it learnt\n"
           "in the VLAN's database (FID), which other VLANs may share; the entries name all of them.\n"
           "\n"
           "Examples:\n"
           "  switchctl table board.xml vlans --vlan 0x14\n"
           "  switchctl table board.xml addresses --port 0.1\n"
           "  switchctl table board.xml groups --address 239.1.2.3 --json\n"
           "  switchctl table board.xml addresses --flush --port 0.1 --yes\n"
           "  switchctl table board.xml addresses --simulate --station 0.1=02:00:00:00:00:01\n"
           "\n";
}

std::vector<Command::StatusLine> TableCommand::getStatuses() const {
    return {{ExitStatus::success, "all chips that were asked were read, or flushed"},
            {ExitStatus::usage, "the command line, a switch or a port is wrong"},
            {ExitStatus::badDocument, "the document cannot be read, is not well-formed or has no switch"},
            ExitStatus::noHardware,
            {ExitStatus::startUpFailed, "the simulated board does not come up"},
            {ExitStatus::registerFailed, "at least one chip could not be read or flushed"},
            {ExitStatus::notConfirmed, "nothing was flushed, as --yes was missing"}};
}

ExitStatus TableCommand::perform(std::ostream& out, std::ostream& errors) const {
    auto const xml = reference_host::XmlDocument::fromFile(_path);
    board::BoardReading const document(*xml);
    if (document.getSwitches().empty()) {
        throw ToolError(ExitStatus::badDocument, _path + ": the document has no switch that is known");
    }
    _filter.requireThere(document, _path);
    OutputDiversion const diversion(errors);
    ChosenBoard board(_simulation, _path, _memoryDevice, errors,
                      [this](board::ModelBringUp& models) { hear(models); });
    BoardTableReader reader(board.getAccess(), document, _filter);
    std::vector<std::string> unread;
    {
        Progress const progress(errors, "reading tables");
        BoardTable table = reader.read(TableFilter::kindOf(_table));
        unread = _flush ? flush(reader, table, document, out) : show(table, document, out);
    }
    for (std::string const& line : unread) {
        errors << "switchctl: " << line << '\n';
    }
    return unread.empty() ? ExitStatus::success : ExitStatus::registerFailed;
}

void TableCommand::hear(board::ModelBringUp& models) const {
    for (std::string const& text : _stations) {
        SimulatedStation(text).send(models);
    }
}

std::vector<std::string> TableCommand::show(BoardTable const& table, board::BoardReading const& document,
                                            std::ostream& out) const {
    if (isJson()) {
        printWithTime(out, {{"file", _path},
                            {"read", getSource()},
                            {"table", _table},
                            {"switches", TableJson::of(table, document)},
                            {"unread", table.unread}});
    } else {
        out << getSource() << ": " << _table << '\n';
        TableText::print(table, document, out);
    }
    return table.unread;
}

std::vector<std::string> TableCommand::flush(BoardTableReader& reader, BoardTable& table,
                                             board::BoardReading const& document, std::ostream& out) const {
    if (!_yes) {
        requireConsent(table, document);
    }
    reader.flush(table);
    TableFlush const result(table, reader.read(chips::ChipTable::Kind::addresses));
    if (isJson()) {
        printWithTime(out, {{"file", _path},
                            {"read", getSource()},
                            {"switches", result.toJson(document)},
                            {"unread", result.getUnread()}});
    } else {
        out << getSource() << ": addresses flushed\n";
        result.print(document, out);
    }
    return result.getUnread();
}

void TableCommand::requireConsent(BoardTable const& table, board::BoardReading const& document) {
    std::string text = "nothing was flushed, since --yes is missing; it would have been";
    std::string lines;
    for (BoardTable::Part const& part : table.parts) {
        for (chips::ChipTable::Row const& row : TableFlush::learntOf(part)) {
            lines +=
                "\n  switch " + std::to_string(part.switchId) + ": " + TableText::describe(row, document);
        }
        if (!part.table) {
            lines += "\n  switch " + std::to_string(part.switchId) + ": unread, whatever it has learnt";
        }
    }
    throw ToolError(ExitStatus::notConfirmed, text + (lines.empty() ? " no address" : lines));
}

} // namespace switchctl::table
