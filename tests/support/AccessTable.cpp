#include "tests/support/AccessTable.hpp"

#include <gtest/gtest.h>

#include <utility>

namespace test_support {

AccessTable::~AccessTable() {
    verify();
}

void AccessTable::expect(Accesses accesses) {
    verify();
    _accesses = std::move(accesses);
}

void AccessTable::verify() {
    if (!_givenUp && _next < _accesses.size()) {
        ADD_FAILURE() << "access " << _next << " of " << _accesses.size()
                      << " never came: " << _accesses[_next].describe();
    }
    _accesses.clear();
    _next = 0;
    _givenUp = false;
}

Access const* AccessTable::take(Access const& actual) {
    if (_givenUp) {
        return nullptr;
    }
    if (_next < _accesses.size() && _accesses[_next].matches(actual)) {
        Access const& access = _accesses[_next++];
        access.passTime();
        return &access;
    }
    _givenUp = true;
    std::string const expected = _next < _accesses.size() ? _accesses[_next].describe() : "none any more";
    ADD_FAILURE() << "access " << _next << ": expected " << expected << ", came " << actual.describe();
    return nullptr;
}

} // namespace test_support
