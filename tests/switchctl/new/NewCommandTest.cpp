// `switchctl new`: what it writes passes the checks, and frames go where the VLANs were said to be.

#include "switchctl/new/NewCommand.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <sstream>

#include "switchctl/Program.hpp"
#include "tests/support/CommandRun.hpp"
#include "tests/support/TemporaryFile.hpp"

using chips::ExitStatus;
using nlohmann::json;
using switchctl::draft::NewCommand;
using test_support::CommandRun;
using test_support::TemporaryFile;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

using Words = std::vector<std::string>;

CommandRun write(Words words, std::istream* answers = nullptr) {
    words.insert(words.begin(), "new");
    return CommandRun::of<NewCommand>(words, answers);
}

json program(Words const& words) {
    std::ostringstream out;
    std::ostringstream errors;
    switchctl::Program("/nonexistent/mem").run(words, out, errors);
    return json::parse(out.str());
}

std::string refusalOf(Words words) {
    CommandRun const run = write(std::move(words));
    EXPECT_EQ(run.status, ExitStatus::usage);
    EXPECT_EQ(run.out, "");
    return run.errors;
}

Words gateway(std::string const& vlan) {
    return {"--chip", "0=88e6096", "--cpu", "0.0", "--from-vlans", vlan};
}

struct Draft {
    char const* name;
    Words words;
    /// Pairs of ports between which an untagged frame goes.
    std::vector<std::pair<std::string, std::string>> reached;
};

void PrintTo(Draft const& draft, std::ostream* out) {
    *out << draft.name;
}

class NewDocumentTest : public testing::TestWithParam<Draft> {};

} // namespace

TEST_P(NewDocumentTest, PassesTheChecksAndHasAllPathsThatWereSaid) {
    CommandRun const run = write(GetParam().words);
    ASSERT_EQ(run.status, ExitStatus::success) << run.errors;
    TemporaryFile const board(run.out);
    json const checks = program({"check", board.path(), "--json"});
    EXPECT_EQ(checks.at("errors"), 0) << checks;
    EXPECT_EQ(checks.at("warnings"), 0) << checks;
    json const paths = program({"paths", board.path(), "--json"});
    EXPECT_EQ(paths.at("differences"), json::array()) << paths.at("differences");
    for (auto const& [from, to] : GetParam().reached) {
        std::ostringstream out;
        EXPECT_EQ(
            switchctl::Program("/nonexistent/mem").run({"explain", board.path(), from, "to", to}, out, out),
            ExitStatus::success)
            << out.str();
    }
}

INSTANTIATE_TEST_SUITE_P(
    Boards, NewDocumentTest,
    testing::Values(Draft{"Gateway",
                          {"--chip", "0=88e6096", "--cpu", "0.0", "--from-vlans", "2=0.0t,0.1,0.2,0.8t",
                           "--from-vlans", "3=0.0t,0.5"},
                          {{"0.1", "0.2"}, {"0.5", "0.0"}, {"0.1", "0.8"}}},
                    Draft{"TaggedAndUntagged",
                          {"--chip", "0=88e6096", "--cpu", "0.0", "--from-vlans", "6=0.0,0.1,0.2,0.8t",
                           "--from-vlans", "5=0.1t,0.3"},
                          {{"0.1", "0.2"}, {"0.3", "0.1"}}},
                    Draft{"TwoChips",
                          {"--chip", "0=88e6096", "--chip", "1=88e6096", "--cpu", "0.0", "--link",
                           "0.10=switchInterlink", "--link", "1.9=switchInterlink", "--from-vlans",
                           "4=0.0t,0.1,0.10t,1.9t,1.2"},
                          {{"0.1", "0.10"}, {"1.2", "1.9"}}},
                    Draft{"Vsc7390",
                          {"--chip", "2=vsc7390", "--cpu", "2.0", "--link", "2.1=smac", "--link", "2.2=smac",
                           "--link", "2.3=switchInterlink", "--link", "2.4=switchInterlink", "--from-vlans",
                           "2=2.1,2.2", "--from-vlans", "9=2.3,2.4"},
                          {{"2.1", "2.2"}, {"2.4", "2.3"}}}),
    [](auto const& draft) { return std::string(draft.param.name); });

TEST(NewCommandTest, VlansOfTwoReadingsCannotBeHad) {
    EXPECT_EQ(
        refusalOf(gateway("12=0.1,0.2")),
        "switchctl: --from-vlans: \"12=0.1,0.2\": VLAN 12 cannot be had: the library reads id=\"12\" as "
        "hexadecimal, which is 18, and its members as decimal; VLANs 2 to 9 can be had\n");
    EXPECT_THAT(refusalOf(gateway("1=0.1,0.2")), HasSubstr("VLAN 1 cannot be had: it gets the frames "));
    EXPECT_THAT(refusalOf(gateway("4095=0.1")), HasSubstr("VLANs are 1 to 4094"));
    EXPECT_THAT(refusalOf(gateway("0=0.1")), HasSubstr("VLANs are 1 to 4094"));
}

TEST(NewCommandTest, WhatDoesNotDoNamesItsOption) {
    EXPECT_THAT(refusalOf({"--chip", "0=abacus"}),
                HasSubstr("--chip: \"0=abacus\": no such chip is known; there are "));
    EXPECT_THAT(refusalOf({"--chip", "0"}), HasSubstr("--chip: \"0\": not of the form ID=MODEL"));
    EXPECT_THAT(refusalOf({"--chip", "32=88e6096"}), HasSubstr("--chip: \"32=88e6096\": ids are addresses"));
    EXPECT_THAT(refusalOf({"--chip", "0=88e6096", "--chip", "0=88e6096"}), HasSubstr("a switch 0 already"));
    EXPECT_THAT(refusalOf({"--chip", "0=88e6096", "--chip", "1=vsc7390"}),
                HasSubstr("give it one by itself"));
    EXPECT_THAT(refusalOf({"--chip", "0=88e6096", "--cpu", "0.11"}),
                HasSubstr("--cpu: \"0.11\": there is no "));
    EXPECT_THAT(refusalOf({"--chip", "0=88e6096"}), HasSubstr("--cpu: the processor's port is missing"));
    EXPECT_THAT(refusalOf({"--chip", "0=88e6096", "--cpu", "0.0", "--link", "0.1=rope"}),
                HasSubstr("--link: \"0.1=rope\": it may be connected to external, "));
    EXPECT_THAT(refusalOf(gateway("2=0.1,0.2")),
                HasSubstr("--from-vlans: the processor's port 0.0 is in no VLAN"));
    EXPECT_THAT(refusalOf(gateway("x=0.1")), HasSubstr("\"x\" is no decimal number"));
    EXPECT_THAT(refusalOf(gateway("2=0.1,0.1")), HasSubstr("\"0.1\": is in the list twice"));
    EXPECT_THAT(refusalOf(gateway("2=0.1,,0.2")), HasSubstr("\"\": not of the form SWITCH.PORT"));
    Words twice = gateway("2=0.1,0.2");
    twice.insert(twice.end(), {"--from-vlans", "3=0.1,0.3"});
    EXPECT_THAT(refusalOf(twice), HasSubstr("\"0.1\": frames without a tag belong to one VLAN only"));
    EXPECT_THAT(refusalOf({"--chip", "2=vsc7390", "--cpu", "2.0", "--from-vlans", "2=2.1,2.2"}),
                HasSubstr("say so with --link first"));
    EXPECT_THAT(refusalOf({"--chip", "2=vsc7390", "--cpu", "2.0", "--from-vlans", "2=2.1t"}),
                HasSubstr("likely lets tagged frames of other VLANs through"));
    EXPECT_EQ(refusalOf({}), "switchctl: --chip: is missing, and there is no terminal to ask on\n");
}

TEST(NewCommandTest, BadAnswersAreAskedForAgain) {
    std::istringstream answers("nothing\n0=88e6096\n\n0.99\n0.0\n\n12=0.1,0.2\n2=0.0t,0.1,0.2\n\n");
    CommandRun const run = write({}, &answers);
    EXPECT_EQ(run.status, ExitStatus::success) << run.errors;
    EXPECT_THAT(run.errors, HasSubstr("\"nothing\": not of the form ID=MODEL"));
    EXPECT_THAT(run.errors, HasSubstr("\"0.99\": there is no such port\n"));
    EXPECT_THAT(run.errors, HasSubstr("VLAN 12 cannot be had"));
    EXPECT_EQ(run.out, write(gateway("2=0.0t,0.1,0.2")).out);
}

TEST(NewCommandTest, AnswersThatEndAreNoBoard) {
    std::istringstream answers("0=88e6096\n\n");
    CommandRun const run = write({}, &answers);
    EXPECT_EQ(run.status, ExitStatus::usage);
    EXPECT_EQ(run.out, "");
    EXPECT_THAT(run.errors, EndsWith("switchctl: the answers ended before the board was complete\n"));
}

TEST(NewCommandTest, AFileIsWritten) {
    TemporaryFile const board("old");
    Words words = gateway("2=0.0t,0.1,0.2");
    words.insert(words.end(), {"-o", board.path()});
    EXPECT_EQ(write(words).status, ExitStatus::success);
    std::ifstream file(board.path());
    std::string const text{std::istreambuf_iterator<char>(file), {}};
    EXPECT_EQ(text, write(gateway("2=0.0t,0.1,0.2")).out);
    EXPECT_THAT(text, StartsWith("<?xml"));
    words.back() = "/nonexistent/board.xml";
    EXPECT_EQ(write(words).status, ExitStatus::noPicture);
}
