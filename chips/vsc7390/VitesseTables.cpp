#include "chips/vsc7390/VitesseTables.hpp"

#include "simulation/vsc7390/Registers.hpp"
#include "simulation/vsc7390/Vsc7390TestSide.hpp"

namespace chips {

using simulation::Vsc7390TestSide;

namespace {

namespace analyser = simulation::vitesse::analyser;
namespace mac = simulation::vitesse::mac;
namespace vlan = simulation::vitesse::vlan;

std::set<unsigned> allBelow(unsigned end) {
    std::set<unsigned> numbers;
    for (unsigned number = 0; number < end; ++number) {
        numbers.insert(numbers.end(), number);
    }
    return numbers;
}

} // namespace

void VitesseTables::take(simulation::AccessLog::Entry const& entry) {
    if (entry.identity->kind != simulation::UnitKind::analyser) {
        return;
    }
    if (entry.address == analyser::vlanIndex) {
        _vlanIndex = entry.value;
    } else if (entry.address == analyser::macIndex) {
        _macIndex = entry.value;
    } else if (entry.kind == simulation::AccessLog::Kind::write) {
        takeCommand(entry.address, entry.value);
    }
}

void VitesseTables::takeCommand(unsigned address, std::uint32_t word) {
    if (address == analyser::vlanAccess) {
        if (vlan::command.get(word) == vlan::clearTable) {
            _wanted.vids = allBelow(Vsc7390TestSide::numberOfVids);
        } else if (vlan::command.get(word) == vlan::writeEntry) {
            _wanted.vids.insert(_vlanIndex);
        }
    } else if (address == analyser::macAccess) {
        if (mac::command.get(word) == mac::clearTable) {
            _wanted.rows = allBelow(Vsc7390TestSide::numberOfRows);
        } else if (mac::command.get(word) == mac::writeEntry) {
            _wanted.rows.insert(mac::row.get(_macIndex));
        }
    }
}

void VitesseTables::read(RegisterTransport& transport, ChipImage& image) const {
    VitesseTableReader(_catalogue, _wanted, transport, image).read();
}

} // namespace chips
