// Advice that is true, and does not contradict itself: what follows it has no more findings.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "board/BoardReading.hpp"
#include "switchctl/check/DocumentCheck.hpp"
#include "switchctl/check/VlanSpelling.hpp"
#include "tests/support/TestDocument.hpp"
#include "tests/switchctl/check/Documents.hpp"

using reference_host::XmlDocument;
using switchctl::check::DocumentCheck;
using switchctl::check::Finding;
using switchctl::check::Severity;
using switchctl::check::vlanSpelling;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

std::vector<Finding> findingsOf(std::string const& text) {
    auto const document = XmlDocument::fromText(text, "board.xml");
    return DocumentCheck(*document).getFindings();
}

std::string adviceOf(std::string const& vlan, std::string const& check) {
    for (Finding const& finding : findingsOf(boardOf(marvell("0"), vlan))) {
        if (finding.check == check) {
            return finding.advice;
        }
    }
    return "no such finding";
}

/// All ports of an 88E6096 in VLAN 5 but `left`, which are as said; ports 8 and 9 are a trunk.
std::string trunked(std::vector<unsigned int> const& left, std::string const& portStatus,
                    std::string const& trunk) {
    std::string switchPorts;
    std::string members;
    for (unsigned int id = 0; id <= 10; ++id) {
        bool const isLeft = std::count(left.begin(), left.end(), id) != 0;
        std::string const number = std::to_string(id);
        switchPorts +=
            port(number, id == 0 ? "cpu" : "switchInterlink", isLeft ? portStatus : "forwarding") + "\n";
        members += isLeft ? "" : member("0", number);
    }
    return boardOf("<switch id='0' switchModel='88e6096'>" + switchPorts + trunk + "</switch>",
                   tagBased("5", members));
}

/// The findings about the trunk and its ports.
std::vector<std::string> aboutTrunk(std::string const& text) {
    std::vector<std::string> checks;
    for (Finding const& finding : findingsOf(text)) {
        if (finding.severity != Severity::note) {
            checks.push_back(finding.check);
        }
    }
    return checks;
}

constexpr char const* trunk = "<trunk id='1'><port id='8'/><port id='9'/></trunk>";
using Checks = std::vector<std::string>;

TEST(AdviceTest, ATrunkOfAn88E6096HasOneAdvice) {
    EXPECT_EQ(aboutTrunk(trunked({}, "forwarding", trunk)), Checks{"trunk-unsupported"});
    EXPECT_EQ(aboutTrunk(trunked({9}, "forwarding", trunk)), Checks{"trunk-unsupported"});
    EXPECT_EQ(aboutTrunk(trunked({8}, "forwarding", trunk)), Checks{"trunk-unsupported"});
    EXPECT_EQ(aboutTrunk(trunked({9}, "disabled", trunk)), Checks{"trunk-unsupported"});
    // One port is as good as two: it may be written into a VLAN.
    EXPECT_EQ(aboutTrunk(trunked({8, 9}, "forwarding", trunk)),
              (Checks{"port-in-no-vlan", "trunk-unsupported"}));
}

TEST(AdviceTest, WhoFollowsTheAdviceAboutATrunkIsDone) {
    EXPECT_THAT(aboutTrunk(trunked({9}, "disabled", "")), IsEmpty());
}

TEST(AdviceTest, ALoopIsNamedWhereThereIsOne) {
    auto const effectOf = [](std::string const& text) {
        for (Finding const& finding : findingsOf(text)) {
            if (finding.check == "trunk-unsupported") {
                return finding.effect;
            }
        }
        return std::string();
    };
    EXPECT_THAT(effectOf(trunked({}, "forwarding", trunk)), HasSubstr("are a loop: ports 8 and 9 carry"));
    EXPECT_THAT(effectOf(trunked({9}, "forwarding", trunk)), Not(HasSubstr("loop")));
    // Ports that the library does not count are in every VLAN.
    EXPECT_THAT(effectOf(boardOf("<switch id='0' switchModel='88e6096'>" + port("8") + port("9") + trunk +
                                     "</switch>",
                                 tagBased("5", member("0", "8")))),
                HasSubstr("are a loop: ports 8 and 9 carry"));
}

TEST(AdviceTest, SaysHowAVlanIsWritten) {
    EXPECT_EQ(adviceOf(tagBased("10", member("0", "1")), "vlan-id-reads-differently"),
              "VLAN 10 cannot be written: its text would be \"a\", which loses all members; VLAN 16 is "
              "written 10.");
    EXPECT_EQ(adviceOf(tagBased("100", member("0", "1")), "vlan-id-reads-differently"),
              "VLAN 100 is written 64; VLAN 256 is written 100.");
    EXPECT_EQ(adviceOf(tagBased("9999", member("0", "1")), "vlan-id-reads-differently"),
              "VLAN 9999 is none: ids are 1 to 4094; VLAN 39321 is none: ids are 1 to 4094.");
    EXPECT_EQ(adviceOf(tagBased("a", member("0", "1")), "vlan-members-lost"),
              "VLAN 10 cannot be written: its text would be \"a\", which loses all members.");
    EXPECT_EQ(adviceOf(tagBased("0x64", member("0", "1")), "vlan-members-lost"), "VLAN 100 is written 64.");
    EXPECT_EQ(adviceOf(tagBased("1e", member("0", "1")), "vlan-id-reads-differently"),
              "VLAN 30 is written 1e, as long as no VLAN is written 1.");
    EXPECT_EQ(adviceOf(tagBased("0x5", member("0", "1", group("239.1.1.1"))), "vlan-id-reads-differently"),
              "VLAN 5 is written 5. A VLAN and its groups agree on 1 to 9 only.");
}

/// The text between two others; empty when they are not there.
std::string between(std::string const& text, std::string const& before, std::string const& after) {
    std::size_t const start = text.find(before);
    if (start == std::string::npos) {
        return "";
    }
    std::size_t const begin = start + before.size();
    return text.substr(begin, text.find(after, begin) - begin);
}

TEST(AdviceTest, EveryVlanIsFoundAsWrittenOrNotAtAll) {
    constexpr unsigned int highest = 4094;
    unsigned int written = 0;
    for (unsigned int id = 1; id <= highest; ++id) {
        std::string const spelling = vlanSpelling(id);
        bool const canBe = spelling.find(" is written ") != std::string::npos;
        std::string const text = canBe ? between(spelling + ",", " is written ", ",")
                                       : between(spelling, "its text would be \"", "\"");
        std::string const taken = between(spelling + ".", "no VLAN is written ", ".");
        test_support::TestDocument document(
            boardOf(marvell("0"), tagBased(text, member("0", "1")) +
                                      (taken.empty() ? "" : tagBased(taken, member("0", "2")))));
        board::BoardReading const reading(document);
        ASSERT_EQ(reading.getVlans().count(id), 1U) << spelling;
        std::size_t const found = reading.getVlans().at(id).members.size();
        EXPECT_EQ(found, !canBe ? 0U : taken.empty() ? 1U : 2U) << spelling;
        written += canBe ? 1 : 0;
    }
    EXPECT_GT(written, 1000U);
    EXPECT_LT(written, highest);
    EXPECT_THAT(vlanSpelling(0), HasSubstr("is none"));
    EXPECT_THAT(vlanSpelling(highest + 1), HasSubstr("is none"));
}

} // namespace
