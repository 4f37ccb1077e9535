#include <gmock/gmock.h>

#include "tests/support/TemporaryFile.hpp"
#include "tests/switchctl/register/RegisterFixture.hpp"

using chips::ExitStatus;
using test_support::TemporaryFile;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

/// Every way to a chip, on models.
class RegisterSimulationTest : public RegisterFixture {
protected:
    TemporaryFile marvellBoard{"<board><switches><switch id='4' switchModel='88e6096'>"
                               "<port id='9' connectedTo='smac' portStatus='forwarding'/>"
                               "</switch></switches></board>"};
};

TEST_F(RegisterSimulationTest, IdentifiesAVsc7390) {
    for (char const* const transport : {"parallel", "serial"}) {
        EXPECT_THAT(outputOf({"read", transport, "--simulate", "system/CHIPID"}),
                    StartsWith("system/CHIPID (7.0/0x18) = 0x07390000\n"));
    }
}

TEST_F(RegisterSimulationTest, IdentifiesAn88E6096) {
    EXPECT_EQ(outputOf({"read", "smi", "--switch", "31", "--simulate", "port 0/SwitchIdentifier"}),
              "port 0/SwitchIdentifier (0x10/0x03) = 0x0980\n"
              "    Product                 15:4  0x98\n"
              "    Revision                 3:0  0x0\n");
    EXPECT_EQ(errors.str(), "");
}

TEST_F(RegisterSimulationTest, WritesAVlanEntryAndReadsItBack) {
    for (char const* const transport : {"parallel", "serial"}) {
        EXPECT_EQ(outputOf({"write", transport, "--simulate", "--yes", "analyser/VLANTIDX=10",
                            "analyser/VLANACCESS=0x10000022", "analyser/VLANTIDX=11", "analyser/VLANTIDX=10",
                            "analyser/VLANACCESS=1", "--then-read", "analyser/VLANACCESS"}),
                  "wrote analyser/VLANTIDX (2.0/0xe0) = 0x0000000a\n"
                  "wrote analyser/VLANACCESS (2.0/0xd0) = 0x10000022\n"
                  "wrote analyser/VLANTIDX (2.0/0xe0) = 0x0000000b\n"
                  "wrote analyser/VLANTIDX (2.0/0xe0) = 0x0000000a\n"
                  "wrote analyser/VLANACCESS (2.0/0xd0) = 0x00000001\n"
                  "analyser/VLANACCESS (2.0/0xd0) = 0x10000020\n"
                  "    Other31                   31  0x0\n"
                  "    LEARN_DISABLED            30  0x0\n"
                  "    VLAN_MIRROR               29  0x0\n"
                  "    VLAN_SRC_CHECK            28  0x1\n"
                  "    Other27                   27  0x0\n"
                  "    Ports                   26:2  0x8\n"
                  "    CMD                      1:0  0x0\n");
    }
}

TEST_F(RegisterSimulationTest, LoadsAVtuEntryAndReadsItBack) {
    std::string const text =
        outputOf({"write", "smi", "--switch", "4", "--simulate", "--yes", "global1/VTUVID=0x1005",
                  "global1/VTUFID=5", "global1/VTUData0-3=0x31", "global1/VTUOperation=0xb000",
                  "global1/VTUVID=0x1004", "global1/VTUData0-3=0", "global1/VTUOperation=0xc000",
                  "--then-read", "global1/VTUVID", "global1/VTUData0-3"});
    EXPECT_THAT(text, HasSubstr("\nglobal 1/VTUVID (0x1b/0x06) = 0x1005\n"));
    EXPECT_THAT(text, HasSubstr("    MemberTag1               5:4  0x3\n"
                                "    PortState0               3:2  0x0\n"
                                "    MemberTag0               1:0  0x1\n"));
}

TEST_F(RegisterSimulationTest, ReadsAPhyOfEveryChip) {
    for (char const* const way : {"--parallel", "--serial"}) {
        EXPECT_EQ(outputOf({"read", "phy", way, "--simulate", "23/Identifier1"}),
                  "phy 23/Identifier1 (phy23/0x02) = 0x0007\n"
                  "    Identifier              15:0  0x7\n");
    }
    EXPECT_EQ(outputOf({"read", "phy", "--switch", "0", "--simulate", "7/Identifier1"}),
              "phy 7/Identifier1 (phy7/0x02) = 0x0141\n"
              "    Identifier              15:0  0x141\n");
    EXPECT_EQ(outputOf({"read", "smi", "--switch", "0", "--simulate", "phy 7/2"}), out.str());
    EXPECT_THAT(outputOf({"read", "parallel", "--simulate", "phy 7/2"}), HasSubstr("= 0x0007\n"));
}

TEST_F(RegisterSimulationTest, WritesAPhyOfEveryChip) {
    for (char const* const way : {"--parallel", "--serial", "--switch=0"}) {
        EXPECT_THAT(outputOf({"write", "phy", way, "--simulate", "--yes", "3/Control:PowerDown=1",
                              "--then-read", "3/Control"}),
                    HasSubstr("    PowerDown                 11  0x1\n"));
    }
}

TEST_F(RegisterSimulationTest, ShowsTheTrafficOfTheLine) {
    outputOf({"read", "phy", "--serial", "--simulate", "--traffic", "3/2"});
    EXPECT_THAT(errors.str(), EndsWith("to the controller:   \"i 3 2\\r\\n\"\n"
                                       "from the controller: \"0x0007\\r\\n\"\n"));
    outputOf({"write", "serial", "--simulate", "--traffic", "--yes", "2.0.5=1", "2.0.5=4294967295"});
    EXPECT_THAT(errors.str(), EndsWith("to the controller:   \"w 2 0 5 1\\r\\nw 2 0 5 4294967295\\r\\n\"\n"
                                       "from the controller: \"\"\n"));
}

TEST_F(RegisterSimulationTest, ABoardIsBroughtUpFirst) {
    EXPECT_THAT(outputOf({"read", "smi", "--switch", "4", "--simulate", "port9/PhysicalControl"}),
                HasSubstr("= 0x0003\n"));
    EXPECT_THAT(outputOf({"read", "smi", "--switch", "4", "--simulate=" + marvellBoard.path(),
                          "port9/PhysicalControl"}),
                HasSubstr("    ForcedLink                 4  0x1\n"));
}

TEST_F(RegisterSimulationTest, ABoardMayLackTheChip) {
    std::string const simulate = "--simulate=" + marvellBoard.path();
    EXPECT_EQ(run({"read", "smi", "--switch", "5", simulate, "port0/3"}), chips::ExitStatus::registerFailed);
    EXPECT_THAT(errors.str(), StartsWith("switchctl: port 0/SwitchIdentifier could not be read"));
    EXPECT_EQ(run({"read", "parallel", simulate, "7.0.0x18"}), chips::ExitStatus::noHardware);
    EXPECT_THAT(errors.str(), HasSubstr("nothing on the simulated board answers there\n"));
    EXPECT_EQ(run({"read", "serial", simulate, "7.0.0x18"}), chips::ExitStatus::noHardware);
    EXPECT_EQ(errors.str(), "switchctl: " + marvellBoard.path() + ": the board has no VSC7390\n");
}

TEST_F(RegisterSimulationTest, ABoardMustBeADocumentAndComeUp) {
    EXPECT_EQ(run({"read", "serial", "--simulate=/nonexistent/board.xml", "7.0.0x18"}),
              chips::ExitStatus::badDocument);
    EXPECT_EQ(errors.str(), "switchctl: /nonexistent/board.xml:0: No such file or directory\n");
    TemporaryFile const twice("<switches><switch id='0' switchModel='88e6096'/>"
                              "<switch id='0' switchModel='88e6096'/></switches>");
    EXPECT_EQ(run({"dump", "smi", "--switch", "0", "--simulate=" + twice.path()}),
              chips::ExitStatus::startUpFailed);
    EXPECT_THAT(errors.str(),
                testing::StartsWith("switchctl: " + twice.path() +
                                    ": start-up failed: several <switch> elements have the same id; "));
}

TEST_F(RegisterSimulationTest, AnAbsentPhyIsAFailureOnTheParallelBus) {
    EXPECT_EQ(run({"read", "phy", "--parallel", "--simulate", "31/2"}), chips::ExitStatus::registerFailed);
    EXPECT_EQ(out.str(), "");
    EXPECT_THAT(errors.str(), StartsWith("switchctl: phy31/0x02 could not be read: "));
}

} // namespace
