#include <memory>
#include <optional>

#include "model/TrunkGroup.hpp"
#include "tests/model/ModelTest.hpp"

using test_support::CallLog;
using test_support::Lines;
using test_support::RecordingPort;
using test_support::RecordingSwitch;
using test_support::TestDocument;

namespace {

class ManagedSwitchTest : public ModelTest {
protected:
    void insert(unsigned int id, ManagedSwitchPort* port) {
        std::pair<unsigned int, ManagedSwitchPort*> entry(id, port);
        chip.insertPort(entry);
    }

    void insert(unsigned int id, TrunkGroup* group) {
        std::pair<unsigned int, TrunkGroup*> entry(id, group);
        chip.insertTrunkGroup(entry);
    }
};

/// Tells when it goes.
class NotedTrunkGroup : public TrunkGroup {
public:
    NotedTrunkGroup(unsigned int id, CallLog& calls) : TrunkGroup(id), _calls(calls) {}
    ~NotedTrunkGroup() override { _calls.push_back("trunk " + std::to_string(getId()) + " destroyed"); }

private:
    CallLog& _calls;
};

TEST_F(ManagedSwitchTest, LogsIdAndAddressWhenBuiltFromADocument) {
    unsigned char const address[] = {0x00, 0x1A, 0x2B, 0x03, 0xF4, 0xFF};
    TestDocument document("<switches/>");
    RecordingSwitch const described(application, 12, address, document, calls);
    EXPECT_EQ(log.take(), (Lines{"info|ManagedSwitch::ManagedSwitch(12) 00:1a:2b:03:f4:ff\n"}));
    EXPECT_EQ(document.queries(), std::vector<std::string>{});
    EXPECT_EQ(described.getId(), 12U);
    EXPECT_EQ(described.getApplication(), &application);
    EXPECT_EQ(described.getNumberOfPorts(), 0);
}

TEST_F(ManagedSwitchTest, LogsNothingWhenBuiltWithoutADocument) {
    RecordingSwitch const bare(application, 4000000000U, calls);
    EXPECT_EQ(log.take(), Lines{});
    EXPECT_EQ(bare.getId(), 4000000000U);
    EXPECT_EQ(bare.getApplication(), &application);
    EXPECT_EQ(bare.getNumberOfPorts(), 0);
}

TEST_F(ManagedSwitchTest, FindsItsPorts) {
    ManagedSwitchPort* const port = &chip.addPort(3);
    EXPECT_EQ(chip.getPort(3), port);
    EXPECT_EQ(log.take(), Lines{});
}

TEST_F(ManagedSwitchTest, ReportsAPortThatIsNotThere) {
    chip.addPort(3);
    EXPECT_EQ(chip.getPort(4), nullptr);
    EXPECT_EQ(log.take(), (Lines{"error|ManagedSwitch::getPort id 4 out of bounds"}));
}

TEST_F(ManagedSwitchTest, ReportsAPortIdThatWasNeverSetAsMinusOne) {
    EXPECT_EQ(chip.getPort(0xFFFFFFFF), nullptr);
    EXPECT_EQ(log.take(), (Lines{"error|ManagedSwitch::getPort id -1 out of bounds"}));
}

TEST_F(ManagedSwitchTest, FindsAPortWithoutANumberByNoId) {
    ManagedSwitchPort* const port = &chip.addPort(0xFFFFFFFF);
    EXPECT_EQ(chip.getPort(0xFFFFFFFF), nullptr);
    EXPECT_EQ(log.take(), (Lines{"error|ManagedSwitch::getPort id -1 out of bounds"}));
    EXPECT_EQ(chip.getPorts().at(0xFFFFFFFF), port);
    EXPECT_EQ(chip.getNumberOfPorts(), 1);
    chip.configurePorts();
    EXPECT_EQ(calls, CallLog{"0.4294967295 initialise"});
}

TEST_F(ManagedSwitchTest, FindsItsTrunkGroups) {
    auto* const group = new TrunkGroup(17);
    insert(0, group);
    EXPECT_EQ(chip.getTrunkGroup(0), group);
    EXPECT_EQ(log.take(), Lines{});
}

TEST_F(ManagedSwitchTest, ReportsATrunkGroupThatIsNotThere) {
    EXPECT_EQ(chip.getTrunkGroup(2), nullptr);
    EXPECT_EQ(log.take(), (Lines{"error|ManagedSwitch::getTrunkgroup id 2 out of bounds"}));
}

TEST_F(ManagedSwitchTest, CountsPortsAndTrunkGroupsTogether) {
    chip.addPort(0);
    EXPECT_EQ(chip.getNumberOfPorts(), 1);
    chip.addPort(1);
    EXPECT_EQ(chip.getNumberOfPorts(), 2);
    insert(0, new TrunkGroup(1));
    EXPECT_EQ(chip.getNumberOfPorts(), 3);
    EXPECT_EQ(chip.getPorts().size(), 2U);
    EXPECT_EQ(chip.getTrunkGroups().size(), 1U);
}

TEST_F(ManagedSwitchTest, APortIdThatIsTakenKeepsItsFirstPortAndCounts) {
    ManagedSwitchPort* const first = &chip.addPort(5);
    auto* const second = new RecordingPort(chip, 5, "cpu", "forwarding", calls);
    std::pair<unsigned int, ManagedSwitchPort*> entry(5, second);
    chip.insertPort(entry);
    EXPECT_EQ(chip.getPort(5), first);
    EXPECT_EQ(chip.getPorts().size(), 1U);
    EXPECT_EQ(chip.getNumberOfPorts(), 2);
    // Whoever made the second one may go on using it.
    EXPECT_EQ(entry.second, second);
    EXPECT_EQ(calls, CallLog{});
    chip.configurePorts();
    EXPECT_EQ(second->getType(), ManagedSwitchPort::PortType::cpuPortType);
    EXPECT_EQ(calls, CallLog{"0.5 initialise"});
}

TEST_F(ManagedSwitchTest, DeletesWhatItKeptAsideBehindTheOthersOfItsKind) {
    std::optional<RecordingSwitch> owner(std::in_place, application, 9, calls);
    for (unsigned int const id : {4U, 3U, 4U, 3U}) {
        owner->addPort(id);
    }
    for (unsigned int const id : {1U, 2U, 3U}) {
        std::pair<unsigned int, TrunkGroup*> entry(0, new NotedTrunkGroup(id, calls));
        owner->insertTrunkGroup(entry);
    }
    EXPECT_EQ(owner->getNumberOfPorts(), 7);
    EXPECT_EQ(calls, CallLog{});
    owner.reset();
    EXPECT_EQ(calls, (CallLog{"9.3 destroyed", "9.4 destroyed", "9.4 destroyed", "9.3 destroyed",
                              "trunk 1 destroyed", "trunk 2 destroyed", "trunk 3 destroyed"}));
}

TEST_F(ManagedSwitchTest, DeletesAPortOnceHoweverOftenItIsInserted) {
    std::optional<RecordingSwitch> owner(std::in_place, application, 9, calls);
    owner->addPort(5);
    std::pair<unsigned int, ManagedSwitchPort*> entry(
        5, new RecordingPort(*owner, 7, "cpu", "forwarding", calls));
    owner->insertPort(entry);
    owner->insertPort(entry);
    entry.first = 6;
    owner->insertPort(entry);
    EXPECT_EQ(owner->getPort(6), entry.second);
    entry.first = 5;
    owner->insertPort(entry);
    EXPECT_EQ(calls, CallLog{});
    owner.reset();
    EXPECT_EQ(calls, (CallLog{"9.5 destroyed", "9.7 destroyed"}));
}

TEST_F(ManagedSwitchTest, InsertingTheSamePortTwiceKeepsIt) {
    ManagedSwitchPort* const port = &chip.addPort(5);
    insert(5, port);
    EXPECT_EQ(chip.getPort(5), port);
    EXPECT_EQ(port->getId(), 5U);
    EXPECT_EQ(chip.getNumberOfPorts(), 2);
    EXPECT_EQ(calls, CallLog{});
}

TEST_F(ManagedSwitchTest, ATrunkGroupKeyThatIsTakenKeepsItsFirstGroupAndCounts) {
    auto* const first = new TrunkGroup(1);
    insert(0, first);
    insert(0, new NotedTrunkGroup(2, calls));
    EXPECT_EQ(chip.getTrunkGroup(0), first);
    EXPECT_EQ(chip.getNumberOfPorts(), 2);
    EXPECT_EQ(calls, CallLog{});
}

TEST_F(ManagedSwitchTest, DeletesItsPortsAndThenItsTrunkGroups) {
    std::optional<RecordingSwitch> owner(std::in_place, application, 9, calls);
    std::pair<unsigned int, TrunkGroup*> group(0, new NotedTrunkGroup(1, calls));
    owner->insertTrunkGroup(group);
    owner->addPort(2);
    owner->addPort(1);
    std::pair<unsigned int, TrunkGroup*> secondGroup(1, new NotedTrunkGroup(2, calls));
    owner->insertTrunkGroup(secondGroup);
    owner.reset();
    EXPECT_EQ(calls, (CallLog{"9.1 destroyed", "9.2 destroyed", "trunk 1 destroyed", "trunk 2 destroyed"}));
}

TEST_F(ManagedSwitchTest, NullPortsAndTrunkGroupsAreCountedAndNotDeleted) {
    {
        RecordingSwitch owner(application, 9, calls);
        std::pair<unsigned int, ManagedSwitchPort*> port(0, nullptr);
        owner.insertPort(port);
        std::pair<unsigned int, TrunkGroup*> group(0, nullptr);
        owner.insertTrunkGroup(group);
        EXPECT_EQ(owner.getNumberOfPorts(), 2);
    }
    EXPECT_EQ(calls, CallLog{});
}

TEST_F(ManagedSwitchTest, ListsItsPortsByAscendingId) {
    chip.addPort(10);
    chip.addPort(0);
    chip.addPort(2);
    std::vector<unsigned int> ids;
    for (auto const& entry : chip.getPorts()) {
        ids.push_back(entry.first);
        EXPECT_EQ(entry.second->getId(), entry.first);
    }
    EXPECT_EQ(ids, (std::vector<unsigned int>{0, 2, 10}));
}

} // namespace
