#include "board/Wording.hpp"

#include <gtest/gtest.h>

namespace {

TEST(WordingTest, AVlanIsNamedInAllWays) {
    EXPECT_EQ(board::vlanName(16, "10"), "VLAN 16 (0x10, written \"10\")");
    EXPECT_EQ(board::vlanName(16, ""), "VLAN 16 (0x10, written \"\")");
    EXPECT_EQ(board::vlanName(4095), "VLAN 4095 (0xfff)");
}

TEST(WordingTest, AnIdIsDecimalAndAsWrittenWhereThatIsAnother) {
    EXPECT_EQ(board::idName(7, "7"), "7");
    EXPECT_EQ(board::idName(7, std::nullopt), "7");
    EXPECT_EQ(board::idName(7, "07"), "7 (written \"07\")");
    EXPECT_EQ(board::idName(-1, "one"), "-1 (written \"one\")");
}

TEST(WordingTest, EntriesOfTablesHaveTheirIdsInHexadecimalToo) {
    EXPECT_EQ(board::entryName("VID 16"), "VID 16 (0x10)");
    EXPECT_EQ(board::entryName("SID 5"), "SID 5 (0x5)");
    EXPECT_EQ(board::entryName("group 01:00:5e:01:02:03 VID 10 entry 2"),
              "group 01:00:5e:01:02:03 VID 10 (0xa) entry 2");
    EXPECT_EQ(board::entryName("DefaultVLAN"), "DefaultVLAN");
    EXPECT_EQ(board::entryName("VID "), "VID ");
}

TEST(WordingTest, FieldsWithIdsHaveThemInDecimalToo) {
    EXPECT_EQ(board::fieldValue("VID", 16), "0x10 (16)");
    EXPECT_EQ(board::fieldValue("DefaultVID", 0xFFF), "0xfff (4095)");
    EXPECT_EQ(board::fieldValue("SID", 9), "0x9");
    EXPECT_EQ(board::fieldValue("FID", 16), "0x10");
    EXPECT_EQ(board::fieldValue("", 16), "0x10");
}

TEST(WordingTest, PortTypesAreThoseOfTheDocument) {
    using Type = ManagedSwitchPort::PortType;
    EXPECT_EQ(board::portTypeName(Type::ethernetPortType), "external");
    EXPECT_EQ(board::portTypeName(Type::smacPortType), "smac");
    EXPECT_EQ(board::portTypeName(Type::hmacPortType), "hmac");
    EXPECT_EQ(board::portTypeName(Type::cpuPortType), "cpu");
    EXPECT_EQ(board::portTypeName(Type::dspPortType), "dsp");
    EXPECT_EQ(board::portTypeName(Type::switchInterlink), "switchInterlink");
    EXPECT_EQ(board::portTypeName(Type::unknownPortType), "unknown");
}

} // namespace
