#include "tests/marvell/SwitchTest.hpp"

using test_support::Access;
using test_support::Accesses;
using test_support::expectEachFailureStops;
using test_support::expectSuccess;
using test_support::Lines;
using test_support::reads;
using test_support::writes;

namespace {

using Ingress = ManagedSwitchPort::IngressTagSetting;
using Egress = ManagedSwitchPort::EgressTagSetting;
using State = ManagedSwitchPort::PortEnabledStatus;

Lines const badIngress{"error|MarvellPort::addPortToVlan IngressTagSetting not valid\n"};
Lines const badEgress{"error|MarvellPort::addPortToVlanTable EgressTagSetting not valid\n"};

/// Port 3 of a switch with four ports: its bits are 15..12 of the data register 0x07 of Global 1
/// (device 0x1B), bits 13..12 of them the member code.
class PortMembershipTest : public SwitchTest {
protected:
    PortMembershipTest() : SwitchTest(4) {}

    static constexpr Egress strip = Egress::stripTag;

    Access const free = reads(0x1B, 0x05, 0x0000);
    Accesses const searchVlan10{free, writes(0x1B, 0x06, 9), writes(0x1B, 0x05, 0xC000)};
    Access const found = reads(0x1B, 0x06, 0x100A);
    Access const notFound = reads(0x1B, 0x06, 0x0FFF);
    Accesses const loadVlan10{
        free, writes(0x1B, 0x02, 10),    writes(0x1B, 0x03, 10), writes(0x1B, 0x06, 0x100A),
        free, writes(0x1B, 0x05, 0xB000)};
    Accesses const nobody{reads(0x1B, 0x07, 0x0000),  writes(0x1B, 0x07, 0x0003), reads(0x1B, 0x07, 0x0003),
                          writes(0x1B, 0x07, 0x0033), reads(0x1B, 0x07, 0x0033),  writes(0x1B, 0x07, 0x0333),
                          reads(0x1B, 0x07, 0x0333),  writes(0x1B, 0x07, 0x3333)};
    Accesses const untagged{reads(0x1B, 0x07, 0x3123), writes(0x1B, 0x07, 0x1123)};
    Accesses const tagged{reads(0x1B, 0x07, 0x3123), writes(0x1B, 0x07, 0x2123)};

    Accesses const searchTree10{free, writes(0x1B, 0x03, 9), writes(0x1B, 0x05, 0xE000),
                                reads(0x1B, 0x03, 10)};
    Access const treeFound = reads(0x1B, 0x06, 0x1000);
    Access const treeNotFound = reads(0x1B, 0x06, 0x0000);
    Accesses const loadTree10{free, writes(0x1B, 0x03, 10), writes(0x1B, 0x06, 0x1000), free,
                              writes(0x1B, 0x05, 0xD000)};
    Accesses const forwarding{reads(0x1B, 0x07, 0x3000), writes(0x1B, 0x07, 0xC000)};
};

TEST_F(PortMembershipTest, JoinsAnEntryThatExists) {
    expectSuccess(script, searchVlan10 + Accesses{found} + untagged + loadVlan10,
                  [&] { return port(3).addPortToVlanTable(10, strip); });
    expectSuccess(script, searchVlan10 + Accesses{found} + tagged + loadVlan10,
                  [&] { return port(3).addPortToVlanTable(10, Egress::validateTag); });
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(PortMembershipTest, CreatesAnEntryThatDoesNotExist) {
    expectSuccess(script, searchVlan10 + Accesses{notFound} + nobody + loadVlan10 + untagged + loadVlan10,
                  [&] { return port(3).addPortToVlanTable(10, strip); });
}

TEST_F(PortMembershipTest, GoesOnWhenTheNewEntryCannotBeCreated) {
    Accesses const brokenStaging{reads(0x1B, 0x07, 0x0000).failing()};
    expectSuccess(script, searchVlan10 + Accesses{notFound} + brokenStaging + untagged + loadVlan10,
                  [&] { return port(3).addPortToVlanTable(10, strip); });
    Accesses brokenLoad = loadVlan10;
    brokenLoad.back() = brokenLoad.back().failing();
    expectSuccess(script, searchVlan10 + Accesses{notFound} + nobody + brokenLoad + untagged + loadVlan10,
                  [&] { return port(3).addPortToVlanTable(10, strip); });
}

TEST_F(PortMembershipTest, ASearchThatFailsCreatesTheEntry) {
    expectSuccess(
        script, Accesses{free, writes(0x1B, 0x06, 9).failing()} + nobody + loadVlan10 + untagged + loadVlan10,
        [&] { return port(3).addPortToVlanTable(10, strip); });
    expectSuccess(script,
                  searchVlan10 + Accesses{found.failing()} + nobody + loadVlan10 + untagged + loadVlan10,
                  [&] { return port(3).addPortToVlanTable(10, strip); });
}

TEST_F(PortMembershipTest, JoiningFailsWithStagingAndLoading) {
    Accesses const table = searchVlan10 + Accesses{found} + untagged + loadVlan10;
    expectEachFailureStops(script, table, [&] { return port(3).addPortToVlanTable(10, strip); },
                           {0, 1, 2, 3, 6, 10});
}

TEST_F(PortMembershipTest, RefusesAnUnknownEgressSetting) {
    script.expect({});
    for (unsigned int const setting : {2U, 3U, 99U}) {
        EXPECT_FALSE(port(3).addPortToVlanTable(10, static_cast<Egress>(setting)));
        EXPECT_EQ(bench.log.take(), badEgress);
    }
}

struct IngressCase {
    unsigned int ingress;
    unsigned int before;
    unsigned int after;
};

TEST_F(PortMembershipTest, SetsIngressUpBeforeJoining) {
    IngressCase const cases[] = {{0, 0x0000, 0x100A}, {1, 0x1005, 0x0005}, {2, 0x1005, 0x000A}};
    for (auto const& expected : cases) {
        Accesses const ingress{reads(0x13, 0x07, expected.before), writes(0x13, 0x07, expected.after)};
        auto const add = [&] {
            return port(3).addPortToVlan(10, static_cast<Ingress>(expected.ingress), strip);
        };
        expectSuccess(script, ingress + searchVlan10 + Accesses{found} + untagged + loadVlan10, add);
        expectSuccess(
            script, ingress + searchVlan10 + Accesses{notFound} + nobody + loadVlan10 + untagged + loadVlan10,
            add);
        expectEachFailureStops(script, ingress, add);
    }
    EXPECT_EQ(bench.log.take("error"), Lines{});
}

TEST_F(PortMembershipTest, AddingFailsWhenJoiningFails) {
    Accesses const ingress{reads(0x13, 0x07, 0x0000), writes(0x13, 0x07, 0x100A)};
    script.expect(ingress + searchVlan10 + Accesses{found, untagged[0].failing()});
    EXPECT_FALSE(port(3).addPortToVlan(10, Ingress::addTag, strip));
}

TEST_F(PortMembershipTest, AnUnknownIngressSettingChangesNothing) {
    script.expect({});
    for (unsigned int const setting : {3U, 4U, 99U}) {
        EXPECT_FALSE(port(3).addPortToVlan(10, static_cast<Ingress>(setting), strip));
        EXPECT_EQ(bench.log.take(), badIngress);
    }
}

TEST_F(PortMembershipTest, AnUnknownEgressSettingIsFoundAfterIngressIsSetUp) {
    script.expect({reads(0x13, 0x07, 0x0000), writes(0x13, 0x07, 0x100A)});
    EXPECT_FALSE(port(3).addPortToVlan(10, Ingress::addTag, static_cast<Egress>(2)));
    EXPECT_EQ(bench.log.take(), badEgress);
}

TEST_F(PortMembershipTest, LeavesTheStagedEntryWithoutReadingIt) {
    Accesses const table = Accesses{reads(0x1B, 0x07, 0x1123), writes(0x1B, 0x07, 0x3123)} + loadVlan10;
    auto const remove = [&] { return port(3).removePortFromVlanTable(10); };
    expectSuccess(script, table, remove);
    expectEachFailureStops(script, table, remove, {2, 6});
    EXPECT_EQ(bench.log.take("error"), Lines{});
}

TEST_F(PortMembershipTest, JoinsASpanningTreeThatExists) {
    Accesses const table = searchTree10 + Accesses{treeFound} + forwarding + loadTree10;
    auto const add = [&] { return port(3).addPortToSpanningTree(10, State::forwarding); };
    expectSuccess(script, table, add);
    expectEachFailureStops(script, table, add, {0, 1, 2, 3, 4, 7, 10});
    EXPECT_EQ(bench.log.take("error"), Lines{});
}

TEST_F(PortMembershipTest, CreatesASpanningTreeThatDoesNotExist) {
    Accesses const disabled{reads(0x1B, 0x07, 0x3333), writes(0x1B, 0x07, 0x3330),
                            reads(0x1B, 0x07, 0x3330), writes(0x1B, 0x07, 0x3300),
                            reads(0x1B, 0x07, 0x3300), writes(0x1B, 0x07, 0x3000),
                            reads(0x1B, 0x07, 0x3000), writes(0x1B, 0x07, 0x0000)};
    Accesses const learning{reads(0x1B, 0x07, 0x0000), writes(0x1B, 0x07, 0x8000)};
    expectSuccess(script,
                  searchTree10 + Accesses{treeNotFound} + disabled + loadTree10 + learning + loadTree10,
                  [&] { return port(3).addPortToSpanningTree(10, State::learning); });
}

TEST_F(PortMembershipTest, GoesOnWhenTheNewSpanningTreeCannotBeCreated) {
    Accesses const brokenStaging{reads(0x1B, 0x07, 0x3333).failing()};
    expectSuccess(script, searchTree10 + Accesses{treeNotFound} + brokenStaging + forwarding + loadTree10,
                  [&] { return port(3).addPortToSpanningTree(10, State::forwarding); });
}

TEST(PortMembership, APortAboveElevenIsRefused) {
    test_support::MacBench<test_support::SmiScript> bench;
    MarvellSwitch chip(bench.application, 5, 13, false);
    auto& last = dynamic_cast<MarvellPort&>(*chip.getPort(12));
    bench.script.expect(
        {reads(0x1B, 0x05, 0), writes(0x1B, 0x06, 9), writes(0x1B, 0x05, 0xC000), reads(0x1B, 0x06, 0x100A)});
    EXPECT_FALSE(last.addPortToVlanTable(10, Egress::stripTag));
    EXPECT_EQ(bench.log.take(), (Lines{"error|MarvellPort::writeVlanValues Port in map out of bounds\n"}));
    bench.script.expect({reads(0x1B, 0x05, 0), writes(0x1B, 0x03, 9), writes(0x1B, 0x05, 0xE000),
                         reads(0x1B, 0x03, 10), reads(0x1B, 0x06, 0x1000)});
    EXPECT_FALSE(last.addPortToSpanningTree(10, State::forwarding));
    EXPECT_EQ(bench.log.take(),
              (Lines{"error|MarvellSwitch::writeSpanningTreeTable Port in map out of bounds\n"}));
    bench.script.expect({});
    EXPECT_FALSE(last.removePortFromVlanTable(10));
}

} // namespace
