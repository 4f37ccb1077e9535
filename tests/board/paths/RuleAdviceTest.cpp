// There is something to say about each rule, and nothing about others.

#include "board/paths/RuleAdvice.hpp"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "board/paths/ForwardingRules.hpp"

using board::RuleAdvice;

namespace {

RuleAdvice::Way const untaggedWay{"0.1", "0.10", "VLAN 5 (0x5)", false};
RuleAdvice::Way const taggedWay{"0.1", "0.10", "VLAN 5 (0x5)", true};

} // namespace

TEST(RuleAdviceTest, SaysWhatTheDocumentWouldHaveToSay) {
    EXPECT_EQ(RuleAdvice::get("M7", untaggedWay),
              "make 0.1 a member of a tag-based VLAN with ingress=\"addTagIfUntagged\"");
    EXPECT_EQ(RuleAdvice::get("M7", taggedWay), "make 0.1 a member of VLAN 5 (0x5)");
    EXPECT_EQ(RuleAdvice::get("M13", taggedWay), "list 0.10 with portStatus=\"forwarding\"");
    EXPECT_EQ(RuleAdvice::get("V9", untaggedWay), "where it is for a group, list the group at 0.10");
    EXPECT_EQ(RuleAdvice::get("M2", untaggedWay), "");
}

TEST(RuleAdviceTest, KnowsEachRule) {
    for (char const family : {'M', 'V'}) {
        for (int number = 1; number <= (family == 'M' ? 14 : 12); ++number) {
            std::string const rule = family + std::to_string(number);
            EXPECT_NO_THROW(RuleAdvice::get(rule, taggedWay)) << rule;
            EXPECT_NO_THROW(board::ForwardingRules::get(rule)) << rule;
        }
    }
    EXPECT_THROW(RuleAdvice::get("M15", taggedWay), std::out_of_range);
}
