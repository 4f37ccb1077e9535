#include <chrono>

#include "tests/vitesse/SwitchTest.hpp"

using namespace std::chrono_literals;
using test_support::Access;
using test_support::Accesses;
using test_support::Lines;
using test_support::reads;
using test_support::writes;

namespace {

using Ingress = ManagedSwitchPort::IngressTagSetting;
using Egress = ManagedSwitchPort::EgressTagSetting;

Access const idle = reads(2, 0, 0xD0, 0);

Accesses readEntry(unsigned int vid, unsigned int entry) {
    return {writes(2, 0, 0xE0, vid), idle, writes(2, 0, 0xD0, 0x00000001), idle, reads(2, 0, 0xD0, entry)};
}

Accesses writeEntry(unsigned int vid, unsigned int entry) {
    return {writes(2, 0, 0xE0, vid), idle, writes(2, 0, 0xD0, entry)};
}

/// Port 3 of a switch with its VLAN table.
class PortVlanTest : public SwitchTest {
protected:
    PortVlanTest() : SwitchTest(24) {}

    void expectAdded(unsigned int before, unsigned int after) {
        SCOPED_TRACE(testing::Message() << "entry " << before);
        expectSuccess(script, readEntry(10, before) + writeEntry(10, after),
                      [&] { return port(3).addPortToVlanTable(10); });
    }

    void expectRemoved(unsigned int before, unsigned int after) {
        SCOPED_TRACE(testing::Message() << "entry " << before);
        expectSuccess(script, readEntry(10, before) + writeEntry(10, after),
                      [&] { return port(3).removePortFromVlanTable(10); });
    }
};

TEST_F(PortVlanTest, JoinsTheMembersOfAVlan) {
    expectAdded(0x00000000, 0x10000022);
    expectAdded(0x00000010, 0x10000032);
    expectAdded(0x10000010, 0x10000032);
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(PortVlanTest, JoiningASecondTimeChangesNothing) {
    expectAdded(0x10000030, 0x10000032);
}

TEST_F(PortVlanTest, KeepsTheFlagsOfTheEntry) {
    expectAdded(0xE8000010, 0xF8000032);
    expectAdded(0xFFFFFFFC, 0xF8000022);
}

TEST_F(PortVlanTest, AnEntryWithAllPortsCountsAsUnused) {
    expectAdded(0x03FFFFFC, 0x10000022);
    expectAdded(0x07FFFFFC, 0x10000022);
    expectAdded(0x04000000, 0x10000022);
    expectAdded(0x04000010, 0x10000022);
}

TEST_F(PortVlanTest, AnEntryWithAllPortsButOneIsUsed) {
    expectAdded(0x03FFFFF8, 0x13FFFFFA);
    expectAdded(0x03FFFFDC, 0x13FFFFFE);
}

TEST_F(PortVlanTest, JoiningEndsAtEachFailure) {
    expectStrict(readEntry(10, 0x10) + writeEntry(10, 0x10000032),
                 [&] { return port(3).addPortToVlanTable(10); }, {1, 3, 6});
}

TEST_F(PortVlanTest, JoiningEndsWhenTheTableStaysBusy) {
    script.expect({writes(2, 0, 0xE0, 10), reads(2, 0, 0xD0, 1).taking(1s)});
    EXPECT_FALSE(port(3).addPortToVlanTable(10));
    EXPECT_EQ(bench.log.take().size(), 1U);
}

TEST_F(PortVlanTest, LeavesTheMembersOfAVlan) {
    expectRemoved(0x10000030, 0x10000012);
    expectRemoved(0x10000020, 0x10000002);
    expectRemoved(0x00000010, 0x00000012);
    expectRemoved(0xFFFFFFFC, 0xFFFFFFDE);
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(PortVlanTest, LeavingAVlanThatCannotBeReadWritesAnEntryWithoutPorts) {
    ReportedFailures const reported(script);
    Accesses table = readEntry(10, 0x10000030);
    table.back() = table.back().failing();
    expectSuccess(script, table + writeEntry(10, 0x00000002),
                  [&] { return port(3).removePortFromVlanTable(10); });
    expectSuccess(script, Accesses{writes(2, 0, 0xE0, 10).failing()} + writeEntry(10, 0x00000002),
                  [&] { return port(3).removePortFromVlanTable(10); });
}

TEST_F(PortVlanTest, LeavingEndsAtAFailedWrite) {
    ReportedFailures const reported(script);
    for (std::size_t const row : {5U, 7U}) {
        Accesses table = readEntry(10, 0x10000030) + writeEntry(10, 0x10000012);
        table.resize(row + 1, table[row]);
        table.back() = table.back().failing();
        script.expect(table);
        EXPECT_FALSE(port(3).removePortFromVlanTable(10));
        script.verify();
    }
}

TEST_F(PortVlanTest, EveryPortHasItsBit) {
    struct {
        unsigned int port;
        unsigned int entry;
    } const cases[] = {
        {0, 0x10000006}, {1, 0x1000000A}, {15, 0x10020002}, {16, 0x10040002}, {23, 0x12000002}};
    for (auto const& expected : cases) {
        expectSuccess(script, readEntry(0xFFF, 0) + writeEntry(0xFFF, expected.entry),
                      [&] { return port(expected.port).addPortToVlanTable(0xFFF); });
    }
}

TEST_F(PortVlanTest, JoiningWithTagRulesEndsInTheTable) {
    Accesses const ingress{reads(1, 3, 0x79, 0x80), reads(1, 3, 0x7A, 0x1),
                           reads(1, 3, 0x00, 0),    reads(1, 3, 0x6E, 0x7),
                           reads(2, 0, 0x03, 0),    writes(1, 3, 0x79, 0x100),
                           writes(1, 3, 0x7A, 0xA), writes(1, 3, 0x00, 0x4000),
                           writes(1, 3, 0x6E, 0x1), writes(2, 0, 0x03, 0x02000000)};
    Accesses const egress{reads(1, 3, 0x24, 0x9), writes(1, 3, 0x24, 0x8)};
    expectStrict(ingress + egress + readEntry(10, 0) + writeEntry(10, 0x10000022),
                 [&] { return port(3).addPortToVlan(10, Ingress::addTag, Egress::stripTag); },
                 {0, 1, 2, 3, 4, 10, 13, 15, 18});
}

TEST_F(PortVlanTest, FailedBusAccessesOnTheirOwnEndNothing) {
    expectSuccess(script,
                  {writes(2, 0, 0xE0, 10).failing(), idle, writes(2, 0, 0xD0, 1).failing(), idle,
                   reads(2, 0, 0xD0, 0x10).failing(), writes(2, 0, 0xE0, 10), idle,
                   writes(2, 0, 0xD0, 0x10000022)},
                  [&] { return port(3).addPortToVlanTable(10); });
}

} // namespace
