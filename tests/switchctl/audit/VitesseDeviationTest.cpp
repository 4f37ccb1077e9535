// A VSC7390 that was disturbed after its bring-up.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AuditBench.hpp"
#include "board/Wording.hpp"
#include "simulation/vsc7390/Vsc7390TestSide.hpp"

using simulation::Vsc7390TestSide;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

using Lines = std::vector<std::string>;

enum VitesseRegister : unsigned {
    macConfig = 0x00,
    packetsIn = 0x52,
    aggregationMask3 = 0x33,
    macHigh = 0x06,
    macLow = 0x07,
    vlanIndex = 0xE0,
};
constexpr std::uint32_t receiveEnable = 1U << 16;

class VitesseDeviationTest : public testing::Test {
protected:
    VitesseDeviationTest() {
        for (unsigned const id : bench.getBoard().getSwitchIds()) {
            if (auto* const found = dynamic_cast<Vsc7390TestSide*>(&bench.getBoard().getChip(id))) {
                chip = found;
                name = "switch " + std::to_string(id);
            }
        }
    }

    /// The first group of the MAC table.
    std::pair<Vsc7390TestSide::MacPlace, Vsc7390TestSide::MacEntry> group() const {
        for (auto const& [place, entry] : chip->getMacTable()) {
            if (entry.isMulticast()) {
                return {place, entry};
            }
        }
        ADD_FAILURE() << "the board has no group";
        return {};
    }

    AuditBench bench{"trap-video-switch"};
    Vsc7390TestSide* chip = nullptr;
    std::string name;
};

} // namespace

TEST_F(VitesseDeviationTest, ThereIsNoneOnACleanStart) {
    EXPECT_THAT(bench.audit(), IsEmpty());
    EXPECT_THAT(bench.getUnread(), IsEmpty());
}

TEST_F(VitesseDeviationTest, APortThatNoLongerReceives) {
    std::uint32_t const before = chip->peek("port 1", macConfig);
    ASSERT_NE(before & receiveEnable, 0U);
    chip->poke("port 1", macConfig, before & ~receiveEnable);
    EXPECT_THAT(bench.audit(), ElementsAre(name + "  port 1  MAC_CFG  RX_EN  expected 0x1, found 0x0"));
}

TEST_F(VitesseDeviationTest, AMemberOfAVlan) {
    ASSERT_FALSE(chip->getVlans().empty());
    auto const [vid, before] = *chip->getVlans().begin();
    Vsc7390TestSide::VlanEntry entry = before;
    entry.ports ^= 1U << 23;
    chip->setVlanEntry(vid, entry);
    Lines const lines = bench.audit();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_THAT(lines[0], HasSubstr(name + "  VLAN table  " + board::entryName("VID " + std::to_string(vid)) +
                                    "  Ports  expected"));
}

TEST_F(VitesseDeviationTest, AVlanTooMuch) {
    Vsc7390TestSide::VlanEntry entry = chip->getVlanEntry(4000);
    std::uint32_t const before = entry.ports;
    entry.ports ^= 0x3U;
    chip->setVlanEntry(4000, entry);
    char text[128];
    std::snprintf(text, sizeof text, "%s  VLAN table  VID 4000 (0xfa0)  Ports  expected 0x%x, found 0x%x",
                  name.c_str(), before, entry.ports);
    EXPECT_THAT(bench.audit(), ElementsAre(text));
}

TEST_F(VitesseDeviationTest, APortOfAGroup) {
    auto [place, entry] = group();
    entry.mac ^= std::uint64_t{1} << (24 + 23);
    chip->setMacEntry(place.first, place.second, entry);
    Lines const lines = bench.audit();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_THAT(lines[0], HasSubstr(name + "  MAC table  group 01:00:5e:"));
    EXPECT_THAT(lines[0], HasSubstr("  Ports  expected "));
}

TEST_F(VitesseDeviationTest, AGroupThatIsGone) {
    auto const [place, entry] = group();
    chip->removeMacEntry(place.first, place.second);
    Lines const lines = bench.audit();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_THAT(lines[0], HasSubstr("MAC table  group 01:00:5e:"));
    EXPECT_THAT(lines[0], HasSubstr("expected the entry, found none"));
}

TEST_F(VitesseDeviationTest, AGroupTooMuch) {
    auto [place, entry] = group();
    entry.mac = (entry.mac & ~0xFFFFFFULL) | 0x0A0B0C;
    unsigned const free = place.second == 3 ? 0 : 3;
    ASSERT_FALSE(chip->getMacEntry(place.first, free));
    chip->setMacEntry(place.first, free, entry);
    EXPECT_THAT(bench.audit(), ElementsAre(name + "  MAC table  group 01:00:5e:0a:0b:0c " +
                                           board::entryName("VID " + std::to_string(entry.vid)) +
                                           "  expected none, found the entry"));
}

TEST_F(VitesseDeviationTest, LearnedAddressesCountersAndStagingRegistersAreNoDeviation) {
    ASSERT_TRUE(chip->learn(0x020000000001, 1, 2));
    chip->setCounter(1, packetsIn, 12345);
    chip->poke("analyser", macHigh, 0x1234);
    chip->poke("analyser", macLow, 0x1234);
    chip->poke("analyser", vlanIndex, 0x123);
    EXPECT_THAT(bench.audit(), IsEmpty());
}

TEST_F(VitesseDeviationTest, AGroupIsFoundInWhicheverBucketItIs) {
    auto const [place, entry] = group();
    unsigned const free = place.second == 3 ? 0 : 3;
    chip->removeMacEntry(place.first, place.second);
    chip->setMacEntry(place.first, free, entry);
    EXPECT_THAT(bench.audit(), IsEmpty());
}

TEST_F(VitesseDeviationTest, AnAggregationMask) {
    std::uint32_t const before = chip->peek("analyser", aggregationMask3);
    chip->poke("analyser", aggregationMask3, before ^ 0x2U);
    Lines const lines = bench.audit();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_THAT(lines[0], HasSubstr(name + "  analyser  AGGRMSKS_3  Ports  expected "));
}
