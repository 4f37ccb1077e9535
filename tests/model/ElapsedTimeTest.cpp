#include <gtest/gtest.h>

#include "model/ElapsedTime.hpp"

namespace {

struct ElapsedCase {
    timespec start;
    timespec end;
    timespec elapsed;
};

TEST(ElapsedTime, BorrowsASecondWhenTheNanosecondsAreNegative) {
    ElapsedCase const cases[] = {
        {{1, 900'000'000}, {2, 100'000'000}, {0, 200'000'000}},
        {{1, 100'000'000}, {2, 100'000'000}, {1, 0}},
        {{1, 100'000'000}, {2, 100'000'001}, {1, 1}},
        {{1, 100'000'001}, {2, 100'000'000}, {0, 999'999'999}},
        {{7, 5}, {7, 5}, {0, 0}},
        {{0, 999'999'999}, {10, 0}, {9, 1}},
    };
    for (auto const& expected : cases) {
        timespec const elapsed = elapsedTime(expected.start, expected.end);
        EXPECT_EQ(elapsed.tv_sec, expected.elapsed.tv_sec);
        EXPECT_EQ(elapsed.tv_nsec, expected.elapsed.tv_nsec);
    }
}

} // namespace
