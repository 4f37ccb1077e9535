#include "switchctl/audit/AuditCommand.hpp"

#include <memory>
#include <nlohmann/json.hpp>
#include <utility>

#include "board/ModelBringUp.hpp"
#include "chips/NumberText.hpp"
#include "chips/RegisterAssignment.hpp"
#include "chips/ToolError.hpp"
#include "switchctl/audit/AuditReport.hpp"
#include "switchctl/terminal/OutputDiversion.hpp"
#include "switchctl/terminal/Progress.hpp"

namespace switchctl::audit {

namespace {

/// Makes the board deviate, over its bus; only where `run` will see it.
void deviate(std::string const& text, board::ModelBringUp const& bringUp, board::AuditRun const& run,
             board::BoardAccess& board) {
    std::size_t const slash = text.find('/');
    auto const switchId = chips::NumberText::parse(text.substr(0, slash));
    if (slash == std::string::npos || !switchId) {
        throw chips::ToolError(chips::ExitStatus::usage,
                               "\"" + text + "\": not of the form SWITCH/LOCATION=VALUE");
    }
    std::string const model = bringUp.getModel(*switchId);
    if (model.empty()) {
        throw chips::ToolError(chips::ExitStatus::usage, "\"" + text + "\": " + bringUp.getPath() +
                                                             " has no switch " + std::to_string(*switchId));
    }
    chips::ChipCatalogue const catalogue(model);
    auto const assignment = chips::RegisterAssignment::parse(catalogue, text.substr(slash + 1), false);
    chips::RegisterLocation const& location = assignment.getLocation();
    board::ChipScope const* const scope = run.find(*switchId);
    std::uint32_t const compared = scope == nullptr ? 0 : scope->getComparedBits(location);
    if (compared == 0 || (assignment.isPartial() && (assignment.getBits() & ~compared) != 0)) {
        throw chips::ToolError(chips::ExitStatus::usage, "\"" + text + "\": not compared by an audit");
    }
    auto const transport = board.connect(*switchId, model);
    std::uint32_t const before = assignment.isPartial() ? transport->read(location) : 0;
    transport->write(location, assignment.apply(before));
}

} // namespace

AuditCommand::AuditCommand(std::string memoryDevice)
    : Command("audit", "Compare the chips with what a document determines"),
      _memoryDevice(std::move(memoryDevice)) {}

void AuditCommand::declare(Arguments& arguments) {
    arguments.option("BOARD.xml", _path, "Configuration document of the board").required();
    auto const simulate = _simulation.addTo(arguments);
    arguments
        .option("--deviate", _deviations,
                "Write a register of the simulated board before it is read; also LOCATION:FIELD=VALUE. "
                "May be repeated")
        .type("SWITCH/LOCATION=VALUE")
        .oneEach()
        .needs(simulate);
    arguments.flag("--written-only", _writtenOnly,
                   "Compare only what start-up writes, and not what a reset leaves");
    addJson(arguments);
}

std::string AuditCommand::getHelp() const {
    return "Compared are all registers and table entries that can be read without disturbing a chip with "
           "what\n"
           "a bring-up of the document on models leaves there, written by it or not: ports that the "
           "document\n"
           "does not mention, too, VLAN tables (VTU and STU of an 88E6096, the VLAN table of a VSC7390), "
           "and\n"
           "the locked entries of a VSC7390's MAC table. Where start-up does not write, the models' values\n"
           "\"after reset\" are expected, which a board's straps may make others; --written-only leaves "
           "these\n"
           "out. What is never compared is counted and named in the last line: counters, status, command\n"
           "registers, addresses that were learned, PHYs outside of the chip that start-up does not write.\n"
           "What could not be read is not compared, and the exit status says so.\n"
           "\n"
           "An audit changes nothing of what the chips do. To read tables and PHYs, it writes to staging\n"
           "and command registers, so nothing else may use the chips meanwhile.\n"
           "\n"
           "Examples:\n"
           "  switchctl audit board.xml\n"
           "  switchctl audit board.xml --simulate --deviate 0/port8/PortControl:PortState=0\n"
           "  switchctl audit board.xml --simulate=other.xml --json\n"
           "\n";
}

std::vector<Command::StatusLine> AuditCommand::getStatuses() const {
    return {{ExitStatus::success, "all chips are as the document determines"},
            {ExitStatus::chipsDeviate, "at least one register or table entry deviates"},
            {ExitStatus::usage, "the command line, a location or a value is wrong"},
            {ExitStatus::badDocument, "a document cannot be read or is not well-formed"},
            ExitStatus::noHardware,
            ExitStatus::startUpFailed,
            {ExitStatus::registerFailed, "a chip could not be read completely"}};
}

ExitStatus AuditCommand::perform(std::ostream& out, std::ostream& errors) const {
    std::unique_ptr<board::AuditRun> const run = makeRun(errors);
    AuditReport const report(*run, _path, getAudited());
    if (isJson()) {
        printWithTime(out, report.toJson());
    } else {
        report.print(out);
    }
    if (!run->getUnread().empty()) {
        errors << "switchctl: the audit is not complete: what could not be read is not compared\n";
        return ExitStatus::registerFailed;
    }
    return run->getDeviations().empty() ? ExitStatus::success : ExitStatus::chipsDeviate;
}

/// What the library prints meanwhile goes to `errors`.
std::unique_ptr<board::AuditRun> AuditCommand::makeRun(std::ostream& errors) const {
    OutputDiversion const diversion(errors);
    std::unique_ptr<board::AuditRun> run;
    Progress const progress(errors, "comparing the chips with " + _path);
    {
        board::ModelBringUp expected(_path);
        run =
            std::make_unique<board::AuditRun>(expected, _writtenOnly ? board::ChipScope::Extent::written
                                                                     : board::ChipScope::Extent::everything);
    }
    if (!_simulation.isChosen()) {
        board::BoardAccess board(_memoryDevice);
        run->compare(board);
    } else {
        compareSimulated(*run);
    }
    return run;
}

void AuditCommand::compareSimulated(board::AuditRun& run) const {
    board::ModelBringUp chips(_simulation.getPath(_path));
    board::BoardAccess board(chips.getBoard());
    for (std::string const& deviation : _deviations) {
        deviate(deviation, chips, run, board);
    }
    _simulation.strike(chips.getBoard());
    run.compare(board);
}

std::string AuditCommand::getAudited() const {
    return !_simulation.isChosen() ? "the board's chips" : "the models of " + _simulation.getPath(_path);
}

} // namespace switchctl::audit
