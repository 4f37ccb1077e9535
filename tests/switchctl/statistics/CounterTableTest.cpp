// The names, units and registers of the counters.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "chips/ChipKinds.hpp"

using chips::Counter;

namespace {

constexpr int none = -1;

struct Row {
    char const* name;
    char const* family;
    bool isInUnit;
    unsigned low;
    int high;
    unsigned bits;
};

constexpr Row rowsOf88e6096[] = {
    {"inGoodOctets", "switch_port_in_good_bytes", true, 0, 1, 64},
    {"inBadOctets", "switch_port_in_bad_bytes", true, 2, none, 32},
    {"inUnicast", "switch_port_in_unicast_frames", true, 4, none, 32},
    {"inBroadcast", "switch_port_in_broadcast_frames", true, 6, none, 32},
    {"inMulticast", "switch_port_in_multicast_frames", true, 7, none, 32},
    {"inPause", "switch_port_in_pause_frames", true, 22, none, 32},
    {"inUndersized", "switch_port_in_undersized_frames", true, 24, none, 32},
    {"inFragments", "switch_port_in_fragment_frames", true, 25, none, 32},
    {"inOversized", "switch_port_in_oversized_frames", true, 26, none, 32},
    {"inJabber", "switch_port_in_jabber_frames", true, 27, none, 32},
    {"inRxErr", "switch_port_in_receive_error_frames", true, 28, none, 32},
    {"inFCSErr", "switch_port_in_checksum_error_frames", true, 29, none, 32},
    {"inDiscards", "switch_port_in_discarded_frames", false, 0x10, 0x11, 32},
    {"inFiltered", "switch_port_in_filtered_frames", false, 0x12, none, 16},
    {"octets64", "switch_port_size_64_frames", true, 8, none, 32},
    {"octets65to127", "switch_port_size_65_to_127_frames", true, 9, none, 32},
    {"octets128to255", "switch_port_size_128_to_255_frames", true, 10, none, 32},
    {"octets256to511", "switch_port_size_256_to_511_frames", true, 11, none, 32},
    {"octets512to1023", "switch_port_size_512_to_1023_frames", true, 12, none, 32},
    {"octets1024toMax", "switch_port_size_1024_to_max_frames", true, 13, none, 32},
    {"outOctets", "switch_port_out_bytes", true, 14, 15, 64},
    {"outUnicast", "switch_port_out_unicast_frames", true, 16, none, 32},
    {"outBroadcast", "switch_port_out_broadcast_frames", true, 19, none, 32},
    {"outMulticast", "switch_port_out_multicast_frames", true, 18, none, 32},
    {"outPause", "switch_port_out_pause_frames", true, 21, none, 32},
    {"deferred", "switch_port_deferred_frames", true, 5, none, 32},
    {"collisions", "switch_port_collision_events", true, 30, none, 32},
    {"single", "switch_port_single_collision_frames", true, 20, none, 32},
    {"multiple", "switch_port_multiple_collision_frames", true, 23, none, 32},
    {"excessive", "switch_port_excessive_collision_frames", true, 17, none, 32},
    {"late", "switch_port_late_collision_events", true, 31, none, 32},
    {"outFcsErr", "switch_port_out_checksum_error_frames", true, 3, none, 32},
    {"outFiltered", "switch_port_out_filtered_frames", false, 0x13, none, 16},
};

constexpr Row rowsOfVsc7390[] = {
    {"inGoodandBadOctets", "switch_port_in_good_and_bad_bytes", false, 0x50, none, 32},
    {"inGoodandBadPackets", "switch_port_in_good_and_bad_frames", false, 0x52, none, 32},
    {"inMulticastBroadCast", "switch_port_in_multicast_and_broadcast_frames", false, 0x53, none, 32},
    {"inErrorPackets", "switch_port_in_error_frames", false, 0x54, none, 32},
    {"inTotalDrops", "switch_port_in_dropped_frames", false, 0x55, none, 32},
    {"inClassifiedClass3Qos", "switch_port_in_class_3_frames", false, 0x56, none, 32},
    {"outGoodandBadOctets", "switch_port_out_good_and_bad_bytes", false, 0x51, none, 32},
    {"outGoodandBadPackets", "switch_port_out_good_and_bad_frames", false, 0x57, none, 32},
    {"outMulticastBroadCast", "switch_port_out_multicast_and_broadcast_frames", false, 0x58, none, 32},
    {"outErrorPackets", "switch_port_out_error_frames", false, 0x59, none, 32},
    {"outTotalDrops", "switch_port_out_dropped_frames", false, 0x5A, none, 32},
    {"outClassifiedClass3Qos", "switch_port_out_class_3_frames", false, 0x5B, none, 32},
};

std::vector<Counter> const& countersOf(std::string const& model) {
    return chips::ChipKinds::get(model, "a test").getFacts().counters;
}

template <std::size_t size> void compare(std::string const& model, Row const (&rows)[size]) {
    std::vector<chips::Counter> const& counters = countersOf(model);
    ASSERT_EQ(counters.size(), size);
    for (std::size_t index = 0; index < size; ++index) {
        chips::Counter const& counter = counters[index];
        Row const& row = rows[index];
        SCOPED_TRACE(row.name);
        EXPECT_STREQ(counter.name, row.name);
        EXPECT_EQ(counter.getFamily(), row.family);
        EXPECT_EQ(counter.place == chips::Counter::Place::statisticsUnit, row.isInUnit);
        EXPECT_EQ(counter.low, row.low);
        EXPECT_EQ(counter.high ? static_cast<int>(*counter.high) : none, row.high);
        EXPECT_EQ(counter.getBits(), row.bits);
    }
}

} // namespace

TEST(CounterTableTest, HasThoseOfThe88E6096) {
    compare("88e6096", rowsOf88e6096);
}

TEST(CounterTableTest, HasThoseOfTheVsc7390) {
    compare("vsc7390", rowsOfVsc7390);
}

TEST(CounterTableTest, EachOfThe32CountersOfTheStatisticsUnitIsThereOnce) {
    std::multiset<unsigned> numbers;
    for (chips::Counter const& counter : countersOf("88e6096")) {
        if (counter.place == chips::Counter::Place::statisticsUnit) {
            numbers.insert(counter.low);
            if (counter.high) {
                numbers.insert(*counter.high);
            }
        }
    }
    std::multiset<unsigned> expected;
    for (unsigned number = 0; number < 32; ++number) {
        expected.insert(number);
    }
    EXPECT_EQ(numbers, expected);
}

TEST(CounterTableTest, FamiliesAreUnique) {
    std::set<std::string> families;
    for (char const* const model : {"88e6096", "vsc7390"}) {
        for (chips::Counter const& counter : countersOf(model)) {
            EXPECT_TRUE(families.insert(counter.getFamily()).second) << counter.getFamily();
        }
    }
}

TEST(CounterTableTest, LargestValuesAreThoseOfTheBits) {
    EXPECT_EQ(countersOf("88e6096")[0].getLargest(), 0xFFFFFFFFFFFFFFFFU);
    EXPECT_EQ(countersOf("88e6096")[1].getLargest(), 0xFFFFFFFFU);
    EXPECT_EQ(countersOf("88e6096")[13].getLargest(), 0xFFFFU);
}
