#include "simulation/88e6096/Vtu.hpp"

#include "simulation/88e6096/Registers.hpp"

namespace simulation::marvell {

namespace {

enum Operation : unsigned {
    flushAll = 1,
    vtuLoad = 3,
    vtuGetNext = 4,
    stuLoad = 5,
    stuGetNext = 6,
    getViolation = 7,
};

constexpr unsigned highestVid = 0xFFF;
constexpr unsigned portsPerRegister = 4;
constexpr unsigned bitsPerPort = 4;
constexpr unsigned bitsPerCode = 2;
/// Position of the codes in a port's four bits.
constexpr unsigned memberTag = 0;
constexpr unsigned portState = 2;

constexpr unsigned missViolation = 5;
constexpr unsigned memberViolation = 6;

unsigned dataRegister(unsigned port) {
    return global1::vtuData0 + port / portsPerRegister;
}

unsigned dataShift(unsigned port, unsigned low) {
    return port % portsPerRegister * bitsPerPort + low;
}

// The key all ones is where a search starts that is to find the lowest entry.
template <typename Table>
typename Table::const_iterator following(Table const& table, unsigned key, unsigned highest) {
    return key == highest ? table.begin() : table.upper_bound(key);
}

} // namespace

Vtu::Vtu(Context& context, RegisterFile& registers)
    : _context(context),
      _registers(registers),
      _timer(context.services.clock, context.options.vtuBusyNanoseconds) {}

void Vtu::operate(std::uint32_t word) {
    if (!startCommand(_registers, global1::vtuOperation, word, _timer)) {
        return;
    }
    switch (bitsOf(word, globalOperationHigh, globalOperationLow)) {
    case flushAll:
        return flush();
    case vtuLoad:
        return loadVtu();
    case vtuGetNext:
        return nextVtu();
    case stuLoad:
        return loadStu();
    case stuGetNext:
        return nextStu();
    case getViolation:
        return fetchViolation();
    default:
        _registers.report(MisuseReport::Kind::meaninglessCommand, global1::vtuOperation, "no such operation");
    }
}

void Vtu::flush() {
    _vtu.clear();
    _stu.clear();
}

void Vtu::loadVtu() {
    std::uint32_t const key = _registers.getStored(global1::vtuVid);
    unsigned const vid = bitsOf(key, global1::vid.high, global1::vid.low);
    if (!isSet(key, global1::valid)) {
        _vtu.erase(vid);
        return;
    }
    VtuEntry entry;
    entry.fid = _registers.getStored(global1::vtuFid);
    entry.sid = _registers.getStored(global1::vtuSid);
    for (unsigned port = 0; port < entry.memberTags.size(); ++port) {
        entry.memberTags[port] = stagedBits(port, memberTag);
    }
    entry.priorityOverride = bitsOf(_registers.getStored(global1::vtuData2), global1::priorityOverride.high,
                                    global1::priorityOverride.low);
    setEntry(vid, entry);
}

void Vtu::nextVtu() {
    unsigned const vid = bitsOf(_registers.getStored(global1::vtuVid), global1::vid.high, global1::vid.low);
    auto const found = following(_vtu, vid, highestVid);
    if (found == _vtu.end()) {
        stageVid(highestVid, false);
        if (_context.options.searchMiss == Marvell88E6096Options::SearchMiss::zeros) {
            _registers.store(global1::vtuFid, 0);
            _registers.store(global1::vtuSid, 0);
            clearData();
        }
        return;
    }
    VtuEntry const& entry = found->second;
    stageVid(found->first, true);
    _registers.store(global1::vtuFid, entry.fid);
    _registers.store(global1::vtuSid, entry.sid);
    clearData();
    for (unsigned port = 0; port < entry.memberTags.size(); ++port) {
        stageBits(port, memberTag, entry.memberTags[port]);
    }
    _registers.store(global1::vtuData2, _registers.getStored(global1::vtuData2) |
                                            placed(entry.priorityOverride, global1::priorityOverride.high,
                                                   global1::priorityOverride.low));
}

void Vtu::loadStu() {
    unsigned const sid = _registers.getStored(global1::vtuSid);
    if (!isSet(_registers.getStored(global1::vtuVid), global1::valid)) {
        _stu.erase(sid);
        return;
    }
    StuEntry entry;
    for (unsigned port = 0; port < entry.portStates.size(); ++port) {
        entry.portStates[port] = stagedBits(port, portState);
    }
    setEntry(sid, entry);
}

// Unlike a VTU search, which leaves no states behind, this one takes the member tags of the VLAN that
// was being worked on with it.
void Vtu::nextStu() {
    unsigned const highest = highestSid(_context.options);
    auto const found = following(_stu, _registers.getStored(global1::vtuSid), highest);
    stageValid(found != _stu.end());
    if (found == _stu.end()) {
        _registers.store(global1::vtuSid, highest);
        if (_context.options.searchMiss == Marvell88E6096Options::SearchMiss::zeros) {
            clearData();
        }
        return;
    }
    _registers.store(global1::vtuSid, found->first);
    clearData();
    for (unsigned port = 0; port < found->second.portStates.size(); ++port) {
        stageBits(port, portState, found->second.portStates[port]);
    }
}

void Vtu::fetchViolation() {
    if (_violations.empty()) {
        return;
    }
    PendingViolation const violation = _violations.front();
    _violations.pop_front();
    stageVid(violation.vid, false);
    unsigned const kind = violation.kind == Violation::miss ? missViolation : memberViolation;
    std::uint32_t const operation = placed(getViolation, globalOperationHigh, globalOperationLow);
    _registers.store(global1::vtuOperation, operation | maskOf(kind, kind) | violation.sourcePort);
}

CommandTimer& Vtu::getTimer() {
    return _timer;
}

CommandTimer const& Vtu::getTimer() const {
    return _timer;
}

bool Vtu::hasViolation() const {
    return !_violations.empty();
}

std::map<unsigned, Vtu::VtuEntry> const& Vtu::getVtu() const {
    return _vtu;
}

std::map<unsigned, Vtu::StuEntry> const& Vtu::getStu() const {
    return _stu;
}

void Vtu::setEntry(unsigned vid, VtuEntry const& entry) {
    _vtu[vid] = entry;
}

void Vtu::setEntry(unsigned sid, StuEntry const& entry) {
    _stu[sid] = entry;
}

void Vtu::addViolation(unsigned vid, unsigned sourcePort, Violation violation) {
    _violations.push_back({vid, sourcePort, violation});
}

unsigned Vtu::highestSid(Marvell88E6096Options const& options) {
    return maskOf(static_cast<unsigned>(options.sidWidth) - 1, 0);
}

unsigned Vtu::stagedBits(unsigned port, unsigned low) const {
    unsigned const shift = dataShift(port, low);
    return bitsOf(_registers.getStored(dataRegister(port)), shift + bitsPerCode - 1, shift);
}

void Vtu::clearData() {
    for (unsigned address : {global1::vtuData0, global1::vtuData1, global1::vtuData2}) {
        _registers.store(address, 0);
    }
}

void Vtu::stageBits(unsigned port, unsigned low, unsigned value) {
    unsigned const shift = dataShift(port, low);
    unsigned const address = dataRegister(port);
    _registers.store(address, _registers.getStored(address) | placed(value, shift + bitsPerCode - 1, shift));
}

void Vtu::stageVid(unsigned vid, bool valid) {
    _registers.store(global1::vtuVid, vid | placed(valid ? 1 : 0, global1::valid, global1::valid));
}

void Vtu::stageValid(bool valid) {
    stageVid(bitsOf(_registers.getStored(global1::vtuVid), global1::vid.high, global1::vid.low), valid);
}

} // namespace simulation::marvell
