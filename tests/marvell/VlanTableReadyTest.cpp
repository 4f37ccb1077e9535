#include "tests/marvell/SwitchTest.hpp"
#include "tests/support/TestDocument.hpp"

using namespace std::chrono_literals;
using test_support::Accesses;
using test_support::Lines;
using test_support::reads;

namespace {

Lines const vtuTimeout{"error|MarvellSwitch::waitVlanTableReady Vlan Table ready timeout\n"};

/// Bit 15 of Global 1 (device 0x1B) register 0x05 means that the table unit is busy.
class VlanTableReadyTest : public SwitchTest {
protected:
    VlanTableReadyTest() : SwitchTest(1) {}

    /// \return how waiting ended on a unit that answers like this.
    bool wait(Accesses const& table) {
        script.expect(table);
        bool const ready = chip.waitVlanTableReady();
        script.verify();
        return ready;
    }

    test_support::Access const busy = reads(0x1B, 0x05, 0x8000);
    test_support::Access const free = reads(0x1B, 0x05, 0x7FFF);
};

TEST_F(VlanTableReadyTest, BitFifteenMeansBusy) {
    script.expect({reads(0x1B, 0x05, 0x8000), reads(0x1B, 0x05, 0xFFFF), reads(0x1B, 0x05, 0x7FFF),
                   reads(0x1B, 0x05, 0x0000)});
    EXPECT_TRUE(chip.isVlanTableBusy());
    EXPECT_TRUE(chip.isVlanTableBusy());
    EXPECT_FALSE(chip.isVlanTableBusy());
    EXPECT_FALSE(chip.isVlanTableBusy());
}

TEST_F(VlanTableReadyTest, AFailedReadDoesNotMeanBusy) {
    script.expect({busy.failing()});
    EXPECT_FALSE(chip.isVlanTableBusy());
}

TEST_F(VlanTableReadyTest, AFreeUnitIsReady) {
    EXPECT_TRUE(wait({free}));
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(VlanTableReadyTest, PollsWithoutPause) {
    EXPECT_TRUE(wait({busy, busy, busy, free}));
    EXPECT_EQ(bench.clock.getNanoseconds(), 0U);
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(VlanTableReadyTest, GivesUpAtThePollAfterTheSecondHasChanged) {
    EXPECT_FALSE(wait({busy.taking(400ms), busy.taking(400ms), busy.taking(400ms), busy}));
    EXPECT_EQ(bench.log.take(), vtuTimeout);
}

TEST_F(VlanTableReadyTest, AUnitThatGetsFreeAtThatVeryPollIsTooLate) {
    EXPECT_FALSE(wait({busy.taking(1s), free}));
    EXPECT_EQ(bench.log.take(), vtuTimeout);
}

TEST_F(VlanTableReadyTest, AUnitThatGetsFreeBeforeTheSecondChangesIsReady) {
    EXPECT_TRUE(wait({busy.taking(999ms), busy, free}));
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(VlanTableReadyTest, AUnitThatIsFreeAtTheFirstPollIsReadyHoweverLongThatTakes) {
    EXPECT_TRUE(wait({free.taking(5s)}));
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(VlanTableReadyTest, TheSecondCanChangeAtOnce) {
    bench.clock.setWallClockPhase(999'999'999);
    EXPECT_FALSE(wait({busy.taking(1ns), free}));
    EXPECT_EQ(bench.log.take(), vtuTimeout);
}

TEST_F(VlanTableReadyTest, AReadThatFailsEndsTheWaitAsIfTheUnitWereFree) {
    EXPECT_TRUE(wait({busy, busy.failing()}));
    EXPECT_EQ(bench.log.take("error"), Lines{});
}

TEST_F(VlanTableReadyTest, ASwitchFromADocumentWaitsAsLong) {
    test_support::TestDocument document("<switch id='5'/>");
    unsigned char const address[6] = {};
    MarvellSwitch described(bench.application, 5, address, document, false);
    bench.log.take();
    script.expect({busy.taking(999ms), busy.taking(1ms), free});
    EXPECT_FALSE(described.waitVlanTableReady());
    EXPECT_EQ(bench.log.take(), vtuTimeout);
    script.expect({busy.taking(900ms), free});
    EXPECT_TRUE(described.waitVlanTableReady());
}

} // namespace
