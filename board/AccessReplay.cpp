#include "board/AccessReplay.hpp"

#include <set>
#include <string>

namespace board {

using simulation::AccessLog;
using simulation::UnitKind;

unsigned AccessReplay::switchOf(Entry const& access) {
    return static_cast<unsigned>(std::stoul(access.chip.substr(access.chip.find(' '))));
}

void AccessReplay::run(std::vector<Entry> const& accesses, Watcher const& afterEachWrite) {
    std::vector<unsigned> const ids = _board.getSwitchIds();
    std::set<unsigned> const present(ids.begin(), ids.end());
    for (Entry const& access : accesses) {
        unsigned const id = switchOf(access);
        UnitKind const kind = access.identity->kind;
        if (kind == UnitKind::phy || kind == UnitKind::unknown || present.count(id) == 0) {
            continue;
        }
        simulation::RegisterFile& unit = _board.getChip(id).getUnit(access.unit);
        if (access.kind == AccessLog::Kind::read) {
            unit.read(access.address, access.transfer);
            continue;
        }
        unit.write(access.address, access.value, access.transfer);
        if (afterEachWrite) {
            afterEachWrite(access);
        }
    }
}

} // namespace board
