#include "switchctl/register/RegisterCommand.hpp"

#include "chips/ToolError.hpp"
#include "switchctl/register/RegisterDiffAction.hpp"
#include "switchctl/register/RegisterDumpAction.hpp"
#include "switchctl/register/RegisterRead.hpp"
#include "switchctl/register/RegisterWrite.hpp"

namespace switchctl::registers {

namespace {

constexpr char const* help =
    "Locations are UNIT/REGISTER, each by name or by number. In names, upper and lower case are the same,\n"
    "and blanks, - and _ do not count. Numbers are decimal or, after 0x, hexadecimal. By number, a unit is\n"
    "the internal device of an 88E6096, BLOCK.SUB-BLOCK of a VSC7390, or the PHY after \"phy\":\n"
    "  \"port 3/Port Control\"  port3/portcontrol  0x13/0x04\n"
    "  analyser/VLANTIDX  2.0/0xE0  2.0.0xE0\n"
    "\"register dump\" shows all names.\n"
    "\n"
    "Examples:\n"
    "  switchctl register read parallel system/CHIPID\n"
    "  switchctl register read serial --device /dev/ttyS1 port0/MAC_CFG\n"
    "  switchctl register read smi --switch 0 port0/SwitchIdentifier --json\n"
    "  switchctl register read phy --parallel 3/Identifier1 --simulate\n"
    "  switchctl register write smi --switch 0 port3/PortControl:PortState=3 --yes\n"
    "  switchctl register write parallel --simulate --yes analyser/VLANTIDX=10 \\\n"
    "      analyser/VLANACCESS=0x10000022 analyser/VLANACCESS=1 --then-read analyser/VLANACCESS\n"
    "  switchctl register dump smi --switch 0 --simulate > fresh.txt\n"
    "  switchctl register dump smi --switch 0 --simulate=board.xml > up.txt\n"
    "  switchctl register diff fresh.txt up.txt\n"
    "\n"
    "The parallel bus is set up before the first access, as the driver does it.\n"
    "\n";

} // namespace

RegisterCommand::RegisterCommand(CLI::App& program, std::string const& memoryDevice)
    : _command(program.add_subcommand("register", "Read, write, dump and compare registers of a chip")) {
    _command->require_subcommand(1);
    // The actions take it over.
    _command->footer(chips::registerExitStatusHelp());
    _actions.push_back(std::make_unique<RegisterRead>(*_command, memoryDevice));
    _actions.push_back(std::make_unique<RegisterWrite>(*_command, memoryDevice));
    _actions.push_back(std::make_unique<RegisterDumpAction>(*_command, memoryDevice));
    _actions.push_back(std::make_unique<RegisterDiffAction>(*_command));
    _command->footer(help + chips::registerExitStatusHelp());
}

bool RegisterCommand::isChosen() const {
    return _command->parsed();
}

chips::ExitStatus RegisterCommand::run(std::ostream& out, std::ostream& errors) const {
    try {
        for (auto const& action : _actions) {
            if (action->isChosen()) {
                return action->run(out, errors);
            }
        }
    } catch (chips::ToolError const& error) {
        errors << "switchctl: " << error.what() << '\n';
        return error.getStatus();
    }
    return chips::ExitStatus::usage;
}

} // namespace switchctl::registers
