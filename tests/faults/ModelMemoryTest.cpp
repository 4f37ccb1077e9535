// Owners of the model when there is no memory to keep what they are given: nothing leaks, and nothing is
// kept by halves.

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <new>
#include <utility>

#include "model/MulticastGroup.hpp"
#include "model/MulticastGroupPort.hpp"
#include "model/PortBasedVlan.hpp"
#include "model/TagBasedVlan.hpp"
#include "model/TrunkGroup.hpp"
#include "model/VlanPort.hpp"
#include "tests/faults/AllocationFaults.hpp"
#include "tests/model/ModelTest.hpp"

using fault_test::AllocationFaults;

namespace {

/// Does it with one allocation that fails. Returns whether it got through.
template <typename Operation> bool getsThrough(std::uint64_t failing, Operation operation) {
    AllocationFaults const faults(failing, 1);
    try {
        operation();
        return true;
    } catch (std::bad_alloc const&) {
        return false;
    }
}

class ModelMemoryTest : public ModelTest {
protected:
    static auto const& membersOf(Vlan const& vlan) { return vlan.getVlanPorts(); }
    static auto const& membersOf(MulticastGroup const& group) { return group.getPorts(); }

    /// Whichever allocation fails, the owner has its one member at the second try.
    template <typename Owner, typename... Arguments> void expectOneMember(Arguments... arguments) {
        constexpr std::uint64_t moreThanItTakes = 20;
        unsigned failures = 0;
        for (std::uint64_t failing = 1; failing <= moreThanItTakes; ++failing) {
            test_support::TestDocument document("<port ingress='addTag' egress='stripTag'/>");
            test_support::RecordingSwitch device(application, 0, calls);
            ManagedSwitchPort& port = device.addPort(3);
            Owner owner(application, arguments...);
            auto const& members = membersOf(owner);
            if (!getsThrough(failing, [&] { owner.addPort(port, document.root()); })) {
                ++failures;
                // A port's configuration walks over the members, and knows none that is not there.
                EXPECT_EQ(members.size(), 0U);
                owner.addPort(port, document.root());
            }
            ASSERT_EQ(members.size(), 1U);
            ASSERT_NE(members.at(3), nullptr);
            EXPECT_EQ(&members.at(3)->getSwitchPort()->getSwitch(), &device);
        }
        EXPECT_GT(failures, 1U);
        EXPECT_LT(failures, moreThanItTakes);
    }
};

TEST_F(ModelMemoryTest, ATagBasedVlanGetsItsMember) {
    expectOneMember<TagBasedVlan>(5);
}

TEST_F(ModelMemoryTest, APortBasedVlanGetsItsMember) {
    expectOneMember<PortBasedVlan>(5);
}

TEST_F(ModelMemoryTest, AMulticastGroupGetsItsMember) {
    expectOneMember<MulticastGroup>("239.1.2.3", static_cast<unsigned short>(5));
}

TEST_F(ModelMemoryTest, ASwitchDeletesWhatItCannotKeep) {
    auto port = std::make_unique<test_support::RecordingPort>(chip, 4, "external", "forwarding", calls);
    std::pair<unsigned int, ManagedSwitchPort*> portEntry(4, port.release());
    std::pair<unsigned int, TrunkGroup*> trunkEntry(0, new TrunkGroup(1));
    EXPECT_FALSE(getsThrough(1, [&] { chip.insertPort(portEntry); }));
    EXPECT_FALSE(getsThrough(1, [&] { chip.insertTrunkGroup(trunkEntry); }));
    EXPECT_EQ(chip.getPorts().size(), 0U);
    EXPECT_EQ(chip.getPort(4), nullptr);
    EXPECT_EQ(chip.getTrunkGroup(0), nullptr);
}

TEST_F(ModelMemoryTest, ASwitchDeletesWhatItCannotKeepAside) {
    chip.addPort(4);
    auto port = std::make_unique<test_support::RecordingPort>(chip, 4, "cpu", "forwarding", calls);
    std::pair<unsigned int, ManagedSwitchPort*> entry(4, port.release());
    EXPECT_FALSE(getsThrough(1, [&] { chip.insertPort(entry); }));
    EXPECT_EQ(calls, test_support::CallLog{"0.4 destroyed"});
    EXPECT_EQ(chip.getPorts().size(), 1U);
}

} // namespace
