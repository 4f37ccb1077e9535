#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <set>
#include <utility>

#include "tests/support/Access.hpp"

namespace test_support {

/// Runs `operation`, which must make exactly these accesses and return true.
template <typename Script, typename Operation>
void expectSuccess(Script& script, Accesses const& table, Operation operation) {
    script.expect(table);
    EXPECT_TRUE(operation());
    script.verify();
}

/// Runs `operation` once for every row of the table, with that row failing: the operation must
/// return false and make no access after it.
/// \param except numbers of the rows whose failure does not stop the operation.
template <typename Script, typename Operation>
void expectEachFailureStops(Script& script, Accesses const& table, Operation operation,
                            std::set<std::size_t> const& except = {}) {
    for (std::size_t step = 0; step < table.size(); ++step) {
        if (except.count(step) != 0) {
            continue;
        }
        SCOPED_TRACE("failing: access " + std::to_string(step) + ", " + table[step].describe());
        Accesses cut(table.begin(), table.begin() + static_cast<Accesses::difference_type>(step) + 1);
        cut.back() = cut.back().failing();
        script.expect(std::move(cut));
        EXPECT_FALSE(operation());
        script.verify();
    }
}

/// Both of them: the whole table with success, then each single failure.
template <typename Script, typename Operation>
void expectStrict(Script& script, Accesses const& table, Operation operation) {
    expectSuccess(script, table, operation);
    expectEachFailureStops(script, table, operation);
}

} // namespace test_support
