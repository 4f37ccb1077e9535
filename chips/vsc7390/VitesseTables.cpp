#include "chips/vsc7390/VitesseTables.hpp"

#include "simulation/vsc7390/Registers.hpp"
#include "simulation/vsc7390/Vsc7390TestSide.hpp"

namespace chips {

using simulation::UnitKind;
using simulation::Vsc7390TestSide;

namespace {

namespace analyser = simulation::vitesse::analyser;
namespace mac = simulation::vitesse::mac;
namespace vlan = simulation::vitesse::vlan;

/// A look takes a microsecond or so, a command less than a hundred.
constexpr unsigned mostLooks = 100'000;

/// In the entry of a group: its ports in the high half, the low bytes of its address in the other.
constexpr unsigned bitsOfGroup = 24;

std::set<unsigned> allBelow(unsigned end) {
    std::set<unsigned> numbers;
    for (unsigned number = 0; number < end; ++number) {
        numbers.insert(numbers.end(), number);
    }
    return numbers;
}

std::uint32_t perform(RegisterTransport& transport, RegisterLocation const& access, unsigned command,
                      simulation::Field const& field) {
    transport.write(access, command);
    return transport.waitUntilClear(access, field, mostLooks, access.getText() + ": stays busy");
}

} // namespace

VitesseTables::VitesseTables(ChipCatalogue const& catalogue)
    : _vlanIndex(catalogue.at(UnitKind::analyser, 0, analyser::vlanIndex)),
      _vlanAccess(catalogue.at(UnitKind::analyser, 0, analyser::vlanAccess)),
      _macIndex(catalogue.at(UnitKind::analyser, 0, analyser::macIndex)),
      _macAccess(catalogue.at(UnitKind::analyser, 0, analyser::macAccess)),
      _macHigh(catalogue.at(UnitKind::analyser, 0, analyser::macHigh)),
      _macLow(catalogue.at(UnitKind::analyser, 0, analyser::macLow)) {}

void VitesseTables::take(simulation::AccessLog::Entry const& entry) {
    if (entry.identity->kind != simulation::UnitKind::analyser) {
        return;
    }
    if (entry.address == analyser::vlanIndex) {
        _vid = entry.value;
    } else if (entry.address == analyser::macIndex) {
        _place = entry.value;
    } else if (entry.kind == simulation::AccessLog::Kind::write) {
        takeCommand(entry.address, entry.value);
    }
}

void VitesseTables::takeAll() {
    _vids = allBelow(Vsc7390TestSide::numberOfVids);
    _rows = allBelow(Vsc7390TestSide::numberOfRows);
}

void VitesseTables::takeCommand(unsigned address, std::uint32_t word) {
    if (address == analyser::vlanAccess) {
        if (vlan::command.get(word) == vlan::clearTable) {
            _vids = allBelow(Vsc7390TestSide::numberOfVids);
        } else if (vlan::command.get(word) == vlan::writeEntry) {
            _vids.insert(_vid);
        }
    } else if (address == analyser::macAccess) {
        if (mac::command.get(word) == mac::clearTable) {
            _rows = allBelow(Vsc7390TestSide::numberOfRows);
        } else if (mac::command.get(word) == mac::writeEntry) {
            _rows.insert(mac::row.get(_place));
        }
    }
}

void VitesseTables::read(RegisterTransport& transport, ChipImage& image) const {
    for (unsigned const vid : _vids) {
        readVlan(vid, transport, image);
    }
    for (unsigned const row : _rows) {
        for (unsigned bucket = 0; bucket < Vsc7390TestSide::numberOfBuckets; ++bucket) {
            readPlace(row, bucket, transport, image);
        }
    }
}

void VitesseTables::readVlan(unsigned vid, RegisterTransport& transport, ChipImage& image) const {
    std::uint32_t const word = readVlan(vid, transport);
    image.addEntry("VLAN table", "VID " + std::to_string(vid),
                   {{"Ports", vlan::mask.get(word)},
                    {"VLAN_SRC_CHECK", vlan::sourceCheck.get(word)},
                    {"VLAN_MIRROR", vlan::mirror.get(word)},
                    {"LEARN_DISABLED", vlan::learnDisabled.get(word)}});
}

// Which bucket of its row an entry has depends on what was learned before.
void VitesseTables::readPlace(unsigned row, unsigned bucket, RegisterTransport& transport,
                              ChipImage& image) const {
    auto const entry = readBucket(row, bucket, transport);
    if (entry && (_learned || mac::locked.isSet(entry->access))) {
        addMacEntry(entry->access, entry->high, entry->low, image);
    }
}

std::uint32_t VitesseTables::readVlan(unsigned vid, RegisterTransport& transport) const {
    transport.write(_vlanIndex, vid);
    return perform(transport, _vlanAccess, vlan::readEntry, vlan::command);
}

std::optional<VitesseTables::Bucket> VitesseTables::readBucket(unsigned row, unsigned bucket,
                                                               RegisterTransport& transport) const {
    transport.write(_macIndex, mac::row.placed(row) | mac::bucket.placed(bucket));
    std::uint32_t const access = perform(transport, _macAccess, mac::readEntry, mac::command);
    if (!mac::valid.isSet(access)) {
        return std::nullopt;
    }
    std::uint32_t const high = transport.read(_macHigh);
    return Bucket{access, high, transport.read(_macLow)};
}

void VitesseTables::forget(std::uint32_t high, std::uint32_t low, RegisterTransport& transport) const {
    transport.write(_macHigh, high);
    transport.write(_macLow, low);
    perform(transport, _macAccess, mac::forgetEntry, mac::command);
}

void VitesseTables::addMacEntry(std::uint32_t access, std::uint32_t high, std::uint32_t low,
                                ChipImage& image) {
    constexpr unsigned bitsInLow = 32;
    constexpr unsigned bytesOfGroup = 3;
    constexpr unsigned bytesOfAddress = 6;
    std::uint64_t const address = std::uint64_t{mac::highBytes.get(high)} << bitsInLow | low;
    bool const isLearned = !mac::locked.isSet(access);
    bool const isGroup = !isLearned && mac::aged.isSet(access);
    std::string const vid = " VID " + std::to_string(mac::vid.get(high));
    std::vector<ChipImage::Field> fields = {{"DEST_IDX", mac::destination.get(access)},
                                            {"IGNORE_VLAN", mac::ignoreVlan.get(access)},
                                            {"FWD_KILL", mac::forwardKill.get(access)},
                                            {"CPU_COPY", mac::cpuCopy.get(access)}};
    std::string name = (isLearned ? "learned " : "address ") + addressText(address, bytesOfAddress) + vid;
    if (isGroup) {
        name = "group 01:00:5e:" + addressText(address, bytesOfGroup) + vid;
        fields.insert(fields.begin(), {"Ports", static_cast<std::uint32_t>(address >> bitsOfGroup)});
    }
    if (isLearned) {
        fields.push_back({"AGED_FLAG", mac::aged.get(access)});
    }
    std::string const first = name;
    for (unsigned copy = 2; image.find("MAC table", name) != nullptr; ++copy) {
        name = first + " entry " + std::to_string(copy);
    }
    image.addEntry("MAC table", name, fields);
}

} // namespace chips
