#include <sstream>

#include "tests/simulation/BoardFixture.hpp"

using simulation::AccessLog;
using simulation_test::BoardFixture;

namespace {

class AccessLogTest : public BoardFixture {
protected:
    std::string text() {
        std::ostringstream out;
        log().print(out);
        return out.str();
    }
};

TEST_F(AccessLogTest, AReadIsDecoded) {
    read(port0 + 3, 0x04);
    AccessLog::Entry const entry = log().getEntry(0);
    EXPECT_EQ(entry.sequence, 1U);
    EXPECT_EQ(entry.nanoseconds, 3U * 25'600U);
    EXPECT_EQ(entry.transfer, 1U);
    EXPECT_EQ(entry.chip, "switch 4");
    EXPECT_EQ(entry.unit, "port 3");
    EXPECT_EQ(entry.registerName, "PortControl");
    EXPECT_EQ(entry.address, 0x04U);
    EXPECT_EQ(entry.kind, AccessLog::Kind::read);
    EXPECT_EQ(entry.value, 0x007FU);
    EXPECT_TRUE(entry.changes.empty());
}

TEST_F(AccessLogTest, AWriteShowsTheFieldsThatChanged) {
    write(port0 + 3, 0x01, 0x0036);
    AccessLog::Entry const entry = log().getEntry(0);
    EXPECT_EQ(entry.kind, AccessLog::Kind::write);
    EXPECT_EQ(entry.value, 0x0036U);
    ASSERT_EQ(entry.changes.size(), 4U);
    EXPECT_EQ(entry.changes[0].field, "LinkValue");
    EXPECT_EQ(entry.changes[0].before, 0U);
    EXPECT_EQ(entry.changes[0].after, 1U);
    EXPECT_EQ(entry.changes[1].field, "ForcedLink");
    EXPECT_EQ(entry.changes[2].field, "ForcedDpx");
    EXPECT_EQ(entry.changes[3].field, "ForceSpd");
    EXPECT_EQ(entry.changes[3].before, 3U);
    EXPECT_EQ(entry.changes[3].after, 2U);
}

TEST_F(AccessLogTest, OneLineForEachAccess) {
    write(port0 + 3, 0x07, 0x1064);
    read(global2, 0x1A);
    write(global1, 0x05, 0x9000);
    phyWrite(2, 0, 0x2100);
    EXPECT_EQ(text(),
              "     1    0.000102400  switch 4   port 3    DefaultVLAN           W 0x1064  "
              "ForceDefaultVID 0->0x1, DefaultVID 0x1->0x64\n"
              "     2    0.000179200  switch 4   global 2  register 0x1a         R 0x0000\n"
              "     3    0.000358400  switch 4   global 1  VTUOperation          W 0x9000  "
              "VTUBusy 0->0x1, VTUOp 0->0x1\n"
              "     4    0.000460800  switch 4   global 2  SMIPHYData            W 0x2100  Data 0->0x2100\n"
              "     5    0.000563200  switch 4   global 2  SMIPHYCommand         W 0x8440  "
              "SMIBusy 0->0x1, SMIOp 0->0x1, PHY 0->0x2\n"
              "     6    0.000563200  switch 4   phy 2     Control               W 0x2100  "
              "AutoNegotiation 0x1->0\n");
}

TEST_F(AccessLogTest, AWriteThatChangesNothingShowsNothing) {
    write(port0 + 3, 0x07, 0x0001);
    EXPECT_TRUE(log().getEntry(0).changes.empty());
}

TEST_F(AccessLogTest, AbsentPhysAreLogged) {
    phyRead(9, 0);
    auto const entries = log().getEntries();
    ASSERT_EQ(entries.size(), 4U);
    EXPECT_EQ(entries[1].unit, "phy 9");
    EXPECT_EQ(entries[1].value, 0xFFFFU);
}

TEST_F(AccessLogTest, EntriesFromAPointOn) {
    read(port0, 0x03);
    read(port0, 0x04);
    read(port0, 0x05);
    auto const entries = log().getEntries(2);
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries[0].sequence, 3U);
    EXPECT_EQ(entries[0].registerName, "PortControl1");
    EXPECT_TRUE(log().getEntries(4).empty());
    EXPECT_THROW(log().getEntry(3), std::out_of_range);
}

TEST_F(AccessLogTest, CountersAndClearing) {
    read(port0, 0x03);
    EXPECT_EQ(log().getMdioFrames(), 6U);
    // Each read frame is a command and a look at the data; each write frame data and a command.
    EXPECT_EQ(log().getBusAccesses(), 12U);
    EXPECT_EQ(_board->getRegisterAccesses(), 1U);
    EXPECT_EQ(_board->getBusAccesses(), 12U);
    log().clear();
    EXPECT_EQ(log().getMdioFrames(), 0U);
    EXPECT_EQ(log().getBusAccesses(), 0U);
    EXPECT_EQ(log().getSize(), 0U);
}

TEST_F(AccessLogTest, TheSameAccessesGiveTheSameLog) {
    auto const exercise = [this] {
        loadVtu(5, 5, 5, 0x3333, 0x3333, 0x0333);
        phyWrite(1, 0, 0x2100);
        chip().failAccess(2);
        read(port0, 0x03);
        becomesReady();
        read(port0, 0x04);
        return text();
    };
    std::string const first = exercise();
    rebuild(simulation::SimulatedBoard::Options());
    EXPECT_EQ(exercise(), first);
}

} // namespace
