#include "simulation/AccessLog.hpp"
#include "tests/simulation/Vsc7390Fixture.hpp"

using simulation::AccessLog;
using simulation_test::Vsc7390Fixture;

namespace {

class Vsc7390LogTest : public Vsc7390Fixture {};

TEST_F(Vsc7390LogTest, AnIndirectReadIsOneEntryMadeAtItsStart) {
    busRead(0x4C40);
    ASSERT_EQ(log().getSize(), 1U);
    AccessLog::Entry const entry = log().getEntry(0);
    EXPECT_EQ(entry.nanoseconds, 100U);
    EXPECT_EQ(entry.transfer, 1U);
    EXPECT_EQ(entry.chip, "switch 2");
    EXPECT_EQ(entry.unit, "port 3");
    EXPECT_EQ(entry.registerName, "MAXLEN");
    EXPECT_EQ(entry.address, 0x10U);
    EXPECT_EQ(entry.kind, AccessLog::Kind::read);
    EXPECT_EQ(entry.value, 1518U);
    EXPECT_TRUE(becomesReady());
    busRead(indirectData);
    EXPECT_EQ(log().getSize(), 1U) << "polls and the data are part of it";
    EXPECT_GT(_board->getBusAccesses(), 3U);
}

TEST_F(Vsc7390LogTest, AReadThatIsStartedAgainIsAnEntryAgain) {
    busRead(0x4C40);
    busRead(0x4C40);
    EXPECT_EQ(log().getSize(), 2U);
    EXPECT_EQ(log().getEntry(1).transfer, 2U);
}

TEST_F(Vsc7390LogTest, AWriteShowsTheFieldsThatChanged) {
    writeAnalyser(0xE0, 10);
    writeAnalyser(0xD0, 0x10000022);
    AccessLog::Entry const entry = log().getEntry(1);
    EXPECT_EQ(entry.unit, "analyser");
    EXPECT_EQ(entry.registerName, "VLANACCESS");
    EXPECT_EQ(entry.value, 0x10000022U);
    ASSERT_EQ(entry.changes.size(), 3U);
    EXPECT_EQ(entry.changes[0].field, "VLAN_SRC_CHECK");
    EXPECT_EQ(entry.changes[1].field, "Ports");
    EXPECT_EQ(entry.changes[1].after, 0x8U);
    EXPECT_EQ(entry.changes[2].field, "CMD");
}

TEST_F(Vsc7390LogTest, PhysAreLoggedWithTheCommandThatReachesThem) {
    chip().unplugPhy(5);
    write(mii, 1, 0x1, 1U << 26 | 3U << 21 | 2U << 16);
    advance(30'000);
    write(mii, 1, 0x1, 5U << 21 | 4U << 16 | 0x1234);
    advance(30'000);
    write(mii, 0, 0x1, 1U << 26 | 7U << 21);
    auto const entries = log().getEntries();
    ASSERT_EQ(entries.size(), 6U);
    EXPECT_EQ(entries[0].unit, "mii 1");
    EXPECT_EQ(entries[0].registerName, "MIIMCMD");
    EXPECT_EQ(entries[1].unit, "phy 3");
    EXPECT_EQ(entries[1].registerName, "Identifier1");
    EXPECT_EQ(entries[1].value, 0x0007U);
    EXPECT_EQ(entries[1].transfer, entries[0].transfer);
    EXPECT_EQ(entries[3].unit, "phy 5");
    EXPECT_EQ(entries[3].kind, AccessLog::Kind::write);
    EXPECT_EQ(entries[3].value, 0x1234U);
    EXPECT_TRUE(entries[3].changes.empty());
    EXPECT_EQ(entries[5].unit, "mii 0 phy 7");
    EXPECT_EQ(entries[5].value, 0xFFFFU);
}

TEST_F(Vsc7390LogTest, OneLineForEachAccess) {
    busWrite(0x1C008, 12);
    writeAnalyser(0x43, 0x0000000E);
    write(arbiter, 0, 0x0E, 0x00000008);
    write(8, 0, 0x01, 5);
    EXPECT_EQ(logText(),
              "     1    0.000000100  switch 2   system    BusSetUp              W 0x000c  SetUp 0->0xc\n"
              "     2    0.000000200  switch 2   analyser  DSTMASKS_3            W 0x000e  Ports 0x8->0xe\n"
              "     3    0.000000300  switch 2   arbiter   ARBDISC               W 0x0008  Ports 0->0x8\n"
              "     4    0.000000400  switch 2   block 8.0  register 0x01         W 0x0005\n");
}

TEST_F(Vsc7390LogTest, ClearedCountersShowAsTheWriteOnly) {
    chip().setCounter(3, 0x52, 7);
    writePort(3, 0x52, 0);
    AccessLog::Entry const entry = log().getEntry(0);
    EXPECT_EQ(entry.registerName, "C_RX_PACKETS");
    EXPECT_EQ(entry.value, 0U);
    EXPECT_EQ(log().getSize(), 1U);
}

TEST_F(Vsc7390LogTest, TheSameAccessesGiveTheSameLog) {
    auto const exercise = [this] {
        writeVlan(5, 0x10000020);
        readMac(0x00CA);
        chip().failAccess(2);
        busRead(0x4C40);
        unsigned value = 0;
        tryBusRead(0x4C40, value);
        write(mii, 1, 0x1, 0x04000000);
        return logText();
    };
    std::string const first = exercise();
    rebuild(Options());
    EXPECT_EQ(exercise(), first);
}

} // namespace
