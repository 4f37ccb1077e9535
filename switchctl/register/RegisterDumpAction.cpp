#include "switchctl/register/RegisterDumpAction.hpp"

#include <nlohmann/json.hpp>
#include <utility>

#include "chips/ChipKinds.hpp"
#include "chips/ToolError.hpp"
#include "switchctl/register/RegisterSession.hpp"
#include "switchctl/terminal/Progress.hpp"

namespace switchctl::registers {

RegisterDumpAction::RegisterDumpAction(std::string memoryDevice)
    : RegisterAction("dump", "Print all registers of a chip that can be read without harm"),
      _memoryDevice(std::move(memoryDevice)) {}

void RegisterDumpAction::declare(Arguments& arguments) {
    _transport.addTo(arguments, [this](Arguments& transport) {
        transport.flag("--tables", _tables,
                       "Read the chip's tables, too: VLANs and addresses, learned ones included");
        addJson(transport);
    });
}

std::string RegisterDumpAction::getHelp() const {
    return "A dump only has registers that can be read without changing the chip. Left out are:\n"
           "  tables (VLANs, MAC addresses), which take commands to read; with --tables they are there\n"
           "  captured statistics, which take a command to read\n"
           "  88E6096: GlobalStatus, which forgets finished commands when it is read\n"
           "  VSC7390: captured frames, which are gone when they are read; the data and status of\n"
           "  fetched reads, which each read changes\n"
           "  PHYs, which take a command to read; \"dump phy\" has them, without the registers that\n"
           "  latch or count until they are read, and without those that only their makers know\n"
           "\n"
           "From dumps with tables, \"paths --from\" and \"explain --from\" tell who reaches whom.\n"
           "\n"
           "Examples:\n"
           "  switchctl register dump smi --switch 0 --simulate > fresh.txt\n"
           "  switchctl register dump smi --switch 0 --simulate=board.xml > up.txt\n"
           "  switchctl register dump parallel --json\n"
           "  switchctl register dump smi --switch 0 --tables > switch0.txt\n"
           "\n";
}

ExitStatus RegisterDumpAction::perform(std::ostream& out, std::ostream& errors) const {
    if (_tables && _transport.isPhysOnly()) {
        throw ToolError(ExitStatus::usage, "--tables: PHYs have none");
    }
    board::RegisterDump dump;
    dump.transport = _transport.getText();
    dump.catalogue = std::make_shared<chips::ChipCatalogue const>(_transport.getModel());
    bool isComplete = false;
    {
        RegisterSession session(_transport, _memoryDevice, out, errors);
        isComplete = readAll(session.getTransport(), dump, errors);
        if (_tables) {
            readTables(session.getTransport(), dump, errors);
        }
        session.finish();
    }
    std::ostream& results = _transport.chooseOutput(out, errors);
    if (isJson()) {
        printWithTime(results, dump.toJson());
    } else {
        dump.print(results);
    }
    return isComplete ? ExitStatus::success : ExitStatus::registerFailed;
}

bool RegisterDumpAction::readAll(chips::RegisterTransport& transport, board::RegisterDump& dump,
                                 std::ostream& errors) const {
    std::string failedUnit;
    std::vector<chips::RegisterLocation> const all = dump.catalogue->getAll();
    Progress progress(errors, "reading registers over " + _transport.getText());
    std::size_t done = 0;
    for (chips::RegisterLocation const& location : all) {
        progress.update(done++, all.size());
        // To read a PHY is a command to the chip.
        bool const isPhy = location.address.space == chips::RegisterAddress::Space::phy;
        if (isPhy != _transport.isPhysOnly() || location.description->isChangedByRead() ||
            location.unit == failedUnit) {
            continue;
        }
        try {
            dump.readings.push_back({location, transport.read(location)});
        } catch (ToolError const& error) {
            // A PHY may be missing; a chip that does not answer will not do so for the next register.
            if (!isPhy) {
                throw;
            }
            errors << "switchctl: " << error.what() << '\n';
            failedUnit = location.unit;
        }
    }
    return failedUnit.empty();
}

void RegisterDumpAction::readTables(chips::RegisterTransport& transport, board::RegisterDump& dump,
                                    std::ostream& errors) const {
    Progress const progress(errors, "reading tables over " + _transport.getText());
    auto const tables = chips::ChipKinds::get(dump.catalogue->getModel(), "dump").makeTables(*dump.catalogue);
    tables->takeAll();
    tables->takeLearned();
    chips::ChipImage image;
    tables->read(transport, image);
    dump.addTables(image, tables->getNames());
}

} // namespace switchctl::registers
