#include "chips/88e6096/MarvellTables.hpp"

#include "simulation/88e6096/Registers.hpp"

namespace chips {

namespace {

namespace global1 = simulation::marvell::global1;
namespace vtu = simulation::marvell::vtu;

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
    unsigned const operation = simulation::marvell::globalOperation.get(word);
    if (operation == vtu::flushAll) {
        _wanted.all = true;
    } else if (operation == vtu::vtuLoad) {
        _wanted.vids.insert(_vid);
    } else if (operation == vtu::stuLoad) {
        _wanted.sids.insert(_sid);
    }
}

void MarvellTables::read(RegisterTransport& transport, ChipImage& image) const {
    MarvellTableReader(_catalogue, _wanted, transport, image).read();
}

} // namespace chips
