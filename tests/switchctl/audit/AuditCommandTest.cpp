// `switchctl audit` as it is typed.

#include "switchctl/audit/AuditCommand.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "AuditBench.hpp"
#include "tests/support/CommandRun.hpp"
#include "tests/support/TemporaryFile.hpp"

using chips::ExitStatus;
using switchctl::audit::AuditCommand;
using test_support::CommandRun;
using test_support::TemporaryFile;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

std::string const minimal = AuditBench::pathOf("trap-minimal");

CommandRun audit(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "audit");
    return CommandRun::of<AuditCommand>(arguments, std::string("/nonexistent/mem"));
}

std::string contentOf(std::string const& path) {
    std::ifstream const file(path);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

class CleanAuditTest : public testing::TestWithParam<char const*> {};

} // namespace

TEST_P(CleanAuditTest, FindsNothing) {
    CommandRun const run = audit({AuditBench::pathOf(GetParam()), "--simulate"});
    EXPECT_EQ(run.status, chips::ExitStatus::success) << run.out << run.errors;
    EXPECT_THAT(run.out, StartsWith("the models of "));
    EXPECT_THAT(run.out, HasSubstr(", 0 deviations\n"));
}

INSTANTIATE_TEST_SUITE_P(Examples, CleanAuditTest,
                         testing::Values("home-gateway", "video-rooms", "trap-minimal", "trap-access-point",
                                         "trap-three-switches", "trap-video-switch", "trap-mixed"));

TEST(AuditCommandTest, ASeededDeviationIsReported) {
    CommandRun const run = audit({minimal, "--simulate", "--deviate", "0/port8/PortControl:PortState=0"});
    EXPECT_EQ(run.status, chips::ExitStatus::chipsDeviate);
    EXPECT_THAT(run.out,
                StartsWith("switch 0  port 8  PortControl  PortState  expected 0x3, found 0x0\nthe models"));
    EXPECT_THAT(run.out, HasSubstr(", 1 deviation\n"));
}

TEST(AuditCommandTest, APortThatTheDocumentDoesNotMentionIsCompared) {
    TemporaryFile const before("<switches><switch id='0' switchModel='88e6096'>"
                               "<port id='8' connectedTo='switchInterlink' portStatus='forwarding'/>"
                               "<port id='9' connectedTo='switchInterlink' portStatus='disabled'/>"
                               "</switch></switches>");
    TemporaryFile const now("<switches><switch id='0' switchModel='88e6096'>"
                            "<port id='8' connectedTo='switchInterlink' portStatus='forwarding'/>"
                            "</switch></switches>");
    CommandRun const run = audit({now.path(), "--simulate=" + before.path()});
    EXPECT_EQ(run.status, chips::ExitStatus::chipsDeviate);
    EXPECT_THAT(
        run.out,
        HasSubstr("switch 0  port 9  PhysicalControl  ForcedLink  expected 0x0 after reset, found 0x1\n"));
    EXPECT_THAT(run.out,
                HasSubstr("switch 0  port 9  PortControl  PortState  expected 0x3 after reset, found 0x0\n"));

    CommandRun const writtenOnly = audit({now.path(), "--simulate=" + before.path(), "--written-only"});
    EXPECT_EQ(writtenOnly.status, chips::ExitStatus::success);
    EXPECT_THAT(writtenOnly.out, HasSubstr("registers that start-up does not write: "));
}

TEST(AuditCommandTest, WhatIsNotComparedIsCountedAndNamed) {
    std::string const out = audit({minimal, "--simulate"}).out;
    std::string const last = out.substr(out.rfind('\n', out.size() - 2) + 1);
    EXPECT_THAT(last, StartsWith("not compared: "));
    EXPECT_THAT(last, HasSubstr("counters: 44 (InDiscardsHigh, InDiscardsLow, InFiltered, OutFiltered); "));
    EXPECT_THAT(last,
                HasSubstr("registers that do not keep still: 33 (Expansion, GlobalStatus, PartnerAbility, "
                          "SpecificStatus, Status); "));
    EXPECT_THAT(last, HasSubstr("PortStatus:Link, "));
    EXPECT_THAT(last, HasSubstr("address tables: 1 (ATU); "));
    auto const json = nlohmann::json::parse(audit({minimal, "--simulate", "--json"}).out);
    bool isThere = false;
    for (auto const& group : json["notCompared"]) {
        isThere = isThere ||
                  group == nlohmann::json(
                               {{"what", "counters"},
                                {"count", 44},
                                {"names", {"InDiscardsHigh", "InDiscardsLow", "InFiltered", "OutFiltered"}}});
    }
    EXPECT_TRUE(isThere) << json["notCompared"];
}

TEST(AuditCommandTest, ADeviationThatNoAuditWouldSeeIsRefused) {
    for (char const* const text :
         {"0/port1/InFiltered=1", "0/port1/PortStatus:Link=1", "0/global1/VTUOperation=0xB000",
          "0/global1/GlobalStatus=1", "0/port1/SwitchIdentifier=1", "0/port1/PortStatus:PHYDetect=1,Link=1",
          "0/global1/0x1f=1"}) {
        CommandRun const run = audit({minimal, "--simulate", "--deviate", text});
        EXPECT_EQ(run.status, chips::ExitStatus::usage) << text;
        EXPECT_THAT(run.errors, HasSubstr("not compared by an audit")) << text;
        EXPECT_EQ(run.out, "") << text;
    }
    TemporaryFile const other("<switches><switch id='0' switchModel='88e6096'/>"
                              "<switch id='9' switchModel='88e6096'/></switches>");
    EXPECT_EQ(audit({minimal, "--simulate=" + other.path(), "--deviate", "9/port1/PortControl=0"}).status,
              chips::ExitStatus::usage)
        << "a switch that only the other document has";
}

TEST(AuditCommandTest, AnotherDocumentsModelsDeviate) {
    std::string text = contentOf(minimal);
    std::string const line = "<port id=\"8\" connectedTo=\"switchInterlink\" portStatus=\"forwarding\"/>";
    ASSERT_NE(text.find(line), std::string::npos);
    text.replace(text.find(line), line.size(),
                 "<port id=\"8\" connectedTo=\"switchInterlink\" portStatus=\"disabled\"/>");
    TemporaryFile const other(text);
    CommandRun const run = audit({minimal, "--simulate=" + other.path()});
    EXPECT_EQ(run.status, chips::ExitStatus::chipsDeviate);
    EXPECT_THAT(run.out, HasSubstr("switch 0  port 8  PortControl  PortState  expected 0x3, found 0x0\n"));
}

TEST(AuditCommandTest, JsonHasTheSame) {
    CommandRun const run =
        audit({minimal, "--simulate", "--json", "--deviate", "0/port8/PortControl:PortState=0"});
    EXPECT_EQ(run.status, chips::ExitStatus::chipsDeviate);
    auto const json = nlohmann::json::parse(run.out);
    ASSERT_EQ(json["deviations"].size(), 1U);
    EXPECT_EQ(json["deviations"][0], nlohmann::json({{"chip", "switch 0"},
                                                     {"unit", "port 8"},
                                                     {"item", "PortControl"},
                                                     {"field", "PortState"},
                                                     {"expected", 3},
                                                     {"found", 0},
                                                     {"afterReset", false}}));
    EXPECT_EQ(json["switches"], 1);
    EXPECT_EQ(json["unread"].size(), 0U);
}

TEST(AuditCommandTest, AChipThatIsNotThereIsUnread) {
    TemporaryFile const other("<switches><switch id='9' switchModel='88e6096'/></switches>");
    CommandRun const run = audit({minimal, "--simulate=" + other.path()});
    EXPECT_EQ(run.status, chips::ExitStatus::registerFailed);
    EXPECT_THAT(run.out, StartsWith("not read: switch 0: "));
    EXPECT_THAT(run.out,
                HasSubstr(": 0 of 1 switch, 0 registers, 0 table entries, not everything was read\n"));
    EXPECT_EQ(run.out.find("deviation"), std::string::npos) << run.out;
    EXPECT_EQ(run.errors, "switchctl: the audit is not complete: what could not be read is not compared\n");
}

TEST(AuditCommandTest, JsonOfWhatWasNotReadClaimsNothing) {
    TemporaryFile const other("<switches><switch id='9' switchModel='88e6096'/></switches>");
    CommandRun const run = audit({minimal, "--simulate=" + other.path(), "--json"});
    EXPECT_EQ(run.status, chips::ExitStatus::registerFailed);
    auto const json = nlohmann::json::parse(run.out);
    EXPECT_EQ(json["switches"], 1);
    EXPECT_EQ(json["switchesRead"], 0);
    EXPECT_EQ(json["registers"], 0);
    EXPECT_EQ(json["entries"], 0);
    EXPECT_TRUE(json["deviations"].is_null());
    EXPECT_EQ(json["unread"].size(), 1U);
}

TEST(AuditCommandTest, RefusesWhatItCannotDo) {
    EXPECT_EQ(audit({minimal}).status, chips::ExitStatus::noHardware);
    EXPECT_THAT(audit({minimal}).errors, HasSubstr("/nonexistent/mem"));
    EXPECT_EQ(audit({"/nonexistent.xml", "--simulate"}).status, chips::ExitStatus::badDocument);
    EXPECT_EQ(audit({minimal, "--simulate=/nonexistent.xml"}).status, chips::ExitStatus::badDocument);
    TemporaryFile const unknown("<switches><switch id='1' switchModel='abacus'/></switches>");
    EXPECT_EQ(audit({unknown.path(), "--simulate"}).status, chips::ExitStatus::startUpFailed);
    for (char const* const text : {"port1/PortControl=1", "1/port1/PortControl=1", "0/port1/Nonsense=1",
                                   "0/port1/PortControl=0x10000", "0/port1/PortControl"}) {
        EXPECT_EQ(audit({minimal, "--simulate", "--deviate", text}).status, chips::ExitStatus::usage) << text;
    }
    EXPECT_EQ(audit({minimal, "--deviate", "0/port1/PortControl=1"}).status, chips::ExitStatus::usage);
    EXPECT_EQ(audit({}).status, chips::ExitStatus::usage);
}

TEST(AuditCommandTest, HelpHasExamplesAndSaysWhatAnAuditDoes) {
    std::string const help = audit({"--help"}).out;
    EXPECT_THAT(help, HasSubstr("switchctl audit board.xml"));
    EXPECT_THAT(help, HasSubstr("staging\nand command registers"));
    EXPECT_THAT(help, HasSubstr("Exit status:"));
}
