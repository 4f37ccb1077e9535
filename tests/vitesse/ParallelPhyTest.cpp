#include <gtest/gtest.h>

#include <chrono>

#include "tests/support/ParallelBench.hpp"
#include "tests/support/ParallelScript.hpp"
#include "tests/support/WordScript.hpp"
#include "tests/vitesse/ThrownText.hpp"
#include "vitesse/VitesseParallelCommunication.hpp"

using namespace std::chrono_literals;
using test_support::Access;
using test_support::Accesses;
using test_support::gets;
using test_support::Lines;
using test_support::ParallelBench;
using test_support::ParallelScript;
using test_support::reads;
using test_support::sets;
using test_support::WordScript;
using test_support::writes;

namespace {

using Controller = VitesseParallelCommunication::MiiManagementLocation;

std::string const timeoutText = "PHY Read timed out after 1 second.";

Access const idle = reads(3, 1, 0, 0xFFFFFFFB);
Access const busy = reads(3, 1, 0, 0x00000004);

/// Register 2 of PHY 3.
Access const readCommand = writes(3, 1, 1, 0x04620000);

/// A second and one more has passed when the value is there: longer than the controller may take.
Access const busyForTwoSeconds = busy.taking(2s);

class ParallelPhyTest : public testing::Test {
protected:
    ParallelPhyTest() { script.verify(); }

    bool read() { return access.phyReadRegister(Controller::controller1, 3, 2, value); }
    bool write() { return access.phyWriteRegister(Controller::controller1, 3, 2, 0xBEEF); }

    ParallelBench<ParallelScript> bench;
    ParallelScript& script = bench.script;
    VitesseParallelCommunication access{(script.expect({writes(7, 0, 2, 0xC)}), bench.application), false};
    unsigned short value = 0x1234;
};

TEST_F(ParallelPhyTest, ReadsARegister) {
    script.expect({idle, readCommand, idle, reads(3, 1, 2, 0x0000ABCD)});
    EXPECT_TRUE(read());
    EXPECT_EQ(value, 0xABCD);
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(ParallelPhyTest, ReadsOnlyTheLowHalfOfTheData) {
    script.expect({idle, readCommand, idle, reads(3, 1, 2, 0xFFFE8001)});
    EXPECT_TRUE(read());
    EXPECT_EQ(value, 0x8001);
}

TEST_F(ParallelPhyTest, WritesARegisterAndDoesNotWait) {
    script.expect({idle, writes(3, 1, 1, 0x0062BEEF)});
    EXPECT_TRUE(write());
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(ParallelPhyTest, CutsTheAddressesToFiveBits) {
    struct {
        unsigned short phy;
        unsigned short reg;
        unsigned int readWord;
        unsigned int writeWord;
    } const cases[] = {{0, 0, 0x04000000, 0x00008001},   {1, 0, 0x04200000, 0x00208001},
                       {0, 1, 0x04010000, 0x00018001},   {31, 31, 0x07FF0000, 0x03FF8001},
                       {32, 32, 0x04000000, 0x00008001}, {0xFFE3, 0xFFE2, 0x04620000, 0x00628001}};
    for (auto const& expected : cases) {
        script.expect({idle, writes(3, 1, 1, expected.readWord), idle, reads(3, 1, 2, 7), idle,
                       writes(3, 1, 1, expected.writeWord)});
        EXPECT_TRUE(access.phyReadRegister(Controller::controller1, expected.phy, expected.reg, value));
        EXPECT_TRUE(access.phyWriteRegister(Controller::controller1, expected.phy, expected.reg, 0x8001));
        script.verify();
    }
}

TEST_F(ParallelPhyTest, TheControllerIsTheSubBlock) {
    script.expect({reads(3, 0, 0, 0), writes(3, 0, 1, 0x04620000), reads(3, 0, 0, 0), reads(3, 0, 2, 0x1111),
                   reads(3, 0, 0, 0), writes(3, 0, 1, 0x00622222)});
    EXPECT_TRUE(access.phyReadRegister(Controller::controller0, 3, 2, value));
    EXPECT_EQ(value, 0x1111);
    EXPECT_TRUE(access.phyWriteRegister(Controller::controller0, 3, 2, 0x2222));
}

TEST_F(ParallelPhyTest, WaitsForTheControllerWithoutPausing) {
    script.expect({busy, busy, idle, readCommand, busy, busy, busy, idle, reads(3, 1, 2, 0x5555)});
    EXPECT_TRUE(read());
    EXPECT_EQ(value, 0x5555);
    script.expect({busy, busy, idle, writes(3, 1, 1, 0x0062BEEF)});
    EXPECT_TRUE(write());
    EXPECT_EQ(bench.clock.getNanoseconds(), 0U);
}

TEST_F(ParallelPhyTest, OneSecondIsNotTooLong) {
    script.expect({busy.taking(1s), busy.taking(999'999'999ns), idle, readCommand, busy.taking(1s), idle,
                   reads(3, 1, 2, 0x5555)});
    EXPECT_TRUE(read());
    script.expect({busy.taking(1s), idle, writes(3, 1, 1, 0x0062BEEF)});
    EXPECT_TRUE(write());
}

TEST_F(ParallelPhyTest, AControllerThatIsBusyBeforeAReadEndsIt) {
    script.expect({busyForTwoSeconds});
    EXPECT_EQ(thrownText([&] { read(); }), timeoutText);
    script.verify();
    script.expect({busy, busy.taking(1s), busy.taking(1s)});
    EXPECT_EQ(thrownText([&] { read(); }), timeoutText);
    EXPECT_EQ(value, 0x1234);
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(ParallelPhyTest, AControllerThatStaysBusyAfterAReadCommandEndsIt) {
    script.expect({idle, readCommand, busyForTwoSeconds});
    EXPECT_EQ(thrownText([&] { read(); }), timeoutText);
    EXPECT_EQ(value, 0x1234);
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(ParallelPhyTest, EachWaitHasItsOwnSecond) {
    script.expect({busy.taking(1s), idle, readCommand, busy.taking(1s), idle, reads(3, 1, 2, 0x5555)});
    EXPECT_TRUE(read());
}

TEST_F(ParallelPhyTest, AControllerThatIsBusyBeforeAWriteEndsItWithTheSameText) {
    script.expect({busyForTwoSeconds});
    EXPECT_EQ(thrownText([&] { write(); }), timeoutText);
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(ParallelPhyTest, TheSecondCanChangeTwiceInLittleMoreThanOne) {
    bench.clock.setWallClockPhase(999'999'999);
    script.expect({busy.taking(1ns), busy.taking(999'999'999ns), busy.taking(1ns)});
    EXPECT_EQ(thrownText([&] { write(); }), timeoutText);
}

TEST_F(ParallelPhyTest, APhyThatDoesNotAnswerIsReportedAndThrown) {
    script.expect({idle, readCommand, idle, reads(3, 1, 2, 0x0001ABCD)});
    EXPECT_EQ(thrownText([&] { read(); }), "No reply from phy");
    EXPECT_EQ(value, 0x1234);
    EXPECT_EQ(bench.log.take(),
              (Lines{"error|VitesseParallelCommunication::phyReadRegister Failed to read Phy Address 3\n"}));
}

TEST_F(ParallelPhyTest, FailedBusAccessesAreReportedAndCountAsZero) {
    script.expect({idle.failing(), readCommand.failing(), idle.failing(), reads(3, 1, 2, 7).failing()});
    EXPECT_TRUE(read());
    EXPECT_EQ(value, 0);
    EXPECT_EQ(bench.log.take(),
              (Lines{"error|Failed Read : address f300c400\n", "error|Failed Write : address f300c404\n",
                     "error|Failed Read : address f300c400\n", "error|Failed Read : address f300c408\n"}));
    script.expect({idle, writes(3, 1, 1, 0x0062BEEF).failing()});
    EXPECT_TRUE(write());
    EXPECT_EQ(bench.log.take(), (Lines{"error|Failed Write : address f300c404\n"}));
}

/// The same words on the bus itself.
TEST(ParallelPhyBusTest, ARegisterOfThePhyTakesThreeIndirectReads) {
    ParallelBench<WordScript> bench;
    bench.script.expect({sets(0x1C008, 0xC), gets(0x0C400, 0xBAD), gets(0x1C0C0, 0x10), gets(0x1C0B0, 0),
                         sets(0x0C404, 0x04620000), gets(0x0C400, 0xBAD), gets(0x1C0C0, 0x10),
                         gets(0x1C0B0, 0), gets(0x0C408, 0xBAD), gets(0x1C0C0, 0x10),
                         gets(0x1C0B0, 0x00004242)});
    VitesseParallelCommunication access(bench.application, false);
    unsigned short value = 0;
    EXPECT_TRUE(access.phyReadRegister(Controller::controller1, 3, 2, value));
    EXPECT_EQ(value, 0x4242);
}

} // namespace
