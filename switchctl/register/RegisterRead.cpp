#include "switchctl/register/RegisterRead.hpp"

#include <nlohmann/json.hpp>
#include <utility>

#include "switchctl/register/RegisterSession.hpp"

namespace switchctl::registers {

RegisterRead::RegisterRead(std::string memoryDevice)
    : RegisterAction("read", "Read registers, one after the other"), _memoryDevice(std::move(memoryDevice)) {}

void RegisterRead::declare(Arguments& arguments) {
    _transport.addTo(arguments, [this](Arguments& transport) {
        transport.option("LOCATION", _locations, "Registers, UNIT/REGISTER").required();
        addJson(transport);
    });
}

std::string RegisterRead::getHelp() const {
    return "Examples:\n"
           "  switchctl register read parallel system/CHIPID\n"
           "  switchctl register read serial --device /dev/ttyS1 port0/MAC_CFG\n"
           "  switchctl register read smi --switch 0 port0/SwitchIdentifier --json\n"
           "  switchctl register read phy --parallel 3/Identifier1 --simulate\n"
           "\n";
}

ExitStatus RegisterRead::perform(std::ostream& out, std::ostream& errors) const {
    chips::ChipCatalogue const catalogue(_transport.getModel());
    std::vector<RegisterReading> readings;
    {
        auto const locations = find(catalogue, _locations, _transport.isPhysOnly());
        RegisterSession session(_transport, _memoryDevice, out, errors);
        for (chips::RegisterLocation const& location : locations) {
            readings.push_back({location, session.getTransport().read(location)});
        }
        session.finish();
    }
    std::ostream& results = _transport.chooseOutput(out, errors);
    if (isJson()) {
        printWithTime(results, {{"registers", toJson(readings)}});
    } else {
        print(results, readings);
    }
    return ExitStatus::success;
}

} // namespace switchctl::registers
