#include "switchctl/register/RegisterDumpAction.hpp"

#include <utility>

#include "chips/ToolError.hpp"
#include "switchctl/register/DumpSelection.hpp"
#include "switchctl/register/RegisterSession.hpp"
#include "switchctl/terminal/Progress.hpp"

namespace switchctl::registers {

namespace {

constexpr char const* examplesOfDump =
    "\n"
    "Examples:\n"
    "  switchctl register dump smi --switch 0 --simulate > fresh.txt\n"
    "  switchctl register dump smi --switch 0 --simulate=board.xml > up.txt\n"
    "  switchctl register dump parallel --json\n"
    "\n";

} // namespace

RegisterDumpAction::RegisterDumpAction(CLI::App& command, std::string memoryDevice)
    : RegisterAction(command, "dump", "Print all registers of a chip that can be read without harm"),
      _memoryDevice(std::move(memoryDevice)) {
    getApp().footer(DumpSelection::explain() + examplesOfDump + chips::registerExitStatusHelp());
    _transport.addTo(getApp(),
                     [this](CLI::App& transport) { transport.add_flag("--json", _json, "Print JSON"); });
}

chips::ExitStatus RegisterDumpAction::run(std::ostream& out, std::ostream& errors) const {
    RegisterDump dump;
    dump.catalogue = std::make_shared<chips::ChipCatalogue const>(_transport.getModel());
    bool isComplete = false;
    {
        RegisterSession session(_transport, _memoryDevice, errors);
        isComplete = readAll(session.getTransport(), dump, errors);
    }
    if (_json) {
        dump.printJson(out, _transport.getText());
    } else {
        dump.print(out, _transport.getText());
    }
    return isComplete ? chips::ExitStatus::success : chips::ExitStatus::registerFailed;
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
        } catch (chips::ToolError const& error) {
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
