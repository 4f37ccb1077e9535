#include <arpa/inet.h>

#include <sstream>

#include "tests/marvell/PortTest.hpp"

using namespace std::chrono_literals;
using test_support::Access;
using test_support::Accesses;
using test_support::expectEachFailureStops;
using test_support::expectStrict;
using test_support::expectSuccess;
using test_support::Lines;
using test_support::reads;
using test_support::writes;

namespace {

using Operation = MarvellPort::StatsOperationCommand;

Lines const statsTimeout{"error|MarvellPort::statsCommand Stats Busy timeout\n"};

/// Global 1 (device 0x1B): 0x1D statistics operation with bit 15 for busy, 0x1E and 0x1F the high and
/// low half of a counter.
class PortStatisticsTest : public PortTest {
protected:
    Access const free = reads(0x1B, 0x1D, 0x7FFF);
    Access const busy = reads(0x1B, 0x1D, 0x8000);

    Accesses command(unsigned int word) const { return {free, writes(0x1B, 0x1D, word), free}; }

    /// Captures port 3 and reads 32 counters: counter n is 0x0100 + n in the high half and
    /// 0x0200 + n in the low half, but for those given.
    Accesses counters(std::map<unsigned int, unsigned int> const& special = {}) const {
        Accesses table = command(0xD003);
        for (unsigned int number = 0; number < 32; ++number) {
            auto const given = special.find(number);
            unsigned int const value =
                given != special.end() ? given->second : ((0x0100 + number) << 16 | (0x0200 + number));
            table = table + command(0xC000 | number) +
                    Accesses{reads(0x1B, 0x1F, value & 0xFFFF), reads(0x1B, 0x1E, value >> 16)};
        }
        return table;
    }

    Accesses const portCounters{reads(0x13, 0x10, 0x1234), reads(0x13, 0x11, 0x5678),
                                reads(0x13, 0x12, 0x9ABC), reads(0x13, 0x13, 0xDEF0)};
};

/// The high word of inGoodOctets as the host's byte order leaves it.
std::string const goodOctetsHigh = htonl(1) == 1 ? "01010201" : "01020101";

std::string table(std::string const& inDiscards, std::string const& inFiltered,
                  std::string const& outFiltered) {
    return "inGoodOctets\t" + goodOctetsHigh +
           "01000200\tinBadOctets\t01020202\n"
           "inUnicast\t\t01040204\tinBroadcast\t01060206\tinMulticast\t01070207\tinPause\t01160216\n"
           "inUndersized\t\t01180218\tinFragments\t01190219\tinOversized\t011a021a\n"
           "inJabber\t\t011b021b\tinRxErr\t\t011c021c\tinFCSErr\t011d021d\n"
           "inDiscards\t" +
           inDiscards + "\tinFiltered\t" + inFiltered +
           "\n"
           "octets64\t\t01080208\toctets65to127\t01090209\toctets128to255\t010a020a\n"
           "octets256to511\t\t010b020b\toctets512to1023\t010c020c\toctets1024toMax\t010d020d\n"
           "outOctets\t010f020f010e020e\n"
           "outUnicast\t\t01100210\toutBroadcast\t01130213\toutMulticast\t01120212\toutPause\t01150215\n"
           "deferred\t\t01050205\tcollisions\t011e021e\tsingle\t\t01140214\tmultiple\t01170217\n"
           "excessive\t\t01110211\tlate\t\t011f021f\toutFcsErr\t01030203\n"
           "outFiltered\t\t" +
           outFiltered + "\n";
}

TEST_F(PortStatisticsTest, ClearsTheCountersOfThePort) {
    expectStrict(registers, command(0xA003), [&] { return port.clearStatistics(); });
    EXPECT_EQ(log.take(), Lines{});
}

TEST_F(PortStatisticsTest, BuildsCommandWords) {
    struct {
        unsigned int operation;
        unsigned short bank;
        unsigned short pointer;
        unsigned int word;
    } const cases[] = {{2, 0, 0, 0xA000},  {4, 0, 31, 0xC01F},  {5, 0, 10, 0xD00A},       {0, 0, 0, 0x8000},
                       {5, 1, 0, 0xD040},  {5, 15, 63, 0xD3FF}, {5, 16, 64, 0xD000},      {7, 0, 0, 0xF000},
                       {10, 0, 0, 0xA000}, {5, 31, 0, 0xD3C0},  {5, 0xFFFF, 0x7F, 0xD3FF}};
    for (auto const& expected : cases) {
        expectStrict(registers, command(expected.word), [&] {
            return port.statsCommand(static_cast<Operation>(expected.operation), expected.bank,
                                     expected.pointer);
        });
    }
}

TEST_F(PortStatisticsTest, WaitsBeforeAndAfterACommand) {
    expectSuccess(registers, {busy, busy, free, writes(0x1B, 0x1D, 0xA003), busy, free},
                  [&] { return port.clearStatistics(); });
    EXPECT_EQ(clock.getNanoseconds(), 0U) << "there is no sleep between polls";
}

TEST_F(PortStatisticsTest, WaitsUntilTheUnitIsFree) {
    expectStrict(registers, {busy, busy, free}, [&] { return port.waitForStatsCommand(); });
    EXPECT_EQ(log.take(), Lines{});
}

TEST_F(PortStatisticsTest, GivesUpAtThePollAfterTheSecondHasChanged) {
    registers.expect({busy.taking(400ms), busy.taking(400ms), busy.taking(400ms), busy});
    EXPECT_FALSE(port.waitForStatsCommand());
    EXPECT_EQ(log.take(), statsTimeout);
}

TEST_F(PortStatisticsTest, AUnitThatGetsFreeAtThatVeryPollIsTooLate) {
    registers.expect({busy.taking(1s), free});
    EXPECT_FALSE(port.waitForStatsCommand());
    EXPECT_EQ(log.take(), statsTimeout);
}

TEST_F(PortStatisticsTest, AUnitThatIsFreeAtTheFirstPollIsReadyHoweverLongThatTakes) {
    registers.expect({free.taking(5s)});
    EXPECT_TRUE(port.waitForStatsCommand());
    EXPECT_EQ(log.take(), Lines{});
}

TEST_F(PortStatisticsTest, TheSecondCanChangeAtOnce) {
    clock.setWallClockPhase(999'999'999);
    registers.expect({busy.taking(1ns), free});
    EXPECT_FALSE(port.waitForStatsCommand());
    EXPECT_EQ(log.take(), statsTimeout);
}

TEST_F(PortStatisticsTest, AUnitThatStaysBusyEndsEveryOperation) {
    registers.expect({busy.taking(1s), busy});
    EXPECT_FALSE(port.clearStatistics());
    EXPECT_EQ(log.take(), statsTimeout);
    registers.expect({free, writes(0x1B, 0x1D, 0xA003), busy.taking(1s), busy});
    EXPECT_FALSE(port.clearStatistics());
    EXPECT_EQ(log.take(), statsTimeout);
    std::ostringstream out;
    registers.expect({busy.taking(1s), busy});
    EXPECT_FALSE(port.dumpStatistics(out));
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(log.take(), statsTimeout);
}

TEST_F(PortStatisticsTest, PrintsTheCounters) {
    std::ostringstream out;
    expectSuccess(registers, counters() + portCounters, [&] { return port.dumpStatistics(out); });
    EXPECT_EQ(out.str(), table("0000000056781234", "00009abc", "0000def0"));
    EXPECT_EQ(log.take(), Lines{});
}

TEST_F(PortStatisticsTest, OnlyTheHighWordOfInGoodOctetsIsTurnedIntoTheHostsOrder) {
    std::ostringstream out;
    expectSuccess(registers,
                  counters({{0, 0x00000010}, {1, 0x00000001}, {14, 0x00000020}, {15, 0x00000002}}) +
                      portCounters,
                  [&] { return port.dumpStatistics(out); });
    std::string const high = htonl(1) == 1 ? "00000001" : "01000000";
    EXPECT_THAT(out.str(), testing::StartsWith("inGoodOctets\t" + high + "00000010\tinBadOctets\t"));
    EXPECT_THAT(out.str(), testing::HasSubstr("\noutOctets\t0000000200000020\n"));
}

TEST_F(PortStatisticsTest, PrintsLargeCountersInFull) {
    std::ostringstream out;
    expectSuccess(
        registers,
        counters({{0, 0xFFFFFFFF}, {1, 0xFFFFFFFF}, {2, 0xFFFFFFFF}, {14, 0xFFFFFFFE}, {15, 0xFFFFFFFF}}) +
            Accesses{reads(0x13, 0x10, 0xFFFF), reads(0x13, 0x11, 0xFFFF), reads(0x13, 0x12, 0xFFFF),
                     reads(0x13, 0x13, 0xFFFF)},
        [&] { return port.dumpStatistics(out); });
    EXPECT_THAT(out.str(), testing::StartsWith("inGoodOctets\tffffffffffffffff\tinBadOctets\tffffffff\n"));
    EXPECT_THAT(out.str(), testing::HasSubstr("\noutOctets\tfffffffffffffffe\n"));
    EXPECT_THAT(out.str(), testing::HasSubstr("\ninDiscards\t00000000ffffffff\tinFiltered\t0000ffff\n"));
    EXPECT_THAT(out.str(), testing::EndsWith("\noutFiltered\t\t0000ffff\n"));
}

TEST_F(PortStatisticsTest, LeavesTheStreamHexadecimal) {
    std::ostringstream out;
    expectSuccess(registers, counters() + portCounters, [&] { return port.dumpStatistics(out); });
    out.str("");
    out << 255;
    EXPECT_EQ(out.str(), "ff");
}

TEST_F(PortStatisticsTest, PrintsNothingWhenAnyAccessToACounterFails) {
    std::ostringstream out;
    expectEachFailureStops(registers, counters(), [&] { return port.dumpStatistics(out); });
    EXPECT_EQ(out.str(), "");
}

TEST_F(PortStatisticsTest, GoesOnWhenThePortsOwnCountersCannotBeRead) {
    for (std::size_t failing = 0; failing < portCounters.size(); ++failing) {
        SCOPED_TRACE(failing);
        Accesses broken = portCounters;
        broken[failing] = broken[failing].failing();
        std::ostringstream out;
        expectSuccess(registers, counters() + broken, [&] { return port.dumpStatistics(out); });
        char const* const discards[] = {"0000000056780000", "0000000000001234", "0000000056781234",
                                        "0000000056781234"};
        EXPECT_EQ(out.str(), table(discards[failing], failing == 2 ? "00000000" : "00009abc",
                                   failing == 3 ? "00000000" : "0000def0"));
    }
}

TEST_F(PortStatisticsTest, EveryDumpCapturesAnew) {
    std::ostringstream first;
    std::ostringstream second;
    expectSuccess(registers, counters({{2, 1}}) + portCounters, [&] { return port.dumpStatistics(first); });
    expectSuccess(registers, counters({{2, 0xABCDEF}}) + portCounters,
                  [&] { return port.dumpStatistics(second); });
    EXPECT_THAT(first.str(), testing::HasSubstr("inBadOctets\t00000001\n"));
    EXPECT_THAT(second.str(), testing::HasSubstr("inBadOctets\t00abcdef\n"));
}

} // namespace
