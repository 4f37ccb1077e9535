#include "simulation/88e6096/Vtu.hpp"

#include "simulation/88e6096/Registers.hpp"

namespace simulation::marvell {

namespace {

constexpr unsigned highestVid = vtu::vid.getMask();

unsigned dataRegister(unsigned port) {
    return global1::vtuData0 + port / vtu::portsPerRegister;
}

// The key all ones is where a search starts that is to find the lowest entry.
template <typename Table>
typename Table::const_iterator following(Table const& table, unsigned key, unsigned highest) {
    return key == highest ? table.begin() : table.upper_bound(key);
}

} // namespace

Vtu::Vtu(Context& context, RegisterFile& registers)
    : CommandUnit(context, registers, global1::vtuOperation, context.options.vtuBusyNanoseconds),
      _context(context) {}

void Vtu::perform(std::uint32_t word) {
    switch (globalOperation.get(word)) {
    case vtu::flushAll:
        return flush();
    case vtu::vtuLoad:
        return loadVtu();
    case vtu::vtuGetNext:
        return nextVtu();
    case vtu::stuLoad:
        return loadStu();
    case vtu::stuGetNext:
        return nextStu();
    case vtu::getViolation:
        return fetchViolation();
    default:
        reportMeaningless("no such operation");
    }
}

void Vtu::flush() {
    _vtu.clear();
    _stu.clear();
}

void Vtu::loadVtu() {
    std::uint32_t const key = _registers.getStored(global1::vtuVid);
    unsigned const vid = vtu::vid.get(key);
    if (!vtu::valid.isSet(key)) {
        _vtu.erase(vid);
        return;
    }
    VtuEntry entry;
    entry.fid = _registers.getStored(global1::vtuFid);
    entry.sid = _registers.getStored(global1::vtuSid);
    entry.memberTags = staged(vtu::memberTags);
    entry.priorityOverride = vtu::priorityOverride.get(_registers.getStored(global1::vtuData2));
    setEntry(vid, entry);
}

void Vtu::nextVtu() {
    unsigned const vid = vtu::vid.get(_registers.getStored(global1::vtuVid));
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
    stage(vtu::memberTags, entry.memberTags);
    _registers.store(global1::vtuData2, _registers.getStored(global1::vtuData2) |
                                            vtu::priorityOverride.placed(entry.priorityOverride));
}

void Vtu::loadStu() {
    unsigned const sid = _registers.getStored(global1::vtuSid);
    if (!vtu::valid.isSet(_registers.getStored(global1::vtuVid))) {
        _stu.erase(sid);
        return;
    }
    setEntry(sid, StuEntry{staged(vtu::portStates)});
}

// Like a VTU search, it replaces all of the data registers: member tags that stand there are lost.
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
    stage(vtu::portStates, found->second.portStates);
}

void Vtu::fetchViolation() {
    if (_violations.empty()) {
        return;
    }
    PendingViolation const violation = _violations.front();
    _violations.pop_front();
    stageVid(violation.vid, false);
    Field const& kind = violation.kind == Violation::miss ? vtu::missViolation : vtu::memberViolation;
    _registers.store(global1::vtuOperation, globalOperation.placed(vtu::getViolation) | kind.getMask() |
                                                vtu::sourcePort.placed(violation.sourcePort));
}

bool Vtu::hasViolation() const {
    return !_violations.empty();
}

Vtu::VtuEntry const* Vtu::findVlan(unsigned vid) const {
    auto const found = _vtu.find(vid);
    return found == _vtu.end() ? nullptr : &found->second;
}

Vtu::StuEntry const* Vtu::findStates(unsigned sid) const {
    auto const found = _stu.find(sid);
    return found == _stu.end() ? nullptr : &found->second;
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

void Vtu::noteViolation(unsigned vid, unsigned sourcePort, Violation violation) {
    if (!hasViolation()) {
        addViolation(vid, sourcePort, violation);
    }
}

unsigned Vtu::highestSid(Marvell88E6096Options const& options) {
    return bit(static_cast<unsigned>(options.sidWidth)) - 1;
}

Vtu::PortCodes Vtu::staged(Field const* fields) const {
    PortCodes codes{};
    for (unsigned port = 0; port < codes.size(); ++port) {
        codes[port] = fields[port].get(_registers.getStored(dataRegister(port)));
    }
    return codes;
}

void Vtu::clearData() {
    for (unsigned address : {global1::vtuData0, global1::vtuData1, global1::vtuData2}) {
        _registers.store(address, 0);
    }
}

void Vtu::stage(Field const* fields, PortCodes const& codes) {
    clearData();
    for (unsigned port = 0; port < codes.size(); ++port) {
        unsigned const address = dataRegister(port);
        _registers.store(address, _registers.getStored(address) | fields[port].placed(codes[port]));
    }
}

void Vtu::stageVid(unsigned vid, bool valid) {
    _registers.store(global1::vtuVid, vid | vtu::valid.placed(valid));
}

void Vtu::stageValid(bool valid) {
    stageVid(vtu::vid.get(_registers.getStored(global1::vtuVid)), valid);
}

} // namespace simulation::marvell
