#include "simulation/88e6096/Atu.hpp"

#include "simulation/88e6096/Registers.hpp"

namespace simulation::marvell {

namespace {

using namespace atu;

constexpr unsigned unused = 0;
constexpr unsigned firstStaticState = 8;
constexpr unsigned moveState = 0xF;

/// Fields of the data register when a command moves entries from one port to another.
constexpr Field fromPort{"FromPort", 7, 4};
constexpr Field toPort{"ToPort", 11, 8};

constexpr std::uint64_t highestMac = 0xFFFF'FFFF'FFFF;
constexpr unsigned groupBit = 40;

// The entry's data after the move; without a destination port when the port to move to does not exist.
std::uint32_t moved(std::uint32_t data, std::uint32_t command) {
    std::uint32_t const from = portVector.placed(bit(fromPort.get(command)));
    std::uint32_t const to = portVector.placed(bit(toPort.get(command)));
    return (data & from) == 0 ? data : (data & ~from) | to;
}

} // namespace

Atu::Atu(Context& context, RegisterFile& registers)
    : CommandUnit(context, registers, global1::atuOperation, context.options.atuBusyNanoseconds) {}

void Atu::perform(std::uint32_t word) {
    switch (globalOperation.get(word)) {
    case atu::flushAll:
        return flushOrMove(true, true);
    case flushNonStatic:
        return flushOrMove(false, true);
    case loadEntry:
        return load();
    case getNext:
        return next();
    case flushFid:
        return flushOrMove(true, false);
    case flushFidNonStatic:
        return flushOrMove(false, false);
    case getViolation:
        // Violations come from frames, of which there are none.
        return;
    default:
        reportMeaningless("no such operation");
    }
}

Atu::Key Atu::stagedKey() const {
    std::uint64_t mac = 0;
    for (unsigned address : {global1::atuMac01, global1::atuMac23, global1::atuMac45}) {
        mac = mac << 16 | _registers.getStored(address);
    }
    return {_registers.getStored(global1::atuFid), mac};
}

void Atu::load() {
    std::uint32_t const data = _registers.getStored(global1::atuData);
    if (entryState.get(data) == unused) {
        _entries.erase(stagedKey());
    } else {
        _entries[stagedKey()] = data;
    }
}

void Atu::next() {
    Key const key = stagedKey();
    auto const found =
        key.second == highestMac ? _entries.lower_bound({key.first, 0}) : _entries.upper_bound(key);
    bool const isHit = found != _entries.end() && found->first.first == key.first;
    std::uint64_t const mac = isHit ? found->first.second : highestMac;
    _registers.store(global1::atuMac01, static_cast<std::uint16_t>(mac >> 32));
    _registers.store(global1::atuMac23, static_cast<std::uint16_t>(mac >> 16));
    _registers.store(global1::atuMac45, static_cast<std::uint16_t>(mac));
    _registers.store(global1::atuData, isHit ? found->second : 0);
}

void Atu::flushOrMove(bool staticsToo, bool allFids) {
    std::uint32_t const command = _registers.getStored(global1::atuData);
    bool const isMove = entryState.get(command) == moveState;
    for (auto entry = _entries.begin(); entry != _entries.end();) {
        bool const isMeant = (allFids || entry->first.first == _registers.getStored(global1::atuFid)) &&
                             (staticsToo || !isStatic(entry->first, entry->second));
        if (isMeant && isMove) {
            entry->second = moved(entry->second, command);
        }
        bool const isGone = isMeant && (!isMove || portVector.get(entry->second) == 0);
        entry = isGone ? _entries.erase(entry) : std::next(entry);
    }
}

bool Atu::isStatic(Key const& key, std::uint32_t data) {
    bool const isGroup = (key.second >> groupBit & 1) != 0;
    return isGroup || entryState.get(data) >= firstStaticState;
}

} // namespace simulation::marvell
