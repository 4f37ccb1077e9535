#include "switchctl/register/RegisterCommand.hpp"

#include "chips/ToolError.hpp"
#include "switchctl/register/RegisterDiffAction.hpp"
#include "switchctl/register/RegisterDumpAction.hpp"
#include "switchctl/register/RegisterRead.hpp"
#include "switchctl/register/RegisterWrite.hpp"

namespace switchctl::registers {

RegisterCommand::RegisterCommand(std::string const& memoryDevice)
    : Command("register", "Read, write, dump and compare registers of a chip") {
    _actions.push_back(std::make_unique<RegisterRead>(memoryDevice));
    _actions.push_back(std::make_unique<RegisterWrite>(memoryDevice));
    _actions.push_back(std::make_unique<RegisterDumpAction>(memoryDevice));
    _actions.push_back(std::make_unique<RegisterDiffAction>());
}

void RegisterCommand::declare(Arguments& arguments) {
    for (auto const& action : _actions) {
        action->addTo(arguments);
    }
}

std::string RegisterCommand::getHelp() const {
    return "Locations are UNIT/REGISTER, each by name or by number. In names, upper and lower case are the "
           "same,\n"
           "and blanks, - and _ do not count. Numbers are decimal or, after 0x, hexadecimal. By number, a "
           "unit is\n"
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
}

std::vector<Command::StatusLine> RegisterCommand::getStatuses() const {
    return RegisterAction::statuses();
}

ExitStatus RegisterCommand::perform(std::ostream& out, std::ostream& errors) const {
    for (auto const& action : _actions) {
        if (action->isChosen()) {
            return action->run(out, errors);
        }
    }
    return ExitStatus::usage;
}

} // namespace switchctl::registers
