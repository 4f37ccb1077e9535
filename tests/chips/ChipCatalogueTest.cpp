#include "chips/ChipCatalogue.hpp"

#include <gtest/gtest.h>

#include <map>
#include <stdexcept>

#include "chips/ToolError.hpp"

using chips::ChipCatalogue;
using chips::ExitStatus;
using chips::RegisterLocation;
using chips::ToolError;
using Space = chips::RegisterAddress::Space;

namespace {

class ChipCatalogueTest : public testing::Test {
protected:
    static std::string describe(chips::RegisterLocation const& location) {
        return location.getText() + " " + location.address.getText();
    }

    static std::string refusalOf(chips::ChipCatalogue const& catalogue, std::string const& text,
                                 bool physOnly = false) {
        try {
            return "found " + describe(catalogue.find(text, physOnly));
        } catch (chips::ToolError const& error) {
            EXPECT_EQ(error.getStatus(), chips::ExitStatus::usage) << text;
            return error.what();
        }
    }

    chips::ChipCatalogue const marvell{"88e6096"};
    chips::ChipCatalogue const vitesse{"vsc7390"};
};

TEST_F(ChipCatalogueTest, NeedsAChipThatExists) {
    EXPECT_THROW(chips::ChipCatalogue("88e6097"), std::out_of_range);
}

TEST_F(ChipCatalogueTest, FindsTheSameRegisterUnderAllItsNames) {
    for (char const* const text : {"port 3/PortControl", "PORT3/port control", "port-3/Port_Control",
                                   "0x13/0x04", "19/4", "port3/0x4", "0x13/portcontrol"}) {
        chips::RegisterLocation const location = marvell.find(text);
        EXPECT_EQ(describe(location), "port 3/PortControl 0x13/0x04") << text;
        ASSERT_NE(location.description, nullptr);
        EXPECT_EQ(location.getDigits(), 4U);
    }
    for (char const* const text :
         {"analyser/VLANTIDX", "Analyser/vlan_tidx", "2.0/0xE0", "2.0.0xE0", "2.0.224", "2.0/VLANTIDX"}) {
        chips::RegisterLocation const location = vitesse.find(text);
        EXPECT_EQ(describe(location), "analyser/VLANTIDX 2.0/0xe0") << text;
        EXPECT_EQ(location.getDigits(), 8U);
    }
}

TEST_F(ChipCatalogueTest, KnowsWhereUnitsAre) {
    EXPECT_EQ(marvell.find("port0/0").address.getText(), "0x10/0x00");
    EXPECT_EQ(marvell.find("port10/0").address.getText(), "0x1a/0x00");
    EXPECT_EQ(marvell.find("global1/0").address.getText(), "0x1b/0x00");
    EXPECT_EQ(marvell.find("global2/0").address.getText(), "0x1c/0x00");
    EXPECT_EQ(marvell.find("phy7/0").address.getText(), "phy7/0x00");
    std::map<std::string, std::string> const places = {
        {"port0", "1.0"},      {"port15", "1.15"}, {"port16", "6.0"}, {"port23", "6.7"},
        {"mii0", "3.0"},       {"mii1", "3.1"},    {"memory", "3.2"}, {"capture0", "4.0"},
        {"capture15", "4.15"}, {"arbiter", "5.0"}, {"system", "7.0"}, {"phy23", "phy23"},
    };
    for (auto const& [unit, place] : places) {
        EXPECT_EQ(vitesse.find(unit + "/1").address.getText(), place + "/0x01");
    }
}

TEST_F(ChipCatalogueTest, TakesNumbersThatItHasNoNameFor) {
    chips::RegisterLocation const location = marvell.find("0x1f/0x1e");
    EXPECT_EQ(describe(location), "0x1f/0x1e 0x1f/0x1e");
    EXPECT_EQ(location.description, nullptr);
    EXPECT_EQ(describe(marvell.find("port 3/0x1f")), "port 3/0x1f 0x13/0x1f");
    EXPECT_EQ(describe(vitesse.find("15.15.255")), "15.15/0xff 15.15/0xff");
}

TEST_F(ChipCatalogueTest, WherePhysAreMeantANumberIsAPhy) {
    chips::RegisterLocation const location = vitesse.find("3/2", true);
    EXPECT_EQ(describe(location), "phy 3/Identifier1 phy3/0x02");
    EXPECT_EQ(location.address.space, Space::phy);
    EXPECT_EQ(location.getDigits(), 4U);
    EXPECT_EQ(describe(marvell.find("phy 3/mdi control", true)), "phy 3/MdiControl phy3/0x10");
    EXPECT_EQ(describe(marvell.find("31/2", true)), "phy31/0x02 phy31/0x02");
}

TEST_F(ChipCatalogueTest, SaysWhatIsWrong) {
    EXPECT_EQ(refusalOf(marvell, "port3"), "\"port3\": not of the form UNIT/REGISTER");
    EXPECT_EQ(refusalOf(marvell, "/4"), "\"/4\": not of the form UNIT/REGISTER");
    EXPECT_EQ(refusalOf(marvell, "port3/"), "\"port3/\": not of the form UNIT/REGISTER");
    EXPECT_EQ(refusalOf(marvell, "port11/4"), "\"port11/4\": a 88e6096 has no unit \"port11\"");
    EXPECT_EQ(refusalOf(marvell, "0x20/4"), "\"0x20/4\": a 88e6096 has no unit \"0x20\"");
    EXPECT_EQ(refusalOf(marvell, "1.3/4"), "\"1.3/4\": a 88e6096 has no unit \"1.3\"");
    EXPECT_EQ(refusalOf(marvell, "port3/32"), "\"port3/32\": there is no register 32");
    EXPECT_EQ(refusalOf(marvell, "port3/MAC_CFG"),
              "\"port3/MAC_CFG\": port 3 of a 88e6096 has no register \"MAC_CFG\"");
    EXPECT_EQ(refusalOf(marvell, "0x1f/Some"),
              "\"0x1f/Some\": the unit of a 88e6096 has no register \"Some\"");
    EXPECT_EQ(refusalOf(vitesse, "16.0/0"), "\"16.0/0\": a vsc7390 has no unit \"16.0\"");
    EXPECT_EQ(refusalOf(vitesse, "2/0"), "\"2/0\": a vsc7390 has no unit \"2\"");
    EXPECT_EQ(refusalOf(vitesse, "2.0.256"), "\"2.0.256\": there is no register 256");
    EXPECT_EQ(refusalOf(vitesse, "port0/0", true), "\"port0/0\": \"port0\" is not a PHY");
    EXPECT_EQ(refusalOf(vitesse, "32/0", true), "\"32/0\": a vsc7390 has no unit \"32\"");
    EXPECT_EQ(refusalOf(vitesse, "3/0x100000000", true),
              "\"3/0x100000000\": phy 3 of a vsc7390 has no register \"0x100000000\"");
}

TEST_F(ChipCatalogueTest, EveryRegisterIsFoundByItsNameAndByItsNumber) {
    for (chips::ChipCatalogue const* const catalogue : {&marvell, &vitesse}) {
        for (chips::RegisterLocation const& location : catalogue->getAll()) {
            EXPECT_EQ(describe(catalogue->find(location.getText())), describe(location));
            EXPECT_EQ(describe(catalogue->find(location.address.getText())), describe(location));
        }
    }
}

} // namespace
