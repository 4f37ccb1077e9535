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

std::string const minimal = AuditBench::pathOf("minimal");

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
                         testing::Values("minimal", "access-point", "three-switches", "video-switch",
                                         "mixed"));

TEST(AuditCommandTest, ASeededDeviationIsReported) {
    CommandRun const run = audit({minimal, "--simulate", "--deviate", "0/port8/PortControl:PortState=0"});
    EXPECT_EQ(run.status, chips::ExitStatus::chipsDeviate);
    EXPECT_THAT(run.out,
                StartsWith("switch 0  port 8  PortControl  PortState  expected 0x3, found 0x0\nthe models"));
    EXPECT_THAT(run.out, HasSubstr(", 1 deviation\n"));
}

TEST(AuditCommandTest, AVlanThatIsPurgedOverTheBusIsMissing) {
    // The key of VLAN 5 without its valid bit, and the operation that loads an entry.
    CommandRun const run = audit({minimal, "--simulate", "--deviate", "0/global1/VTUVID=5", "--deviate",
                                  "0/global1/VTUOperation=0xB000"});
    EXPECT_EQ(run.status, chips::ExitStatus::chipsDeviate);
    EXPECT_THAT(run.out, StartsWith("switch 0  VTU  VID 5  expected the entry, found none\nthe models"));
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
                                                     {"found", 0}}));
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
