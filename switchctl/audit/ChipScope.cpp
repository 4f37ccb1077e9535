#include "switchctl/audit/ChipScope.hpp"

#include "chips/88e6096/MarvellTableReader.hpp"
#include "chips/ToolError.hpp"
#include "chips/vsc7390/VitesseTableReader.hpp"
#include "simulation/88e6096/Registers.hpp"
#include "simulation/vsc7390/Registers.hpp"
#include "simulation/vsc7390/Vsc7390TestSide.hpp"
#include "switchctl/audit/AuditSelection.hpp"

namespace switchctl::audit {

using simulation::AccessLog;
using simulation::Vsc7390TestSide;

namespace {

namespace global1 = simulation::marvell::global1;
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

ChipScope::ChipScope(board::ModelBringUp& bringUp, unsigned switchId)
    : _switchId(switchId), _catalogue(bringUp.getModel(switchId)) {
    std::string const chip = getChip();
    for (AccessLog::Entry const& entry : bringUp.getBoard().getLog().getEntries()) {
        if (entry.chip == chip) {
            take(entry);
        }
    }
}

unsigned ChipScope::getSwitchId() const {
    return _switchId;
}

std::string ChipScope::getChip() const {
    return "switch " + std::to_string(_switchId);
}

chips::ChipCatalogue const& ChipScope::getCatalogue() const {
    return _catalogue;
}

std::vector<chips::RegisterLocation> const& ChipScope::getRegisters() const {
    return _registers;
}

chips::VitesseTableReader::Wanted const& ChipScope::getVitesseTables() const {
    return _vitesseTables;
}

chips::MarvellTableReader::Wanted const& ChipScope::getMarvellTables() const {
    return _marvellTables;
}

void ChipScope::take(AccessLog::Entry const& entry) {
    if (entry.unit == "global 1") {
        takeGlobal1(entry);
    } else if (entry.unit == "analyser") {
        takeAnalyser(entry);
    }
    if (entry.kind == AccessLog::Kind::write) {
        takeRegister(entry);
    }
}

void ChipScope::takeRegister(AccessLog::Entry const& entry) {
    std::string const text = entry.unit + "/" + std::to_string(entry.address);
    if (!_seen.insert(text).second) {
        return;
    }
    try {
        chips::RegisterLocation const location = _catalogue.find(text);
        // What is at a number that nobody knows may change by being read.
        if (location.description != nullptr && AuditSelection::contains(location)) {
            _registers.push_back(location);
        }
    } catch (chips::ToolError const&) {
        // A PHY that a chip of this kind does not have: nothing is there to be compared.
    }
}

// Commands work on what was read into the staging registers, too.
void ChipScope::takeGlobal1(AccessLog::Entry const& entry) {
    if (entry.address == global1::vtuVid) {
        _vtuVid = simulation::marvell::vtu::vid.get(entry.value);
    } else if (entry.address == global1::vtuSid) {
        _vtuSid = entry.value;
    } else if (entry.address == global1::vtuOperation && entry.kind == AccessLog::Kind::write) {
        switch (chips::MarvellTableReader::operationIn(entry.value)) {
        case chips::MarvellTableReader::Operation::flushAll:
            _marvellTables.all = true;
            break;
        case chips::MarvellTableReader::Operation::vtuLoad:
            _marvellTables.vids.insert(_vtuVid);
            break;
        case chips::MarvellTableReader::Operation::stuLoad:
            _marvellTables.sids.insert(_vtuSid);
            break;
        default:
            break;
        }
    }
}

void ChipScope::takeAnalyser(AccessLog::Entry const& entry) {
    if (entry.address == analyser::vlanIndex) {
        _vlanIndex = entry.value;
    } else if (entry.address == analyser::macIndex) {
        _macIndex = entry.value;
    } else if (entry.kind == AccessLog::Kind::read) {
        return;
    } else if (entry.address == analyser::vlanAccess) {
        unsigned const command = vlan::command.get(entry.value);
        if (command == chips::VitesseTableReader::vlanClear) {
            _vitesseTables.vids = allBelow(Vsc7390TestSide::numberOfVids);
        } else if (command == chips::VitesseTableReader::vlanWrite) {
            _vitesseTables.vids.insert(_vlanIndex);
        }
    } else if (entry.address == analyser::macAccess) {
        unsigned const command = mac::command.get(entry.value);
        if (command == chips::VitesseTableReader::macClear) {
            _vitesseTables.rows = allBelow(Vsc7390TestSide::numberOfRows);
        } else if (command == chips::VitesseTableReader::macWrite) {
            _vitesseTables.rows.insert(mac::row.get(_macIndex));
        }
    }
}

} // namespace switchctl::audit
