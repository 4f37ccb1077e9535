#include "tests/faults/BoardImage.hpp"

namespace fault_test {

namespace {

using Image = std::vector<std::uint64_t>;
using simulation::ChipTestSide;
using simulation::Marvell88E6096TestSide;
using simulation::Vsc7390TestSide;

constexpr unsigned entryBits = 4;

// The result and data of the last fetch are not a state of the chip.
bool isTransient(std::string const& unit, unsigned address) {
    constexpr unsigned indirectData = 0x2C;
    constexpr unsigned indirectStatus = 0x30;
    return unit == "system" && (address == indirectData || address == indirectStatus);
}

void addRegisters(ChipTestSide& chip, Image& image) {
    for (simulation::RegisterFile const* const unit : chip.getUnits()) {
        // The captures of a VSC7390 are storage that nothing here writes.
        if (unit->getIdentity().kind == simulation::UnitKind::capture) {
            continue;
        }
        for (auto const& [address, row] : unit->getTable().getRegisters()) {
            if (!isTransient(unit->getName(), address)) {
                image.push_back(unit->peek(address));
            }
        }
    }
}

template <typename States> std::uint64_t packed(States const& states) {
    std::uint64_t word = 0;
    for (unsigned const state : states) {
        word = word << entryBits | state;
    }
    return word;
}

void addTables(Marvell88E6096TestSide const& chip, Image& image) {
    for (auto const& [vid, entry] : chip.getVtu()) {
        image.insert(image.end(),
                     {vid, entry.fid, entry.sid, entry.priorityOverride, packed(entry.memberTags)});
    }
    image.push_back(~std::uint64_t{0});
    for (auto const& [sid, entry] : chip.getStu()) {
        image.insert(image.end(), {sid, packed(entry.portStates)});
    }
}

void addTables(Vsc7390TestSide const& chip, Image& image) {
    for (auto const& [vid, entry] : chip.getVlans()) {
        image.insert(image.end(), {vid, entry.ports, entry.sourceCheck, entry.mirror, entry.learnDisabled});
    }
    image.push_back(~std::uint64_t{0});
    for (auto const& [place, entry] : chip.getMacTable()) {
        image.insert(image.end(),
                     {place.first, place.second, entry.mac, entry.vid, entry.destination, entry.locked,
                      entry.aged, entry.ignoreVlan, entry.forwardKill, entry.cpuCopy});
    }
}

} // namespace

BoardImage imageOf(simulation::SimulatedBoard& board) {
    BoardImage images;
    for (unsigned const id : board.getSwitchIds()) {
        Image& image = images[id];
        ChipTestSide& chip = board.getChip(id);
        addRegisters(chip, image);
        if (auto const* const marvell = dynamic_cast<Marvell88E6096TestSide const*>(&chip)) {
            addTables(*marvell, image);
        } else if (auto const* const vitesse = dynamic_cast<Vsc7390TestSide const*>(&chip)) {
            addTables(*vitesse, image);
        }
    }
    return images;
}

} // namespace fault_test
