// What the models do when something goes wrong on a bus, looked at without a driver.

#include "simulation/BusFaults.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "reference_host/XmlDocument.hpp"
#include "simulation/SerialController.hpp"
#include "simulation/SimulatedBoard.hpp"
#include "simulation/WindowRegistry.hpp"

using simulation::BusFaults;
using Kind = simulation::BusFaults::Kind;
using Line = simulation::SerialControllerLine;

namespace {

constexpr unsigned macWindow = 0x80010000;
constexpr unsigned parallelWindow = 0xF3000000;
constexpr unsigned macControl = 0x20;
constexpr unsigned chipIdentifier = 0x1C060;

class BusFaultsTest : public testing::Test {
protected:
    simulation::BusDevice& window(unsigned physicalAddress) {
        return *simulation::WindowRegistry::getInstance().find(
            board.window(physicalAddress, 4)->getBaseAddress());
    }

    unsigned read(unsigned physicalAddress, unsigned offset) {
        unsigned value = 0xABCD;
        EXPECT_TRUE(window(physicalAddress).read(offset, value));
        return value;
    }

    /// An MDIO frame by hand.
    unsigned mdioRead(unsigned phy, unsigned reg) {
        EXPECT_TRUE(window(macWindow).write(0x10, 0x8000 | phy << 5 | reg));
        return read(macWindow, 0x14);
    }

    std::unique_ptr<reference_host::XmlDocument> document = reference_host::XmlDocument::fromText(
        "<switches><switch id='1' switchModel='88e6096'/><switch id='0' switchModel='vsc7390'/></switches>",
        "board");
    simulation::SimulatedBoard board{*document};
    BusFaults& faults = board.getFaults();
};

TEST_F(BusFaultsTest, StrikeOneAccessOfAllWindows) {
    faults.strike(2, Kind::accessFails);
    faults.strike(3, Kind::allOnes);
    faults.strike(4, Kind::allZeros);
    faults.strike(5, Kind::bitFlipped, 20);
    EXPECT_EQ(read(parallelWindow, chipIdentifier), 0x07390000U);
    unsigned value = 0xABCD;
    EXPECT_FALSE(window(macWindow).read(macControl, value));
    EXPECT_EQ(value, 0xABCDU);
    EXPECT_EQ(read(parallelWindow, chipIdentifier), 0xFFFFFFFFU);
    EXPECT_EQ(read(parallelWindow, chipIdentifier), 0U);
    EXPECT_EQ(read(parallelWindow, chipIdentifier), 0x07290000U);
    EXPECT_EQ(read(parallelWindow, chipIdentifier), 0x07390000U);
    EXPECT_EQ(faults.getAccesses(), 6U);
}

TEST_F(BusFaultsTest, StrikeEveryAccessFromSomeMomentOn) {
    faults.strike(3, Kind::bitFlipped, 20);
    faults.strikeFrom(2, Kind::allZeros);
    EXPECT_EQ(read(parallelWindow, chipIdentifier), 0x07390000U);
    EXPECT_EQ(read(parallelWindow, chipIdentifier), 0U);
    EXPECT_EQ(read(parallelWindow, chipIdentifier), 0x07290000U) << "what strikes one access goes first";
    EXPECT_EQ(read(parallelWindow, chipIdentifier), 0U);
    EXPECT_EQ(read(parallelWindow, chipIdentifier), 0U);
}

TEST_F(BusFaultsTest, StrikeWritesOnTheirWayToTheChip) {
    std::vector<unsigned> held;
    faults.strike(1, Kind::accessFails);
    faults.strike(2, Kind::bitFlipped, 1);
    faults.strike(3, Kind::allOnes);
    faults.strike(4, Kind::allZeros);
    EXPECT_FALSE(window(macWindow).write(macControl, 0x3E00));
    held.push_back(board.getMac().peek(macControl));
    for (int i = 0; i < 4; ++i) {
        EXPECT_TRUE(window(macWindow).write(macControl, 0x3E00));
        held.push_back(board.getMac().peek(macControl));
    }
    EXPECT_EQ(held, (std::vector<unsigned>{0, 0x3E02, 0xFFFFFFFF, 0, 0x3E00}));
}

TEST_F(BusFaultsTest, CallBeforeAnAccess) {
    std::vector<std::uint64_t> calls;
    faults.callBefore(2, [&] {
        calls.push_back(faults.getAccesses());
        faults.strike(2, Kind::allZeros);
        faults.callBefore(3, [&] { calls.push_back(faults.getAccesses()); });
    });
    EXPECT_EQ(read(parallelWindow, chipIdentifier), 0x07390000U);
    EXPECT_EQ(read(parallelWindow, chipIdentifier), 0U);
    read(parallelWindow, chipIdentifier);
    read(parallelWindow, chipIdentifier);
    EXPECT_EQ(calls, (std::vector<std::uint64_t>{2, 3}));
}

TEST_F(BusFaultsTest, SlowTheBusDown) {
    std::uint64_t const before = board.getClock().getNanoseconds();
    faults.slowDown(5'000'000);
    read(macWindow, macControl);
    EXPECT_EQ(board.getClock().getNanoseconds() - before, 5'000'000U);
    faults.slowDown(0);
    read(macWindow, macControl);
    EXPECT_EQ(board.getClock().getNanoseconds() - before, 5'000'000U);
}

TEST_F(BusFaultsTest, KeepARecord) {
    read(macWindow, macControl);
    faults.startRecord();
    window(macWindow).write(macControl, 7);
    read(parallelWindow, chipIdentifier);
    auto const record = faults.getRecord();
    ASSERT_EQ(record.size(), 2U);
    EXPECT_EQ(record[0].physicalAddress, 0x80010020U);
    EXPECT_TRUE(record[0].isWrite);
    EXPECT_EQ(record[0].value, 7U);
    EXPECT_EQ(record[1].physicalAddress, 0xF301C060U);
    EXPECT_FALSE(record[1].isWrite);
    EXPECT_EQ(record[1].value, 0x07390000U);
}

TEST_F(BusFaultsTest, AnEmptySocketOnTheMdioBusReadsAllOnes) {
    board.getMarvell(1).poke("port 0", 3, 0x0980);
    EXPECT_EQ(mdioRead(1, 0), 0U);
    board.getMarvell(1).unplug();
    EXPECT_EQ(mdioRead(1, 0), 0xFFFFU);
    // Reads port 0's register 3, once the chip is back.
    EXPECT_TRUE(window(macWindow).write(0x14, 0x9A03));
    EXPECT_TRUE(window(macWindow).write(0x10, 0x4000 | 1 << 5));
    board.getMarvell(1).plug();
    EXPECT_EQ(mdioRead(1, 1), 0U) << "the command was lost";
    EXPECT_TRUE(window(macWindow).write(0x14, 0x9A03));
    EXPECT_TRUE(window(macWindow).write(0x10, 0x4000 | 1 << 5));
    EXPECT_EQ(mdioRead(1, 1), 0x0980U);
}

TEST_F(BusFaultsTest, CharactersOfASerialLineGetLostDoubledAndGarbled) {
    Line line;
    line.disturb(Line::Direction::toDriver, 2, Line::CharacterFault::lost);
    line.disturb(Line::Direction::toDriver, 5, Line::CharacterFault::doubled);
    line.disturb(Line::Direction::toDriver, 7, Line::CharacterFault::garbled);
    line.send("0x");
    line.send("12345");
    EXPECT_EQ(line.getSent(), "0123344") << "5 has become 4";
    EXPECT_TRUE(line.getTerminal().waitUntilReadable(7));
}

} // namespace
