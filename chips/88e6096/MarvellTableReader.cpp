#include "chips/88e6096/MarvellTableReader.hpp"

#include <optional>

namespace chips {

namespace {

namespace marvell = simulation::marvell;
namespace vtu = simulation::marvell::vtu;
namespace global1 = simulation::marvell::global1;

/// A search from here finds the lowest entry.
constexpr std::uint32_t startOfSearch = 0xFFF;

/// A look takes at least a hundred microseconds, an operation hardly one.
constexpr unsigned mostLooks = 1000;

} // namespace

MarvellTableReader::MarvellTableReader(ChipCatalogue const& catalogue, Wanted const& wanted,
                                       RegisterTransport& transport, ChipImage& image)
    : _catalogue(catalogue), _wanted(wanted), _transport(transport), _image(image) {}

void MarvellTableReader::read() {
    if (_wanted.all || !_wanted.vids.empty()) {
        readVtu();
    }
    if (_wanted.all || !_wanted.sids.empty()) {
        readStu();
    }
}

void MarvellTableReader::readVtu() {
    _transport.write(at(global1::vtuVid), startOfSearch);
    std::optional<unsigned> last;
    while (true) {
        perform(vtu::vtuGetNext);
        std::uint32_t const key = readAt(global1::vtuVid);
        unsigned const vid = vtu::vid.get(key);
        if (!vtu::valid.isSet(key) || (last && vid <= *last)) {
            return;
        }
        last = vid;
        if (!_wanted.all && _wanted.vids.count(vid) == 0) {
            continue;
        }
        std::vector<ChipImage::Field> fields = {{"FID", readAt(global1::vtuFid)},
                                                {"SID", readAt(global1::vtuSid)}};
        for (char const* const prefix : {"MemberTag", "VIDPriOverride"}) {
            std::vector<ChipImage::Field> const more = dataFields(prefix);
            fields.insert(fields.end(), more.begin(), more.end());
        }
        _image.addEntry("VTU", "VID " + std::to_string(vid), fields);
    }
}

void MarvellTableReader::readStu() {
    _transport.write(at(global1::vtuSid), startOfSearch);
    std::optional<std::uint32_t> last;
    while (true) {
        perform(vtu::stuGetNext);
        std::uint32_t const sid = readAt(global1::vtuSid);
        if (!vtu::valid.isSet(readAt(global1::vtuVid)) || (last && sid <= *last)) {
            return;
        }
        last = sid;
        if (_wanted.all || _wanted.sids.count(sid) != 0) {
            _image.addEntry("STU", "SID " + std::to_string(sid), dataFields("PortState"));
        }
    }
}

void MarvellTableReader::perform(vtu::Operation operation) {
    _transport.write(at(global1::vtuOperation),
                     marvell::busy.getMask() | marvell::globalOperation.placed(operation));
    _transport.waitUntilClear(at(global1::vtuOperation), marvell::busy, mostLooks, "the VTU stays busy");
}

std::vector<ChipImage::Field> MarvellTableReader::dataFields(std::string const& prefix) {
    std::vector<ChipImage::Field> fields;
    for (unsigned const address : {global1::vtuData0, global1::vtuData1, global1::vtuData2}) {
        RegisterLocation const location = at(address);
        std::uint32_t const value = _transport.read(location);
        for (simulation::Register::Field const& field : location.description->getFields()) {
            if (std::string(field.name).compare(0, prefix.size(), prefix) == 0) {
                fields.push_back({field.name, field.get(value)});
            }
        }
    }
    return fields;
}

RegisterLocation MarvellTableReader::at(unsigned address) const {
    return _catalogue.at(simulation::UnitKind::global, 1, address);
}

std::uint32_t MarvellTableReader::readAt(unsigned address) {
    return _transport.read(at(address));
}

} // namespace chips
