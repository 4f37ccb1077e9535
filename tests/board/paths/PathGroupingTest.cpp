#include "board/paths/PathGrouping.hpp"

#include <gtest/gtest.h>

#include "tests/support/TestDocument.hpp"

using board::PathLine;
using board::PortSet;

namespace {

/// Frames of VLANs 5 and 6: without a tag, VIDs 0, 1, 5, 6, 4094.
class PathGroupingTest : public testing::Test {
protected:
    std::vector<PathLine> lines() const { return grouping.getLines(); }

    void add(std::size_t tags, std::size_t destination, unsigned from, PortSet to) {
        grouping.add(key, tags, destination, from, {PathLine::Form(), to});
    }

    static PortSet reachedBy(PathLine const& line) { return PathLine::portsOf(line.reach); }

    test_support::TestDocument document{"<board><vlan id='5' typeOfVlan='tagBasedVlan'/>"
                                        "<vlan id='6' typeOfVlan='tagBasedVlan'/></board>"};
    board::IntendedBoard intended{document};
    board::AskedFrames frames{intended, board::BoardReading(document)};
    board::PathGrouping grouping{frames};
    PathLine::Key const key{};
};

} // namespace

TEST_F(PathGroupingTest, FramesAreThoseOfTheDocumentAndFourMore) {
    ASSERT_EQ(frames.getTags().size(), 6U);
    EXPECT_EQ(frames.getTags()[0].describe(), "untagged");
    EXPECT_EQ(frames.getTags()[5].describe(), "tagged 4094");
    EXPECT_EQ(frames.getUnknownVid(), 4094U);
}

TEST_F(PathGroupingTest, PortsThatReachOneAnotherAreOneLine) {
    add(0, 0, 1, 0b11100);
    add(0, 0, 2, 0b11010);
    add(0, 0, 3, 0b10110);
    ASSERT_EQ(lines().size(), 1U);
    EXPECT_EQ(lines()[0].from, PortSet{0b01110});
    EXPECT_EQ(reachedBy(lines()[0]), PortSet{0b11110});
}

TEST_F(PathGroupingTest, PortsThatReachTheSameAreOneLine) {
    add(0, 0, 1, 0b11000);
    add(0, 0, 2, 0b11000);
    ASSERT_EQ(lines().size(), 1U);
    EXPECT_EQ(lines()[0].from, PortSet{0b00110});
    EXPECT_EQ(reachedBy(lines()[0]), PortSet{0b11000});
}

// Neither reaches itself, so that port 1 need not be said to reach port 1.
TEST_F(PathGroupingTest, APortThatOnlyTheOtherReachesMakesNoDifference) {
    add(0, 0, 1, 0b11000);
    add(0, 0, 2, 0b11010);
    ASSERT_EQ(lines().size(), 1U);
    EXPECT_EQ(lines()[0].from, PortSet{0b00110});
    EXPECT_EQ(reachedBy(lines()[0]), PortSet{0b11010});
}

TEST_F(PathGroupingTest, PortsThatReachOthersAreTwoLines) {
    add(0, 0, 1, 0b11000);
    add(0, 0, 2, 0b01010);
    ASSERT_EQ(lines().size(), 2U);
    for (PathLine const& line : lines()) {
        EXPECT_EQ(reachedBy(line), line.from == 0b00010 ? PortSet{0b11000} : PortSet{0b01010});
    }
}

TEST_F(PathGroupingTest, FormsStayApart) {
    PathLine::Form const tagged{false, board::FrameKind::Tags::one(5)};
    for (unsigned const from : {1U, 2U}) {
        grouping.add(key, 0, 0, from, {tagged, 0b10000});
        add(0, 0, from, 0b00110 & ~(1U << from));
    }
    ASSERT_EQ(lines().size(), 1U);
    EXPECT_EQ(lines()[0].from, PortSet{0b00110});
    ASSERT_EQ(lines()[0].reach.size(), 2U);
    EXPECT_EQ(lines()[0].reach[0].form.describe(), "untagged");
    EXPECT_EQ(lines()[0].reach[0].to, PortSet{0b00110});
    EXPECT_EQ(lines()[0].reach[1].form.describe(), "tagged 5");
    EXPECT_EQ(lines()[0].reach[1].to, PortSet{0b10000});
}

// Ports 1 and 2 reach the same, and others reach both.
TEST_F(PathGroupingTest, PortsThatAreReachedButNotByOneAnotherAreOneLine) {
    add(0, 0, 1, 0b11000);
    add(0, 0, 2, 0b11000);
    add(0, 0, 3, 0b00110);
    ASSERT_EQ(lines().size(), 2U);
    EXPECT_EQ(lines()[0].from | lines()[1].from, PortSet{0b01110});
}

TEST_F(PathGroupingTest, APortThatReachesItselfHasALineOfItsOwn) {
    add(0, 0, 1, 0b00010);
    add(0, 0, 2, 0b00100);
    ASSERT_EQ(lines().size(), 2U);
    EXPECT_EQ(lines()[0].from, reachedBy(lines()[0]));
    EXPECT_EQ(lines()[1].from, reachedBy(lines()[1]));
}

TEST_F(PathGroupingTest, SetsOfOneFrameAreAddedUp) {
    add(0, 0, 1, 0b01000);
    add(0, 0, 1, 0b10000);
    add(0, 0, 2, 0);
    ASSERT_EQ(lines().size(), 1U);
    EXPECT_EQ(reachedBy(lines()[0]), PortSet{0b11000});
}

TEST_F(PathGroupingTest, FramesAndDestinationsThatDoTheSameAreOneLine) {
    for (std::size_t const destination : {0U, 1U}) {
        for (std::size_t const tags : {0U, 3U}) {
            add(tags, destination, 1, 0b100);
        }
    }
    add(4, 1, 1, 0b100);
    ASSERT_EQ(lines().size(), 2U);
    EXPECT_EQ(lines()[0].frames.size(), 2U);
    EXPECT_EQ(lines()[0].destinations, (std::vector<std::size_t>{0}));
    EXPECT_EQ(lines()[1].frames.size(), 3U);
    EXPECT_EQ(lines()[1].destinations, (std::vector<std::size_t>{1}));
}
