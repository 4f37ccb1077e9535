#include "tests/support/Access.hpp"

#include <cstdint>
#include <cstdio>

#include "simulation/VirtualClock.hpp"

namespace test_support {

namespace {

char const* nameOf(Access::Kind kind) {
    switch (kind) {
    case Access::Kind::reads:
        return "reads";
    case Access::Kind::writes:
        return "writes";
    case Access::Kind::phyReads:
        return "phyReads";
    case Access::Kind::phyWrites:
        return "phyWrites";
    case Access::Kind::frameReads:
        return "frameReads";
    case Access::Kind::frameWrites:
        return "frameWrites";
    case Access::Kind::gets:
        return "gets";
    case Access::Kind::sets:
        return "sets";
    }
    return "?";
}

} // namespace

Access Access::failing() const {
    Access access = *this;
    access.fails = true;
    return access;
}

Access Access::taking(std::chrono::nanoseconds time) const {
    Access access = *this;
    access.duration = time;
    return access;
}

bool Access::isRead() const {
    return kind == Kind::reads || kind == Kind::phyReads || kind == Kind::frameReads || kind == Kind::gets;
}

bool Access::matches(Access const& actual) const {
    return kind == actual.kind && unit == actual.unit && number == actual.number &&
           (isRead() || value == actual.value);
}

std::string Access::describe() const {
    char text[64];
    std::snprintf(text, sizeof text, "%s 0x%02X.0x%02X = 0x%04X", nameOf(kind), unit, number, value);
    return text;
}

void Access::passTime() const {
    if (auto* const clock = simulation::VirtualClock::adopted()) {
        clock->advanceNanoseconds(static_cast<std::uint64_t>(duration.count()));
    }
}

Access reads(unsigned int device, unsigned int registerNumber, unsigned int value) {
    return {Access::Kind::reads, device, registerNumber, value};
}

Access writes(unsigned int device, unsigned int registerNumber, unsigned int value) {
    return {Access::Kind::writes, device, registerNumber, value};
}

Access reads(unsigned int block, unsigned int subBlock, unsigned int address, unsigned int value) {
    return reads(block << 16 | subBlock, address, value);
}

Access writes(unsigned int block, unsigned int subBlock, unsigned int address, unsigned int value) {
    return writes(block << 16 | subBlock, address, value);
}

Access phyReads(unsigned int phy, unsigned int registerNumber, unsigned int value) {
    return {Access::Kind::phyReads, phy, registerNumber, value};
}

Access phyWrites(unsigned int phy, unsigned int registerNumber, unsigned int value) {
    return {Access::Kind::phyWrites, phy, registerNumber, value};
}

Access frameReads(unsigned int address, unsigned int registerNumber, unsigned int value) {
    return {Access::Kind::frameReads, address, registerNumber, value};
}

Access frameWrites(unsigned int address, unsigned int registerNumber, unsigned int value) {
    return {Access::Kind::frameWrites, address, registerNumber, value};
}

Access gets(unsigned int offset, unsigned int value) {
    return {Access::Kind::gets, 0, offset, value};
}

Access sets(unsigned int offset, unsigned int value) {
    return {Access::Kind::sets, 0, offset, value};
}

Accesses operator+(Accesses first, Accesses const& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

} // namespace test_support
