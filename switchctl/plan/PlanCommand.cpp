#include "switchctl/plan/PlanCommand.hpp"

#include <optional>

#include "chips/ToolError.hpp"
#include "switchctl/plan/BringUpPlan.hpp"
#include "switchctl/plan/PlanDifferenceReport.hpp"
#include "switchctl/plan/PlanReport.hpp"
#include "switchctl/terminal/OutputDiversion.hpp"
#include "switchctl/terminal/Progress.hpp"

namespace switchctl::plan {

namespace {

BringUpPlan planOf(std::string const& path, std::ostream& errors) {
    OutputDiversion const diversion(errors);
    Progress const progress(errors, "bringing up the models of " + path);
    board::ModelBringUp bringUp(path);
    return BringUpPlan(bringUp);
}

std::string footer() {
    return "The writes come from a bring-up on chip models, which starts with fresh chips. Times are those\n"
           "of the buses and of the library's waits; the processor's own time comes on top.\n"
           "\n"
           "Examples:\n"
           "  switchctl plan board.xml\n"
           "  switchctl plan before.xml after.xml\n"
           "  switchctl plan board.xml --json | jq .predicted\n"
           "\n" +
           chips::planExitStatusHelp();
}

} // namespace

PlanCommand::PlanCommand(CLI::App& program)
    : _command(program.add_subcommand("plan", "Show the register writes that a bring-up would make")) {
    _command->add_option("BOARD.xml", _path, "Configuration document of the board")->required();
    _command->add_option("OTHER.xml", _otherPath, "Another one: show what differs instead");
    _command->add_flag("--json", _json, "Print JSON");
    _command->footer(footer());
}

bool PlanCommand::isChosen() const {
    return _command->parsed();
}

chips::ExitStatus PlanCommand::run(std::ostream& out, std::ostream& errors) const {
    try {
        return _otherPath.empty() ? show(out, errors) : compare(out, errors);
    } catch (chips::ToolError const& error) {
        errors << "switchctl: " << error.what() << '\n';
        return error.getStatus();
    }
}

chips::ExitStatus PlanCommand::show(std::ostream& out, std::ostream& errors) const {
    BringUpPlan const plan = planOf(_path, errors);
    PlanReport const report(plan);
    if (_json) {
        report.printJson(out);
    } else {
        report.print(out);
    }
    return chips::ExitStatus::success;
}

chips::ExitStatus PlanCommand::compare(std::ostream& out, std::ostream& errors) const {
    BringUpPlan const first = planOf(_path, errors);
    BringUpPlan const second = planOf(_otherPath, errors);
    std::optional<Progress> progress(std::in_place, errors, "comparing");
    PlanDifferenceReport const report(first, second);
    progress.reset();
    if (_json) {
        report.printJson(out);
    } else {
        report.print(out);
    }
    return report.isEmpty() ? chips::ExitStatus::success : chips::ExitStatus::plansDiffer;
}

} // namespace switchctl::plan
