#include "tests/simulation/Vsc7390Fixture.hpp"

using simulation_test::Vsc7390Fixture;

namespace {

class Vsc7390MisuseTest : public Vsc7390Fixture {};

TEST_F(Vsc7390MisuseTest, UnknownRegister) {
    readPort(18, 0x41);
    busWrite(offsetOf(system, 0, 0x77), 7);
    EXPECT_EQ(misuseText(), "switch 2, port 18, register 0x41: unknown register: read\n"
                            "switch 2, system, register 0x77: unknown register: write of 0x0007\n");
}

TEST_F(Vsc7390MisuseTest, ReservedBits) {
    writePort(3, 0x79, 0x00000182);
    EXPECT_EQ(misuseText(),
              "switch 2, port 3, CAT_VLAN_MISC: unwritable bits: write of 0x0182 tries to set 0x0002, "
              "which cannot be written\n");
    EXPECT_EQ(readPort(3, 0x79), 0x180U);
}

TEST_F(Vsc7390MisuseTest, PortsThatTheChipDoesNotHave) {
    writeAnalyser(0x0D, 0x02000000);
    EXPECT_EQ(misuse().getSize(Kind::unwritableBits), 1U);
    EXPECT_EQ(readAnalyser(0x0D), 0U);
}

TEST_F(Vsc7390MisuseTest, ReadOnlyRegisters) {
    busWrite(offsetOf(system, 0, 0x18), 0x07390001);
    busWrite(indirectData, 1);
    write(mii, 1, 0x2, 1);
    EXPECT_EQ(misuse().getSize(Kind::unwritableBits), 3U);
    EXPECT_EQ(read(system, 0, 0x18), 0x07390000U);
}

TEST_F(Vsc7390MisuseTest, WritingBackWhatWasReadIsNone) {
    for (unsigned address : {0x00U, 0x10U, 0x24U, 0x6EU, 0x79U, 0x7AU}) {
        writePort(3, address, readPort(3, address));
    }
    for (unsigned address : {0x03U, 0x05U, 0x10U, 0x43U, 0x83U, 0xA0U}) {
        writeAnalyser(address, readAnalyser(address));
    }
    EXPECT_EQ(misuseText(), "");
}

TEST_F(Vsc7390MisuseTest, CommandsWhileBusyAreCarriedOut) {
    writeAnalyser(0xD0, 3);
    writeAnalyser(0xE0, 10);
    writeAnalyser(0xD0, 0x10000022);
    EXPECT_EQ(misuseText(),
              "switch 2, analyser, VLANACCESS: command while busy: the last command still runs\n");
    EXPECT_EQ(chip().getVlanEntry(10).ports, 0x8U);
    misuse().clear();
    writeAnalyser(0xB0, 5);
    writeAnalyser(0xB0, 6);
    EXPECT_EQ(misuseText(),
              "switch 2, analyser, MACACCESS: command while busy: the last command still runs\n");
    misuse().clear();
    write(mii, 1, 0x1, 0x04000000);
    write(mii, 0, 0x1, 0x04000000);
    EXPECT_EQ(misuseText(), "") << "the controllers work side by side";
    write(mii, 1, 0x1, 0x00641234);
    EXPECT_EQ(misuseText(), "switch 2, mii 1, MIIMCMD: command while busy: the last transfer still runs\n");
    EXPECT_EQ(chip().peek("phy 3", 4), 0x1234U);
}

TEST_F(Vsc7390MisuseTest, DataBeforeItIsReady) {
    busRead(indirectData);
    EXPECT_EQ(misuseText(), "switch 2, system, IndirectData: data not ready: read\n");
    misuse().clear();
    EXPECT_EQ(readPort(3, 0x10), 1518U);
    EXPECT_EQ(misuseText(), "");
    busRead(offsetOf(lowPorts, 3, 0x00));
    EXPECT_EQ(busRead(indirectData), 1518U) << "what the last read left";
    EXPECT_EQ(misuse().getSize(Kind::dataNotReady), 1U);
}

TEST_F(Vsc7390MisuseTest, AReadThatReplacesAnotherIsNone) {
    busRead(offsetOf(lowPorts, 3, 0x00));
    busRead(offsetOf(lowPorts, 3, 0x10));
    EXPECT_EQ(misuseText(), "");
}

TEST_F(Vsc7390MisuseTest, AbsentBlocks) {
    write(6, 8, 0x00, 1);
    busRead(offsetOf(15, 0, 0x04));
    EXPECT_EQ(misuseText(), "switch 2, block 6.8, register 0x00: absent block: write\n"
                            "switch 2, block 15.0, register 0x04: absent block: read\n");
}

TEST_F(Vsc7390MisuseTest, NewKindsHaveNames) {
    EXPECT_STREQ(simulation::MisuseReport::name(Kind::dataNotReady), "data not ready");
    EXPECT_STREQ(simulation::MisuseReport::name(Kind::absentBlock), "absent block");
}

} // namespace
