#include "simulation/AccessLog.hpp"

#include "simulation/VirtualClock.hpp"

#include <fmt/format.h>

#include <ostream>

namespace simulation {

namespace {

std::string hexadecimal(std::uint32_t value) {
    return value == 0 ? "0" : fmt::format("{:#x}", value);
}

std::vector<AccessLog::FieldChange> changedFields(Register const* description, std::uint32_t before,
                                                  std::uint32_t after) {
    std::vector<AccessLog::FieldChange> changes;
    if (description == nullptr) {
        return changes;
    }
    for (Register::Field const& field : description->getFields()) {
        std::uint32_t const old = field.get(before);
        std::uint32_t const now = field.get(after);
        if (old != now) {
            changes.push_back({field.name, old, now});
        }
    }
    return changes;
}

} // namespace

AccessLog::AccessLog(VirtualClock const& clock) : _clock(clock) {}

void AccessLog::addRead(std::shared_ptr<UnitIdentity const> const& unit, unsigned address, unsigned transfer,
                        std::uint32_t value) {
    std::lock_guard<std::mutex> const lock(_mutex);
    _records.push_back({_clock.getNanoseconds(), unit, address, transfer, Kind::read, value, value, value});
}

void AccessLog::addWrite(std::shared_ptr<UnitIdentity const> const& unit, unsigned address, unsigned transfer,
                         std::uint32_t value, std::uint32_t before, std::uint32_t after) {
    std::lock_guard<std::mutex> const lock(_mutex);
    _records.push_back({_clock.getNanoseconds(), unit, address, transfer, Kind::write, value, before, after});
}

void AccessLog::countBusAccess() {
    std::lock_guard<std::mutex> const lock(_mutex);
    ++_busAccesses;
}

void AccessLog::countMdioFrame() {
    std::lock_guard<std::mutex> const lock(_mutex);
    ++_mdioFrames;
}

std::size_t AccessLog::getSize() const {
    std::lock_guard<std::mutex> const lock(_mutex);
    return _records.size();
}

AccessLog::Entry AccessLog::getEntry(std::size_t index) const {
    std::lock_guard<std::mutex> const lock(_mutex);
    return decode(_records.at(index), index + 1);
}

std::vector<AccessLog::Entry> AccessLog::getEntries(std::size_t first) const {
    std::lock_guard<std::mutex> const lock(_mutex);
    std::vector<Entry> entries;
    for (std::size_t index = first; index < _records.size(); ++index) {
        entries.push_back(decode(_records[index], index + 1));
    }
    return entries;
}

std::uint64_t AccessLog::getBusAccesses() const {
    std::lock_guard<std::mutex> const lock(_mutex);
    return _busAccesses;
}

std::uint64_t AccessLog::getMdioFrames() const {
    std::lock_guard<std::mutex> const lock(_mutex);
    return _mdioFrames;
}

void AccessLog::print(std::ostream& out) const {
    std::lock_guard<std::mutex> const lock(_mutex);
    for (std::size_t index = 0; index < _records.size(); ++index) {
        out << line(decode(_records[index], index + 1)) << '\n';
    }
}

std::string AccessLog::line(Entry const& entry) {
    std::string text =
        fmt::format("{:6} {:4}.{:09}  {:<9}  {:<8}  {:<20}  {} 0x{:04x}", entry.sequence,
                    entry.nanoseconds / VirtualClock::nanosecondsPerSecond,
                    entry.nanoseconds % VirtualClock::nanosecondsPerSecond, entry.chip, entry.unit,
                    entry.registerName, entry.kind == Kind::read ? 'R' : 'W', entry.value);
    char const* separator = "  ";
    for (FieldChange const& change : entry.changes) {
        text += fmt::format("{}{} {}->{}", separator, change.field, hexadecimal(change.before),
                            hexadecimal(change.after));
        separator = ", ";
    }
    return text;
}

void AccessLog::clear() {
    std::lock_guard<std::mutex> const lock(_mutex);
    _records.clear();
    _busAccesses = 0;
    _mdioFrames = 0;
}

AccessLog::Entry AccessLog::decode(Record const& record, std::size_t sequence) {
    Entry entry{sequence,          record.nanoseconds,
                record.transfer,   record.unit->chip,
                record.unit->unit, record.unit->registerName(record.address),
                record.address,    record.kind,
                record.value,      {},
                record.unit};
    if (record.kind == Kind::write) {
        entry.changes =
            changedFields(record.unit->registers.find(record.address), record.before, record.after);
    }
    return entry;
}

} // namespace simulation
