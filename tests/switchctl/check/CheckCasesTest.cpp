#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "switchctl/check/CheckTable.hpp"
#include "switchctl/check/DocumentCheck.hpp"
#include "tests/switchctl/check/AllCases.hpp"
#include "tests/switchctl/check/Documents.hpp"

using reference_host::XmlDocument;
using switchctl::check::allChecks;
using switchctl::check::Check;
using switchctl::check::DocumentCheck;
using switchctl::check::Finding;

namespace {

std::vector<Finding> findingsOf(std::string const& text, std::string const& check) {
    auto const document = XmlDocument::fromText(text, "board.xml");
    std::vector<Finding> found;
    DocumentCheck const done(*document);
    for (Finding const& finding : done.getFindings()) {
        if (finding.check == check) {
            found.push_back(finding);
        }
    }
    return found;
}

std::set<int> linesOf(std::vector<Finding> const& findings) {
    std::set<int> lines;
    for (Finding const& finding : findings) {
        lines.insert(finding.line);
    }
    return lines;
}

std::set<int> markedLines(std::string const& text) {
    std::string const mark = std::string(here, 8);
    std::set<int> lines;
    for (std::size_t at = text.find(mark); at != std::string::npos; at = text.find(mark, at + 1)) {
        lines.insert(1 + static_cast<int>(
                             std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(at), '\n')));
    }
    return lines;
}

class CheckCasesTest : public testing::TestWithParam<CheckCase> {};

TEST_P(CheckCasesTest, FindsWhatItLooksFor) {
    std::vector<Finding> const findings = findingsOf(GetParam().with, GetParam().check);
    ASSERT_FALSE(markedLines(GetParam().with).empty());
    EXPECT_EQ(linesOf(findings), markedLines(GetParam().with)) << GetParam().with;
    for (Finding const& finding : findings) {
        EXPECT_EQ(finding.file, "board.xml");
        EXPECT_EQ(finding.element.front(), '<');
        EXPECT_EQ(finding.effect.back(), '.') << finding.effect;
        EXPECT_EQ(finding.advice.back(), '.') << finding.advice;
    }
}

TEST_P(CheckCasesTest, IsSilentOtherwise) {
    std::vector<Finding> const findings = findingsOf(GetParam().without, GetParam().check);
    EXPECT_TRUE(findings.empty()) << GetParam().without << findings.front().line << ": "
                                  << findings.front().effect;
}

INSTANTIATE_TEST_SUITE_P(Checks, CheckCasesTest, testing::ValuesIn(allCases()), nameOfCase);

TEST(CheckTableTest, EveryCheckHasACase) {
    std::set<std::string> tested;
    for (CheckCase const& entry : allCases()) {
        tested.insert(entry.check);
    }
    std::set<std::string> known;
    for (Check const& check : allChecks()) {
        known.insert(check.name);
    }
    EXPECT_EQ(tested, known);
    EXPECT_EQ(known.size(), allChecks().size()) << "a name is there twice";
}

TEST(CheckTableTest, NamesAreOfSmallLettersDigitsAndDashes) {
    for (Check const& check : allChecks()) {
        std::string const name = check.name;
        EXPECT_EQ(name.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789-"), std::string::npos) << name;
        EXPECT_STRNE(check.summary, "");
    }
}

TEST(DocumentCheckTest, OrdersFindingsByLine) {
    auto const document = XmlDocument::fromText(
        boardOf(marvell("0", port("11")), "<vlan id='5'/><vlan id='0' typeOfVlan='tagBasedVlan'/>"),
        "board.xml");
    std::vector<Finding> const findings = DocumentCheck(*document).getFindings();
    ASSERT_GT(findings.size(), 3U);
    EXPECT_TRUE(std::is_sorted(findings.begin(), findings.end(),
                               [](Finding const& a, Finding const& b) { return a.line < b.line; }));
}

TEST(DocumentCheckTest, SaysWhatTheLibraryWillDo) {
    std::vector<Finding> const findings = findingsOf(
        boardOf(marvell("0"), tagBased("0x20", member("0", "1") + member("0", "2"))), "vlan-members-lost");
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings.front().element, "<vlan id=\"0x20\" typeOfVlan=\"tagBasedVlan\">");
    EXPECT_EQ(findings.front().effect, "The library looks for the members with //vlan[@id=20]/port, which "
                                       "does not find those of id \"0x20\": "
                                       "the VLAN has none of its 2.");
    EXPECT_EQ(findings.front().advice, "VLAN 32 is written 20.");
}

TEST(DocumentCheckTest, TellsPortsThatTakeTagsFromThoseWithoutAVlanForUntaggedFrames) {
    auto const tagged = [](char const* port, char const* ingress) {
        return std::string("<port switchId='3' portId='") + port + "' ingress='" + ingress +
               "' egress='validateTag'/>";
    };
    std::vector<Finding> const findings = findingsOf(
        boardOf(vitesse("3"), tagBased("5", tagged("1", "validateTag") + tagged("2", "addTagIfUntagged") +
                                                tagged("3", "addTag")) +
                                  tagBased("6", tagged("2", "validateTag"))),
        "vsc7390-vlan-hopping");
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings.front().effect,
              "Frames of VLANs that the document does not have reach all ports that are up, whatever VLANs "
              "these are in: tagged ones from ports 1 and 2, untagged ones from port 1, if the chip takes "
              "them for VLAN 1, as is assumed. That holds if the chip clears its VLANs to all members, as is "
              "likely.");
}

} // namespace
