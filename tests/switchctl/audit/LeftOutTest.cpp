// How what is not compared is counted and named.

#include "board/audit/LeftOut.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using board::LeftOut;
using testing::ElementsAre;

TEST(LeftOutTest, IsEmptyWithoutAnything) {
    EXPECT_TRUE(LeftOut().getGroups().empty());
    EXPECT_EQ(LeftOut().getText(), "");
}

TEST(LeftOutTest, CountsEachAndNamesItOnce) {
    LeftOut leftOut;
    leftOut.add("counters", "In");
    leftOut.add("counters", "Out");
    leftOut.add("counters", "In");
    leftOut.add("tables", "ATU");
    LeftOut other;
    other.add("counters", "In");
    other.add("counters", "Drops");
    leftOut.add(other);
    EXPECT_EQ(leftOut.getText(), "counters: 5 (Drops, In, Out); tables: 1 (ATU)");
}

TEST(LeftOutTest, FoldsNamesThatAreNumberedThrough) {
    LeftOut leftOut;
    for (char const* const name : {"Word10", "Word8", "Word9", "Word11", "Word3", "Word4", "unit/0x9",
                                   "unit/0xa", "unit/0xb", "unit/0xd", "Data0-3", "Status"}) {
        leftOut.add("registers", name);
    }
    ASSERT_EQ(leftOut.getGroups().size(), 1U);
    EXPECT_EQ(leftOut.getGroups()[0].count, 12U);
    EXPECT_THAT(leftOut.getGroups()[0].names,
                ElementsAre("Data0-3", "Status", "Word3", "Word4", "Word8 to Word11", "unit/0x9 to unit/0xb",
                            "unit/0xd"));
}
