// What the tables of both chips say to those who read them.

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <stdexcept>
#include <string>

#include "simulation/ChipFamilies.hpp"
#include "simulation/Services.hpp"

using simulation::ChipFamilies;
using simulation::Field;
using simulation::Register;
using simulation::RegisterTable;

namespace {

using Names = std::set<std::string>;

class Tables : public testing::Test {
protected:
    explicit Tables(char const* model) : _chip(ChipFamilies::find(model)->create(_services, 0, {})) {}

    /// Calls `look` with each unit's name and table.
    template <typename Look> void forEachTable(Look look) {
        simulation::ChipTestSide const& chip = _chip->getTestSide();
        for (simulation::RegisterFile const* const unit : chip.getUnits()) {
            look(unit->getName(), unit->getTable());
        }
    }

    template <typename Look> void forEachRegister(Look look) {
        forEachTable([&](std::string const& unit, RegisterTable const& table) {
            for (auto const& [address, row] : table.getRegisters()) {
                look(unit + "/" + row.getName(), row);
            }
        });
    }

    template <typename Condition> Names namesOf(Condition condition) {
        Names names;
        forEachRegister([&](std::string const&, Register const& row) {
            if (condition(row)) {
                names.insert(row.getName());
            }
        });
        return names;
    }

    Names namesOf(Register::Kind kind) {
        return namesOf([kind](Register const& row) { return row.getKind() == kind; });
    }

    Names changedByRead() {
        return namesOf([](Register const& row) { return row.isChangedByRead(); });
    }

    bool keeps(std::string const& unit, unsigned address, std::string const& name) {
        Register const& row = *_chip->getTestSide().getUnit(unit).getTable().find(address);
        for (Field const& field : row.getFields()) {
            if (field.name == name) {
                return row.keeps(field);
            }
        }
        throw std::out_of_range("no such field");
    }

private:
    simulation::Services _services;
    std::unique_ptr<simulation::SimulatedChip> _chip;
};

class RegisterTablesTest : public Tables, public testing::WithParamInterface<char const*> {
protected:
    RegisterTablesTest() : Tables(GetParam()) {}
};

class MarvellTablesTest : public Tables {
protected:
    MarvellTablesTest() : Tables("88e6096") {}
};

class VitesseTablesTest : public Tables {
protected:
    VitesseTablesTest() : Tables("vsc7390") {}
};

TEST_P(RegisterTablesTest, FieldsDoNotOverlap) {
    forEachRegister([](std::string const& name, Register const& row) {
        std::uint32_t seen = row.getIgnored();
        for (Field const& field : row.getFields()) {
            EXPECT_GE(field.high, field.low) << name << " " << field.name;
            EXPECT_EQ(seen & field.getMask(), 0U) << name << " " << field.name;
            seen |= field.getMask();
        }
    });
}

// Bits that no document names may stand behind the others.
TEST_P(RegisterTablesTest, FieldsGoFromHighToLow) {
    forEachRegister([](std::string const& name, Register const& row) {
        unsigned last = 32;
        for (Field const& field : row.getFields()) {
            if (field.name != std::string("Other")) {
                EXPECT_LT(field.high, last) << name << " " << field.name;
                last = field.low;
            }
        }
    });
}

TEST_P(RegisterTablesTest, NamesAreUniqueWithinAUnit) {
    forEachTable([](std::string const& unit, RegisterTable const& table) {
        Names names;
        for (auto const& [address, row] : table.getRegisters()) {
            EXPECT_EQ(row.getAddress(), address);
            EXPECT_TRUE(names.insert(row.getName()).second) << unit << "/" << row.getName();
        }
    });
}

TEST_P(RegisterTablesTest, WhatCountsCannotBeWritten) {
    forEachRegister([](std::string const& name, Register const& row) {
        if (row.getKind() == Register::Kind::counter) {
            EXPECT_EQ(row.getWritable(), 0U) << name;
        }
    });
}

INSTANTIATE_TEST_SUITE_P(Chips, RegisterTablesTest, testing::Values("88e6096", "vsc7390"));

TEST_F(MarvellTablesTest, WhatIsNotASetting) {
    EXPECT_EQ(namesOf(Register::Kind::staging),
              (Names{"ATUFID",          "ATUOperation",     "ATUData",          "ATUMAC01",
                     "ATUMAC23",        "ATUMAC45",         "VTUFID",           "VTUSID",
                     "VTUOperation",    "VTUVID",           "VTUData0-3",       "VTUData4-7",
                     "VTUData8-11",     "StatsOperation",   "StatsCounterHigh", "StatsCounterLow",
                     "SMIPHYCommand",   "SMIPHYData",       "DeviceMapping",    "TrunkMask",
                     "TrunkMapping",    "SwitchMAC",        "PriorityOverride", "IngressRateCommand",
                     "IngressRateData", "CrossChipAddress", "CrossChipData",    "EEPROMCommand",
                     "EEPROMData"}));
    EXPECT_EQ(namesOf(Register::Kind::counter),
              (Names{"InDiscardsLow", "InDiscardsHigh", "InFiltered", "OutFiltered"}));
    EXPECT_EQ(namesOf(Register::Kind::unstable),
              (Names{"GlobalStatus", "Status", "PartnerAbility", "Expansion", "SpecificStatus"}));
    EXPECT_EQ(changedByRead(), Names{"GlobalStatus"});
}

TEST_F(VitesseTablesTest, WhatIsNotASetting) {
    EXPECT_EQ(namesOf(Register::Kind::staging),
              (Names{"MACHDATA", "MACLDATA", "MACACCESS", "MACTINDX", "VLANACCESS", "VLANTIDX", "MIIMCMD",
                     "MIIMDATA", "MEMINIT", "MEMRES"}));
    EXPECT_EQ(namesOf(Register::Kind::counter).size(), 12U);
    Names unstable = namesOf(Register::Kind::unstable);
    EXPECT_EQ(unstable.size(), 7U + 256U + 3 + 3);
    for (char const* const name :
         {"ARBEMPTY", "MIIMSTAT", "BusSetUp", "GLORESET", "IndirectData", "IndirectStatus", "Status",
          "Word255", "ANMOVED", "ANEVENTS", "ANCNTVAL", "Register5", "Register6", "Register10"}) {
        EXPECT_EQ(unstable.count(name), 1U) << name;
    }
    Names const changed = changedByRead();
    EXPECT_EQ(changed.size(), 256U + 2 + 1 + 2 + 4 + 16 + 3);
    for (char const* const harmless : {"Control", "Identifier1", "Identifier2", "Register4", "Register15"}) {
        EXPECT_EQ(changed.count(harmless), 0U) << harmless;
    }
}

TEST_P(RegisterTablesTest, OnlyWhatIsKnownByNumberOrNameAloneHasAnUnknownReset) {
    Names const nameAlone = {"MACHDXGAP",       "ADVPORTM",   "TXQ_SELECT_CFG", "CAT_PR_MISC_L2",
                             "CAT_PR_USR_PRIO", "STORMLIMIT", "ANMOVED",        "ANAGEFIL",
                             "ANEVENTS",        "ANCNTMASK",  "ANCNTVAL",       "AGENCTRL"};
    forEachRegister([&](std::string const& name, Register const& row) {
        bool const isKnown =
            name.find("/Register") == std::string::npos && nameAlone.count(row.getName()) == 0;
        EXPECT_EQ(row.isResetKnown(), isKnown) << name;
    });
}

TEST_F(MarvellTablesTest, WhatClearsItselfIsNotKept) {
    EXPECT_FALSE(keeps("global 1", 0x04, "SWReset"));
    EXPECT_TRUE(keeps("global 1", 0x04, "PPUEn"));
    EXPECT_FALSE(keeps("phy 0", 0, "Reset"));
    EXPECT_FALSE(keeps("phy 0", 0, "RestartNegotiation"));
    EXPECT_TRUE(keeps("phy 0", 0, "PowerDown"));
    EXPECT_FALSE(keeps("port 0", 0x03, "Product"));
}

} // namespace
