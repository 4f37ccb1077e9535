#include "switchctl/audit/AuditCommand.hpp"

#include <memory>
#include <utility>

#include "board/ModelBringUp.hpp"
#include "chips/ToolError.hpp"
#include "switchctl/audit/AuditReport.hpp"
#include "switchctl/audit/AuditSelection.hpp"
#include "switchctl/audit/SeededWrite.hpp"
#include "switchctl/terminal/OutputDiversion.hpp"
#include "switchctl/terminal/Progress.hpp"

namespace switchctl::audit {

namespace {

/// What --simulate without a document is as a value.
constexpr char const* sameDocument = "true";

std::string footer() {
    return AuditSelection::explain() +
           "\n"
           "Examples:\n"
           "  switchctl audit board.xml\n"
           "  switchctl audit board.xml --simulate --deviate 0/port8/PortControl:PortState=0\n"
           "  switchctl audit board.xml --simulate=other.xml --json\n"
           "\n" +
           chips::auditExitStatusHelp();
}

} // namespace

AuditCommand::AuditCommand(CLI::App& program, std::string memoryDevice)
    : _command(program.add_subcommand("audit", "Compare the chips with what a document determines")),
      _memoryDevice(std::move(memoryDevice)) {
    _command->add_option("BOARD.xml", _path, "Configuration document of the board")->required();
    CLI::Option* const simulate =
        _command
            ->add_flag("--simulate", _simulate,
                       "Read chip models instead of hardware: those of BOARD.xml or of another document, "
                       "after they were brought up")
            ->type_name("[=OTHER.xml]");
    _command
        ->add_option("--deviate", _deviations,
                     "Write a register of the simulated board before it is read; also LOCATION:FIELD=VALUE. "
                     "May be repeated")
        ->type_name("SWITCH/LOCATION=VALUE")
        ->allow_extra_args(false)
        ->needs(simulate);
    _command->add_flag("--json", _json, "Print JSON");
    _command->footer(footer());
}

bool AuditCommand::isChosen() const {
    return _command->parsed();
}

chips::ExitStatus AuditCommand::run(std::ostream& out, std::ostream& errors) const {
    try {
        return audit(out, errors);
    } catch (chips::ToolError const& error) {
        errors << "switchctl: " << error.what() << '\n';
        return error.getStatus();
    }
}

chips::ExitStatus AuditCommand::audit(std::ostream& out, std::ostream& errors) const {
    std::unique_ptr<AuditRun> const run = makeRun(errors);
    AuditReport const report(*run, _path, getAudited());
    if (_json) {
        report.printJson(out);
    } else {
        report.print(out);
    }
    for (std::string const& line : run->getUnread()) {
        errors << "switchctl: " << line << '\n';
    }
    if (!run->getUnread().empty()) {
        return chips::ExitStatus::registerFailed;
    }
    return run->getDeviations().empty() ? chips::ExitStatus::success : chips::ExitStatus::chipsDeviate;
}

/// What the library prints meanwhile goes to `errors`.
std::unique_ptr<AuditRun> AuditCommand::makeRun(std::ostream& errors) const {
    OutputDiversion const diversion(errors);
    std::unique_ptr<AuditRun> run;
    Progress const progress(errors, "comparing the chips with " + _path);
    {
        board::ModelBringUp expected(_path);
        run = std::make_unique<AuditRun>(expected);
    }
    if (_simulate.empty()) {
        board::BoardAccess board(_memoryDevice);
        run->compare(board);
    } else {
        compareSimulated(*run);
    }
    return run;
}

void AuditCommand::compareSimulated(AuditRun& run) const {
    board::ModelBringUp chips(getSimulatedPath());
    board::BoardAccess board(chips.getBoard());
    for (std::string const& deviation : _deviations) {
        SeededWrite::make(deviation, chips, board);
    }
    run.compare(board);
}

std::string AuditCommand::getSimulatedPath() const {
    return _simulate == sameDocument ? _path : _simulate;
}

std::string AuditCommand::getAudited() const {
    return _simulate.empty() ? "the board's chips" : "the models of " + getSimulatedPath();
}

} // namespace switchctl::audit
