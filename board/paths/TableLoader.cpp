#include "board/paths/TableLoader.hpp"

#include <algorithm>
#include <sstream>
#include <stdexcept>

#include "simulation/88e6096/Registers.hpp"

namespace board {

namespace {

constexpr unsigned bitsOfId = 12;
constexpr unsigned bitsOfPorts = 25;

using Item = chips::ChipImage::Item;

std::uint32_t valueOf(Item const& entry, std::string const& field, unsigned bits) {
    for (chips::ChipImage::Field const& candidate : entry.fields) {
        if (candidate.name == field && candidate.value >> bits != 0) {
            throw std::out_of_range(field + " of " + entry.unit + " " + entry.name + " does not fit");
        }
        if (candidate.name == field) {
            return candidate.value;
        }
    }
    throw std::out_of_range(entry.unit + " " + entry.name + " has no " + field);
}

bool isSet(Item const& entry, std::string const& field) {
    return valueOf(entry, field, 1) != 0;
}

/// The number behind "VID ", "SID " or "FID " in the entry's name.
unsigned idOf(Item const& entry) {
    std::size_t const place = entry.name.find("ID ");
    if (place == std::string::npos) {
        throw std::out_of_range("\"" + entry.name + "\" is no entry of " + entry.unit);
    }
    return static_cast<unsigned>(std::stoul(entry.name.substr(place + 3)));
}

/// "group 01:00:5e:01:02:03 VID 5": the address.
std::uint64_t addressOf(Item const& entry) {
    constexpr int hexadecimal = 16;
    std::istringstream words(entry.name);
    std::string digits;
    words >> digits >> digits;
    if (digits.find(':') == std::string::npos) {
        throw std::out_of_range("\"" + entry.name + "\" is no entry of " + entry.unit);
    }
    digits.erase(std::remove(digits.begin(), digits.end(), ':'), digits.end());
    return std::stoull(digits, nullptr, hexadecimal);
}

} // namespace

void TableLoader::load(Item const& entry) const {
    if (entry.unit == "VTU") {
        loadVtu(entry);
    } else if (entry.unit == "STU") {
        loadStu(entry);
    } else if (entry.unit == "ATU") {
        loadAtu(entry);
    } else if (entry.unit == "VLAN table") {
        loadVlan(entry);
    } else if (entry.unit == "MAC table") {
        loadMac(entry);
    } else {
        throw std::out_of_range("no table " + entry.unit);
    }
}

void TableLoader::loadVtu(Item const& entry) const {
    simulation::Marvell88E6096TestSide::VtuEntry loaded;
    loaded.fid = valueOf(entry, "FID", bitsOfId);
    loaded.sid = valueOf(entry, "SID", bitsOfId);
    for (unsigned port = 0; port < loaded.memberTags.size(); ++port) {
        loaded.memberTags.at(port) = valueOf(entry, "MemberTag" + std::to_string(port), 2);
    }
    _board.getMarvell(_switchId).setVtuEntry(idOf(entry), loaded);
}

void TableLoader::loadStu(Item const& entry) const {
    simulation::Marvell88E6096TestSide::StuEntry loaded;
    for (unsigned port = 0; port < loaded.portStates.size(); ++port) {
        loaded.portStates.at(port) = valueOf(entry, "PortState" + std::to_string(port), 2);
    }
    _board.getMarvell(_switchId).setStuEntry(idOf(entry), loaded);
}

void TableLoader::loadAtu(Item const& entry) const {
    namespace atu = simulation::marvell::atu;
    constexpr unsigned bitsOfVector = 11;
    constexpr unsigned bitsOfState = 4;
    _board.getMarvell(_switchId).setAtuEntry(
        idOf(entry), addressOf(entry),
        atu::trunk.placed(isSet(entry, atu::trunk.name)) |
            atu::portVector.placed(valueOf(entry, atu::portVector.name, bitsOfVector)) |
            atu::entryState.placed(valueOf(entry, atu::entryState.name, bitsOfState)));
}

void TableLoader::loadVlan(Item const& entry) const {
    simulation::Vsc7390TestSide::VlanEntry loaded;
    loaded.ports = valueOf(entry, "Ports", bitsOfPorts);
    loaded.sourceCheck = isSet(entry, "VLAN_SRC_CHECK");
    loaded.mirror = isSet(entry, "VLAN_MIRROR");
    loaded.learnDisabled = isSet(entry, "LEARN_DISABLED");
    _board.getVitesse(_switchId).setVlanEntry(idOf(entry), loaded);
}

// A group's entry has the ports in place of the high bytes that all groups share.
void TableLoader::loadMac(Item const& entry) const {
    constexpr unsigned bitsOfGroup = 24;
    constexpr std::uint64_t groupBytes = 0xFFFFFF;
    bool const isGroup = entry.name.rfind("group ", 0) == 0;
    std::uint64_t const address = addressOf(entry);
    simulation::Vsc7390TestSide& chip = _board.getVitesse(_switchId);
    simulation::Vsc7390TestSide::MacEntry loaded;
    loaded.mac =
        isGroup ? std::uint64_t{valueOf(entry, "Ports", bitsOfPorts)} << bitsOfGroup | (address & groupBytes)
                : address;
    loaded.vid = idOf(entry);
    loaded.destination = valueOf(entry, "DEST_IDX", 6);
    bool const isLearned = entry.name.rfind("learned ", 0) == 0;
    loaded.locked = !isLearned;
    loaded.aged = isLearned ? isSet(entry, "AGED_FLAG") : isGroup;
    loaded.ignoreVlan = isSet(entry, "IGNORE_VLAN");
    loaded.forwardKill = isSet(entry, "FWD_KILL");
    loaded.cpuCopy = isSet(entry, "CPU_COPY");
    unsigned const row = chip.getRow(address, loaded.vid);
    unsigned bucket = 0;
    while (chip.getMacEntry(row, bucket)) {
        ++bucket;
    }
    chip.setMacEntry(row, bucket, loaded);
}

} // namespace board
