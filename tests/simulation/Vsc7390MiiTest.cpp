#include "tests/simulation/Vsc7390Fixture.hpp"

using simulation_test::Vsc7390Fixture;

namespace {

class Vsc7390MiiTest : public Vsc7390Fixture {
protected:
    static unsigned readWord(unsigned phy, unsigned address) { return 1U << 26 | phy << 21 | address << 16; }

    static unsigned writeWord(unsigned phy, unsigned address, unsigned value) {
        return phy << 21 | address << 16 | value;
    }

    /// A transfer with the waits that drivers make.
    unsigned phyRead(unsigned phy, unsigned address, unsigned controller = 1) {
        EXPECT_TRUE(idles(controller));
        write(mii, controller, 0x1, readWord(phy, address));
        EXPECT_TRUE(idles(controller));
        return read(mii, controller, 0x2);
    }

    void phyWrite(unsigned phy, unsigned address, unsigned value) {
        EXPECT_TRUE(idles(1));
        write(mii, 1, 0x1, writeWord(phy, address, value));
    }

    bool idles(unsigned controller) {
        std::uint64_t const start = _board->getClock().getNanoseconds();
        do {
            if ((read(mii, controller, 0x0) & 0x4) == 0) {
                return true;
            }
        } while (_board->getClock().getNanoseconds() - start < 2'000'000'000);
        return false;
    }
};

TEST_F(Vsc7390MiiTest, APhyIsRead) {
    for (unsigned phy = 0; phy < 24; ++phy) {
        chip().getUnit(simulation::UnitKind::phy, phy).poke(17, 0xA500 + phy);
    }
    for (unsigned phy = 0; phy < 24; ++phy) {
        EXPECT_EQ(phyRead(phy, 17), 0xA500 + phy);
    }
    EXPECT_EQ(misuseText(), "");
}

TEST_F(Vsc7390MiiTest, APhyIsWritten) {
    phyWrite(23, 4, 0x01E1);
    phyWrite(22, 31, 0xFFFF);
    EXPECT_EQ(chip().peek("phy 23", 4), 0x01E1U);
    EXPECT_EQ(chip().peek("phy 22", 31), 0xFFFFU);
    EXPECT_EQ(phyRead(23, 4), 0x01E1U);
    EXPECT_EQ(misuseText(), "");
}

TEST_F(Vsc7390MiiTest, RegistersThatAllPhysHave) {
    EXPECT_EQ(phyRead(3, 0), 0x1140U);
    EXPECT_EQ(phyRead(3, 2), 0x0007U);
    EXPECT_EQ(phyRead(3, 3), 0x0420U);
    EXPECT_EQ(chip().peek("phy 3", 1), 0x7949U);
}

TEST_F(Vsc7390MiiTest, AResetEndsByItselfAndKeepsTheRest) {
    phyWrite(3, 0, 0xA300);
    EXPECT_EQ(phyRead(3, 0), 0x2100U);
}

// Link and end of negotiation, what the partner can do, and that it negotiates, as drivers ask for them.
TEST_F(Vsc7390MiiTest, TheStatusShowsTheLinkThatIsPluggedIn) {
    struct Case {
        unsigned megabits;
        bool fullDuplex;
        unsigned ability;
        unsigned gigabit;
    };
    for (Case const& item :
         {Case{10, false, 0x4021, 0}, Case{10, true, 0x4041, 0}, Case{100, false, 0x4081, 0},
          Case{100, true, 0x4101, 0}, Case{1000, false, 0x4001, 0x3400}, Case{1000, true, 0x4001, 0x3800}}) {
        chip().plugLink(7, item.megabits, item.fullDuplex);
        EXPECT_EQ(phyRead(7, 1), 0x796DU) << item.megabits;
        EXPECT_EQ(phyRead(7, 5), item.ability) << item.megabits;
        EXPECT_EQ(phyRead(7, 6), 0x0001U) << item.megabits;
        EXPECT_EQ(phyRead(7, 10), item.gigabit) << item.megabits;
    }
    EXPECT_EQ(phyRead(8, 1), 0x7949U) << "another one's";
    EXPECT_EQ(phyRead(8, 5), 0U);
    chip().unplugLink(7);
    EXPECT_EQ(phyRead(7, 1), 0x7949U);
    EXPECT_EQ(phyRead(7, 5), 0U);
    EXPECT_EQ(phyRead(7, 10), 0U);
}

TEST_F(Vsc7390MiiTest, AForcedLinkShowsNoNegotiation) {
    chip().plugLink(7, 100, true);
    phyWrite(7, 0, 0x2100);
    EXPECT_EQ(phyRead(7, 1), 0x794DU);
    EXPECT_EQ(phyRead(7, 5), 0U);
}

TEST_F(Vsc7390MiiTest, ALostLinkShowsUntilItIsRead) {
    chip().plugLink(7);
    chip().unplugLink(7);
    chip().plugLink(7);
    EXPECT_EQ(chip().peek("phy 7", 1), 0x7969U) << "looking is no reading";
    EXPECT_EQ(phyRead(7, 1), 0x7969U);
    EXPECT_EQ(phyRead(7, 1), 0x796DU);
}

TEST_F(Vsc7390MiiTest, APhyWithoutPowerHasNoLink) {
    chip().plugLink(7);
    phyWrite(7, 0, 0x1940);
    EXPECT_EQ(phyRead(7, 1), 0x7949U);
    phyWrite(7, 0, 0x1140);
    EXPECT_EQ(phyRead(7, 1), 0x796DU);
}

TEST_F(Vsc7390MiiTest, APhyThatDoesNotAnswerSetsBit16) {
    chip().unplugPhy(5);
    EXPECT_EQ(phyRead(5, 2), 0x1FFFFU);
    phyWrite(5, 4, 0x1234);
    EXPECT_EQ(phyRead(6, 2), 0x00007U) << "another one does";
    EXPECT_EQ(chip().peek("phy 5", 4), 0U) << "the write went nowhere";
    chip().plugPhy(5);
    EXPECT_EQ(phyRead(5, 2), 0x00007U);
}

TEST_F(Vsc7390MiiTest, NoPhysPastThePorts) {
    EXPECT_EQ(phyRead(24, 2), 0x1FFFFU);
    EXPECT_EQ(phyRead(31, 2), 0x1FFFFU);
}

TEST_F(Vsc7390MiiTest, TheOtherControllerWorksButHasNoPhys) {
    EXPECT_EQ(phyRead(3, 2, 0), 0x1FFFFU);
    EXPECT_EQ(chip().getCommands(Unit::mii0), 1U);
    EXPECT_EQ(chip().getCommands(Unit::mii1), 0U);
    EXPECT_EQ(read(mii, 1, 0x2), 0U);
}

TEST_F(Vsc7390MiiTest, BusyForATransfer) {
    write(mii, 1, 0x1, readWord(3, 0));
    EXPECT_EQ(chip().peek("mii 1", 0x0), 0xCU);
    advance(25'599);
    EXPECT_EQ(chip().peek("mii 1", 0x0), 0xCU);
    advance(1);
    EXPECT_EQ(chip().peek("mii 1", 0x0), 0U);
    write(mii, 1, 0x1, writeWord(3, 0, 0x1140));
    EXPECT_EQ(chip().peek("mii 1", 0x0), 0xEU);
    EXPECT_EQ(chip().peek("mii 0", 0x0), 0U);
}

TEST_F(Vsc7390MiiTest, HalfTheTimeWithoutPreamble) {
    write(mii, 1, 0x3, 0x40);
    write(mii, 1, 0x1, readWord(3, 0));
    advance(12'799);
    EXPECT_EQ(chip().peek("mii 1", 0x0), 0xCU);
    advance(1);
    EXPECT_EQ(chip().peek("mii 1", 0x0), 0U);
}

TEST_F(Vsc7390MiiTest, TransfersCanTakeNoTime) {
    Options options;
    options.miiNanoseconds = 0;
    rebuild(options);
    write(mii, 1, 0x1, readWord(3, 0));
    EXPECT_EQ(chip().peek("mii 1", 0x0), 0U);
    EXPECT_EQ(chip().peek("mii 1", 0x2), 0x1140U);
}

TEST_F(Vsc7390MiiTest, DataComesAtTheEndOfTheTransfer) {
    phyRead(3, 0);
    write(mii, 1, 0x1, readWord(3, 2));
    EXPECT_EQ(chip().peek("mii 1", 0x2), 0x1140U) << "still that of the last read";
    advance(25'600);
    EXPECT_EQ(chip().peek("mii 1", 0x2), 0x0007U);
}

TEST_F(Vsc7390MiiTest, WritesLeaveTheDataAlone) {
    phyRead(3, 0);
    phyWrite(3, 4, 0x01E1);
    advance(25'600);
    EXPECT_EQ(read(mii, 1, 0x2), 0x1140U);
}

TEST_F(Vsc7390MiiTest, TheCommandIsReadBack) {
    write(mii, 1, 0x1, 0x0C6A1234);
    EXPECT_EQ(read(mii, 1, 0x1), 0x0C6A1234U);
}

TEST_F(Vsc7390MiiTest, NumbersThatDoNotExist) {
    EXPECT_THROW(chip().unplugPhy(24), std::out_of_range);
    EXPECT_THROW(chip().plugLink(24), std::out_of_range);
    EXPECT_THROW(chip().unplugLink(24), std::out_of_range);
    EXPECT_THROW(chip().poke("phy 24", 0, 0), std::out_of_range);
}

} // namespace
