#include <gtest/gtest.h>

#include <thread>

#include "reference_host/XmlDocument.hpp"
#include "simulation/SimulatedBoard.hpp"

using reference_host::XmlDocument;
using simulation::SimulatedBoard;

namespace {

char const* const document = R"(
    <board>
        <switches>
            <switch id="0" switchModel="88e6096" atuAgeTime="300"/>
            <switch id="9" switchModel="88e6096"/>
            <switch id="2" switchModel="88e6185"/>
            <switch id="9" switchModel="88e6096"/>
            <switch id="32" switchModel="88e6096"/>
            <switch switchModel="88e6096"/>
            <switch id="5"/>
            <switch id="31" switchModel="88e6096"/>
        </switches>
    </board>)";

std::unique_ptr<SimulatedBoard> makeBoard(SimulatedBoard::Options const& options = {},
                                          std::string const& text = document) {
    auto const xml = XmlDocument::fromText(text, "board");
    return std::make_unique<SimulatedBoard>(*xml, options);
}

unsigned mdioRead(SimulatedBoard& board, unsigned address, unsigned reg) {
    unsigned value = 0;
    EXPECT_TRUE(board.getMac().write(0x10, 0x8000 | address << 5 | reg));
    EXPECT_TRUE(board.getMac().read(0x14, value));
    return value;
}

void mdioWrite(SimulatedBoard& board, unsigned address, unsigned reg, unsigned value) {
    EXPECT_TRUE(board.getMac().write(0x14, value));
    EXPECT_TRUE(board.getMac().write(0x10, 0x4000 | address << 5 | reg));
}

TEST(SimulatedBoardTest, HasTheChipsOfTheDocument) {
    auto const board = makeBoard();
    EXPECT_EQ(board->getSwitchIds(), (std::vector<unsigned>{0, 9, 31}));
    EXPECT_EQ(mdioRead(*board, 0, 0), 0U);
    EXPECT_EQ(mdioRead(*board, 9, 0), 0U);
    EXPECT_EQ(mdioRead(*board, 31, 0), 0U);
    EXPECT_EQ(mdioRead(*board, 2, 0), 0xFFFFU);
}

TEST(SimulatedBoardTest, SaysWhatItSkipped) {
    auto const board = makeBoard();
    EXPECT_EQ(board->getSkippedSwitches(),
              (std::vector<std::string>{"switch 2: no model of a \"88e6185\"", "switch 9: the id is taken",
                                        "switch 32: an MDIO bus has no address 32",
                                        "switch : an MDIO bus has no address 65535",
                                        "switch 5: no model of a \"\""}));
}

TEST(SimulatedBoardTest, AnIdThatDoesNotFitIsNoOther) {
    auto const board = makeBoard({}, "<switches><switch id='4294967296' switchModel='vsc7390'/>"
                                     "<switch id='-4294967295' switchModel='88e6096'/></switches>");
    EXPECT_EQ(board->getSwitchIds(), (std::vector<unsigned>{0, 65535}));
}

TEST(SimulatedBoardTest, LeavesOutWhatItIsToldTo) {
    SimulatedBoard::Options options;
    options.missingSwitches = {0, 31};
    auto const board = makeBoard(options);
    EXPECT_EQ(board->getSwitchIds(), (std::vector<unsigned>{9}));
    EXPECT_EQ(mdioRead(*board, 0, 0), 0xFFFFU);
    EXPECT_EQ(board->getSkippedSwitches().front(), "switch 0: left out");
}

TEST(SimulatedBoardTest, ADocumentWithoutSwitchesIsABoardWithoutChips) {
    auto const board = makeBoard({}, "<board/>");
    EXPECT_TRUE(board->getSwitchIds().empty());
    EXPECT_NE(board->window(0x80010000, 0x30), nullptr);
}

TEST(SimulatedBoardTest, TheMacIsTheOnlyWindow) {
    auto const board = makeBoard();
    simulation::SimulatedWindow* const window = board->window(0x80010000, 0x30);
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(board->window(0x80010000, 0x10), window);
    EXPECT_EQ(board->window(0x80010000, 0x31), nullptr);
    EXPECT_EQ(board->window(0x80020000, 0x30), nullptr);
    EXPECT_EQ(board->window(0, 0), nullptr);
}

TEST(SimulatedBoardTest, TestSidesById) {
    auto const board = makeBoard();
    board->getMarvell(9).poke("port 0", 0x07, 5);
    EXPECT_EQ(board->getChip(9).peek("port 0", 0x07), 5U);
    EXPECT_EQ(board->getChip(0).peek("port 0", 0x07), 1U);
    EXPECT_THROW(board->getChip(2), std::out_of_range);
    EXPECT_THROW(board->getMarvell(2), std::out_of_range);
}

TEST(SimulatedBoardTest, AllChipsShareOneSequenceOfAccesses) {
    auto const board = makeBoard();
    mdioWrite(*board, 9, 0, 0x9A03);
    mdioWrite(*board, 0, 0, 0x9A03);
    mdioWrite(*board, 9, 0, 0x9A04);
    auto const entries = board->getLog().getEntries();
    ASSERT_EQ(entries.size(), 3U);
    EXPECT_EQ(entries[0].chip, "switch 9");
    EXPECT_EQ(entries[1].chip, "switch 0");
    EXPECT_EQ(entries[2].chip, "switch 9");
    EXPECT_EQ(entries[1].transfer, 1U);
    EXPECT_EQ(entries[2].transfer, 2U);
    EXPECT_EQ(entries[2].sequence, 3U);
}

TEST(SimulatedBoardTest, OptionsReachEveryChip) {
    SimulatedBoard::Options options;
    options.marvell.revision = 3;
    auto const board = makeBoard(options);
    EXPECT_EQ(board->getChip(0).peek("port 10", 0x03), 0x0983U);
    EXPECT_EQ(board->getChip(31).peek("port 10", 0x03), 0x0983U);
}

TEST(SimulatedBoardTest, BusTimeLeavesSleepsOut) {
    auto const board = makeBoard();
    mdioRead(*board, 0, 0);
    board->getClock().advanceNanoseconds(1'000'000);
    mdioRead(*board, 7, 0);
    EXPECT_EQ(board->getBusNanoseconds(), 51'200U);
    EXPECT_EQ(board->getClock().getNanoseconds(), 1'051'200U);
    EXPECT_EQ(board->getBusAccesses(), 4U);
    EXPECT_EQ(board->getRegisterAccesses(), 0U);
}

TEST(SimulatedBoardTest, BoardsDoNotMeet) {
    auto const first = makeBoard();
    auto const second = makeBoard();
    EXPECT_NE(first->window(0x80010000, 0x30)->getBaseAddress(),
              second->window(0x80010000, 0x30)->getBaseAddress());
    first->getChip(0).poke("port 0", 0x07, 9);
    mdioRead(*first, 0, 0);
    EXPECT_EQ(second->getChip(0).peek("port 0", 0x07), 1U);
    EXPECT_EQ(second->getLog().getMdioFrames(), 0U);
}

TEST(SimulatedBoardTest, TestSidesMayBeUsedWhileTheBusIs) {
    auto const board = makeBoard();
    std::thread driver([&board] {
        for (int i = 0; i < 500; ++i) {
            mdioWrite(*board, 0, 1, 0x0123);
            mdioWrite(*board, 0, 0, 0x9607);
        }
    });
    for (unsigned i = 0; i < 500; ++i) {
        board->getMarvell(0).setCounter(1, 0, i);
        board->getMarvell(0).peek("port 0", 0x07);
        board->getLog().getSize();
        board->getBusNanoseconds();
    }
    driver.join();
    EXPECT_EQ(board->getChip(0).peek("port 0", 0x07), 0x0123U);
    EXPECT_EQ(board->getRegisterAccesses(), 500U);
}

} // namespace
