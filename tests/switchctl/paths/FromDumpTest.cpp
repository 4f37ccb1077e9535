// `paths --from` and `explain --from`: what dumps of the chips say is what the chips said.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>

#include "reference_host/XmlDocument.hpp"
#include "simulation/SimulatedBoard.hpp"
#include "simulation/network/ChipForwarding.hpp"
#include "switchctl/explain/ExplainCommand.hpp"
#include "switchctl/paths/PathsCommand.hpp"
#include "switchctl/register/RegisterCommand.hpp"
#include "tests/support/CommandRun.hpp"
#include "tests/support/TemporaryFile.hpp"

using chips::ExitStatus;
using nlohmann::json;
using test_support::CommandRun;
using test_support::TemporaryFile;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

using Words = std::vector<std::string>;
using Files = std::vector<std::unique_ptr<TemporaryFile>>;

std::string const memoryDevice = "/nonexistent/mem";

std::string pathOfExample(std::string const& name) {
    return std::string(EXAMPLES_FOLDER) + "/" + name + ".xml";
}

CommandRun paths(Words arguments) {
    arguments.insert(arguments.begin(), "paths");
    return CommandRun::of<switchctl::paths::PathsCommand>(arguments, memoryDevice);
}

CommandRun explain(Words arguments) {
    arguments.insert(arguments.begin(), "explain");
    return CommandRun::of<switchctl::explain::ExplainCommand>(arguments, memoryDevice);
}

std::string dump(Words const& transport, std::string const& path, Words const& more) {
    Words arguments = {"register", "dump"};
    arguments.insert(arguments.end(), transport.begin(), transport.end());
    arguments.push_back("--simulate=" + path);
    arguments.insert(arguments.end(), more.begin(), more.end());
    CommandRun const run = CommandRun::of<switchctl::registers::RegisterCommand>(arguments, memoryDevice);
    EXPECT_EQ(run.status, ExitStatus::success) << run.errors;
    return run.out;
}

/// Of one chip, and of its PHYs.
void dumpSwitch(Files& files, std::string const& path, unsigned id, bool isMarvell, Words const& format) {
    std::string const number = std::to_string(id);
    Words more = format;
    files.push_back(std::make_unique<TemporaryFile>(
        dump(isMarvell ? Words{"phy", "--switch", number} : Words{"phy", "--parallel"}, path, more)));
    more.emplace_back("--tables");
    files.push_back(std::make_unique<TemporaryFile>(
        dump(isMarvell ? Words{"smi", "--switch", number} : Words{"parallel"}, path, more)));
}

Words with(Words arguments, Files const& files) {
    for (auto const& file : files) {
        arguments.insert(arguments.end(), {"--from", file->path()});
    }
    return arguments;
}

class FromDumpTest : public testing::TestWithParam<char const*> {
protected:
    Files dumpAll(Words const& format) const {
        Files files;
        auto const document = reference_host::XmlDocument::fromFile(path);
        for (unsigned const id : simulation::SimulatedBoard(*document).getSwitchIds()) {
            dumpSwitch(files, path, id, isMarvell(id), format);
        }
        return files;
    }

    bool isMarvell(unsigned id) const {
        auto const document = reference_host::XmlDocument::fromFile(path);
        simulation::SimulatedBoard board(*document);
        return board.getChip(id).getForwarding()->getNumberOfPorts() == 11;
    }

    std::string const path = pathOfExample(GetParam());
};

TEST_P(FromDumpTest, TheMatrixIsThatOfTheChips) {
    CommandRun const expected = paths({path});
    CommandRun const text = paths(with({path}, dumpAll({})));
    EXPECT_EQ(text.errors, "");
    EXPECT_EQ(text.out, expected.out);
    EXPECT_EQ(text.status, expected.status);
    CommandRun const fromJson = paths(with({path, "--json"}, dumpAll({"--json"})));
    EXPECT_EQ(fromJson.errors, "");
    json got = json::parse(fromJson.out);
    EXPECT_EQ(got["unread"], json::array());
    EXPECT_EQ(got["unreadPhys"], json::array());
    got.erase("unread");
    got.erase("unreadPhys");
    got.erase("unreadCables");
    EXPECT_EQ(got, json::parse(paths({path, "--json"}).out));
}

TEST_P(FromDumpTest, SoAreExplanations) {
    Files const files = dumpAll({});
    auto const document = reference_host::XmlDocument::fromFile(path);
    for (unsigned const id : simulation::SimulatedBoard(*document).getSwitchIds()) {
        for (unsigned const port : {0U, 1U, 8U}) {
            std::string const from = std::to_string(id) + "." + std::to_string(port);
            for (Words const& frame :
                 {Words{"to", std::to_string(id) + ".2"}, Words{"tagged", "2", "to", "all"}}) {
                Words question = {path, from};
                question.insert(question.end(), frame.begin(), frame.end());
                CommandRun const expected = explain(question);
                CommandRun const answer = explain(with(question, files));
                EXPECT_EQ(answer.errors, expected.errors);
                EXPECT_EQ(answer.out, expected.out);
                EXPECT_EQ(answer.status, expected.status);
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Examples, FromDumpTest,
                         testing::Values("home-gateway", "video-rooms", "trap-minimal", "trap-access-point",
                                         "trap-three-switches", "trap-video-switch", "trap-mixed"),
                         [](auto const& example) {
                             std::string name = example.param;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

/// Dumps of home-gateway.xml, with a line changed.
class BadDumpTest : public testing::Test {
protected:
    static std::string without(std::string text, std::string const& part) {
        std::size_t const place = text.find(part);
        EXPECT_NE(place, std::string::npos) << part;
        std::size_t const end = text.find('\n', place);
        return text.erase(place, end + 1 - place);
    }

    static std::string changed(std::string text, std::string const& from, std::string const& to) {
        std::size_t const place = text.find(from, text.find("\ntable "));
        EXPECT_NE(place, std::string::npos) << from;
        return text.replace(place, from.size(), to);
    }

    static std::string lineOf(std::string const& text, std::string const& part) {
        auto const end = text.begin() + static_cast<std::ptrdiff_t>(text.find(part));
        return std::to_string(1 + std::count(text.begin(), end, '\n'));
    }

    /// The refusal, without the file's name.
    std::string refusalOf(std::string const& content) const {
        TemporaryFile const file(content);
        CommandRun const run = paths({path, "--from", file.path()});
        EXPECT_EQ(run.status, ExitStatus::badDocument);
        EXPECT_EQ(run.out, "");
        std::string const start = "switchctl: " + file.path();
        EXPECT_THAT(run.errors, StartsWith(start));
        return run.errors.substr(std::min(start.size(), run.errors.size()));
    }

    std::string const path = pathOfExample("home-gateway");
    std::string const good = dump({"smi", "--switch", "0"}, path, {"--tables"});
};

TEST_F(BadDumpTest, WhatIsMissingIsNotGuessed) {
    EXPECT_EQ(refusalOf(good.substr(0, good.find("table STU"))),
              ": tables of switch 0 are missing: STU, ATU; \"register dump --tables\" reads them\n");
    EXPECT_EQ(refusalOf(dump({"smi", "--switch", "0"}, path, {})),
              ": tables of switch 0 are missing: VTU, STU, ATU; \"register dump --tables\" reads them\n");
    EXPECT_EQ(refusalOf(without(good, "  PortBasedVLANMap ")),
              ": port 0/PortBasedVLANMap is missing, a register of switch 0\n");
}

TEST_F(BadDumpTest, LinesAreNamed) {
    std::string const entry = ":" + lineOf(good, "  VID 2 ") + ": ";
    EXPECT_EQ(refusalOf(changed(good, "  VID 2 ", "  VID 4096 ")), entry + "no such VID\n");
    EXPECT_EQ(refusalOf(changed(good, "  VID 2 ", "  VID two ")),
              entry + "\"VID two\" is no entry of a table\n");
    EXPECT_EQ(refusalOf(changed(good, "  VID 2 ", "  VID 9 to 3 ")),
              entry + "\"VID 9 to 3\" is no entry of a table\n");
    EXPECT_EQ(refusalOf(changed(good, "  VID 2 ", "  FID 2 ")), entry + "\"FID 2\" is no entry of a table\n");
    EXPECT_EQ(refusalOf(changed(good, "MemberTag3=0x", "MemberTag3=0x1")),
              entry + "MemberTag3 of VTU VID 2 does not fit\n");
    EXPECT_EQ(refusalOf(changed(good, "MemberTag3=", "Member3=")), entry + "VTU VID 2 has no MemberTag3\n");
    EXPECT_EQ(refusalOf(changed(good, "MemberTag3=0x", "MemberTag3=x")),
              entry + "\"MemberTag3=x" +
                  good.substr(good.find("MemberTag3=0x", good.find("\ntable ")) + 13, 1) +
                  "\" is not of the form FIELD=VALUE\n");
    EXPECT_EQ(refusalOf(changed(good, "table STU", "table FDB")),
              ":" + lineOf(good, "table STU") + ": a 88e6096 has no table \"FDB\"\n");
    EXPECT_EQ(refusalOf(changed(good, "table STU", "table VTU")),
              ":" + lineOf(good, "table STU") + ": table VTU is there twice\n");
    EXPECT_EQ(
        refusalOf(good + "  address 02:00:00:00:00:01 FID 1  Trunk=0x0  PortVector=0x800  EntryState=0x7\n"),
        ":" + std::to_string(std::count(good.begin(), good.end(), '\n') + 1) +
            ": PortVector of ATU address 02:00:00:00:00:01 FID 1 does not fit\n");
}

TEST_F(BadDumpTest, EntriesOfJsonAreNamed) {
    json document = json::parse(dump({"smi", "--switch", "0"}, path, {"--tables", "--json"}));
    document["tables"][0]["entries"][1]["fields"][0]["value"] = -1;
    EXPECT_EQ(refusalOf(document.dump()), ": table VTU: entry 2: the value does not fit\n");
    document["tables"][0]["entries"][1].erase("fields");
    EXPECT_EQ(refusalOf(document.dump()), ": table VTU: entry 2 is not complete\n");
    document["tables"] = 5;
    EXPECT_EQ(refusalOf(document.dump()), ": not the tables of a dump\n");
}

TEST_F(BadDumpTest, DumpsOfOtherSwitchesAreRefused) {
    EXPECT_EQ(refusalOf(dump({"smi", "--switch", "1"}, pathOfExample("trap-three-switches"), {"--tables"})),
              ": of a 88e6096 over smi --switch 1, which the board does not have\n");
    TemporaryFile const first(good);
    TemporaryFile const second(good);
    CommandRun const twice = paths({path, "--from", first.path(), "--from", second.path()});
    EXPECT_EQ(twice.status, ExitStatus::badDocument);
    EXPECT_EQ(twice.errors,
              "switchctl: " + second.path() + ": port 0/PortStatus of switch 0 is in another dump, too\n");
    TemporaryFile const nameless(without(good, "over "));
    EXPECT_EQ(paths({path, "--from", nameless.path()}).errors, "") << "there is one 88E6096";
    EXPECT_EQ(paths({pathOfExample("trap-three-switches"), "--from", nameless.path()}).errors,
              "switchctl: " + nameless.path() + ": does not say of which 88e6096 of the board it is\n");
}

TEST_F(BadDumpTest, PhysWithoutADumpAreUnread) {
    TemporaryFile const file(good);
    EXPECT_THAT(paths({path, "--from", file.path()}).out,
                StartsWith("switch 0: PHYs unread, all taken for powered up\n"));
    json const document = json::parse(paths({path, "--from", file.path(), "--json"}).out);
    EXPECT_EQ(document["unreadPhys"], json::array({0}));
}

/// trap-three-switches.xml, of which one is dumped.
class UnreadSwitchTest : public testing::Test {
protected:
    UnreadSwitchTest() { dumpSwitch(files, path, 1, true, {}); }

    std::string const path = pathOfExample("trap-three-switches");
    Files files;
};

TEST_F(UnreadSwitchTest, IsLeftOutAndNamed) {
    CommandRun const run = paths(with({path}, files));
    EXPECT_EQ(run.errors, "");
    EXPECT_THAT(run.out, StartsWith("switch 0: unread, no dump is of it\n"
                                    "switch 2: unread, no dump is of it\n"
                                    "cable 0.8=1.9: not followed, an end is unread\n"
                                    "cable 0.10=2.9: not followed, an end is unread\n"
                                    "cable 1.10=2.8: not followed, an end is unread\n"
                                    "in no VLAN"));
    EXPECT_THAT(run.out, HasSubstr("\n  1.1 \"table 1\" 1.2 \"table 2\" (untagged"));
    EXPECT_THAT(run.out, Not(HasSubstr("\n  0.")));
    EXPECT_THAT(run.out, Not(HasSubstr("\n  2.")));
    json const document = json::parse(paths(with({path, "--json"}, files)).out);
    EXPECT_EQ(document["unread"], json::array({0, 2}));
    EXPECT_EQ(document["unreadCables"], json({"0.8=1.9", "0.10=2.9", "1.10=2.8"}));
    for (char const* const list : {"paths", "differences"}) {
        for (json const& line : document[list]) {
            EXPECT_EQ(line["switch"], 1) << line;
        }
    }
}

TEST_F(UnreadSwitchTest, NothingIsSaidOfIt) {
    std::string const end = ": switch 0 is unread: no dump is of it\n";
    for (CommandRun const& run :
         {paths(with({path, "--between", "0.0", "1.1"}, files)),
          paths(with({path, "--cable", "0.8=1.9"}, files)), explain(with({path, "0.1", "to", "0.2"}, files)),
          explain(with({path, "1.1", "to", "0.2"}, files)),
          explain(with({path, "1.1", "to", "1.2", "--cable", "0.8=1.9"}, files))}) {
        EXPECT_EQ(run.status, ExitStatus::badDocument);
        EXPECT_EQ(run.out, "");
        EXPECT_THAT(run.errors, EndsWith(end));
    }
}

} // namespace
