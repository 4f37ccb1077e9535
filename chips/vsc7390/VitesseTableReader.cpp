#include "chips/vsc7390/VitesseTableReader.hpp"

#include <cstdio>

#include "chips/ToolError.hpp"
#include "simulation/vsc7390/Registers.hpp"
#include "simulation/vsc7390/Vsc7390TestSide.hpp"

namespace chips {

using simulation::Vsc7390TestSide;

namespace {

namespace mac = simulation::vitesse::mac;
namespace vlan = simulation::vitesse::vlan;

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

} // namespace

VitesseTableReader::VitesseTableReader(ChipCatalogue const& catalogue, Wanted const& wanted,
                                       RegisterTransport& transport, ChipImage& image)
    : _catalogue(catalogue),
      _wanted(wanted),
      _transport(transport),
      _image(image),
      _vlanIndex(at("VLANTIDX")),
      _vlanAccess(at("VLANACCESS")),
      _macIndex(at("MACTINDX")),
      _macAccess(at("MACACCESS")),
      _macHigh(at("MACHDATA")),
      _macLow(at("MACLDATA")) {}

void VitesseTableReader::read() {
    for (unsigned const vid : _wanted.vids) {
        readVlan(vid);
    }
    for (unsigned const row : _wanted.rows) {
        for (unsigned bucket = 0; bucket < Vsc7390TestSide::numberOfBuckets; ++bucket) {
            readBucket(row, bucket);
        }
    }
}

void VitesseTableReader::readVlan(unsigned vid) {
    _transport.write(_vlanIndex, vid);
    std::uint32_t const word = perform(_vlanAccess, vlanRead, vlan::command.getMask());
    _image.addEntry("VLAN table", "VID " + std::to_string(vid),
                    {{"Ports", vlan::mask.get(word)},
                     {"VLAN_SRC_CHECK", vlan::sourceCheck.get(word)},
                     {"VLAN_MIRROR", vlan::mirror.get(word)},
                     {"LEARN_DISABLED", vlan::learnDisabled.get(word)}});
}

// Which bucket of its row an entry has depends on what was learned before.
void VitesseTableReader::readBucket(unsigned row, unsigned bucket) {
    _transport.write(_macIndex, mac::row.placed(row) | mac::bucket.placed(bucket));
    std::uint32_t const access = perform(_macAccess, macRead, mac::command.getMask());
    if (mac::valid.isSet(access) && mac::locked.isSet(access)) {
        addMacEntry(access, _transport.read(_macHigh), _transport.read(_macLow));
    }
}

void VitesseTableReader::addMacEntry(std::uint32_t access, std::uint32_t high, std::uint32_t low) {
    constexpr unsigned bitsInLow = 32;
    constexpr unsigned bytesOfGroup = 3;
    constexpr unsigned bytesOfAddress = 6;
    std::uint64_t const address = std::uint64_t{mac::highBytes.get(high)} << bitsInLow | low;
    bool const isGroup = mac::aged.isSet(access);
    std::string const vid = " VID " + std::to_string(mac::vid.get(high));
    std::vector<ChipImage::Field> fields = {{"DEST_IDX", mac::destination.get(access)},
                                            {"IGNORE_VLAN", mac::ignoreVlan.get(access)},
                                            {"FWD_KILL", mac::forwardKill.get(access)},
                                            {"CPU_COPY", mac::cpuCopy.get(access)}};
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
    throw ToolError(ExitStatus::registerFailed, "analyser/" + access.name + ": stays busy");
}

RegisterLocation VitesseTableReader::at(std::string const& name) const {
    return _catalogue.find("analyser/" + name);
}

} // namespace chips
