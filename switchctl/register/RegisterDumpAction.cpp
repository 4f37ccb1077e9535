#include "switchctl/register/RegisterDumpAction.hpp"

#include <utility>

#include "chips/ToolError.hpp"
#include "switchctl/register/DumpSelection.hpp"
#include "switchctl/register/RegisterSession.hpp"
#include "switchctl/terminal/Progress.hpp"

namespace switchctl::registers {

RegisterDumpAction::RegisterDumpAction(std::string memoryDevice)
    : RegisterAction("dump", "Print all registers of a chip that can be read without harm"),
      _memoryDevice(std::move(memoryDevice)) {}

void RegisterDumpAction::declare(Arguments& arguments) {
    _transport.addTo(arguments, [this](Arguments& transport) { addJson(transport); });
}

std::string RegisterDumpAction::getHelp() const {
    return DumpSelection::explain() +
           "\n"
           "Examples:\n"
           "  switchctl register dump smi --switch 0 --simulate > fresh.txt\n"
           "  switchctl register dump smi --switch 0 --simulate=board.xml > up.txt\n"
           "  switchctl register dump parallel --json\n"
           "\n";
}

ExitStatus RegisterDumpAction::perform(std::ostream& out, std::ostream& errors) const {
    RegisterDump dump;
    dump.catalogue = std::make_shared<chips::ChipCatalogue const>(_transport.getModel());
    bool isComplete = false;
    {
        RegisterSession session(_transport, _memoryDevice, errors);
        isComplete = readAll(session.getTransport(), dump, errors);
    }
    if (isJson()) {
        dump.printJson(out, _transport.getText());
    } else {
        dump.print(out, _transport.getText());
    }
    return isComplete ? ExitStatus::success : ExitStatus::registerFailed;
}

bool RegisterDumpAction::readAll(chips::RegisterTransport& transport, RegisterDump& dump,
                                 std::ostream& errors) const {
    std::string failedUnit;
    std::vector<chips::RegisterLocation> const all = dump.catalogue->getAll();
    Progress progress(errors, "reading registers over " + _transport.getText());
    std::size_t done = 0;
    for (chips::RegisterLocation const& location : all) {
        progress.update(done++, all.size());
        if (!DumpSelection::contains(location, _transport.isPhysOnly()) || location.unit == failedUnit) {
            continue;
        }
        try {
            dump.readings.push_back({location, transport.read(location)});
        } catch (ToolError const& error) {
            // A PHY may be missing; a chip that does not answer will not do so for the next register.
            if (location.address.space != chips::RegisterAddress::Space::phy) {
                throw;
            }
            errors << "switchctl: " << error.what() << '\n';
            failedUnit = location.unit;
        }
    }
    return failedUnit.empty();
}

} // namespace switchctl::registers
