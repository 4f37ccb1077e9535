#include "chips/vsc7390/VitesseTableReader.hpp"

#include <fmt/format.h>

#include "simulation/vsc7390/Registers.hpp"
#include "simulation/vsc7390/Vsc7390TestSide.hpp"

namespace chips {

using simulation::Vsc7390TestSide;

namespace {

namespace analyser = simulation::vitesse::analyser;
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
        text += fmt::format("{}{:02x}", text.empty() ? "" : ":", address >> bytes * 8 & 0xFFU);
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
      _vlanIndex(at(analyser::vlanIndex)),
      _vlanAccess(at(analyser::vlanAccess)),
      _macIndex(at(analyser::macIndex)),
      _macAccess(at(analyser::macAccess)),
      _macHigh(at(analyser::macHigh)),
      _macLow(at(analyser::macLow)) {}

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
    std::uint32_t const word = perform(_vlanAccess, vlan::readEntry, vlan::command);
    _image.addEntry("VLAN table", "VID " + std::to_string(vid),
                    {{"Ports", vlan::mask.get(word)},
                     {"VLAN_SRC_CHECK", vlan::sourceCheck.get(word)},
                     {"VLAN_MIRROR", vlan::mirror.get(word)},
                     {"LEARN_DISABLED", vlan::learnDisabled.get(word)}});
}

// Which bucket of its row an entry has depends on what was learned before.
void VitesseTableReader::readBucket(unsigned row, unsigned bucket) {
    _transport.write(_macIndex, mac::row.placed(row) | mac::bucket.placed(bucket));
    std::uint32_t const access = perform(_macAccess, mac::readEntry, mac::command);
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
                                          simulation::Field const& field) {
    _transport.write(access, command);
    return _transport.waitUntilClear(access, field, mostLooks, "analyser/" + access.name + ": stays busy");
}

RegisterLocation VitesseTableReader::at(unsigned address) const {
    return _catalogue.at(simulation::UnitKind::analyser, 0, address);
}

} // namespace chips
