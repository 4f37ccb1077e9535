#include "switchctl/register/RegisterRead.hpp"

#include <utility>

#include "switchctl/register/RegisterSession.hpp"

namespace switchctl::registers {

namespace {

constexpr char const* examplesOfRead =
    "Examples:\n"
    "  switchctl register read parallel system/CHIPID\n"
    "  switchctl register read serial --device /dev/ttyS1 port0/MAC_CFG\n"
    "  switchctl register read smi --switch 0 port0/SwitchIdentifier --json\n"
    "  switchctl register read phy --parallel 3/Identifier1 --simulate\n"
    "\n";

} // namespace

RegisterRead::RegisterRead(CLI::App& command, std::string memoryDevice)
    : RegisterAction(command, "read", "Read registers, one after the other"),
      _memoryDevice(std::move(memoryDevice)) {
    getApp().footer(examplesOfRead + chips::registerExitStatusHelp());
    _transport.addTo(getApp(), [this](CLI::App& transport) {
        transport.add_option("LOCATION", _locations, "Registers, UNIT/REGISTER")->required();
        transport.add_flag("--json", _json, "Print JSON");
    });
}

chips::ExitStatus RegisterRead::run(std::ostream& out, std::ostream& errors) const {
    chips::ChipCatalogue const catalogue(_transport.getModel());
    std::vector<RegisterReading> readings;
    {
        auto const locations = find(catalogue, _locations, _transport.isPhysOnly());
        RegisterSession session(_transport, _memoryDevice, errors);
        for (chips::RegisterLocation const& location : locations) {
            readings.push_back({location, session.getTransport().read(location)});
        }
    }
    if (_json) {
        out << toJson(readings).dump(2) << '\n';
    } else {
        print(out, readings);
    }
    return chips::ExitStatus::success;
}

} // namespace switchctl::registers
