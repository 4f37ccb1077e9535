#include <sstream>

#include "tests/simulation/BoardFixture.hpp"

using simulation_test::BoardFixture;

namespace {

class MisuseTest : public BoardFixture {};

TEST_F(MisuseTest, UnknownRegister) {
    read(port0 + 2, 0x1A);
    write(global2, 0x1F, 7);
    EXPECT_EQ(misuseText(), "switch 4, port 2, register 0x1a: unknown register: read\n"
                            "switch 4, global 2, register 0x1f: unknown register: write of 0x0007\n");
}

TEST_F(MisuseTest, UnknownDevice) {
    read(0x0F, 0x00);
    EXPECT_EQ(misuseText(), "switch 4, device 15, register 0x00: unknown register: read\n");
}

TEST_F(MisuseTest, ReservedBits) {
    write(port0 + 2, 0x05, 0xB103);
    EXPECT_EQ(misuseText(), "switch 4, port 2, PortControl1: unwritable bits: write of 0xb103 tries to set "
                            "0x3000, which cannot be written\n");
    EXPECT_EQ(read(port0 + 2, 0x05), 0x8103U);
}

TEST_F(MisuseTest, ReadOnlyRegister) {
    write(port0 + 2, 0x03, 0x0981);
    ASSERT_EQ(misuse().getSize(Kind::unwritableBits), 1U);
    EXPECT_EQ(misuse().getEntries()[0].registerName, "SwitchIdentifier");
}

TEST_F(MisuseTest, WritingBackWhatWasReadIsNone) {
    chip().plugLink(2);
    unsigned const status = read(port0 + 2, 0x00);
    EXPECT_EQ(status, 0x1D00U);
    write(port0 + 2, 0x00, status & ~0x1000U);
    write(port0 + 2, 0x03, 0x0980);
    write(global1, 0x00, read(global1, 0x00));
    EXPECT_EQ(misuseText(), "");
}

TEST_F(MisuseTest, ClearingReadOnlyBitsIsNone) {
    write(port0 + 2, 0x03, 0);
    EXPECT_EQ(read(port0 + 2, 0x03), 0x0980U);
    EXPECT_EQ(misuseText(), "");
}

TEST_F(MisuseTest, SidsThatAreCutAreNone) {
    write(global1, 0x03, 0x0FFF);
    EXPECT_EQ(misuseText(), "");
    write(global1, 0x03, 0x1000);
    EXPECT_EQ(misuse().getSize(Kind::unwritableBits), 1U);
}

TEST_F(MisuseTest, FidsThatAreCutAreReported) {
    write(global1, 0x02, 0x1005);
    EXPECT_EQ(misuse().getSize(Kind::unwritableBits), 1U);
}

TEST_F(MisuseTest, NothingOfItIsInTheLog) {
    write(port0 + 2, 0x05, 0xB103);
    EXPECT_EQ(log().getSize(), 1U);
    std::ostringstream text;
    log().print(text);
    EXPECT_EQ(text.str().find("unwritable"), std::string::npos);
}

TEST_F(MisuseTest, TheAccessIsFoundInTheLogByItsNumber) {
    read(port0 + 2, 0x01);
    write(port0 + 2, 0x05, 0xB103);
    read(port0 + 2, 0x1A);
    write(port0 + 2, 0x1A, 7);
    auto const entries = misuse().getEntries();
    ASSERT_EQ(entries.size(), 3U);
    EXPECT_EQ(entries[0].access, 2U);
    EXPECT_EQ(entries[1].access, 3U);
    EXPECT_EQ(entries[2].access, 4U);
    EXPECT_EQ(log().getEntry(entries[2].access - 1).sequence, 4U);
}

TEST_F(MisuseTest, TimeAndClearing) {
    read(port0 + 2, 0x1A);
    // The command is the third frame of the read.
    EXPECT_EQ(misuse().getEntries()[0].nanoseconds, 3U * 25'600U);
    misuse().clear();
    EXPECT_EQ(misuse().getSize(), 0U);
}

TEST_F(MisuseTest, KindsHaveNames) {
    EXPECT_STREQ(simulation::MisuseReport::name(Kind::unknownRegister), "unknown register");
    EXPECT_STREQ(simulation::MisuseReport::name(Kind::unwritableBits), "unwritable bits");
    EXPECT_STREQ(simulation::MisuseReport::name(Kind::commandWhileBusy), "command while busy");
    EXPECT_STREQ(simulation::MisuseReport::name(Kind::meaninglessCommand), "meaningless command");
}

} // namespace
