// Registers that were made wrong on purpose, and what is said of them.

#include "board/paths/PathComparison.hpp"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>
#include <vector>

#include "board/paths/ForwardingRules.hpp"
#include "tests/board/paths/ComparedBoard.hpp"
#include "tests/support/TemporaryFile.hpp"

using board::PathComparison;
using board::PathLine;
using board::PortSet;
using board_test::ComparedBoard;
using Kind = board::PathLine::Kind;
using Reason = board::Intent::Reason;
using Tags = board::FrameKind::Tags;

namespace {

/// Ports 0 and 1 without tags, 8 and 9 with them; VLAN 6 has ports 2 and 3. Nothing differs.
std::string const quietBoard = [] {
    std::string text = "<board><switches><switch id='0' switchModel='88e6096'>";
    for (int port = 0; port < 11; ++port) {
        text +=
            "<port id='" + std::to_string(port) + "' connectedTo='switchInterlink' portStatus='forwarding'/>";
    }
    return text + R"(</switch></switches>
<vlan id='5' typeOfVlan='tagBasedVlan'>
<port switchId='0' portId='0' ingress='addTagIfUntagged' egress='stripTag'/>
<port switchId='0' portId='1' ingress='addTagIfUntagged' egress='stripTag'/>
<port switchId='0' portId='8' ingress='validateTag' egress='validateTag'/>
<port switchId='0' portId='9' ingress='validateTag' egress='validateTag'/>
</vlan>
<vlan id='6' typeOfVlan='tagBasedVlan'>
<port switchId='0' portId='2' ingress='addTagIfUntagged' egress='stripTag'/>
<port switchId='0' portId='3' ingress='addTagIfUntagged' egress='stripTag'/>
</vlan></board>)";
}();

class PathComparisonTest : public testing::Test {
protected:
    explicit PathComparisonTest(std::string const& document = quietBoard) : _file(document) {}

    std::vector<PathLine> differences() const {
        return PathComparison(compared.intent, compared.registers, compared.frames).getDifferences();
    }

private:
    test_support::TemporaryFile _file;

protected:
    ComparedBoard compared{_file.path()};
    simulation::ChipTestSide& chip{compared.bringUp.getBoard().getChip(0)};
};

constexpr unsigned portControl = 0x04;
constexpr unsigned portControl2 = 0x08;
constexpr unsigned secureAndMapped = 0x0C80;
constexpr unsigned mapped = 0x0080;

} // namespace

TEST_F(PathComparisonTest, NothingDiffersAfterABringUp) {
    PathComparison const comparison(compared.intent, compared.registers, compared.frames);
    EXPECT_TRUE(comparison.getDifferences().empty());
    // Untagged, VIDs 0, 1, 5, 6 and 4094, to one and to all, at eleven ports.
    EXPECT_EQ(comparison.getQuestions(), 6U * 2U * 11U);
    EXPECT_TRUE(comparison.getNotModelled().empty());
}

TEST_F(PathComparisonTest, PathsArePutTogether) {
    auto const lines = PathComparison(compared.intent, compared.registers, compared.frames).getPaths();
    ASSERT_FALSE(lines.empty());
    PathLine const& line = lines.front();
    EXPECT_EQ(line.key.vlan, 5U);
    EXPECT_EQ(line.from, PortSet{0x003});
    EXPECT_EQ(line.frames, (std::vector<Tags>{Tags::none(), Tags::one(0)}));
    EXPECT_EQ(line.destinations, (std::vector<std::size_t>{0, 1}));
    ASSERT_EQ(line.reach.size(), 2U);
    EXPECT_EQ(line.reach[0].form.describe(), "untagged");
    EXPECT_EQ(line.reach[0].to, PortSet{0x003});
    EXPECT_EQ(line.reach[1].form.describe(), "tagged 5");
    EXPECT_EQ(line.reach[1].to, PortSet{0x300});
}

TEST_F(PathComparisonTest, APortThatTakesEveryVlanLeaks) {
    chip.poke("port 4", portControl2, mapped);
    auto const found = differences();
    ASSERT_FALSE(found.empty());
    for (PathLine const& line : found) {
        EXPECT_EQ(line.key.kind, Kind::leak);
        EXPECT_EQ(line.key.reason, Reason::frameInNoVlan);
        EXPECT_EQ(line.from, PortSet{0x010});
    }
    chip.poke("port 4", portControl2, secureAndMapped);
    EXPECT_TRUE(differences().empty());
}

TEST_F(PathComparisonTest, ADisabledPortMissesItsVlan) {
    chip.poke("port 1", portControl, chip.peek("port 1", portControl) & ~3U);
    auto const found = differences();
    ASSERT_FALSE(found.empty());
    PortSet senders = 0;
    for (PathLine const& line : found) {
        EXPECT_EQ(line.key.kind, Kind::missing);
        EXPECT_EQ(line.key.reason, Reason::inVlan);
        senders |= line.from;
    }
    EXPECT_EQ(senders, PortSet{0x303});
}

namespace {

/// As the quiet board, with ports 8 and 9 as a trunk, which the chip knows nothing of.
class TrunkComparisonTest : public PathComparisonTest {
protected:
    TrunkComparisonTest() : PathComparisonTest(withTrunk()) {}

private:
    static std::string withTrunk() {
        std::string text = quietBoard;
        text.insert(text.find("</switch>"), "<trunk id='1'><port id='8'/><port id='9'/></trunk>");
        return text;
    }
};

} // namespace

TEST_F(TrunkComparisonTest, TwoMembersThatSendTheSameAreADouble) {
    std::vector<PathLine> doubles;
    std::vector<PathLine> others;
    for (PathLine const& line : differences()) {
        (line.key.kind == Kind::doubled ? doubles : others).push_back(line);
    }
    ASSERT_EQ(doubles.size(), 2U) << "with the VLAN's tag and without";
    for (PathLine const& line : doubles) {
        EXPECT_EQ(line.from, PortSet{0x003});
        EXPECT_EQ(PathLine::portsOf(line.reach), PortSet{0x300});
    }
    ASSERT_EQ(others.size(), 1U);
    EXPECT_EQ(others[0].key.kind, Kind::leak);
    EXPECT_EQ(others[0].key.reason, Reason::sameTrunk);
}

// Masks that leave each of the eight classes one member: which one sends depends on addresses.
TEST_F(TrunkComparisonTest, MasksThatSpreadFramesAreAsWanted) {
    constexpr unsigned trunkMask = 0x07;
    constexpr unsigned update = 0x8000;
    auto const write = [&](unsigned number, unsigned ports) {
        chip.getUnit("global 2").write(trunkMask, update | number << 12U | ports, 0);
    };
    for (unsigned number = 0; number < 8; ++number) {
        write(number, number < 4 ? 0x5FFU : 0x6FFU);
    }
    for (PathLine const& line : differences()) {
        EXPECT_EQ(line.key.kind, Kind::leak) << "members still send to one another";
    }
    write(3, 0x4FF);
    bool isMissing = false;
    for (PathLine const& line : differences()) {
        isMissing = isMissing || line.key.kind == Kind::missing;
    }
    EXPECT_TRUE(isMissing) << "frames of one class leave by no member";
}

TEST_F(PathComparisonTest, OnlyWhatIsSelectedCounts) {
    chip.poke("port 4", portControl2, mapped);
    auto const between = [&](PortSet ports) {
        return PathComparison(compared.intent, compared.registers, compared.frames, {{0, ports}});
    };
    EXPECT_TRUE(between(0x003).getDifferences().empty());
    EXPECT_EQ(between(0x003).getQuestions(), 6U * 2U * 2U);
    EXPECT_FALSE(between(0x011).getDifferences().empty());
    for (PathLine const& line : between(0x003).getPaths()) {
        EXPECT_EQ((line.from | PathLine::portsOf(line.reach)) & ~0x003U, 0U);
    }
}

TEST(ForwardingRulesTest, RulesThatDecideAreKnown) {
    using board::ForwardingRules;
    for (char const* const example : {"trap-access-point", "trap-mixed"}) {
        ComparedBoard const compared(ComparedBoard::example(example));
        for (auto const& line :
             PathComparison(compared.intent, compared.registers, compared.frames).getDifferences()) {
            EXPECT_NO_THROW(ForwardingRules::unsureOf(line.key.rules)) << line.key.rules;
        }
    }
    EXPECT_EQ(ForwardingRules::get("M12").mark, ForwardingRules::Mark::likely);
    EXPECT_EQ(ForwardingRules::unsureOf("M3 M12 M14").size(), 1U);
    EXPECT_THROW(ForwardingRules::get("M15"), std::out_of_range);
}

// A tag where none belongs.
TEST_F(PathComparisonTest, AWrongTagIsAForm) {
    auto& marvell = compared.bringUp.getBoard().getMarvell(0);
    auto entry = *marvell.getVtuEntry(5);
    EXPECT_EQ(entry.memberTags[1], 1U);
    entry.memberTags[1] = 2;
    marvell.setVtuEntry(5, entry);
    auto const found = differences();
    ASSERT_FALSE(found.empty());
    PortSet senders = 0;
    for (PathLine const& line : found) {
        EXPECT_EQ(line.key.kind, Kind::form);
        ASSERT_TRUE(line.key.wanted);
        EXPECT_EQ(line.key.wanted->describe(), "untagged");
        EXPECT_EQ(PathLine::portsOf(line.reach), PortSet{0x002});
        senders |= line.from;
    }
    EXPECT_EQ(senders, PortSet{0x301});
}

namespace {

/// From and to, of all differences of a kind.
std::set<std::pair<std::string, std::string>> pairsOf(std::string const& example, Kind kind) {
    ComparedBoard const compared(ComparedBoard::example(example));
    std::set<std::pair<std::string, std::string>> pairs;
    for (PathLine const& line :
         PathComparison(compared.intent, compared.registers, compared.frames).getDifferences()) {
        for (unsigned bits = 0; line.key.kind == kind && bits < 1024; ++bits) {
            PortSet const from = PortSet{1} << bits / 32;
            PortSet const to = PortSet{1} << bits % 32;
            if ((line.from & from) != 0 && (PathLine::portsOf(line.reach) & to) != 0 && from != to) {
                std::string const start = std::to_string(line.key.switchId) + ".";
                pairs.emplace(start + std::to_string(bits / 32), start + std::to_string(bits % 32));
            }
        }
    }
    return pairs;
}

using Pairs = std::set<std::pair<std::string, std::string>>;

/// Each of the ports to each other.
Pairs meshOf(std::vector<std::string> const& ports) {
    Pairs pairs;
    for (std::string const& from : ports) {
        for (std::string const& to : ports) {
            if (from != to) {
                pairs.emplace(from, to);
            }
        }
    }
    return pairs;
}

} // namespace

// By hand, from what is known of the library's register sequences.
TEST(ExamplePathsTest, StatesOfSocketsDoNotHold) {
    Pairs expected;
    for (char const* const port : {"0.0", "0.1", "0.8", "0.10"}) {
        expected.insert({{port, "0.2"}, {"0.2", port}});
    }
    for (char const* const port : {"0.6", "0.8", "0.10"}) {
        expected.insert({{port, "0.9"}, {"0.9", port}});
    }
    EXPECT_EQ(pairsOf("trap-access-point", Kind::leak), expected);
    EXPECT_EQ(pairsOf("trap-access-point", Kind::missing), Pairs());
}

TEST(ExamplePathsTest, APortBasedVlanOpensNoSecurePort) {
    EXPECT_EQ(pairsOf("trap-three-switches", Kind::missing), (Pairs{{"0.1", "0.0"}}));
    EXPECT_EQ(pairsOf("trap-three-switches", Kind::leak), Pairs());
}

TEST(ExamplePathsTest, UnknownVidsJoinAllPortsThatAreUp) {
    EXPECT_EQ(pairsOf("trap-mixed", Kind::leak), meshOf({"3.1", "3.2", "3.20", "3.21", "3.22"}));
    EXPECT_EQ(pairsOf("trap-mixed", Kind::missing), (Pairs{{"3.0", "3.20"},
                                                           {"3.20", "3.0"},
                                                           {"3.0", "3.21"},
                                                           {"3.21", "3.0"},
                                                           {"3.0", "3.22"},
                                                           {"3.22", "3.0"}}));
}

TEST(ExamplePathsTest, ManagementHasNoPath) {
    EXPECT_EQ(pairsOf("trap-video-switch", Kind::missing), (Pairs{{"2.0", "2.20"}, {"2.20", "2.0"}}));
    EXPECT_EQ(pairsOf("trap-video-switch", Kind::leak), Pairs());
    // Its port-based VLAN has them together with the rooms, its tag-based ones do not.
    EXPECT_EQ(pairsOf("trap-video-switch", Kind::ambiguous).count({"2.22", "2.4"}), 1U);
}

TEST(ExamplePathsTest, UnlistedPortsReachEverybody) {
    Pairs const leaks = pairsOf("trap-minimal", Kind::leak);
    for (char const* const from : {"0.2", "0.3", "0.4", "0.5", "0.6", "0.7", "0.10"}) {
        for (unsigned to = 0; to < 11; ++to) {
            std::string const other = "0." + std::to_string(to);
            EXPECT_EQ(leaks.count({from, other}), other == from ? 0U : 1U) << from << " " << other;
        }
    }
    for (char const* const to : {"0.5", "0.6", "0.7", "0.8", "0.9", "0.10"}) {
        EXPECT_EQ(leaks.count({"0.1", to}), 1U) << to;
    }
    EXPECT_EQ(leaks.count({"0.1", "0.0"}) + leaks.count({"0.0", "0.1"}) + leaks.count({"0.1", "0.2"}), 0U);
}
