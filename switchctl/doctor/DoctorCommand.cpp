#include "switchctl/doctor/DoctorCommand.hpp"

#include <nlohmann/json.hpp>
#include <utility>

#include "switchctl/doctor/DoctorReport.hpp"
#include "switchctl/terminal/OutputDiversion.hpp"
#include "switchctl/terminal/Progress.hpp"

namespace switchctl::doctor {

DoctorCommand::DoctorCommand(std::string memoryDevice)
    : Command("doctor", "Find out why a board does not answer, and what to measure next"),
      _memoryDevice(std::move(memoryDevice)) {}

void DoctorCommand::declare(Arguments& arguments) {
    arguments.option("BOARD.xml", _path, "Configuration document of the board").required();
    auto const simulate = _simulation.addTo(
        arguments, "Look at fresh chip models instead of hardware: those of BOARD.xml or of "
                   "another document, which nobody brought up");
    auto const serial = arguments.flag("--serial", _serial, "Look for a VSC7390 over its serial line");
    arguments.option("--device", _device, "The serial line")
        .type("PATH")
        .showDefault()
        .needs(serial)
        .excludes(simulate);
    arguments.flag("--allow-writes", _allowWrites,
                   "Also read what a write to a command or bus set-up register of a chip leads to");
    addJson(arguments);
}

std::string DoctorCommand::getHelp() const {
    return "Looks at all 32 MDIO addresses, and at a VSC7390's window or serial line where the document has\n"
           "one, without a bring-up. Nothing is written to a chip: only the MDIO master of the processor is\n"
           "told to read, and its management clock is set meanwhile. What cannot be seen so is named; with\n"
           "--allow-writes, it is looked at, too: identifiers, straps and PHYs of an 88E6096 by its command\n"
           "register, the bus set-up of a VSC7390, and its PHYs, of ports that go to an outlet.\n"
           "\n"
           "A wait ends after a second, for a serial line after five. Nothing else may use the chips\n"
           "meanwhile.\n"
           "\n"
           "Examples:\n"
           "  switchctl doctor board.xml\n"
           "  switchctl doctor board.xml --allow-writes --json | jq '.findings[].cause'\n"
           "  switchctl doctor board.xml --serial --device /dev/ttyS1\n"
           "  switchctl doctor board.xml --simulate --fault single-chip:0\n"
           "\n";
}

std::vector<Command::StatusLine> DoctorCommand::getStatuses() const {
    return {{ExitStatus::success, "all switches of the document answer as they should"},
            {ExitStatus::switchMissing, "one does not, or was not looked at, or the document has no switch"},
            {ExitStatus::usage, "the command line is wrong, or a fault does not fit the board"},
            ExitStatus::badDocument,
            {ExitStatus::noHardware, "the hardware cannot be reached (/dev/mem, the serial line)"},
            {ExitStatus::notLookedAt,
             "all switches answer, but which chips they are was not read (--allow-writes)"}};
}

ExitStatus DoctorCommand::perform(std::ostream& out, std::ostream& errors) const {
    auto const xml = reference_host::XmlDocument::fromFile(_path);
    board::BoardReading const document(*xml);
    std::vector<ExaminedBoard::Family> families;
    {
        OutputDiversion const diversion(errors);
        Progress const progress(errors, "looking for the chips of " + _path);
        families = reach(document)->examine(_allowWrites);
    }
    DoctorReport const report(document, families, _path, getExamined());
    if (isJson()) {
        printWithTime(out, report.toJson());
    } else {
        report.print(out);
    }
    if (report.isWell() && !report.isIdentified()) {
        errors << "switchctl: " << _path << ": not every chip was asked what it is (--allow-writes does)\n";
        return ExitStatus::notLookedAt;
    }
    if (report.isWell()) {
        return ExitStatus::success;
    }
    errors << "switchctl: " << _path << ": "
           << (document.getWanted().empty() ? "no switch in the document"
                                            : "not every switch answers as it should")
           << '\n';
    return ExitStatus::switchMissing;
}

std::unique_ptr<ExaminedBoard> DoctorCommand::reach(board::BoardReading const& document) const {
    if (_simulation.isChosen()) {
        return std::make_unique<ExaminedBoard>(document, _simulation, _simulation.getPath(_path), _serial);
    }
    return std::make_unique<ExaminedBoard>(document, _memoryDevice, _serial ? _device : "");
}

std::string DoctorCommand::getExamined() const {
    return _simulation.isChosen() ? "fresh models of " + _simulation.getPath(_path) : "the board";
}

} // namespace switchctl::doctor
