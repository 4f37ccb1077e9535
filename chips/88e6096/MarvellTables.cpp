#include "chips/88e6096/MarvellTables.hpp"

#include <optional>

namespace chips {

namespace {

namespace global1 = simulation::marvell::global1;
namespace marvell = simulation::marvell;
namespace vtu = simulation::marvell::vtu;

/// A search from here finds the lowest entry.
constexpr std::uint32_t startOfSearch = 0xFFF;

/// A look takes at least a hundred microseconds, an operation hardly one.
constexpr unsigned looksAtVtu = 1000;

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
}

void MarvellTables::readVtu(RegisterTransport& transport, ChipImage& image) const {
    transport.write(at(global1::vtuVid), startOfSearch);
    std::optional<unsigned> last;
    while (true) {
        perform(vtu::vtuGetNext, transport);
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
        perform(vtu::stuGetNext, transport);
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

void MarvellTables::perform(Operation operation, RegisterTransport& transport) const {
    transport.write(at(global1::vtuOperation),
                    marvell::busy.getMask() | marvell::globalOperation.placed(operation));
    transport.waitUntilClear(at(global1::vtuOperation), marvell::busy, looksAtVtu, "the VTU stays busy");
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
