#include "switchctl/audit/VitesseTableReader.hpp"

#include <cstdio>

#include "simulation/Bits.hpp"
#include "simulation/vsc7390/Registers.hpp"
#include "simulation/vsc7390/Vsc7390TestSide.hpp"
#include "switchctl/registers/CommandError.hpp"

namespace switchctl::audit {

using simulation::isSet;
using simulation::maskOf;
using simulation::Vsc7390TestSide;

namespace {

namespace mac = simulation::vitesse::mac;
namespace vlan = simulation::vitesse::vlan;
using simulation::vitesse::fieldOf;
using simulation::vitesse::placedAt;

/// A look takes a microsecond or so, a command less than a hundred.
constexpr unsigned mostLooks = 100'000;

/// In the entry of a group: its ports in the high half, the low bytes of its address in the other.
constexpr unsigned bitsOfGroup = 24;

/// Those of ports, so that the fields tell which is which.
std::string addressText(std::uint64_t address, unsigned bytes) {
    std::string text;
    while (bytes-- > 0) {
        char part[4];
        std::snprintf(part, sizeof part, "%02x", static_cast<unsigned>(address >> bytes * 8) & 0xFFU);
        text += text.empty() ? part : std::string(":") + part;
    }
    return text;
}

std::uint32_t flag(std::uint32_t word, unsigned bit) {
    return isSet(word, bit) ? 1 : 0;
}

} // namespace

VitesseTableReader::VitesseTableReader(ChipScope const& scope, RegisterTransport& transport, ChipImage& image)
    : _scope(scope),
      _transport(transport),
      _image(image),
      _vlanIndex(at("VLANTIDX")),
      _vlanAccess(at("VLANACCESS")),
      _macIndex(at("MACTINDX")),
      _macAccess(at("MACACCESS")),
      _macHigh(at("MACHDATA")),
      _macLow(at("MACLDATA")) {}

void VitesseTableReader::read() {
    for (unsigned const vid : _scope.getVlanTableVids()) {
        readVlan(vid);
    }
    for (unsigned const row : _scope.getMacTableRows()) {
        for (unsigned bucket = 0; bucket < Vsc7390TestSide::numberOfBuckets; ++bucket) {
            readBucket(row, bucket);
        }
    }
}

void VitesseTableReader::readVlan(unsigned vid) {
    _transport.write(_vlanIndex, vid);
    std::uint32_t const word = perform(_vlanAccess, vlanRead, maskOf(vlan::command.high, vlan::command.low));
    _image.addEntry("VLAN table", "VID " + std::to_string(vid),
                    {{"Ports", fieldOf(word, vlan::mask)},
                     {"VLAN_SRC_CHECK", flag(word, vlan::sourceCheck)},
                     {"VLAN_MIRROR", flag(word, vlan::mirror)},
                     {"LEARN_DISABLED", flag(word, vlan::learnDisabled)}});
}

// Which bucket of its row an entry has depends on what was learned before.
void VitesseTableReader::readBucket(unsigned row, unsigned bucket) {
    _transport.write(_macIndex, placedAt(row, mac::row) | placedAt(bucket, mac::bucket));
    std::uint32_t const access = perform(_macAccess, macRead, maskOf(mac::command.high, mac::command.low));
    if (isSet(access, mac::valid) && isSet(access, mac::locked)) {
        addMacEntry(access, _transport.read(_macHigh), _transport.read(_macLow));
    }
}

void VitesseTableReader::addMacEntry(std::uint32_t access, std::uint32_t high, std::uint32_t low) {
    constexpr unsigned bitsInLow = 32;
    constexpr unsigned bytesOfGroup = 3;
    constexpr unsigned bytesOfAddress = 6;
    std::uint64_t const address = std::uint64_t{fieldOf(high, mac::highBytes)} << bitsInLow | low;
    bool const isGroup = isSet(access, mac::aged);
    std::string const vid = " VID " + std::to_string(fieldOf(high, mac::vid));
    std::vector<ChipImage::Field> fields = {{"DEST_IDX", fieldOf(access, mac::destination)},
                                            {"IGNORE_VLAN", flag(access, mac::ignoreVlan)},
                                            {"FWD_KILL", flag(access, mac::forwardKill)},
                                            {"CPU_COPY", flag(access, mac::cpuCopy)}};
    std::string name = "address " + addressText(address, bytesOfAddress) + vid;
    if (isGroup) {
        name = "group 01:00:5e:" + addressText(address, bytesOfGroup) + vid;
        fields.insert(fields.begin(), {"Ports", static_cast<std::uint32_t>(address >> bitsOfGroup)});
    }
    std::string const first = name;
    for (unsigned copy = 2; _image.find("MAC table", name) != nullptr; ++copy) {
        name = first + " entry " + std::to_string(copy);
    }
    _image.addEntry("MAC table", name, fields);
}

std::uint32_t VitesseTableReader::perform(RegisterLocation const& access, unsigned command,
                                          std::uint32_t commandMask) {
    _transport.write(access, command);
    for (unsigned looks = 0; looks < mostLooks; ++looks) {
        std::uint32_t const word = _transport.read(access);
        if ((word & commandMask) == 0) {
            return word;
        }
    }
    throw CommandError(ExitStatus::registerFailed, "analyser/" + access.name + ": stays busy");
}

RegisterLocation VitesseTableReader::at(std::string const& name) const {
    return _scope.getCatalogue().find("analyser/" + name);
}

} // namespace switchctl::audit
