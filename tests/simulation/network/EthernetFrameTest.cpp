#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "simulation/network/EthernetFrame.hpp"

using simulation::EthernetFrame;
using Bytes = EthernetFrame::Bytes;
using Class = EthernetFrame::DestinationClass;
using Tag = EthernetFrame::Tag;

namespace {

constexpr EthernetFrame::Address station = 0x020000000001;

// An ARP request, up to its last byte that is not filling.
Bytes const arp = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x02, 0x00, 0x00, 0x00, 0x00, 0x01, 0x08, 0x06,
                   0x00, 0x01, 0x08, 0x00, 0x06, 0x04, 0x00, 0x01, 0x02, 0x00, 0x00, 0x00, 0x00, 0x01,
                   0x0A, 0x00, 0x00, 0x01, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x0A, 0x00, 0x00, 0x02};
Bytes const arpPayload(arp.begin() + 14, arp.end());

Bytes filled(Bytes bytes, std::size_t length) {
    bytes.resize(length);
    return bytes;
}

// The ARP request with more bytes behind its addresses.
Bytes tagged(Bytes const& tags, std::size_t length) {
    Bytes bytes = arp;
    bytes.insert(bytes.begin() + 12, tags.begin(), tags.end());
    return filled(bytes, length);
}

TEST(EthernetFrameTest, ReadsTheHeader) {
    EthernetFrame const frame(filled(arp, 60));
    EXPECT_EQ(frame.getDestination(), 0xFFFFFFFFFFFFU);
    EXPECT_EQ(frame.getSource(), 0x020000000001U);
    EXPECT_EQ(frame.getEtherType(), 0x0806U);
    EXPECT_EQ(frame.getWireLength(), 64U);
    EXPECT_FALSE(frame.getTag().has_value());
    EXPECT_EQ(frame.countTags(), 0U);
    EXPECT_TRUE(frame.hasGoodFcs());
    EXPECT_FALSE(frame.hasGroupSource());
    EXPECT_EQ(frame.describe(), "02:00:00:00:00:01 to FF:FF:FF:FF:FF:FF, type 0806, 64 bytes");
}

TEST(EthernetFrameTest, MakesAFrameOfItsPartsFilledUp) {
    EXPECT_EQ(EthernetFrame::make(0xFFFFFFFFFFFF, station, 0x0806, arpPayload).getBytes(), filled(arp, 60));
    EXPECT_EQ(EthernetFrame::make(1, 2, 0x0800, Bytes(1500)).getWireLength(), 1518U);
}

TEST(EthernetFrameTest, ReadsEachFieldOfATag) {
    struct Case {
        Bytes tci;
        Tag tag;
    };
    for (Case const& each : std::vector<Case>{{{0x00, 0x00}, {0, 0, false}},
                                              {{0x00, 0x01}, {1, 0, false}},
                                              {{0x0F, 0xFF}, {4095, 0, false}},
                                              {{0x10, 0x00}, {0, 0, true}},
                                              {{0x20, 0x00}, {0, 1, false}},
                                              {{0xE0, 0x00}, {0, 7, false}},
                                              {{0xB0, 0x04}, {4, 5, true}}}) {
        EthernetFrame const untagged(filled(arp, 60));
        EthernetFrame const frame(tagged({0x81, 0x00, each.tci[0], each.tci[1]}, 64));
        SCOPED_TRACE(frame.describe());
        ASSERT_TRUE(frame.getTag().has_value());
        EXPECT_TRUE(*frame.getTag() == each.tag);
        EXPECT_EQ(frame.countTags(), 1U);
        EXPECT_EQ(frame.getEtherType(), 0x0806U);
        EXPECT_EQ(untagged.withTagPushed(each.tag), frame);
        EXPECT_EQ(untagged.withTag(each.tag), frame);
        EXPECT_EQ(frame.withTagPopped(), untagged);
    }
}

TEST(EthernetFrameTest, OtherTagProtocolsAreNoTags) {
    for (unsigned const protocol : {0x88, 0x91, 0x82}) {
        EthernetFrame const frame(tagged({static_cast<std::uint8_t>(protocol), 0x00, 0x00, 0x05}, 64));
        EXPECT_FALSE(frame.getTag().has_value());
        EXPECT_EQ(frame.getEtherType(), protocol * 0x100);
        EXPECT_EQ(frame.withTagPopped(), frame);
    }
}

TEST(EthernetFrameTest, TheOuterOfTwoTagsIsTheTag) {
    EthernetFrame const frame(tagged({0x81, 0x00, 0x00, 0x05, 0x81, 0x00, 0x60, 0x07}, 68));
    EXPECT_TRUE(*frame.getTag() == (Tag{5, 0, false}));
    EXPECT_EQ(frame.countTags(), 2U);
    EXPECT_EQ(frame.getEtherType(), 0x8100U);
    EXPECT_EQ(frame.withTagPopped().getBytes(), tagged({0x81, 0x00, 0x60, 0x07}, 64));
    EXPECT_EQ(frame.withTag({9, 1, false}).getBytes(),
              tagged({0x81, 0x00, 0x20, 0x09, 0x81, 0x00, 0x60, 0x07}, 68));
    EXPECT_EQ(frame.withTagPushed({9, 1, false}).countTags(), 3U);
}

TEST(EthernetFrameTest, ReplacesATag) {
    EthernetFrame const frame(tagged({0x81, 0x00, 0xA0, 0x05}, 64), EthernetFrame::Fcs::bad);
    EXPECT_EQ(frame.withTag({6, 2, true}).getBytes(), tagged({0x81, 0x00, 0x50, 0x06}, 64));
    EXPECT_FALSE(frame.withTag({6, 2, true}).hasGoodFcs());
    EXPECT_EQ(frame.withTag({5, 5, false}), frame);
}

TEST(EthernetFrameTest, CutsATagToItsWidth) {
    EXPECT_EQ(EthernetFrame(filled(arp, 60)).withTagPushed({0x1005, 8, false}).getBytes(),
              tagged({0x81, 0x00, 0x00, 0x05}, 64));
}

TEST(EthernetFrameTest, FillsUpWhatATagHasMadeLongEnough) {
    EXPECT_EQ(EthernetFrame(tagged({0x81, 0x00, 0x00, 0x05}, 60)).withTagPopped().getBytes(),
              filled(arp, 60));
    EXPECT_EQ(EthernetFrame(tagged({0x81, 0x00, 0x00, 0x05}, 62)).withTagPopped().getWireLength(), 64U);
    EXPECT_EQ(EthernetFrame(tagged({0x81, 0x00, 0x00, 0x05}, 65)).withTagPopped().getWireLength(), 65U);
    EXPECT_EQ(EthernetFrame(tagged({0x81, 0x00, 0x00, 0x05}, 50)).withTagPopped().getWireLength(), 54U);
}

TEST(EthernetFrameTest, TellsDestinationsApart) {
    struct Case {
        EthernetFrame::Address destination;
        unsigned etherType;
        Class expected;
    };
    for (Case const& each : std::vector<Case>{
             {0x020000000001, 0x0800, Class::unicast},     {0xFEFFFFFFFFFF, 0x0800, Class::unicast},
             {0xFFFFFFFFFFFF, 0x0800, Class::broadcast},   {0xFFFFFFFFFFFE, 0x0800, Class::multicast},
             {0x01005E000000, 0x0800, Class::ipMulticast}, {0x01005E7FFFFF, 0x0800, Class::ipMulticast},
             {0x01005E800000, 0x0800, Class::multicast},   {0x01005DFFFFFF, 0x0800, Class::multicast},
             {0x01005F000000, 0x0800, Class::multicast},   {0x333300000001, 0x86DD, Class::multicast},
             {0x0180C1FFFFFF, 0x88CC, Class::multicast},   {0x0180C2000000, 0x0026, Class::reserved},
             {0x0180C200000F, 0x88CC, Class::reserved},    {0x0180C2000010, 0x88CC, Class::multicast},
             {0x0180C200001F, 0x88CC, Class::multicast},   {0x0180C2000020, 0x88CC, Class::reserved},
             {0x0180C200002F, 0x88CC, Class::reserved},    {0x0180C2000030, 0x88CC, Class::multicast},
             {0x0180C2000001, 0x8808, Class::pause},       {0x0180C2000001, 0x8809, Class::reserved},
             {0x0180C2000002, 0x8808, Class::reserved},    {0x020000000001, 0x8808, Class::unicast},
         }) {
        EthernetFrame const frame = EthernetFrame::make(each.destination, station, each.etherType);
        EXPECT_EQ(frame.getDestinationClass(), each.expected) << frame.describe();
    }
}

TEST(EthernetFrameTest, NoPauseIsInATag) {
    EXPECT_EQ(EthernetFrame::make(0x0180C2000001, station, 0x8808).withTagPushed({}).getDestinationClass(),
              Class::reserved);
}

TEST(EthernetFrameTest, MissingBytesReadAsZero) {
    EthernetFrame const nothing(Bytes{});
    EXPECT_EQ(nothing.getWireLength(), 4U);
    EXPECT_EQ(nothing.describe(), "00:00:00:00:00:00 to 00:00:00:00:00:00, type 0000, 4 bytes");
    EXPECT_EQ(nothing.withTagPushed({5, 0, false}).getBytes(),
              (Bytes{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x81, 0x00, 0x00, 0x05}));
    EthernetFrame const cut(Bytes(arp.begin(), arp.begin() + 9));
    EXPECT_EQ(cut.getSource(), 0x020000000000U);
    EthernetFrame const halfATag(Bytes{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 0x81, 0x00, 0x0F});
    EXPECT_TRUE(*halfATag.getTag() == (Tag{0xF00, 0, false}));
    EXPECT_EQ(halfATag.withTagPopped().getBytes(), filled({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}, 15));
    EXPECT_EQ(halfATag.withTag({1, 0, false}).getWireLength(), 20U);
}

TEST(EthernetFrameTest, EqualAreTheSameBytesAndFlag) {
    EthernetFrame const frame(filled(arp, 60));
    EXPECT_EQ(frame, EthernetFrame(filled(arp, 60)));
    EXPECT_NE(frame, EthernetFrame(filled(arp, 61)));
    EXPECT_NE(frame, EthernetFrame(filled(arp, 60), EthernetFrame::Fcs::bad));
    EXPECT_NE(frame, EthernetFrame::make(0xFFFFFFFFFFFF, station, 0x0806));
}

TEST(EthernetFrameTest, DescribesTagAndBadFcs) {
    EXPECT_EQ(EthernetFrame(tagged({0x81, 0x00, 0xA0, 0x04}, 64), EthernetFrame::Fcs::bad).describe(),
              "02:00:00:00:00:01 to FF:FF:FF:FF:FF:FF, VLAN 4, priority 5, type 0806, 68 bytes, bad FCS");
}

} // namespace
