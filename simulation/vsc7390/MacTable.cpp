#include "simulation/vsc7390/MacTable.hpp"

#include <algorithm>

#include "simulation/vsc7390/Registers.hpp"

namespace simulation::vitesse {

namespace {

/// The row is the XOR of the pieces of the address, and of six bits of the VID in the last, shorter piece.
constexpr unsigned rowBits = 11;
constexpr unsigned wholePieces = 4;
constexpr Field vidInRow{"VID", 9, 4};

} // namespace

MacTable::MacTable(Context& context, RegisterFile& registers)
    : TableUnit(context, registers, analyser::macAccess, mac::command, mac::readEntry),
      _rows(Vsc7390TestSide::numberOfRows) {}

std::uint64_t MacTable::usualNanoseconds(unsigned command) const {
    Vsc7390Options const& options = _context.options;
    switch (command) {
    case mac::ageTable:
        return options.macAgeNanoseconds;
    case mac::clearTable:
        return options.macClearNanoseconds;
    default:
        return options.macAccessNanoseconds;
    }
}

void MacTable::perform(unsigned command, std::uint32_t word) {
    switch (command) {
    case mac::learnEntry:
        return learn(word);
    case mac::forgetEntry:
        return forget();
    case mac::ageTable:
        return age();
    case mac::flushTable:
        return flush();
    case mac::clearTable:
        return clear();
    case mac::readEntry:
        return readIndexed();
    default:
        return writeIndexed(word);
    }
}

void MacTable::learn(std::uint32_t word) {
    bool const replaces = _context.options.learnOverLocked == Vsc7390Options::LearnOverLocked::replaces;
    insert(staged(word | mac::valid.getMask()), replaces ? LockedSame::replaced : LockedSame::kept);
}

void MacTable::forget() {
    Vsc7390TestSide::MacEntry const key = staged(mac::valid.getMask()).decode();
    for (MacEntry& entry : _rows[rowOf(key.mac, key.vid)]) {
        if (entry.isOf(key.mac, key.vid)) {
            entry = MacEntry();
        }
    }
}

void MacTable::age() {
    for (Row& row : _rows) {
        for (MacEntry& entry : row) {
            if (!entry.isValid() || entry.isLocked()) {
                continue;
            }
            if (entry.isAged()) {
                entry = MacEntry();
            } else {
                entry.setAged();
            }
        }
    }
}

void MacTable::flush() {
    if (_context.options.macFlush == Vsc7390Options::MacFlush::noEffect) {
        return;
    }
    for (Row& row : _rows) {
        std::replace_if(
            row.begin(), row.end(), [](MacEntry const& entry) { return !entry.isLocked(); }, MacEntry());
    }
}

void MacTable::clear() {
    _rows.assign(_rows.size(), Row());
}

void MacTable::readIndexed() {
    MacEntry const& entry = indexed();
    _registers.store(analyser::macAccess, entry.getAccess());
    _registers.store(analyser::macHigh, entry.getHigh());
    _registers.store(analyser::macLow, entry.getLow());
}

void MacTable::writeIndexed(std::uint32_t word) {
    indexed() = staged(word);
}

MacEntry& MacTable::indexed() {
    std::uint32_t const index = _registers.getStored(analyser::macIndex);
    return at(mac::row.get(index), mac::bucket.get(index));
}

MacEntry MacTable::staged(std::uint32_t word) const {
    return {word, _registers.getStored(analyser::macHigh), _registers.getStored(analyser::macLow)};
}

MacEntry& MacTable::at(unsigned row, unsigned bucket) {
    return _rows[row][bucket];
}

MacEntry const& MacTable::at(unsigned row, unsigned bucket) const {
    return _rows[row][bucket];
}

bool MacTable::insert(MacEntry const& entry, LockedSame locked) {
    MacEntry* const bucket = bucketFor(entry.decode(), locked);
    if (bucket != nullptr) {
        *bucket = entry;
    }
    return bucket != nullptr;
}

bool MacTable::canLearn(std::uint64_t address, unsigned vid) const {
    if (MacEntry const* const same = find(address, vid)) {
        return !same->isLocked();
    }
    Row const& row = _rows[rowOf(address, vid)];
    return std::any_of(row.begin(), row.end(), [](MacEntry const& entry) { return !entry.isLocked(); });
}

MacEntry* MacTable::bucketFor(Vsc7390TestSide::MacEntry const& key, LockedSame locked) {
    Row& row = _rows[rowOf(key.mac, key.vid)];
    auto const pick = [&row](auto const& suits) -> MacEntry* {
        auto const found = std::find_if(row.begin(), row.end(), suits);
        return found == row.end() ? nullptr : &*found;
    };
    if (MacEntry* const same =
            pick([&key](MacEntry const& present) { return present.isOf(key.mac, key.vid); })) {
        return same->isLocked() && locked == LockedSame::kept ? nullptr : same;
    }
    if (MacEntry* const empty = pick([](MacEntry const& present) { return !present.isValid(); })) {
        return empty;
    }
    if (MacEntry* const aged =
            pick([](MacEntry const& present) { return present.isAged() && !present.isLocked(); })) {
        return aged;
    }
    return nextInTurn(row);
}

MacEntry* MacTable::nextInTurn(Row& row) {
    for (unsigned i = 0; i < row.size(); ++i) {
        MacEntry& candidate = row[_turn];
        _turn = (_turn + 1) % Vsc7390TestSide::numberOfBuckets;
        if (!candidate.isLocked()) {
            return &candidate;
        }
    }
    return nullptr;
}

MacEntry const* MacTable::find(std::uint64_t address, unsigned vid) const {
    for (MacEntry const& entry : _rows[rowOf(address, vid)]) {
        if (entry.isOf(address, vid)) {
            return &entry;
        }
    }
    return nullptr;
}

MacEntry const* MacTable::findGroup(std::uint64_t address, unsigned vid) const {
    if (!MacEntry::isIpGroup(address)) {
        return nullptr;
    }
    for (MacEntry const& entry : _rows[rowOf(address, vid)]) {
        if (entry.isGroupOf(address, vid, _context.options.multicastMatch)) {
            return &entry;
        }
    }
    return nullptr;
}

// Eleven bits a piece from the low end; above the four bits of the last piece stand six bits of the VID.
unsigned MacTable::rowOf(std::uint64_t address, unsigned vid) {
    unsigned row = vidInRow.placed(vid);
    for (unsigned piece = 0; piece <= wholePieces; ++piece) {
        row ^= static_cast<unsigned>(address >> piece * rowBits) & mac::row.getMask();
    }
    return row;
}

} // namespace simulation::vitesse
