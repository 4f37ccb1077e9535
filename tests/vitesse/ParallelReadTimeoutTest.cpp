#include <gtest/gtest.h>

#include <chrono>

#include "tests/support/ParallelBench.hpp"
#include "tests/support/WordScript.hpp"
#include "tests/vitesse/ThrownText.hpp"
#include "vitesse/VitesseParallelCommunication.hpp"

using namespace std::chrono_literals;
using test_support::Access;
using test_support::Accesses;
using test_support::gets;
using test_support::Lines;
using test_support::ParallelBench;
using test_support::sets;
using test_support::WordScript;

namespace {

std::string const stuckText = "switch timed out after attempted to read a register 5 times.";

Access const start = gets(0x05040, 0xBADBAD);
Access const notReady = gets(0x1C0C0, 0xFFFFFFEF);
Access const ready = gets(0x1C0C0, 0x00000010);
Access const data = gets(0x1C0B0, 0x89ABCDEF);

/// A poll at which the read has taken too long, and the read being started anew.
Accesses const reissue{notReady.taking(2s), start};

Accesses times(unsigned int count, Accesses const& rows) {
    Accesses all;
    for (unsigned int i = 0; i < count; ++i) {
        all = all + rows;
    }
    return all;
}

/// Register 16 of port 4, which is read in two steps.
class ParallelReadTimeoutTest : public testing::Test {
protected:
    ParallelReadTimeoutTest() { script.verify(); }

    void expectValue(Accesses const& table) {
        unsigned int value = 0;
        script.expect(table);
        EXPECT_TRUE(access.readRegister({1, 4, 16}, value));
        script.verify();
        EXPECT_EQ(value, 0x89ABCDEFU);
        EXPECT_EQ(bench.log.take(), Lines{});
    }

    void expectStuck(Accesses const& table) {
        unsigned int value = 0;
        script.expect(table);
        EXPECT_EQ(thrownText([&] { access.readRegister({1, 4, 16}, value); }), stuckText);
        script.verify();
        EXPECT_EQ(bench.log.take(), Lines{});
    }

    ParallelBench<WordScript> bench;
    WordScript& script = bench.script;
    VitesseParallelCommunication access{(script.expect({sets(0x1C008, 0xC)}), bench.application), false};
};

TEST_F(ParallelReadTimeoutTest, WaitsForTheReadyBitWithoutPausing) {
    expectValue(Accesses{start} + times(1000, {notReady}) + Accesses{ready, data});
    EXPECT_EQ(bench.clock.getNanoseconds(), 0U);
}

TEST_F(ParallelReadTimeoutTest, OneSecondIsNotTooLong) {
    expectValue({start, notReady.taking(1s), ready, data});
    expectValue({start, notReady.taking(1s), notReady.taking(999'999'999ns), ready, data});
}

TEST_F(ParallelReadTimeoutTest, TheReadIsStartedAnewWhenTheSecondHasChangedTwice) {
    expectValue({start, notReady.taking(1s), notReady.taking(1s), start, ready, data});
    expectValue({start, notReady.taking(2s), start, notReady, ready, data});
}

TEST_F(ParallelReadTimeoutTest, TheSecondCanChangeTwiceInLittleMoreThanOne) {
    bench.clock.setWallClockPhase(999'999'999);
    expectValue({start, notReady.taking(1ns), notReady.taking(999'999'999ns), notReady.taking(1ns), start,
                 ready, data});
}

TEST_F(ParallelReadTimeoutTest, TheTimeOfTheFirstStepDoesNotCount) {
    expectValue({start.taking(5s), notReady, ready, data});
}

TEST_F(ParallelReadTimeoutTest, AValueThatIsReadyTooLateIsStillAskedForAgain) {
    expectValue({start, ready.taking(2s), start, data});
    expectValue({start, notReady.taking(1s), ready.taking(1s), start, data});
}

TEST_F(ParallelReadTimeoutTest, TheWaitStartsAnewWithTheRead) {
    expectValue({start, notReady.taking(2s), start, notReady.taking(1s), ready, data});
    expectValue(
        {start, notReady.taking(2s), start, notReady.taking(1s), notReady.taking(1s), start, ready, data});
}

TEST_F(ParallelReadTimeoutTest, AFailedRepetitionIsNotReported) {
    expectValue({start, notReady.taking(2s), start.failing(), ready, data});
}

TEST_F(ParallelReadTimeoutTest, FourRepetitionsAreGone) {
    expectValue(Accesses{start} + times(4, reissue) + Accesses{ready, data});
}

TEST_F(ParallelReadTimeoutTest, TheFifthRepetitionEndsTheRead) {
    expectStuck(Accesses{start} + times(5, reissue));
}

TEST_F(ParallelReadTimeoutTest, AValueThatIsReadyTooLateForTheFifthTimeIsLost) {
    expectStuck(Accesses{start} + times(4, reissue) + Accesses{ready.taking(2s), start});
}

TEST_F(ParallelReadTimeoutTest, EveryStuckReadGetsItsFiveRepetitions) {
    for (int read = 0; read < 3; ++read) {
        expectStuck(Accesses{start} + times(5, reissue));
    }
    expectValue(Accesses{start} + times(4, reissue) + Accesses{ready, data});
}

TEST_F(ParallelReadTimeoutTest, ASuccessfulReadForgetsItsRepetitions) {
    for (int read = 0; read < 3; ++read) {
        expectValue(Accesses{start} + times(3, reissue) + Accesses{ready, data});
    }
    expectStuck(Accesses{start} + times(5, reissue));
}

TEST_F(ParallelReadTimeoutTest, RepetitionsAreForgottenByObjectsTogether) {
    script.expect({sets(0x1C008, 0xC)});
    VitesseParallelCommunication other(bench.application, false);
    unsigned int value = 0;
    script.expect(Accesses{start} + times(5, reissue));
    EXPECT_EQ(thrownText([&] { other.readRegister({1, 4, 16}, value); }), stuckText);
    expectStuck(Accesses{start} + times(5, reissue));
}

} // namespace
