#include <array>
#include <chrono>

#include "tests/vitesse/SwitchTest.hpp"

using namespace std::chrono_literals;
using test_support::Access;
using test_support::Accesses;
using test_support::Lines;
using test_support::reads;
using test_support::writes;

namespace {

using Mac = std::array<unsigned char, 6>;

class MacTableTest : public SwitchTest {
protected:
    MacTableTest() : SwitchTest(0) {}

    bool run(unsigned int command) {
        return chip.macTableCommand(static_cast<ManagedSwitch::MacAddressCommand>(command));
    }

    unsigned int row(Mac const& mac, unsigned int vid) {
        return chip.calculateHashKeyForMacIndex(mac.data(), vid);
    }
};

TEST_F(MacTableTest, RunsACommandAndTellsWhetherTheEntryIsValid) {
    expectStrict(
        {reads(2, 0, 0xB0, 0), writes(2, 0, 0xB0, 6), reads(2, 0, 0xB0, 0), reads(2, 0, 0xB0, 0x400)},
        [&] { return run(6); }, {0, 2});
    script.expect(
        {reads(2, 0, 0xB0, 0), writes(2, 0, 0xB0, 6), reads(2, 0, 0xB0, 0), reads(2, 0, 0xB0, 0xFFFFFBF8)});
    EXPECT_FALSE(run(6));
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(MacTableTest, CutsCommandsToThreeBits) {
    unsigned int const words[] = {0, 1, 2, 3, 4, 5, 6, 7, 0, 1};
    for (unsigned int command = 0; command < 10; ++command) {
        expectSuccess(script,
                      {reads(2, 0, 0xB0, 0), writes(2, 0, 0xB0, words[command]), reads(2, 0, 0xB0, 0),
                       reads(2, 0, 0xB0, 0x00000400)},
                      [&] { return run(command); });
    }
}

TEST_F(MacTableTest, WaitsBeforeAndAfterACommand) {
    expectSuccess(script,
                  {reads(2, 0, 0xB0, 1), reads(2, 0, 0xB0, 0), writes(2, 0, 0xB0, 7), reads(2, 0, 0xB0, 7),
                   reads(2, 0, 0xB0, 7), reads(2, 0, 0xB0, 0), reads(2, 0, 0xB0, 0x400)},
                  [&] { return run(7); });
}

TEST_F(MacTableTest, ATableThatStaysBusyEndsACommand) {
    Lines const timeout{"1|VitesseSwitch::waitForMacTableReady                          "
                        "Timeout waiting for Mac Table to be ready\n"};
    script.expect({reads(2, 0, 0xB0, 4).taking(1s)});
    EXPECT_FALSE(run(6));
    EXPECT_EQ(bench.log.take(), timeout);
    script.expect({reads(2, 0, 0xB0, 0), writes(2, 0, 0xB0, 6), reads(2, 0, 0xB0, 0x406).taking(1s)});
    EXPECT_FALSE(run(6));
    EXPECT_EQ(bench.log.take(), timeout);
}

TEST_F(MacTableTest, RowsOfMulticastGroups) {
    Mac const group{0x02, 0x01, 0x01, 0x5E, 0x00, 0x01};
    EXPECT_EQ(row(group, 0), 0x0DAU) << "0x102 ^ 0x020 ^ 0x178 ^ 0x080";
    EXPECT_EQ(row(group, 10), 0x07AU) << "and 0x0A0";
    EXPECT_EQ(row({0x01, 0x00, 0x00, 0x5E, 0x00, 0x01}, 0), 0x1F9U) << "0x001 ^ 0x178 ^ 0x080";
    EXPECT_EQ(row({0x01, 0x00, 0x00, 0x5E, 0x00, 0x01}, 1), 0x1E9U);
    EXPECT_EQ(row({0xFF, 0xFF, 0x7F, 0x5E, 0x00, 0x01}, 0x3F), 0x209U)
        << "0x7FF ^ 0x7FF ^ 0x179 ^ 0x080 ^ 0x3F0";
}

TEST_F(MacTableTest, RowsOfOtherAddresses) {
    EXPECT_EQ(row({0, 0, 0, 0, 0, 0}, 0), 0U);
    EXPECT_EQ(row({0x56, 0x34, 0x12, 0xC1, 0x01, 0x00}, 5), 0x144U) << "0x456 ^ 0x246 ^ 0x704 ^ 0x050";
    EXPECT_EQ(row({0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}, 0x3F), 0x3FFU) << "four times 0x7FF, 0x3FF";
    EXPECT_EQ(row({0x02, 0x01, 0x01, 0x5E, 0x00, 0x01}, 0) & 0x7FF, 0x0DAU);
}

TEST_F(MacTableTest, EachBitOfAnAddressFlipsOneBitOfTheRow) {
    for (unsigned int bit = 0; bit < 48; ++bit) {
        Mac mac{};
        mac[bit / 8] = static_cast<unsigned char>(1U << bit % 8);
        EXPECT_EQ(row(mac, 0), 1U << bit % 11) << "address bit " << bit;
    }
}

TEST_F(MacTableTest, OnlySixBitsOfTheVlanTakePart) {
    unsigned int const rows[] = {0x010, 0x020, 0x040, 0x080, 0x100, 0x200, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    for (unsigned int bit = 0; bit < 16; ++bit) {
        EXPECT_EQ(row({}, 1U << bit), rows[bit]) << "VLAN bit " << bit;
    }
    Mac const group{0x02, 0x01, 0x01, 0x5E, 0x00, 0x01};
    EXPECT_EQ(row(group, 0xFCA), row(group, 0x00A));
}

} // namespace
