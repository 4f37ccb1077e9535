#include "switchctl/check/CheckCommand.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <sstream>

#include "switchctl/check/BoardSchema.hpp"
#include "switchctl/check/CheckTable.hpp"
#include "tests/support/CommandRun.hpp"
#include "tests/support/TemporaryFile.hpp"
#include "tests/switchctl/check/Documents.hpp"

using chips::ExitStatus;
using nlohmann::json;
using switchctl::check::CheckCommand;
using test_support::CommandRun;
using test_support::TemporaryFile;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

/// Has the notes that every board with an 88E6096 has.
std::string good() {
    return "<board><switches><switch id='0' switchModel='88e6096'>" + port("0", "cpu") + ports(1, 10) +
           "</switch></switches>" +
           tagBased("5",
                    [] {
                        std::string members;
                        for (unsigned int id = 0; id <= 10; ++id) {
                            members += member("0", std::to_string(id));
                        }
                        return members;
                    }()) +
           "</board>";
}

class CheckCommandTest : public testing::Test {
protected:
    chips::ExitStatus run(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "check");
        CommandRun const run = CommandRun::of<CheckCommand>(arguments);
        out << run.out;
        errors << run.errors;
        return run.status;
    }

    chips::ExitStatus check(std::string const& text) {
        TemporaryFile const file(text);
        path = file.path();
        return run({path});
    }

    json checkAsJson(std::string const& text, chips::ExitStatus expected) {
        TemporaryFile const file(text);
        path = file.path();
        EXPECT_EQ(run({path, "--json"}), expected);
        return json::parse(out.str());
    }

    std::ostringstream out;
    std::ostringstream errors;
    std::string path;
};

TEST_F(CheckCommandTest, ADocumentWithoutMistakesHasTheNotesOfItsChip) {
    EXPECT_EQ(check(good()), chips::ExitStatus::success);
    EXPECT_THAT(out.str(), HasSubstr("[88e6096-silent-while-restarting]"));
    EXPECT_THAT(out.str(), HasSubstr("[88e6096-ports-by-strap]"));
    EXPECT_THAT(out.str(), EndsWith(path + ": 0 errors, 0 warnings, 2 notes\n"));
    EXPECT_EQ(errors.str(), "");
}

TEST_F(CheckCommandTest, NotesAreNoReasonToFail) {
    std::string text = good();
    text.replace(text.find("<switch "), 8, "<switch atuAgeTime='40' ");
    EXPECT_EQ(check(text), chips::ExitStatus::success);
    EXPECT_THAT(out.str(), EndsWith(path + ": 0 errors, 0 warnings, 3 notes\n"));
}

TEST_F(CheckCommandTest, WarningsHaveAStatusOfTheirOwn) {
    EXPECT_EQ(check(good().substr(0, good().size() - 8) + portBased("6", "") + "</board>"),
              chips::ExitStatus::documentWarnings);
    EXPECT_THAT(out.str(), EndsWith(path + ": 0 errors, 1 warning, 2 notes\n"));
    EXPECT_EQ(static_cast<int>(chips::ExitStatus::documentWarnings), 10);
}

TEST_F(CheckCommandTest, ErrorsAreThoseOfABadDocument) {
    EXPECT_EQ(check(good().substr(0, good().size() - 8) + "<vlan id='6'/></board>"),
              chips::ExitStatus::badDocument);
    EXPECT_EQ(static_cast<int>(chips::ExitStatus::badDocument), 3);
}

TEST_F(CheckCommandTest, PrintsFileLineSeverityElementAndName) {
    check("<board>\n\n<vlan id='6'/>\n</board>");
    EXPECT_THAT(
        out.str(),
        HasSubstr(path +
                  ":3: error: <vlan id=\"6\"> [vlan-type-absent]\n"
                  "    The library reports that the vlan has no attribute typeOfVlan and skips it.\n"
                  "    Instead: Write typeOfVlan=\"tagBasedVlan\" or typeOfVlan=\"portBasedVlan\".\n"));
}

TEST_F(CheckCommandTest, SaysOnceWhatIsTheSameInSeveralLines) {
    check("<board>\n<vlan id='6'/>\n<vlan id='7'/><vlan id='8'/>\n<vlan/>\n</board>");
    EXPECT_THAT(out.str(),
                HasSubstr(path +
                          ":2: error: <vlan id=\"6\"> [vlan-type-absent]\n"
                          "    The library reports that the vlan has no attribute typeOfVlan and skips it.\n"
                          "    Instead: Write typeOfVlan=\"tagBasedVlan\" or typeOfVlan=\"portBasedVlan\".\n"
                          "    4 times; also lines 3 and 4.\n"));
    EXPECT_EQ(out.str().find("<vlan id=\"7\">"), std::string::npos);
}

TEST_F(CheckCommandTest, SaysHowOftenALineHasTheSame) {
    check("<board>\n<vlan id='6'/><vlan id='7'/>\n</board>");
    EXPECT_THAT(out.str(), HasSubstr("\n    2 times in this line.\n"));
}

TEST_F(CheckCommandTest, CountsAndListsEachFindingInJson) {
    json const result =
        checkAsJson("<board>\n<vlan id='6'/>\n<vlan id='7'/>\n</board>", chips::ExitStatus::badDocument);
    EXPECT_EQ(result["errors"], 3);
    EXPECT_EQ(std::count_if(result["findings"].begin(), result["findings"].end(),
                            [](json const& finding) { return finding["check"] == "vlan-type-absent"; }),
              2);
}

TEST_F(CheckCommandTest, PrintsJson) {
    json const result = checkAsJson("<board>\n\n<vlan id='6'/>\n</board>", chips::ExitStatus::badDocument);
    EXPECT_EQ(result["file"], path);
    EXPECT_EQ(result["errors"], 2);
    EXPECT_EQ(result["warnings"], 1);
    EXPECT_EQ(result["notes"], 0);
    json const finding = result["findings"].back();
    EXPECT_EQ(finding["check"], "vlan-type-absent");
    EXPECT_EQ(finding["severity"], "error");
    EXPECT_EQ(finding["file"], path);
    EXPECT_EQ(finding["line"], 3);
    EXPECT_EQ(finding["element"], "<vlan id=\"6\">");
    EXPECT_THAT(std::string(finding["effect"]), EndsWith("skips it."));
    EXPECT_THAT(std::string(finding["advice"]), StartsWith("Write typeOfVlan="));
}

TEST_F(CheckCommandTest, PrintsJsonOfADocumentWithoutMistakes) {
    json const result = checkAsJson(good(), chips::ExitStatus::success);
    EXPECT_EQ(result["notes"], 2);
    EXPECT_EQ(result["findings"].size(), 2U);
}

TEST_F(CheckCommandTest, RefusesWhatIsNotWellFormedWithFileLineAndReason) {
    EXPECT_EQ(check("<board>\n<switches>\n</board>"), chips::ExitStatus::badDocument);
    EXPECT_EQ(out.str(), "");
    EXPECT_THAT(errors.str(), StartsWith("switchctl: " + path + ":3: Opening and ending tag mismatch"));
}

TEST_F(CheckCommandTest, RefusesInJsonToo) {
    json const result = checkAsJson("<board>\n<switches>\n</board>", chips::ExitStatus::badDocument);
    EXPECT_EQ(result["file"], path);
    EXPECT_THAT(std::string(result["reason"]), StartsWith(path + ":3: "));
}

TEST_F(CheckCommandTest, RefusesAFileThatIsNotThere) {
    EXPECT_EQ(run({"/nonexistent/board.xml"}), chips::ExitStatus::badDocument);
    EXPECT_EQ(errors.str(), "switchctl: /nonexistent/board.xml:0: No such file or directory\n");
}

TEST_F(CheckCommandTest, ListsAllChecks) {
    EXPECT_EQ(run({"--list"}), chips::ExitStatus::success);
    std::string const text = "\n" + out.str();
    for (auto const& entry : switchctl::check::allChecks()) {
        EXPECT_THAT(text, HasSubstr(std::string("\n") + entry.name + " "));
        EXPECT_THAT(text, HasSubstr(entry.summary));
    }
}

TEST_F(CheckCommandTest, ListsAllChecksAsJson) {
    EXPECT_EQ(run({"--list", "--json"}), chips::ExitStatus::success);
    json const result = json::parse(out.str())["checks"];
    ASSERT_EQ(result.size(), switchctl::check::allChecks().size());
    EXPECT_EQ(result[0]["check"], "schema");
    EXPECT_EQ(result[0]["severity"], "warning");
    EXPECT_EQ(result[0]["summary"], "not valid by the RELAX NG schema");
}

TEST_F(CheckCommandTest, PrintsTheSchema) {
    EXPECT_EQ(run({"--schema"}), chips::ExitStatus::success);
    EXPECT_EQ(out.str(), switchctl::check::BoardSchema::text());
}

TEST_F(CheckCommandTest, RefusesTheSchemaAsJsonHoweverThatIsSpelled) {
    std::string const refusal = "switchctl: --schema: is printed as RELAX NG, not as json\n"
                                "See \"switchctl check --help\".\n";
    EXPECT_EQ(run({"--schema", "--json"}), chips::ExitStatus::usage);
    EXPECT_EQ(run({"--schema", "--format", "json"}), chips::ExitStatus::usage);
    EXPECT_EQ(errors.str(), refusal + refusal);
    EXPECT_EQ(out.str(), "");
}

TEST_F(CheckCommandTest, NeedsADocumentOrAnOption) {
    std::string const more = "\nSee \"switchctl check --help\".\n";
    for (std::vector<std::string> const& arguments :
         {std::vector<std::string>{}, {"--json"}, {"board.xml", "--list"}, {"--list", "--schema"}}) {
        EXPECT_EQ(run(arguments), chips::ExitStatus::usage);
    }
    EXPECT_EQ(errors.str(), "switchctl: BOARD.xml is required" + more + "switchctl: BOARD.xml is required" +
                                more + "switchctl: BOARD.xml excludes --list" + more +
                                "switchctl: --list excludes --schema" + more);
}

TEST_F(CheckCommandTest, HelpHasExamplesAndStatuses) {
    EXPECT_EQ(run({"--help"}), chips::ExitStatus::success);
    std::string const help = out.str();
    EXPECT_THAT(help, HasSubstr("switchctl check board.xml"));
    EXPECT_THAT(help, HasSubstr("switchctl check --list"));
    EXPECT_THAT(help, HasSubstr("10  warnings were found"));
}

int statusOfProgram(std::string const& arguments) {
    int const status =
        std::system((SWITCHCTL_PROGRAM " " + arguments + " > /dev/null 2>&1").c_str()); // NOLINT
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(CheckProgramTest, EndsWithTheStatus) {
    EXPECT_EQ(statusOfProgram("check " EXAMPLES_FOLDER "/home-gateway.xml"), 0);
    EXPECT_EQ(statusOfProgram("check " EXAMPLES_FOLDER "/trap-access-point.xml"), 10);
    EXPECT_EQ(statusOfProgram("check /nonexistent/board.xml"), 3);
    EXPECT_EQ(statusOfProgram("check"), 2);
    EXPECT_EQ(statusOfProgram("check --list"), 0);
}

} // namespace
