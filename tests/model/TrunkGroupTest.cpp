#include "model/TrunkGroup.hpp"
#include "tests/model/ModelTest.hpp"

namespace {

using TrunkGroupTest = ModelTest;

TEST_F(TrunkGroupTest, ItsIdIsSigned) {
    EXPECT_EQ(TrunkGroup(3).getId(), 3);
    EXPECT_EQ(TrunkGroup(static_cast<unsigned int>(-1)).getId(), -1);
}

TEST_F(TrunkGroupTest, StartsWithoutPorts) {
    EXPECT_TRUE(TrunkGroup(1).getTrunkedPorts().empty());
}

TEST_F(TrunkGroupTest, KeepsTheFirstPortOfAnId) {
    TrunkGroup group(1);
    auto& first = chip.addPort(8);
    auto& second = chip.addPort(9);
    group.insertPort({8, &first});
    group.insertPort({8, &second});
    EXPECT_EQ(group.getTrunkedPorts(), (std::map<unsigned int const, ManagedSwitchPort*>{{8, &first}}));
}

TEST_F(TrunkGroupTest, KeepsMembersWithoutAPort) {
    TrunkGroup group(1);
    group.insertPort({9, nullptr});
    group.insertPort({9, &chip.addPort(9)});
    EXPECT_EQ(group.getTrunkedPorts(), (std::map<unsigned int const, ManagedSwitchPort*>{{9, nullptr}}));
}

TEST_F(TrunkGroupTest, HandsOutACopy) {
    TrunkGroup group(1);
    group.getTrunkedPorts()[4] = nullptr;
    EXPECT_TRUE(group.getTrunkedPorts().empty());
}

TEST_F(TrunkGroupTest, DoesNotOwnItsPorts) {
    {
        TrunkGroup group(1);
        group.insertPort({8, &chip.addPort(8)});
    }
    EXPECT_EQ(calls, test_support::CallLog{});
}

} // namespace
