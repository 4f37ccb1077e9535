#pragma once

#include <cstddef>

#include "tests/support/Access.hpp"

namespace test_support {

/// The accesses that must take place, exactly these and in this order. Anything else fails the test:
/// an access that is not the next one of the table, and a row that nothing came for.
class AccessTable {
public:
    AccessTable() = default;
    ~AccessTable();
    AccessTable(AccessTable const&) = delete;
    AccessTable& operator=(AccessTable const&) = delete;

    /// Checks that the previous table is used up and starts the next one.
    void expect(Accesses accesses);

    /// Reports the rows that nothing came for; the table is empty afterwards.
    void verify();

    /// What the table says to an access that takes place, time passed; null, after a report, when it
    /// is not the next row. After one such report the rest of the table is given up.
    Access const* take(Access const& actual);

private:
    Accesses _accesses;
    std::size_t _next = 0;
    bool _givenUp = false;
};

} // namespace test_support
