#include "board/paths/TableLoader.hpp"

#include <algorithm>
#include <sstream>
#include <stdexcept>

namespace board {

namespace {

using Item = chips::ChipImage::Item;

std::uint32_t valueOf(Item const& entry, std::string const& field) {
    for (chips::ChipImage::Field const& candidate : entry.fields) {
        if (candidate.name == field) {
            return candidate.value;
        }
    }
    throw std::out_of_range(entry.unit + " " + entry.name + " has no " + field);
}

/// The number behind "VID " or "SID " in the entry's name.
unsigned idOf(Item const& entry) {
    std::size_t const place = entry.name.find("ID ");
    return static_cast<unsigned>(std::stoul(entry.name.substr(place + 3)));
}

/// "group 01:00:5e:01:02:03 VID 5": the address.
std::uint64_t addressOf(Item const& entry) {
    constexpr int hexadecimal = 16;
    std::istringstream words(entry.name);
    std::string digits;
    words >> digits >> digits;
    digits.erase(std::remove(digits.begin(), digits.end(), ':'), digits.end());
    return std::stoull(digits, nullptr, hexadecimal);
}

} // namespace

void TableLoader::load(Item const& entry) const {
    if (entry.unit == "VTU") {
        loadVtu(entry);
    } else if (entry.unit == "STU") {
        loadStu(entry);
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
    loaded.fid = valueOf(entry, "FID");
    loaded.sid = valueOf(entry, "SID");
    for (unsigned port = 0; port < loaded.memberTags.size(); ++port) {
        loaded.memberTags.at(port) = valueOf(entry, "MemberTag" + std::to_string(port));
    }
    _board.getMarvell(_switchId).setVtuEntry(idOf(entry), loaded);
}

void TableLoader::loadStu(Item const& entry) const {
    simulation::Marvell88E6096TestSide::StuEntry loaded;
    for (unsigned port = 0; port < loaded.portStates.size(); ++port) {
        loaded.portStates.at(port) = valueOf(entry, "PortState" + std::to_string(port));
    }
    _board.getMarvell(_switchId).setStuEntry(idOf(entry), loaded);
}

void TableLoader::loadVlan(Item const& entry) const {
    simulation::Vsc7390TestSide::VlanEntry loaded;
    loaded.ports = valueOf(entry, "Ports");
    loaded.sourceCheck = valueOf(entry, "VLAN_SRC_CHECK") != 0;
    loaded.mirror = valueOf(entry, "VLAN_MIRROR") != 0;
    loaded.learnDisabled = valueOf(entry, "LEARN_DISABLED") != 0;
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
        isGroup ? std::uint64_t{valueOf(entry, "Ports")} << bitsOfGroup | (address & groupBytes) : address;
    loaded.vid = idOf(entry);
    loaded.destination = valueOf(entry, "DEST_IDX");
    loaded.locked = true;
    loaded.aged = isGroup;
    loaded.ignoreVlan = valueOf(entry, "IGNORE_VLAN") != 0;
    loaded.forwardKill = valueOf(entry, "FWD_KILL") != 0;
    loaded.cpuCopy = valueOf(entry, "CPU_COPY") != 0;
    unsigned const row = chip.getRow(address, loaded.vid);
    unsigned bucket = 0;
    while (chip.getMacEntry(row, bucket)) {
        ++bucket;
    }
    chip.setMacEntry(row, bucket, loaded);
}

} // namespace board
