#include "chips/88e6096/MarvellTables.hpp"

#include <optional>

namespace chips {

namespace {

namespace atu = simulation::marvell::atu;
namespace global1 = simulation::marvell::global1;
namespace marvell = simulation::marvell;
namespace vtu = simulation::marvell::vtu;

/// A search from here finds the lowest entry.
constexpr std::uint32_t startOfSearch = 0xFFF;
constexpr std::uint32_t startOfAddresses = 0xFFFF;

/// A look takes at least a hundred microseconds, an operation hardly one.
constexpr unsigned looksAtUnit = 1000;

constexpr unsigned highestFid = 0xFFF;
constexpr unsigned atuMacs[] = {global1::atuMac01, global1::atuMac23, global1::atuMac45};
constexpr unsigned bitsOfAtuMac = 16;
constexpr std::uint64_t highestMac = 0xFFFF'FFFF'FFFF;

} // namespace

// Commands work on what was read into the staging registers, too.
void MarvellTables::take(simulation::AccessLog::Entry const& entry) {
    if (entry.identity->kind != simulation::UnitKind::global || entry.identity->number != 1) {
        return;
    }
    if (entry.address == global1::vtuVid) {
        _vid = vtu::vid.get(entry.value);
    } else if (entry.address == global1::vtuSid) {
        _sid = entry.value;
    } else if (entry.address == global1::vtuOperation && entry.kind == simulation::AccessLog::Kind::write) {
        takeOperation(entry.value);
    }
}

void MarvellTables::takeOperation(std::uint32_t word) {
    unsigned const operation = marvell::globalOperation.get(word);
    if (operation == vtu::flushAll) {
        _all = true;
    } else if (operation == vtu::vtuLoad) {
        _vids.insert(_vid);
    } else if (operation == vtu::stuLoad) {
        _sids.insert(_sid);
    }
}

void MarvellTables::read(RegisterTransport& transport, ChipImage& image) const {
    if (_all || !_vids.empty()) {
        readVtu(transport, image);
    }
    if (_all || !_sids.empty()) {
        readStu(transport, image);
    }
    if (_learned) {
        readAtu(transport, image);
    }
}

void MarvellTables::readVtu(RegisterTransport& transport, ChipImage& image) const {
    transport.write(at(global1::vtuVid), startOfSearch);
    std::optional<unsigned> last;
    while (true) {
        perform(global1::vtuOperation, vtu::vtuGetNext, transport);
        std::uint32_t const key = transport.read(at(global1::vtuVid));
        unsigned const vid = vtu::vid.get(key);
        if (!vtu::valid.isSet(key) || (last && vid <= *last)) {
            return;
        }
        last = vid;
        if (_all || _vids.count(vid) != 0) {
            std::vector<ChipImage::Field> fields = {{"FID", transport.read(at(global1::vtuFid))},
                                                    {"SID", transport.read(at(global1::vtuSid))}};
            addFields("MemberTag", transport, fields);
            addFields("VIDPriOverride", transport, fields);
            image.addEntry("VTU", "VID " + std::to_string(vid), fields);
        }
    }
}

void MarvellTables::readStu(RegisterTransport& transport, ChipImage& image) const {
    transport.write(at(global1::vtuSid), startOfSearch);
    std::optional<std::uint32_t> last;
    while (true) {
        perform(global1::vtuOperation, vtu::stuGetNext, transport);
        std::uint32_t const sid = transport.read(at(global1::vtuSid));
        if (!vtu::valid.isSet(transport.read(at(global1::vtuVid))) || (last && sid <= *last)) {
            return;
        }
        last = sid;
        if (_all || _sids.count(sid) != 0) {
            std::vector<ChipImage::Field> fields;
            addFields("PortState", transport, fields);
            image.addEntry("STU", "SID " + std::to_string(sid), fields);
        }
    }
}

void MarvellTables::readAtu(RegisterTransport& transport, ChipImage& image) const {
    for (unsigned fid = 0; fid <= highestFid; ++fid) {
        readAddresses(fid, transport, image);
    }
}

// Each search goes on from the address that the one before it has left in the registers.
void MarvellTables::readAddresses(unsigned fid, RegisterTransport& transport, ChipImage& image) const {
    constexpr unsigned bytesOfAddress = 6;
    transport.write(at(global1::atuFid), fid);
    for (unsigned const address : atuMacs) {
        transport.write(at(address), startOfAddresses);
    }
    std::optional<std::uint64_t> last;
    while (!last || *last != highestMac) {
        perform(global1::atuOperation, atu::getNext, transport);
        std::uint32_t const data = transport.read(at(global1::atuData));
        if (atu::entryState.get(data) == 0) {
            return;
        }
        std::uint64_t mac = 0;
        for (unsigned const address : atuMacs) {
            mac = mac << bitsOfAtuMac | transport.read(at(address));
        }
        if (last && mac <= *last) {
            return;
        }
        last = mac;
        image.addEntry("ATU", "address " + addressText(mac, bytesOfAddress) + " FID " + std::to_string(fid),
                       {{atu::trunk.name, atu::trunk.get(data)},
                        {atu::portVector.name, atu::portVector.get(data)},
                        {atu::entryState.name, atu::entryState.get(data)}});
    }
}

void MarvellTables::perform(unsigned operationRegister, unsigned operation,
                            RegisterTransport& transport) const {
    RegisterLocation const location = at(operationRegister);
    transport.write(location, marvell::busy.getMask() | marvell::globalOperation.placed(operation));
    transport.waitUntilClear(location, marvell::busy, looksAtUnit,
                             operationRegister == global1::atuOperation ? "the ATU stays busy"
                                                                        : "the VTU stays busy");
}

/// Those of the data registers whose names begin so.
void MarvellTables::addFields(std::string const& prefix, RegisterTransport& transport,
                              std::vector<ChipImage::Field>& fields) const {
    for (unsigned const address : {global1::vtuData0, global1::vtuData1, global1::vtuData2}) {
        RegisterLocation const location = at(address);
        std::uint32_t const value = transport.read(location);
        for (simulation::Register::Field const& field : location.description->getFields()) {
            if (std::string(field.name).compare(0, prefix.size(), prefix) == 0) {
                fields.push_back({field.name, field.get(value)});
            }
        }
    }
}

RegisterLocation MarvellTables::at(unsigned address) const {
    return _catalogue.at(simulation::UnitKind::global, 1, address);
}

} // namespace chips
