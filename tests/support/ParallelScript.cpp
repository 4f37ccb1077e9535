#include "tests/support/ParallelScript.hpp"

#include <gtest/gtest.h>

namespace test_support {

namespace {

constexpr unsigned int statusOffset = 0x1'C0C0;
constexpr unsigned int dataOffset = 0x1'C0B0;
constexpr unsigned int readyBit = 0x10;
constexpr unsigned int noValue = 0xBAD0'BAD0;

unsigned int blockAt(unsigned int offset) {
    return offset >> 14;
}

unsigned int subBlockAt(unsigned int offset) {
    return offset >> 10 & 0xF;
}

unsigned int addressAt(unsigned int offset) {
    return offset >> 2 & 0xFF;
}

} // namespace

void ParallelScript::verify() {
    _table.verify();
    expectNoFetch();
}

void ParallelScript::expectNoFetch() {
    EXPECT_EQ(_fetch, Fetch::none) << "a value was asked for and never collected";
    _fetch = Fetch::none;
}

bool ParallelScript::read(unsigned int offset, unsigned int& value) {
    if (offset == statusOffset) {
        return readStatus(value);
    }
    if (offset == dataOffset) {
        return readData(value);
    }
    expectNoFetch();
    Access const* const access =
        _table.take(reads(blockAt(offset), subBlockAt(offset), addressAt(offset), 0));
    _lastAccessFailed = access == nullptr || access->fails;
    if (_lastAccessFailed) {
        return false;
    }
    bool const direct = blockAt(offset) == 4 || blockAt(offset) == 7;
    _fetch = direct ? Fetch::none : Fetch::requested;
    _fetched = access->value;
    value = direct ? access->value : noValue;
    return true;
}

bool ParallelScript::readStatus(unsigned int& value) {
    EXPECT_NE(_fetch, Fetch::none) << "nothing is being fetched";
    _fetch = Fetch::ready;
    value = readyBit;
    return true;
}

bool ParallelScript::readData(unsigned int& value) {
    EXPECT_EQ(_fetch, Fetch::ready) << "the value is not there yet";
    _fetch = Fetch::none;
    value = _fetched;
    return true;
}

bool ParallelScript::write(unsigned int offset, unsigned int value) {
    expectNoFetch();
    Access const* const access =
        _table.take(writes(blockAt(offset), subBlockAt(offset), addressAt(offset), value));
    _lastAccessFailed = access == nullptr || access->fails;
    return !_lastAccessFailed;
}

} // namespace test_support
