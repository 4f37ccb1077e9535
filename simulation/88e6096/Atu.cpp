#include "simulation/88e6096/Atu.hpp"

#include <algorithm>
#include <iterator>
#include <limits>

#include "simulation/88e6096/Registers.hpp"
#include "simulation/VirtualClock.hpp"

namespace simulation::marvell {

namespace {

using namespace atu;

constexpr unsigned unused = 0;
constexpr unsigned firstStaticState = 8;
constexpr unsigned moveState = 0xF;

/// Fields of the data register when a command moves entries from one port to another.
constexpr Field fromPort{"FromPort", 7, 4};
constexpr Field toPort{"ToPort", 11, 8};

/// Who is to blame for a violation when it was no frame.
constexpr unsigned noPort = 0xF;

constexpr std::uint64_t never = std::numeric_limits<std::uint64_t>::max();
constexpr unsigned macBits = 48;
constexpr unsigned groupBit = 40;

std::uint64_t keyOf(unsigned fid, std::uint64_t mac) {
    return std::uint64_t{fid} << macBits | mac;
}

unsigned fidOf(std::uint64_t key) {
    return static_cast<unsigned>(key >> macBits);
}

// The entry's data after the move; without a destination port when the port to move to does not exist.
std::uint32_t moved(std::uint32_t data, std::uint32_t command) {
    std::uint32_t const from = portVector.placed(bit(fromPort.get(command)));
    std::uint32_t const to = portVector.placed(bit(toPort.get(command)));
    return (data & from) == 0 ? data : (data & ~from) | to;
}

} // namespace

Atu::Atu(Context& context, RegisterFile& registers)
    : CommandUnit(context, registers, global1::atuOperation, context.options.atuBusyNanoseconds),
      _context(context) {}

void Atu::perform(std::uint32_t word) {
    switch (globalOperation.get(word)) {
    case atu::flushAll:
        return flushOrMove(true, true);
    case flushNonStatic:
        return flushOrMove(false, true);
    case loadEntry:
        return load(stagedKey(), _registers.getStored(global1::atuData));
    case getNext:
        return next();
    case flushFid:
        return flushOrMove(true, false);
    case flushFidNonStatic:
        return flushOrMove(false, false);
    case getViolation:
        return fetchViolation();
    default:
        reportMeaningless("no such operation");
    }
}

Atu::Key Atu::stagedKey() const {
    std::uint64_t mac = 0;
    for (unsigned address : {global1::atuMac01, global1::atuMac23, global1::atuMac45}) {
        mac = mac << 16 | _registers.getStored(address);
    }
    return keyOf(_registers.getStored(global1::atuFid), mac);
}

void Atu::load(Key key, std::uint32_t data) {
    if (entryState.get(data) == unused) {
        _entries.erase(key);
        return;
    }
    if (isFull() && _entries.count(key) == 0) {
        _violation = Violation{key, noPort};
        return;
    }
    put(key, data);
    _fullUntil = 0; // it may have any age
}

void Atu::put(Key key, std::uint32_t data) {
    if (_entries.size() >= capacity) {
        dropAged();
    }
    _entries[key] = {data, now()};
}

void Atu::next() {
    Key const key = stagedKey();
    unsigned const fid = fidOf(key);
    Key const lowest = (key & highestMac) == highestMac ? keyOf(fid, 0) : key + 1;
    Key nearest = keyOf(fid, highestMac) + 1;
    std::uint32_t found = 0;
    for (auto const& [candidate, entry] : _entries) {
        std::uint32_t const data = lowest <= candidate && candidate < nearest ? aged(candidate, entry) : 0;
        if (data != 0) {
            nearest = candidate;
            found = data;
        }
    }
    stage(found != 0 ? nearest : highestMac, found);
}

void Atu::stage(Key key, std::uint32_t data) {
    _registers.store(global1::atuMac01, static_cast<std::uint16_t>(key >> 32));
    _registers.store(global1::atuMac23, static_cast<std::uint16_t>(key >> 16));
    _registers.store(global1::atuMac45, static_cast<std::uint16_t>(key));
    _registers.store(global1::atuData, data);
}

void Atu::flushOrMove(bool staticsToo, bool allFids) {
    std::uint32_t const command = _registers.getStored(global1::atuData);
    bool const isMove = entryState.get(command) == moveState;
    for (auto entry = _entries.begin(); entry != _entries.end();) {
        auto& [key, contents] = *entry;
        bool const isMeant = (allFids || fidOf(key) == _registers.getStored(global1::atuFid)) &&
                             (staticsToo || !isStatic(key, contents.data));
        if (isMeant && isMove) {
            contents.data = moved(contents.data, command);
        }
        bool const isGone = isMeant && (!isMove || portVector.get(contents.data) == 0);
        entry = isGone ? _entries.erase(entry) : std::next(entry);
    }
}

// The source port stands where the state of an entry does.
void Atu::fetchViolation() {
    if (!_violation) {
        return;
    }
    stage(_violation->key, entryState.placed(_violation->source));
    _registers.store(global1::atuFid, fidOf(_violation->key));
    _registers.store(global1::atuOperation, globalOperation.placed(getViolation) | fullViolation.getMask());
    _violation.reset();
}

std::uint32_t Atu::find(unsigned fid, std::uint64_t address) const {
    auto const found = _entries.find(keyOf(fid, address));
    return found == _entries.end() ? 0 : aged(found->first, found->second);
}

void Atu::setEntry(unsigned fid, std::uint64_t address, std::uint32_t data) {
    load(keyOf(fid, address), data);
}

Atu::Learning Atu::tryLearning(unsigned fid, std::uint64_t address) const {
    return judge(_entries.find(keyOf(fid, address)));
}

Atu::Learning Atu::judge(Entries::const_iterator found) const {
    if (found != _entries.end()) {
        return isStatic(found->first, found->second.data) ? Learning::isStatic : Learning::learned;
    }
    return isFull() ? Learning::full : Learning::learned;
}

// The first violation stays until it is fetched: the chip has room for one.
Atu::Learning Atu::learn(unsigned fid, std::uint64_t address, std::uint32_t ports, unsigned source) {
    auto const found = _entries.find(keyOf(fid, address));
    Learning const outcome = judge(found);
    std::uint32_t const data = ports | entryState.placed(newest);
    if (outcome == Learning::learned && found != _entries.end()) {
        found->second = {data, now()};
    } else if (outcome == Learning::learned) {
        put(keyOf(fid, address), data);
    } else if (outcome == Learning::full && !_violation) {
        _violation = Violation{keyOf(fid, address), source};
    }
    return outcome;
}

void Atu::followAgeTime() {
    unsigned const ageTime = global1::ageTime.get(_registers.getStored(global1::atuControl));
    if (ageTime == _ageTime) {
        return;
    }
    _fullUntil = 0;
    dropAged();
    for (auto& [key, entry] : _entries) {
        entry = {aged(key, entry), now()};
    }
    _ageTime = ageTime;
    _stepNanoseconds =
        std::uint64_t{ageTime} * global1::secondsPerAgeUnit * VirtualClock::nanosecondsPerSecond / newest;
}

void Atu::clear() {
    _entries.clear();
    _fullUntil = 0;
    _violation.reset();
}

// Frames only make entries younger: what a look at all of them has found holds until the first is gone.
bool Atu::isFull() const {
    if (_entries.size() < capacity) {
        return false;
    }
    if (now() >= _fullUntil) {
        _fullUntil = never;
        for (auto const& [key, entry] : _entries) {
            _fullUntil = std::min(_fullUntil, goneAt(key, entry));
        }
    }
    return now() < _fullUntil;
}

std::uint64_t Atu::goneAt(Key key, Entry const& entry) const {
    bool const ages = _stepNanoseconds != 0 && !isStatic(key, entry.data);
    return ages ? entry.since + entryState.get(entry.data) * _stepNanoseconds : never;
}

std::uint32_t Atu::aged(Key key, Entry const& entry) const {
    std::uint64_t const end = goneAt(key, entry);
    if (end == never) {
        return entry.data;
    }
    return now() >= end ? 0 : entry.data - entryState.placed((now() - entry.since) / _stepNanoseconds);
}

void Atu::dropAged() {
    for (auto entry = _entries.begin(); entry != _entries.end();) {
        entry = aged(entry->first, entry->second) == 0 ? _entries.erase(entry) : std::next(entry);
    }
}

bool Atu::isStatic(std::uint64_t address, std::uint32_t data) {
    bool const isGroup = (address >> groupBit & 1) != 0;
    return isGroup || entryState.get(data) >= firstStaticState;
}

} // namespace simulation::marvell
