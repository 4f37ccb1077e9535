#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "reference_host/XmlDocument.hpp"
#include "simulation/SerialController.hpp"
#include "simulation/SimulatedBoard.hpp"
#include "switchctl/register/RegisterCommand.hpp"
#include "tests/support/TemporaryFile.hpp"
#include "tests/switchctl/register/RegisterFixture.hpp"

using chips::ExitStatus;
using nlohmann::json;
using reference_host::XmlDocument;
using simulation::SerialController;
using simulation::VirtualClock;
using test_support::TemporaryFile;
using testing::HasSubstr;

namespace {

class RegisterCommandTest : public RegisterFixture {
protected:
    ~RegisterCommandTest() override { VirtualClock::adopt(nullptr); }

    std::unique_ptr<XmlDocument> document =
        XmlDocument::fromText("<switches><switch id='0' switchModel='vsc7390'/></switches>", "board");
    simulation::SimulatedBoard board{*document};
    SerialController controller{board};
    std::string const device = controller.getDevicePath();
};

TEST_F(RegisterCommandTest, TalksToTheControllerOnALine) {
    EXPECT_EQ(outputOf({"read", "serial", "--device", device, "system/CHIPID"}),
              "system/CHIPID (7.0/0x18) = 0x07390000\n"
              "    Revision               31:28  0x0\n"
              "    Product                27:12  0x7390\n"
              "    Other                   11:0  0x0\n");
    EXPECT_EQ(controller.getReceived(), "r 7 0 24\r\n");
    EXPECT_EQ(controller.getSent(), "0x07390000\r\n");
    EXPECT_EQ(errors.str(), "");
}

TEST_F(RegisterCommandTest, ReadsAPhyOverALine) {
    EXPECT_EQ(outputOf({"read", "phy", "--serial", "--device", device, "20/Identifier2"}),
              "phy 20/Identifier2 (phy20/0x03) = 0x0420\n"
              "    Identifier              15:0  0x420\n");
    EXPECT_EQ(controller.getReceived(), "i 20 3\r\n");
    EXPECT_EQ(controller.getSent(), "0x0420\r\n");
}

TEST_F(RegisterCommandTest, WritesTheVlanTableOverALine) {
    EXPECT_THAT(outputOf({"write", "serial", "--device", device, "--yes", "analyser/VLANTIDX=10",
                          "analyser/VLANACCESS=0x10000022", "analyser/VLANACCESS=1", "--then-read",
                          "analyser/VLANACCESS"}),
                HasSubstr("analyser/VLANACCESS (2.0/0xd0) = 0x10000020\n"));
    EXPECT_EQ(controller.getReceived(),
              "w 2 0 224 10\r\nw 2 0 208 268435490\r\nw 2 0 208 1\r\nr 2 0 208\r\n");
    EXPECT_EQ(controller.getSent(), "0x10000020\r\n");
    EXPECT_EQ(board.getVitesse(0).getVlanEntry(10).ports, 0x8U);
    EXPECT_EQ(board.getMisuse().getSize(), 0U);
}

TEST_F(RegisterCommandTest, ChangesAFieldOverALine) {
    EXPECT_EQ(outputOf({"write", "serial", "--device", device, "--yes", "port3/CAT_PORT_VLAN:VID=0x123"}),
              "wrote port 3/CAT_PORT_VLAN (1.3/0x7a) = 0x00000123\n");
    EXPECT_TRUE(controller.waitForCommands(2));
    EXPECT_EQ(controller.getReceived(), "r 1 3 122\r\nw 1 3 122 291\r\n");
}

TEST_F(RegisterCommandTest, WritesAPhyOverALine) {
    EXPECT_EQ(outputOf({"write", "phy", "--serial", "--device", device, "--yes", "5/Register4=0x1e1",
                        "--then-read", "5/4"}),
              "wrote phy 5/Register4 (phy5/0x04) = 0x01e1\n"
              "phy 5/Register4 (phy5/0x04) = 0x01e1\n"
              "    Data                    15:0  0x1e1\n");
    EXPECT_EQ(controller.getReceived(), "o 5 4 481\r\ni 5 4\r\n");
}

TEST_F(RegisterCommandTest, RefusesToWriteWithoutConsent) {
    EXPECT_EQ(run({"write", "serial", "--device", device, "analyser/VLANTIDX=10",
                   "port3/CAT_PORT_VLAN:VID=1,CFI=1"}),
              chips::ExitStatus::notConfirmed);
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(errors.str(), "switchctl: nothing was written, since --yes is missing; it would have been\n"
                            "  analyser/VLANTIDX (2.0/0xe0) = 0x0000000a\n"
                            "  port 3/CAT_PORT_VLAN (1.3/0x7a): VID = 0x1, CFI = 0x1\n");
    EXPECT_EQ(controller.getReceived(), "");
}

TEST_F(RegisterCommandTest, LooksAtAllArgumentsFirst) {
    EXPECT_EQ(run({"write", "serial", "--device", device, "--yes", "analyser/VLANTIDX=10", "port99/0=1"}),
              chips::ExitStatus::usage);
    EXPECT_EQ(errors.str(), "switchctl: \"port99/0\": a vsc7390 has no unit \"port99\"\n");
    EXPECT_EQ(run({"read", "serial", "--device", device, "system/CHIPID", "system/None"}),
              chips::ExitStatus::usage);
    EXPECT_EQ(errors.str(), "switchctl: \"system/None\": system of a vsc7390 has no register \"None\"\n");
    EXPECT_EQ(run({"write", "serial", "--device", device, "--yes", "2.0.0=1", "--then-read", "2.0"}),
              chips::ExitStatus::usage);
    EXPECT_EQ(controller.getReceived(), "");
}

TEST_F(RegisterCommandTest, AReadThatFailsIsReported) {
    controller.disturb(SerialController::Disturbance::shortened, 3);
    VirtualClock clock;
    VirtualClock::adopt(&clock);
    clock.callAt(1, [this] {
        EXPECT_TRUE(controller.waitForCommands(1));
        // In vain when the first look at the line found them already.
        controller.getTerminal().waitUntilReadable(9);
    });
    EXPECT_EQ(run({"read", "serial", "--device", device, "system/CHIPID"}),
              chips::ExitStatus::registerFailed);
    EXPECT_EQ(out.str(), "");
    EXPECT_THAT(errors.str(),
                HasSubstr("switchctl: system/CHIPID could not be read: VitesseSerialCommunications::"
                          "ReadRegister ERROR expected: 12 Got: 9; 0x0739000\n"));
}

TEST_F(RegisterCommandTest, ALineThatIsNoneIsOutOfReach) {
    EXPECT_EQ(run({"read", "serial", "--device", "/nonexistent/ttyS7", "system/CHIPID"}),
              chips::ExitStatus::noHardware);
    EXPECT_THAT(errors.str(), HasSubstr("switchctl: /nonexistent/ttyS7: VitesseSerialCommunications::"
                                        "VitesseSerialCommunications Failed to open Serail Port; "));
    TemporaryFile const file("text");
    EXPECT_EQ(run({"dump", "serial", "--device", file.path()}), chips::ExitStatus::noHardware);
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(file.content(), "text");
}

TEST_F(RegisterCommandTest, HardwareNeedsItsMemory) {
    for (auto const& transport : std::vector<std::vector<std::string>>{
             {"parallel"}, {"smi", "--switch", "0"}, {"phy", "--parallel"}, {"phy", "--switch", "0"}}) {
        std::vector<std::string> arguments = {"read"};
        arguments.insert(arguments.end(), transport.begin(), transport.end());
        arguments.push_back("phy3/2");
        EXPECT_EQ(run(arguments), chips::ExitStatus::noHardware);
        EXPECT_EQ(errors.str(), "switchctl: /nonexistent/mem: No such file or directory (the chip is "
                                "reached through this device; see --simulate)\n");
    }
}

// A file of that size stands for a board whose MAC registers all read 0: the MAC is always busy.
TEST_F(RegisterCommandTest, AnAccessThroughTheMemoryDeviceCanFail) {
    TemporaryFile const memory;
    ASSERT_EQ(truncate(memory.path().c_str(), 0x80011000), 0);
    memoryDevice = memory.path();
    VirtualClock clock;
    VirtualClock::adopt(&clock);
    EXPECT_EQ(run({"read", "smi", "--switch", "2", "0x10/3"}), chips::ExitStatus::registerFailed);
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(errors.str(), "switchctl: port 0/SwitchIdentifier could not be read\n");
}

TEST_F(RegisterCommandTest, PrintsJson) {
    json const read = json::parse(
        outputOf({"read", "serial", "--device", device, "--json", "system/CHIPID", "2.0.0x01"}))["registers"];
    ASSERT_EQ(read.size(), 2U);
    EXPECT_EQ(read[0], json::parse(R"({"unit": "system", "register": "CHIPID", "address": "7.0/0x18",
        "value": 121176064, "fields": [{"name": "Revision", "high": 31, "low": 28, "value": 0},
        {"name": "Product", "high": 27, "low": 12, "value": 29584},
        {"name": "Other", "high": 11, "low": 0, "value": 0}]})"));
    EXPECT_EQ(read[1], json::parse(R"({"unit": "analyser", "register": "0x01", "address": "2.0/0x01",
        "value": 0, "fields": []})"));
    json const written = json::parse(outputOf({"write", "serial", "--device", device, "--json", "--yes",
                                               "analyser/VLANTIDX=7", "--then-read", "analyser/VLANTIDX"}));
    EXPECT_EQ(written["written"][0]["value"], 7);
    EXPECT_EQ(written["read"][0]["fields"][0]["name"], "VID");
    EXPECT_EQ(written["read"][0]["fields"][0]["value"], 7);
}

} // namespace
