#include <iomanip>
#include <map>
#include <sstream>

#include "tests/vitesse/PortTest.hpp"

using test_support::Accesses;
using test_support::expectSuccess;
using test_support::Lines;
using test_support::reads;
using test_support::writes;

namespace {

/// The counters in the order in which they are read.
unsigned int const addresses[] = {0x50, 0x52, 0x53, 0x54, 0x55, 0x56, 0x51, 0x57, 0x58, 0x59, 0x5A, 0x5B};

class PortStatisticsTest : public PortTest {
protected:
    /// Counter i of the order above gives 0x1A0 + i unless told otherwise.
    static Accesses readOut(std::map<unsigned int, unsigned int> const& special = {}) {
        Accesses table;
        for (unsigned int i = 0; i < 12; ++i) {
            auto const given = special.find(i);
            table.push_back(reads(1, 3, addresses[i], given != special.end() ? given->second : 0x1A0 + i));
        }
        table.push_back(writes(1, 3, 0x52, 0x00000000));
        return table;
    }

    std::string dump(Accesses const& table) {
        std::ostringstream out;
        expectSuccess(registers, table, [&] { return port.dumpStatistics(out); });
        return out.str();
    }
};

TEST_F(PortStatisticsTest, PrintsTheCounters) {
    EXPECT_EQ(dump(readOut()), "inGoodandBadOctets\t0001a0\tinGoodandBadPackets\t0001a1\n"
                               "inMulticastBroadCast\t0001a2\n"
                               "inErrorPackets\t\t0001a3\tinTotalDrops\t\t0001a4\n"
                               "inClassifiedClass3Qos\t0001a5\n"
                               "\n"
                               "outGoodandBadOctets\t0001a6\toutGoodandBadPackets\t0001a7\n"
                               "outMulticastBroadCast\t0001a8\n"
                               "outErrorPackets\t\t0001a9\toutTotalDrops\t\t0001aa\n"
                               "outClassifiedClass3Qos\t0001ab\n");
    EXPECT_EQ(log.take(), Lines{});
}

TEST_F(PortStatisticsTest, FillsSixDigitsAndPrintsMoreInFull) {
    std::string const text = dump(readOut({{0, 0x1A},
                                           {1, 0},
                                           {2, 0xABCDEF},
                                           {3, 0x1000000},
                                           {4, 0x12345678},
                                           {5, 0xFFFFFFFF},
                                           {6, 9},
                                           {7, 10},
                                           {8, 0xFFFFF},
                                           {9, 0x100000},
                                           {10, 0x80000000},
                                           {11, 0x61}}));
    EXPECT_EQ(text, "inGoodandBadOctets\t00001a\tinGoodandBadPackets\t000000\n"
                    "inMulticastBroadCast\tabcdef\n"
                    "inErrorPackets\t\t1000000\tinTotalDrops\t\t12345678\n"
                    "inClassifiedClass3Qos\tffffffff\n"
                    "\n"
                    "outGoodandBadOctets\t000009\toutGoodandBadPackets\t00000a\n"
                    "outMulticastBroadCast\t0fffff\n"
                    "outErrorPackets\t\t100000\toutTotalDrops\t\t80000000\n"
                    "outClassifiedClass3Qos\t000061\n");
}

TEST_F(PortStatisticsTest, CountersThatCannotBeReadShowZero) {
    Accesses table = readOut();
    for (auto& access : table) {
        access = access.failing();
    }
    EXPECT_EQ(dump(table), "inGoodandBadOctets\t000000\tinGoodandBadPackets\t000000\n"
                           "inMulticastBroadCast\t000000\n"
                           "inErrorPackets\t\t000000\tinTotalDrops\t\t000000\n"
                           "inClassifiedClass3Qos\t000000\n"
                           "\n"
                           "outGoodandBadOctets\t000000\toutGoodandBadPackets\t000000\n"
                           "outMulticastBroadCast\t000000\n"
                           "outErrorPackets\t\t000000\toutTotalDrops\t\t000000\n"
                           "outClassifiedClass3Qos\t000000\n");
}

TEST_F(PortStatisticsTest, EveryDumpReadsAnew) {
    EXPECT_THAT(dump(readOut({{0, 1}})), testing::StartsWith("inGoodandBadOctets\t000001\t"));
    EXPECT_THAT(dump(readOut({{0, 2}})), testing::StartsWith("inGoodandBadOctets\t000002\t"));
}

TEST_F(PortStatisticsTest, LeavesTheStreamHexadecimalAndItsFillAsItWasSet) {
    std::ostringstream out;
    registers.expect(readOut());
    EXPECT_TRUE(port.dumpStatistics(out));
    out.str("");
    out << 255 << std::setw(4) << 1;
    EXPECT_EQ(out.str(), "ff0001");
}

TEST_F(PortStatisticsTest, DoesNotDependOnHowTheStreamWasSet) {
    std::ostringstream out;
    out << std::setfill('*') << std::oct;
    registers.expect(readOut());
    EXPECT_TRUE(port.dumpStatistics(out));
    EXPECT_THAT(out.str(), testing::StartsWith("inGoodandBadOctets\t0001a0\tinGoodandBadPackets\t0001a1\n"));
}

TEST_F(PortStatisticsTest, PortsFromSixteenUpAreInBlockSix) {
    VitessePort& upper = addPort(23);
    Accesses table;
    for (unsigned int const address : addresses) {
        table.push_back(reads(6, 7, address, 0));
    }
    table.push_back(writes(6, 7, 0x52, 0));
    std::ostringstream out;
    expectSuccess(registers, table, [&] { return upper.dumpStatistics(out); });
}

TEST_F(PortStatisticsTest, ClearingAccessesNothing) {
    registers.expect({});
    EXPECT_TRUE(port.clearStatistics());
    EXPECT_EQ(log.take(), Lines{});
}

} // namespace
