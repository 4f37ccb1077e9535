#include "board/dump/RegisterDump.hpp"

#include <gmock/gmock.h>

#include <map>
#include <nlohmann/json.hpp>
#include <set>

#include "reference_host/XmlDocument.hpp"
#include "simulation/SerialController.hpp"
#include "simulation/SimulatedBoard.hpp"
#include "tests/support/TemporaryFile.hpp"
#include "tests/switchctl/register/RegisterFixture.hpp"

using chips::ExitStatus;
using nlohmann::json;
using reference_host::XmlDocument;
using test_support::TemporaryFile;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

using Arguments = std::vector<std::string>;

class RegisterDumpTest : public RegisterFixture {
protected:
    std::string diff(std::string const& first, std::string const& second, chips::ExitStatus expected) {
        TemporaryFile const firstFile(first);
        TemporaryFile const secondFile(second);
        EXPECT_EQ(run({"diff", firstFile.path(), secondFile.path()}), expected) << errors.str();
        return out.str();
    }

    /// The reason for which a file is no dump, without the file's name.
    std::string refusalOf(std::string const& content) {
        TemporaryFile const file(content);
        EXPECT_EQ(run({"diff", file.path(), file.path()}), chips::ExitStatus::badDocument) << content;
        std::string const start = "switchctl: " + file.path();
        EXPECT_THAT(errors.str(), StartsWith(start));
        return errors.str().substr(start.size());
    }

    /// What each chip is dumped by.
    static std::vector<Arguments> transports() {
        return {{"dump", "parallel", "--simulate"},
                {"dump", "serial", "--simulate"},
                {"dump", "smi", "--switch", "0", "--simulate"},
                {"dump", "phy", "--parallel", "--simulate"},
                {"dump", "phy", "--serial", "--simulate"},
                {"dump", "phy", "--switch", "0", "--simulate"}};
    }
};

TEST_F(RegisterDumpTest, NamesComeFirstByUnit) {
    std::string const text = outputOf({"dump", "smi", "--switch", "0", "--simulate"});
    EXPECT_THAT(text, StartsWith("chip 88e6096\n"
                                 "over smi --switch 0\n"
                                 "port 0\n"
                                 "  PortStatus             0x10/0x00   0x1000  PauseEn=0x0  "));
    EXPECT_THAT(text, HasSubstr("\nport 1\n  PortStatus             0x11/0x00 "));
    EXPECT_THAT(text,
                HasSubstr("\n  SwitchIdentifier       0x1a/0x03   0x0980  Product=0x98  Revision=0x0\n"));
    EXPECT_THAT(text, HasSubstr("\nglobal 2\n  MGMTEnable2x           0x1c/0x02   0x0000  Enable=0x0\n"));
}

TEST_F(RegisterDumpTest, LeavesOutWhatReadingChanges) {
    std::string const marvell = outputOf({"dump", "smi", "--switch", "0", "--simulate"});
    EXPECT_THAT(marvell, HasSubstr("  GlobalControl "));
    EXPECT_THAT(marvell, Not(HasSubstr("GlobalStatus")));
    EXPECT_THAT(marvell, Not(HasSubstr("\nphy ")));
    std::string const vitesse = outputOf({"dump", "parallel", "--simulate"});
    EXPECT_THAT(vitesse, HasSubstr("\nsystem\n  BusSetUp               7.0/0x02    0x0000000c "));
    for (char const* const unwanted : {"\nphy ", "\ncapture ", "IndirectData", "IndirectStatus"}) {
        EXPECT_THAT(vitesse, Not(HasSubstr(unwanted)));
    }
    std::string const phys = outputOf({"dump", "phy", "--parallel", "--simulate"});
    EXPECT_THAT(phys, HasSubstr("\nphy 23\n  Control                phy23/0x00  0x1140 "));
    EXPECT_THAT(phys, Not(HasSubstr(" Status ")));
    EXPECT_THAT(phys, Not(HasSubstr(" Register16 ")));
}

TEST_F(RegisterDumpTest, DoesNotChangeTheChip) {
    auto const document =
        XmlDocument::fromText("<switches><switch id='0' switchModel='vsc7390'/></switches>", "board");
    simulation::SimulatedBoard board(*document);
    simulation::SerialController controller(board);
    outputOf({"dump", "serial", "--device", controller.getDevicePath()});
    EXPECT_GT(board.getLog().getSize(), 700U);
    for (auto const& entry : board.getLog().getEntries()) {
        ASSERT_EQ(entry.kind, simulation::AccessLog::Kind::read) << simulation::AccessLog::line(entry);
    }
    EXPECT_EQ(board.getMisuse().getSize(), 0U);
}

TEST_F(RegisterDumpTest, BothWaysToAChipShowTheSame) {
    std::string const serial = outputOf({"dump", "serial", "--simulate"});
    // The parallel driver sets the bus up.
    EXPECT_EQ(diff(serial, outputOf({"dump", "parallel", "--simulate"}), chips::ExitStatus::registersDiffer),
              "system/BusSetUp (7.0/0x02): 0x00000000 -> 0x0000000c\n"
              "    SetUp: 0x0 -> 0xc\n");
    diff(outputOf({"dump", "phy", "--serial", "--simulate"}),
         outputOf({"dump", "phy", "--parallel", "--simulate"}), chips::ExitStatus::success);
}

TEST_F(RegisterDumpTest, TextAndJsonAreTheSameDump) {
    for (Arguments arguments : transports()) {
        std::string const text = outputOf(arguments);
        arguments.emplace_back("--json");
        std::string const asJson = outputOf(arguments);
        EXPECT_EQ(diff(text, asJson, chips::ExitStatus::success), "");
        EXPECT_EQ(diff(asJson, text, chips::ExitStatus::success), "");
    }
}

TEST_F(RegisterDumpTest, JsonHasChipTransportAndRegisters) {
    json const dump = json::parse(outputOf({"dump", "phy", "--switch", "3", "--simulate", "--json"}));
    EXPECT_EQ(dump["chip"], "88e6096");
    EXPECT_EQ(dump["over"], "phy --switch 3");
    ASSERT_EQ(dump["registers"].size(), 72U);
    EXPECT_EQ(dump["registers"][2]["unit"], "phy 0");
    EXPECT_EQ(dump["registers"][2]["register"], "Identifier1");
    EXPECT_EQ(dump["registers"][2]["value"], 0x0141);
}

TEST_F(RegisterDumpTest, DifferencesAreNamed) {
    std::string const first = "chip 88e6096\nover smi --switch 0\n"
                              "port 3\n  PortControl 0x13/0x04 0x007c PortState=0x0\n"
                              "  PortControl1 0x13/0x05 0\n  DefaultVLAN 0x13/0x07 0x0001\n"
                              "global 1\n  ATUControl 0x1b/0x0a 0x0140\n  VTUFID 0x1b/0x02 5\n";
    std::string const second = "chip 88e6096\n"
                               "PORT 3\n  port_control 0x13/0x04 0x007f\n  PortControl1 0x13/0x05 0x3000\n"
                               "  DefaultVLAN 0x13/0x07 1\n"
                               "global 1\n  ATUControl 0x1b/0x0a 0x0141\n  VTUSID 0x1b/0x03 5\n";
    EXPECT_EQ(diff(first, second, chips::ExitStatus::registersDiffer),
              "port 3/PortControl (0x13/0x04): 0x007c -> 0x007f\n"
              "    PortState: 0x0 -> 0x3\n"
              "port 3/PortControl1 (0x13/0x05): 0x0000 -> 0x3000\n"
              "    bits without a name: 0x0 -> 0x3000\n"
              "global 1/ATUControl (0x1b/0x0a): 0x0140 -> 0x0141\n"
              "    Other: 0x0 -> 0x1\n"
              "global 1/VTUFID (0x1b/0x02): 0x0005 -> absent\n"
              "global 1/VTUSID (0x1b/0x03): absent -> 0x0005\n");
    EXPECT_EQ(diff(first, first, chips::ExitStatus::success), "");
}

TEST_F(RegisterDumpTest, DifferencesAsJson) {
    TemporaryFile const first("chip 88e6096\nport 3\n  PortControl 0x13/0x04 0x007c\n");
    TemporaryFile const second("chip 88e6096\nport 3\n  PortControl 0x13/0x04 0x007f\n"
                               "  DefaultVLAN 0x13/0x07 1\n");
    EXPECT_EQ(run({"diff", "--json", first.path(), second.path()}), chips::ExitStatus::registersDiffer);
    EXPECT_EQ(json::parse(out.str())["differences"], json::parse(R"([
        {"unit": "port 3", "register": "PortControl", "address": "0x13/0x04", "first": 124, "second": 127,
         "fields": [{"name": "PortState", "first": 0, "second": 3}]},
        {"unit": "port 3", "register": "DefaultVLAN", "address": "0x13/0x07", "first": null, "second": 1,
         "fields": []}])"));
    EXPECT_EQ(run({"diff", "--json", first.path(), first.path()}), chips::ExitStatus::success);
    EXPECT_EQ(json::parse(out.str())["differences"], json::array());
}

TEST_F(RegisterDumpTest, TablesAreDumpedOnRequest) {
    std::string const board = "--simulate=" + std::string(EXAMPLES_FOLDER) + "/trap-mixed.xml";
    Arguments const marvell = {"dump", "smi", "--switch", "0", board, "--tables"};
    EXPECT_THAT(outputOf(marvell), HasSubstr("\ntable VTU\n  VID 5                   FID=0x5  "));
    EXPECT_THAT(outputOf(marvell), testing::EndsWith("\ntable ATU\n"));
    Arguments const vitesse = {"dump", "parallel", board, "--tables"};
    EXPECT_THAT(outputOf(vitesse),
                HasSubstr("\ntable VLAN table\n  VID 0 to 4              Ports=0x1ffffff  "));
    EXPECT_THAT(outputOf(vitesse), HasSubstr("\ntable MAC table\n  group 01:00:5e:"));
    for (Arguments arguments : {marvell, vitesse}) {
        std::string const text = outputOf(arguments);
        arguments.emplace_back("--json");
        std::string const asJson = outputOf(arguments);
        EXPECT_EQ(diff(text, asJson, chips::ExitStatus::success), "");
        EXPECT_FALSE(json::parse(asJson)["tables"].empty());
    }
    EXPECT_EQ(run({"dump", "phy", "--switch", "0", "--simulate", "--tables"}), chips::ExitStatus::usage);
    EXPECT_EQ(errors.str(), "switchctl: --tables: PHYs have none\n");
}

TEST_F(RegisterDumpTest, DifferencesOfTablesAreNamed) {
    std::string const before = "chip vsc7390\ntable VLAN table\n"
                               "  VID 0 to 4095  Ports=0x1ffffff  VLAN_SRC_CHECK=0x0\n";
    std::string const after = "chip vsc7390\ntable VLAN table\n"
                              "  VID 0 to 6  Ports=0x1ffffff  VLAN_SRC_CHECK=0x0\n"
                              "  VID 7  Ports=0x1fffffe  VLAN_SRC_CHECK=0x1\n"
                              "  VID 8 to 4094  Ports=0x1ffffff  VLAN_SRC_CHECK=0x0\n"
                              "table MAC table\n";
    EXPECT_EQ(diff(before, after, chips::ExitStatus::registersDiffer),
              "VLAN table/VID 7:\n"
              "    Ports: 0x1ffffff -> 0x1fffffe\n"
              "    VLAN_SRC_CHECK: 0x0 -> 0x1\n"
              "VLAN table/VID 4095: present -> absent\n"
              "MAC table: absent -> present\n");
    EXPECT_EQ(diff(after, after, chips::ExitStatus::success), "");
    TemporaryFile const first(before);
    TemporaryFile const second("chip vsc7390\ntable VLAN table\n  VID 0 to 4094  Ports=0x1ffffff\n");
    EXPECT_EQ(run({"diff", "--json", first.path(), second.path()}), chips::ExitStatus::registersDiffer);
    EXPECT_EQ(json::parse(out.str())["tables"],
              json::parse(R"([{"table": "VLAN table", "entry": "VID 4095", "first": "present",
                               "second": "absent", "fields": []}])"));
}

TEST_F(RegisterDumpTest, BadTextIsRefusedWithItsLine) {
    std::map<std::string, std::string> const reasons = {
        {"", ":1: not a dump of registers\n"},
        {"port 3\n", ":1: not a dump of registers\n"},
        {"chip 88e6097\n", ":1: no model of a \"88e6097\"\n"},
        {"chip 88e6096\nport 3\n  PortControl\n", ":3: not of the form NAME ADDRESS VALUE\n"},
        {"chip 88e6096\nport 3\n  PortControl 0x13/0x04 0x7g\n", ":3: not of the form NAME ADDRESS VALUE\n"},
        {"chip 88e6096\nport 3\n  PortControl 0x13/0x04 0x10000\n",
         ":3: the value of port 3/PortControl does not fit\n"},
        {"chip 88e6096\nport 3\n\n  Port 0x13/0x04 1\n",
         ":4: \"port 3/Port\": port 3 of a 88e6096 has no register \"Port\"\n"},
        {"chip 88e6096\n  PortControl 0x13/0x04 1\n",
         ":2: \"/PortControl\": not of the form UNIT/REGISTER\n"},
        {"chip 88e6096\nport 3\n  PortControl 0x13/0x04 1\nport3\n  PortControl 0x13/0x04 1\n",
         ":5: port 3/PortControl is there twice\n"},
    };
    for (auto const& [content, reason] : reasons) {
        EXPECT_EQ(refusalOf(content), reason) << content;
    }
}

TEST_F(RegisterDumpTest, BadJsonIsRefusedWithItsPlace) {
    std::map<std::string, std::string> const reasons = {
        {"{\n\"chip\": \"88e6096\",\n]", ":3: not well-formed JSON\n"},
        {"{\"chip\": 4}", ": not a dump of registers\n"},
        {"{\"chip\": \"88e6096\"}", ": not a dump of registers\n"},
        {"{\"chip\": \"vsc7391\", \"registers\": []}", ": no model of a \"vsc7391\"\n"},
        {R"({"chip": "88e6096", "registers": [{"unit": "port 3", "register": "PortControl"}]})",
         ": register 1 is not complete\n"},
        {R"({"chip": "88e6096", "registers": [{"unit": "port 3", "register": "None", "value": 1}]})",
         ": register 1: \"port 3/None\": port 3 of a 88e6096 has no register \"None\"\n"},
        {R"({"chip": "88e6096", "registers": [{"unit": "port 3", "register": "PortControl", "value": -1}]})",
         ": register 1: the value does not fit\n"},
        {R"({"chip": "88e6096", "registers": [{"unit": "port 3", "register": "PortControl", "value": 65536}]})",
         ": register 1: the value of port 3/PortControl does not fit\n"},
    };
    for (auto const& [content, reason] : reasons) {
        EXPECT_EQ(refusalOf(content), reason) << content;
    }
}

// Found by fuzzing: the first ended the program, the second had a value that depended on the machine.
TEST_F(RegisterDumpTest, NumbersThatAreNoneAreRefused) {
    EXPECT_EQ(refusalOf(R"({"chip": 88e6096, "registers": []})"), ": not a dump of registers\n");
    EXPECT_EQ(refusalOf(R"({"chip": "88e6096", "registers": [{"unit": "port 3", "register": "PortControl",)"
                        R"( "value": 1e30}]})"),
              ": register 1: the value does not fit\n");
    EXPECT_EQ(refusalOf(R"({"chip": "88e6096", "registers": [{"unit": "port 3", "register": "PortControl",)"
                        R"( "value": 1.0}]})"),
              ": register 1: the value does not fit\n");
}

TEST_F(RegisterDumpTest, UnreadableFilesAreRefused) {
    TemporaryFile const good("chip 88e6096\n");
    EXPECT_EQ(run({"diff", good.path(), "/nonexistent/dump"}), chips::ExitStatus::badDocument);
    EXPECT_EQ(errors.str(), "switchctl: /nonexistent/dump: No such file or directory\n");
    EXPECT_EQ(run({"diff", "/tmp", good.path()}), chips::ExitStatus::badDocument);
    EXPECT_EQ(errors.str(), "switchctl: /tmp: Is a directory\n");
}

TEST_F(RegisterDumpTest, OnlyDumpsOfTheSameChipCanBeCompared) {
    TemporaryFile const first("chip 88e6096\n");
    TemporaryFile const second("chip vsc7390\n");
    EXPECT_EQ(run({"diff", first.path(), second.path()}), chips::ExitStatus::badDocument);
    EXPECT_EQ(errors.str(), "switchctl: " + second.path() + ": a dump of a vsc7390, but " + first.path() +
                                " is one of a 88e6096\n");
}

} // namespace
