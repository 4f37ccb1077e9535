// What all verbs have in common at the prompt.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <regex>

#include "tests/support/ChildProcess.hpp"
#include "tests/support/Examples.hpp"
#include "tests/support/TemporaryFile.hpp"

using test_support::minimal;
using test_support::TemporaryFile;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

using Words = std::vector<std::string>;

std::vector<Words> verbs() {
    return {{"bring-up"},
            {"register"},
            {"register", "read"},
            {"register", "read", "parallel"},
            {"register", "write"},
            {"register", "dump", "phy"},
            {"register", "diff"},
            {"check"},
            {"draw"},
            {"paths"},
            {"explain"},
            {"plan"},
            {"audit"},
            {"statistics"},
            {"replay"},
            {"simulate-controller"}};
}

Words with(Words words, std::string const& word) {
    words.push_back(word);
    return words;
}

std::string withoutTime(std::string const& text) {
    return std::regex_replace(text, std::regex(R"("time": "[^"]*")"), "");
}

} // namespace

TEST(CommandLineTest, TheVersionIsThatOfTheProject) {
    ChildProcess const child = ChildProcess::runSwitchctl({"--version"});
    EXPECT_EQ(child.status, 0);
    EXPECT_EQ(child.out, "switchctl " PROJECT_VERSION "\n");
}

TEST(CommandLineTest, HelpOfAVerbIsItsHelp) {
    for (Words const& verb : verbs()) {
        Words words = verb;
        words.insert(words.begin(), "help");
        ChildProcess const child = ChildProcess::runSwitchctl(words);
        EXPECT_EQ(child.status, 0);
        EXPECT_EQ(child.out, ChildProcess::runSwitchctl(with(verb, "--help")).out);
        EXPECT_THAT(child.out, HasSubstr("Usage: switchctl " + verb.front()));
    }
    EXPECT_EQ(ChildProcess::runSwitchctl({"help"}).out, ChildProcess::runSwitchctl({"--help"}).out);
}

TEST(CommandLineTest, AnUnknownVerbIsNamedWithTheNearestOne) {
    std::vector<std::pair<Words, std::string>> const cases = {
        {{"brinup"}, "\"switchctl brinup\"; the nearest is \"switchctl bring-up\""},
        {{"Check", "board.xml"}, "\"switchctl Check\"; the nearest is \"switchctl check\""},
        {{"--input-limit", "5", "plam"}, "\"switchctl plam\"; the nearest is \"switchctl plan\""},
        {{"help", "stats"}, "\"switchctl stats\"; the nearest is \"switchctl statistics\""},
        {{"replya", "--help"}, "\"switchctl replya\"; the nearest is \"switchctl replay\""},
        {{"register", "dunp"}, "\"switchctl register dunp\"; the nearest is \"switchctl register dump\""},
        {{"register", "read", "paralel"},
         "\"switchctl register read paralel\"; the nearest is \"switchctl register read parallel\""}};
    for (auto const& [words, text] : cases) {
        ChildProcess const child = ChildProcess::runSwitchctl(words);
        EXPECT_EQ(child.status, 2);
        EXPECT_EQ(child.out, "");
        EXPECT_THAT(child.errors, StartsWith("switchctl: there is no " + text + "\n"));
    }
}

TEST(CommandLineTest, UsageErrorsBeginWithTheProgramsNameAndTellWhereHelpIs) {
    for (Words const& verb : verbs()) {
        ChildProcess const child = ChildProcess::runSwitchctl(with(verb, "--no-such-option"));
        EXPECT_EQ(child.status, 2);
        std::string text = "switchctl";
        for (std::string const& word : verb) {
            text += " " + word;
        }
        EXPECT_THAT(child.errors, StartsWith("switchctl: "));
        EXPECT_THAT(child.errors, testing::EndsWith("\nSee \"" + text + " --help\".\n"));
    }
    EXPECT_THAT(ChildProcess::runSwitchctl({}).errors, StartsWith("switchctl: "));
}

// The document writes ids in hexadecimal digits.
TEST(CommandLineTest, JsonHasIdsOfVlansAsNumbersInHexadecimalAndAsWritten) {
    for (Words const& words :
         std::vector<Words>{{"draw", EXAMPLES_FOLDER "/trap-access-point.xml", "--json"},
                            {"bring-up", EXAMPLES_FOLDER "/trap-access-point.xml", "--simulate", "--json"}}) {
        nlohmann::json const vlan =
            nlohmann::json::parse(ChildProcess::runSwitchctl(words).out).at("vlans").back();
        EXPECT_EQ(vlan.value("vlan", 0), 20);
        EXPECT_EQ(vlan.value("hexadecimal", ""), "0x14");
        EXPECT_EQ(vlan.value("written", ""), "14");
    }
}

TEST(CommandLineTest, JsonHasOneSpellingAndAShortOne) {
    TemporaryFile const trace(
        ChildProcess::runSwitchctl({"bring-up", minimal, "--simulate", "--accept-errors", "--trace", "-"})
            .out);
    TemporaryFile const dump(
        ChildProcess::runSwitchctl({"register", "dump", "smi", "--switch", "0", "--simulate"}).out);
    for (Words const& words :
         std::vector<Words>{{"bring-up", minimal, "--simulate", "--accept-errors"},
                            {"register", "read", "parallel", "--simulate", "system/CHIPID"},
                            {"register", "write", "parallel", "--simulate", "analyser/VLANMASK=5", "--yes"},
                            {"register", "dump", "smi", "--switch", "0", "--simulate"},
                            {"register", "diff", dump.path(), dump.path()},
                            {"check", minimal},
                            {"check", "--list"},
                            {"draw", minimal},
                            {"paths", minimal},
                            {"explain", minimal, "0.1", "to", "0.0"},
                            {"plan", minimal},
                            {"plan", minimal, minimal},
                            {"audit", minimal, "--simulate"},
                            {"statistics", minimal, "--simulate"},
                            {"replay", trace.path()}}) {
        ChildProcess const longForm = ChildProcess::runSwitchctl(with(with(words, "--format"), "json"));
        ChildProcess const shortForm = ChildProcess::runSwitchctl(with(words, "--json"));
        EXPECT_EQ(withoutTime(longForm.out), withoutTime(shortForm.out)) << testing::PrintToString(words);
        EXPECT_EQ(longForm.status, shortForm.status);
        EXPECT_EQ(nlohmann::json::parse(longForm.out).value("version", 0), 1)
            << testing::PrintToString(words);
        EXPECT_EQ(ChildProcess::runSwitchctl(with(with(words, "--json"), "--format=json")).status, 2);
        if (words.front() != "draw") {
            EXPECT_EQ(ChildProcess::runSwitchctl(with(words, "--format=text")).out,
                      ChildProcess::runSwitchctl(words).out);
        }
    }
}

TEST(CommandLineTest, WhatChangesHasItsTime) {
    for (Words const& words :
         std::vector<Words>{{"bring-up", minimal, "--simulate", "--accept-errors", "--json"},
                            {"register", "read", "parallel", "--simulate", "system/CHIPID", "--json"},
                            {"audit", minimal, "--simulate", "--json"},
                            {"statistics", minimal, "--simulate", "--json"}}) {
        EXPECT_THAT(nlohmann::json::parse(ChildProcess::runSwitchctl(words).out).value("time", ""),
                    testing::ContainsRegex("^20[0-9][0-9]-[0-9][0-9]-[0-9][0-9]T[0-9:]{8}Z$"));
    }
    // What does not can be compared from one run to the next.
    EXPECT_FALSE(
        nlohmann::json::parse(ChildProcess::runSwitchctl({"plan", minimal, "--json"}).out).contains("time"));
}
