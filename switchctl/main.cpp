#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>

#include "chips/ExitStatus.hpp"
#include "switchctl/audit/AuditCommand.hpp"
#include "switchctl/bringup/BringUpCommand.hpp"
#include "switchctl/check/CheckCommand.hpp"
#include "switchctl/controller/SimulateControllerCommand.hpp"
#include "switchctl/draw/DrawCommand.hpp"
#include "switchctl/plan/PlanCommand.hpp"
#include "switchctl/register/RegisterCommand.hpp"
#include "switchctl/replay/ReplayCommand.hpp"
#include "switchctl/statistics/StatisticsCommand.hpp"

using chips::ExitStatus;

namespace {

constexpr char const* help = "Examples, on a desk; on a board, without --simulate:\n"
                             "  switchctl check board.xml\n"
                             "  switchctl plan board.xml\n"
                             "  switchctl draw board.xml -o board.svg\n"
                             "  switchctl bring-up board.xml --simulate\n"
                             "  switchctl audit board.xml --simulate\n"
                             "  switchctl statistics board.xml --simulate\n"
                             "Each command's --help has more, and its exit statuses. Those of bring-up:\n"
                             "\n";

chips::ExitStatus runProgram(int argc, char** argv) {
    CLI::App program("Brings up and inspects the Ethernet switches of a board", "switchctl");
    program.require_subcommand(1);
    program.footer(help + chips::exitStatusHelp());
    switchctl::bringup::BringUpCommand const bringUp(program);
    switchctl::registers::RegisterCommand const registers(program);
    switchctl::check::CheckCommand const check(program);
    switchctl::draw::DrawCommand const draw(program);
    switchctl::plan::PlanCommand const plan(program);
    switchctl::audit::AuditCommand const audit(program);
    switchctl::statistics::StatisticsCommand const statistics(program);
    switchctl::replay::ReplayCommand const replay(program);
    switchctl::controller::SimulateControllerCommand const controller(program);
    try {
        program.parse(argc, argv);
    } catch (CLI::ParseError const& error) {
        return program.exit(error) == 0 ? chips::ExitStatus::success : chips::ExitStatus::usage;
    }
    if (draw.isChosen()) {
        return draw.run(std::cout, std::cerr);
    }
    if (check.isChosen()) {
        return check.run(std::cout, std::cerr);
    }
    if (audit.isChosen()) {
        return audit.run(std::cout, std::cerr);
    }
    if (statistics.isChosen()) {
        return statistics.run(std::cout, std::cerr);
    }
    if (replay.isChosen()) {
        return replay.run(std::cout, std::cerr);
    }
    if (plan.isChosen()) {
        return plan.run(std::cout, std::cerr);
    }
    if (registers.isChosen()) {
        return registers.run(std::cout, std::cerr);
    }
    if (controller.isChosen()) {
        return controller.run(std::cout, std::cerr);
    }
    return bringUp.run(std::cout, std::cerr);
}

} // namespace

int main(int argc, char** argv) {
    try {
        return static_cast<int>(runProgram(argc, argv));
    } catch (std::exception const& error) {
        std::cerr << "switchctl: " << error.what() << '\n';
        return static_cast<int>(chips::ExitStatus::startUpFailed);
    }
}
