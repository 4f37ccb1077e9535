#include "switchctl/plan/PlanCommand.hpp"

#include <nlohmann/json.hpp>
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

} // namespace

PlanCommand::PlanCommand() : Command("plan", "Show the register writes that a bring-up would make") {}

void PlanCommand::declare(Arguments& arguments) {
    arguments.option("BOARD.xml", _path, "Configuration document of the board").required();
    arguments.option("OTHER.xml", _otherPath, "Another one: show what differs instead");
    addJson(arguments);
}

std::string PlanCommand::getHelp() const {
    return "The writes come from a bring-up on chip models, which starts with fresh chips. Times are those\n"
           "of the buses and of the library's waits; the processor's own time comes on top.\n"
           "\n"
           "Examples:\n"
           "  switchctl plan board.xml\n"
           "  switchctl plan before.xml after.xml\n"
           "  switchctl plan board.xml --json | jq .predicted\n"
           "\n";
}

std::vector<Command::StatusLine> PlanCommand::getStatuses() const {
    return {{ExitStatus::success, "done; of two documents: their plans are equal"},
            {ExitStatus::plansDiffer, "the plans of two documents differ"},
            ExitStatus::usage,
            {ExitStatus::badDocument, "a document cannot be read or is not well-formed"},
            ExitStatus::startUpFailed};
}

ExitStatus PlanCommand::perform(std::ostream& out, std::ostream& errors) const {
    return _otherPath.empty() ? show(out, errors) : compare(out, errors);
}

ExitStatus PlanCommand::show(std::ostream& out, std::ostream& errors) const {
    BringUpPlan const plan = planOf(_path, errors);
    PlanReport const report(plan);
    if (isJson()) {
        Command::print(out, report.toJson());
    } else {
        report.print(out);
    }
    return ExitStatus::success;
}

ExitStatus PlanCommand::compare(std::ostream& out, std::ostream& errors) const {
    BringUpPlan const first = planOf(_path, errors);
    BringUpPlan const second = planOf(_otherPath, errors);
    std::optional<Progress> progress(std::in_place, errors, "comparing");
    PlanDifferenceReport const report(first, second);
    progress.reset();
    if (isJson()) {
        Command::print(out, report.toJson());
    } else {
        report.print(out);
    }
    return report.isEmpty() ? ExitStatus::success : ExitStatus::plansDiffer;
}

} // namespace switchctl::plan
