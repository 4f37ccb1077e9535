#include "switchctl/explain/FrameQuestion.hpp"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

using board::FrameKind;
using switchctl::explain::FrameQuestion;
using Words = std::vector<std::string>;

namespace {

std::string refusalOf(Words const& words) {
    try {
        FrameQuestion const question(words);
    } catch (std::invalid_argument const& error) {
        return error.what();
    }
    return "";
}

} // namespace

TEST(FrameQuestionTest, Ports) {
    FrameQuestion const question({"to", "0.10"});
    EXPECT_EQ(question.frame.tags, FrameKind::Tags::none());
    EXPECT_EQ(question.frame.destination, FrameKind::Destination::unicast);
    EXPECT_EQ(question.frame.address, 0U);
    ASSERT_TRUE(question.to);
    EXPECT_EQ(question.to->getText(), "0.10");
    EXPECT_EQ(FrameQuestion({"untagged", "to", "0.10"}).frame.tags, FrameKind::Tags::none());
}

TEST(FrameQuestionTest, Tags) {
    EXPECT_EQ(FrameQuestion({"tagged", "5", "to", "0.10"}).frame.tags, FrameKind::Tags::one(5));
    EXPECT_EQ(FrameQuestion({"tagged", "0x10", "to", "0.10"}).frame.tags, FrameKind::Tags::one(16));
    EXPECT_EQ(refusalOf({"tagged", "4095", "to", "0.10"}), "");
    EXPECT_EQ(refusalOf({"tagged", "4096", "to", "0.10"}), "tagged \"4096\": not a VID");
    EXPECT_EQ(refusalOf({"tagged", "to", "0.10"}), "tagged \"to\": not a VID");
}

TEST(FrameQuestionTest, Addresses) {
    FrameQuestion const station({"to", "02:00:00:aB:00:01"});
    EXPECT_FALSE(station.to);
    EXPECT_EQ(station.frame.destination, FrameKind::Destination::unicast);
    EXPECT_EQ(station.frame.address, 0x020000AB0001U);
    FrameQuestion const group({"to", "239.1.2.3"});
    EXPECT_EQ(group.frame.destination, FrameKind::Destination::group);
    EXPECT_EQ(group.frame.address, 0x01005E010203U);
    EXPECT_EQ(FrameQuestion({"to", "01:00:5e:01:02:03"}).frame.destination, FrameKind::Destination::group);
    EXPECT_EQ(FrameQuestion({"to", "all"}).frame.destination, FrameKind::Destination::broadcast);
}

TEST(FrameQuestionTest, OtherWordsAreRefused) {
    std::string const form = "not of the form SWITCH.PORT [untagged|tagged VID] to SWITCH.PORT|MAC|GROUP|all";
    for (Words const& words : std::vector<Words>{
             {}, {"to"}, {"0.10"}, {"untagged", "0.10"}, {"to", "0.10", "all"}, {"tagged", "5", "0.10"}}) {
        EXPECT_EQ(refusalOf(words), form) << testing::PrintToString(words);
    }
    for (char const* const target : {"10.1.2.3", "02:00:00:00:00", "02-00-00-00-00-01", "0.x", "nobody"}) {
        EXPECT_EQ(refusalOf({"to", target}),
                  std::string("\"") + target + "\": neither a port nor an address nor \"all\"");
    }
}
