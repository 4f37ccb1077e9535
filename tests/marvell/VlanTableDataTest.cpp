#include "tests/marvell/SwitchTest.hpp"

using test_support::Accesses;
using test_support::expectStrict;
using test_support::expectSuccess;
using test_support::Lines;
using test_support::reads;
using test_support::writes;

namespace {

using State = MarvellSwitch::VtuEgressState;
using States = std::map<unsigned short, State>;

Lines const outOfBounds{"error|MarvellPort::writeVlanValues Port in map out of bounds\n"};

State state(unsigned int code) {
    return static_cast<State>(code);
}

/// Global 1 (device 0x1B) registers 0x07, 0x08 and 0x09 stage four ports each, four bits a port; the
/// low two of them are the port's member code.
class VlanTableDataTest : public SwitchTest {
protected:
    VlanTableDataTest() : SwitchTest(11) {}
};

TEST_F(VlanTableDataTest, MemberCodes) {
    EXPECT_EQ(static_cast<unsigned int>(State::untagged), 1U);
    EXPECT_EQ(static_cast<unsigned int>(State::tagged), 2U);
    EXPECT_EQ(static_cast<unsigned int>(State::notMember), 3U);
}

struct PortCase {
    unsigned short port;
    unsigned int code;
    unsigned int dataRegister;
    unsigned int before;
    unsigned int after;
};

TEST_F(VlanTableDataTest, EveryPortHasItsBits) {
    PortCase const cases[] = {
        {0, 1, 0x07, 0xFFFF, 0xFFFD}, {0, 2, 0x07, 0x0000, 0x0002},  {1, 1, 0x07, 0xFFFF, 0xFFDF},
        {1, 3, 0x07, 0x0000, 0x0030}, {2, 2, 0x07, 0xFFFF, 0xFEFF},  {2, 1, 0x07, 0x0000, 0x0100},
        {3, 1, 0x07, 0xFFFF, 0xDFFF}, {3, 3, 0x07, 0x0000, 0x3000},  {4, 2, 0x08, 0xFFFF, 0xFFFE},
        {4, 1, 0x08, 0x0000, 0x0001}, {5, 2, 0x08, 0xFFFF, 0xFFEF},  {5, 2, 0x08, 0x0030, 0x0020},
        {6, 1, 0x08, 0xFFFF, 0xFDFF}, {7, 2, 0x08, 0x8000, 0xA000},  {8, 1, 0x09, 0xFFFF, 0xFFFD},
        {9, 3, 0x09, 0x0040, 0x0070}, {10, 1, 0x09, 0x0F00, 0x0D00}, {11, 2, 0x09, 0x1234, 0x2234},
    };
    for (auto const& expected : cases) {
        SCOPED_TRACE("port " + std::to_string(expected.port));
        expectStrict(script,
                     {reads(0x1B, expected.dataRegister, expected.before),
                      writes(0x1B, expected.dataRegister, expected.after)},
                     [&] {
                         return chip.writeVlanTable({{expected.port, state(expected.code)}});
                     });
    }
    EXPECT_EQ(bench.log.take("error"), Lines{});
}

TEST_F(VlanTableDataTest, WritesPortsOneByOneInAscendingOrder) {
    expectStrict(script,
                 {reads(0x1B, 0x07, 0x3333), writes(0x1B, 0x07, 0x3323), reads(0x1B, 0x07, 0x3323),
                  writes(0x1B, 0x07, 0x1323), reads(0x1B, 0x09, 0x0333), writes(0x1B, 0x09, 0x0331)},
                 [&] {
                     return chip.writeVlanTable({{8, state(1)}, {1, state(2)}, {3, state(1)}});
                 });
}

TEST_F(VlanTableDataTest, AnEmptyMapWritesNothing) {
    expectSuccess(script, {}, [&] { return chip.writeVlanTable({}); });
}

TEST_F(VlanTableDataTest, APortAboveElevenGoesIntoTheRegisterOfTheEntryBeforeIt) {
    Accesses const table{reads(0x1B, 0x08, 0x0000), writes(0x1B, 0x08, 0x0020), reads(0x1B, 0x08, 0x0023),
                         writes(0x1B, 0x08, 0x0021)};
    expectSuccess(script, table, [&] { return chip.writeVlanTable({{5, state(2)}, {12, state(1)}}); });
    EXPECT_EQ(bench.log.take(), outOfBounds);
}

TEST_F(VlanTableDataTest, EveryPortAboveElevenIsReported) {
    Accesses const table{reads(0x1B, 0x09, 0x0000),  writes(0x1B, 0x09, 0x3000), reads(0x1B, 0x09, 0x3000),
                         writes(0x1B, 0x09, 0x3010), reads(0x1B, 0x09, 0x3010),  writes(0x1B, 0x09, 0x2010)};
    expectSuccess(script, table, [&] {
        return chip.writeVlanTable({{11, state(3)}, {13, state(1)}, {65535, state(2)}});
    });
    EXPECT_EQ(bench.log.take(), (Lines{outOfBounds[0], outOfBounds[0]}));
}

TEST_F(VlanTableDataTest, APortAboveElevenAsTheFirstEntryIsRefused) {
    script.expect({});
    EXPECT_FALSE(chip.writeVlanTable({{12, state(1)}}));
    EXPECT_FALSE(chip.writeVlanTable({{65535, state(1)}}));
    EXPECT_EQ(bench.log.take(), (Lines{outOfBounds[0], outOfBounds[0]}));
}

TEST_F(VlanTableDataTest, ReadsTheLowTwoBitsOfEveryPort) {
    Accesses const table{reads(0x1B, 0x07, 0x0001), reads(0x1B, 0x07, 0x0020), reads(0x1B, 0x07, 0xFFFF),
                         reads(0x1B, 0x07, 0xDFFF), reads(0x1B, 0x08, 0xFFFE), reads(0x1B, 0x08, 0x00C0),
                         reads(0x1B, 0x08, 0x0300), reads(0x1B, 0x08, 0x2000), reads(0x1B, 0x09, 0xABCD),
                         reads(0x1B, 0x09, 0xABEF), reads(0x1B, 0x09, 0xFEFF)};
    States const expected{{0, state(1)}, {1, state(2)}, {2, state(3)}, {3, state(1)},
                          {4, state(2)}, {5, state(0)}, {6, state(3)}, {7, state(2)},
                          {8, state(1)}, {9, state(2)}, {10, state(2)}};
    States states{{0, state(3)}, {99, state(3)}};
    expectSuccess(script, table, [&] { return chip.readVlanTable(states); });
    EXPECT_EQ(states, expected);
    test_support::expectEachFailureStops(script, table, [&] { return chip.readVlanTable(states); });
}

TEST(VlanTableData, ReadsAsManyPortsAsTheSwitchCounts) {
    test_support::MacBench<test_support::SmiScript> bench;
    MarvellSwitch chip(bench.application, 5, 0, false);
    States states{{1, state(1)}};
    expectSuccess(bench.script, {}, [&] { return chip.readVlanTable(states); });
    EXPECT_TRUE(states.empty());
}

TEST(VlanTableData, PortsAboveElevenAreReadFromTheLastRegister) {
    test_support::MacBench<test_support::SmiScript> bench;
    MarvellSwitch chip(bench.application, 5, 14, false);
    Accesses table;
    for (unsigned int const dataRegister : {7, 7, 7, 7, 8, 8, 8, 8, 9, 9, 9, 9}) {
        table.push_back(reads(0x1B, dataRegister, 0x3333));
    }
    table.push_back(reads(0x1B, 0x09, 0x3331));
    table.push_back(reads(0x1B, 0x09, 0x3323));
    States states;
    expectSuccess(bench.script, table, [&] { return chip.readVlanTable(states); });
    EXPECT_EQ(states.size(), 14U);
    EXPECT_EQ(states[11], state(3));
    EXPECT_EQ(states[12], state(1));
    EXPECT_EQ(states[13], state(2));
    EXPECT_EQ(bench.log.take(), (Lines{outOfBounds[0], outOfBounds[0]}));
}

} // namespace
