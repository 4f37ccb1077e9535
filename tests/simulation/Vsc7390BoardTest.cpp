#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "host/MappedSection.hpp"
#include "host/SystemLogInterface.hpp"
#include "reference_host/XmlDocument.hpp"
#include "simulation/SimulatedBoard.hpp"

using reference_host::XmlDocument;
using simulation::SimulatedBoard;

namespace {

constexpr unsigned windowAddress = 0xF3000000;
constexpr unsigned windowSize = 0x01000000;

class QuietLog : public SystemLogInterface {
public:
    void logCritical(char const*, ...) override {}
    void logError(char const*, ...) override {}
    void logWarning(char const*, ...) override {}
    void logInfo(char const*, ...) override {}
    void logDebug(char const*, ...) override {}
    void log(unsigned, char const*, ...) override {}
};

/// A section that is mapped by hand to a window of the board.
class ChipSection : public MappedSection {
public:
    ChipSection(SystemLogInterface& log, SimulatedBoard& board) : MappedSection("vsc7390", log, false) {
        _baseAddress = board.window(windowAddress, windowSize)->getBaseAddress();
        _startOffset = 0;
    }
    ~ChipSection() override { _baseAddress = notMapped; }
};

std::unique_ptr<SimulatedBoard> makeBoard(std::string const& switches,
                                          SimulatedBoard::Options const& options = {}) {
    auto const xml = XmlDocument::fromText("<board><switches>" + switches + "</switches></board>", "board");
    return std::make_unique<SimulatedBoard>(*xml, options);
}

std::string element(std::string const& id, std::string const& model) {
    return "<switch id=\"" + id + "\" switchModel=\"" + model + "\"/>";
}

std::string const mixed =
    element("1", "88e6096") + element("2", "88e6096") + element("3", "88e6096") + element("200", "vsc7390");

TEST(Vsc7390BoardTest, BothFamiliesOnOneBoard) {
    auto const board = makeBoard(mixed);
    EXPECT_EQ(board->getSwitchIds(), (std::vector<unsigned>{1, 2, 3, 200}));
    EXPECT_TRUE(board->getSkippedSwitches().empty());
    EXPECT_EQ(board->getVitesse(200).peek("system", 0x18), 0x07390000U);
    EXPECT_EQ(&board->getChip(200), &board->getVitesse(200));
    EXPECT_THROW(board->getVitesse(1), std::out_of_range);
    EXPECT_THROW(board->getVitesse(4), std::out_of_range);
    EXPECT_THROW(board->getMarvell(200), std::out_of_range);
}

TEST(Vsc7390BoardTest, TheWindowIsSixteenMegabytes) {
    auto const board = makeBoard(mixed);
    EXPECT_NE(board->window(windowAddress, windowSize), nullptr);
    EXPECT_EQ(board->window(windowAddress, windowSize + 1), nullptr);
    EXPECT_NE(board->window(0x80010000, 0x30), nullptr);
    EXPECT_EQ(makeBoard(element("1", "88e6096"))->window(windowAddress, 1), nullptr);
}

TEST(Vsc7390BoardTest, TheFirstOfTheDocumentHasTheBus) {
    auto const board = makeBoard(element("9", "vsc7390") + element("2", "vsc7390"));
    EXPECT_EQ(board->getSwitchIds(), (std::vector<unsigned>{9}));
    EXPECT_EQ(board->getSkippedSwitches(),
              (std::vector<std::string>{"switch 2: the board already has a window at its address"}));
}

TEST(Vsc7390BoardTest, OneThatIsLeftOutLeavesTheBusToTheNext) {
    SimulatedBoard::Options options;
    options.missingSwitches = {9};
    auto const board = makeBoard(element("9", "vsc7390") + element("2", "vsc7390"), options);
    EXPECT_EQ(board->getSwitchIds(), (std::vector<unsigned>{2}));
    EXPECT_EQ(board->getSkippedSwitches(), (std::vector<std::string>{"switch 9: left out"}));
}

TEST(Vsc7390BoardTest, ALonelyOneThatIsLeftOutLeavesNoWindow) {
    SimulatedBoard::Options options;
    options.missingSwitches = {200};
    EXPECT_EQ(makeBoard(mixed, options)->window(windowAddress, windowSize), nullptr);
}

TEST(Vsc7390BoardTest, ASectionReachesTheChip) {
    auto const board = makeBoard(mixed);
    QuietLog log;
    ChipSection section(log, *board);
    unsigned value = 0;
    EXPECT_TRUE(section.get(0x1C060, value));
    EXPECT_EQ(value, 0x07390000U);
    EXPECT_TRUE(section.set(0x1C008, 12));
    EXPECT_EQ(board->getVitesse(200).peek("system", 0x02), 12U);
    board->getVitesse(200).failBusAccess(1);
    EXPECT_FALSE(section.get(0x1C060, value));
    EXPECT_EQ(board->getBusAccesses(), 3U);
}

TEST(Vsc7390BoardTest, BusTimeIsThatOfBothBuses) {
    auto const board = makeBoard(mixed);
    QuietLog log;
    ChipSection section(log, *board);
    EXPECT_TRUE(section.set(0x1C008, 12));
    EXPECT_TRUE(board->getMac().write(0x10, 0x8000 | 1U << 5));
    EXPECT_EQ(board->getBusNanoseconds(), 25'700U);
    EXPECT_EQ(board->getBusAccesses(), 2U);
    EXPECT_EQ(board->getRegisterAccesses(), 1U);
}

TEST(Vsc7390BoardTest, TestSidesMayBeUsedWhileTheBusIs) {
    auto const board = makeBoard(mixed);
    std::thread driver([&board] {
        QuietLog log;
        ChipSection section(log, *board);
        unsigned value = 0;
        for (unsigned i = 0; i < 500; ++i) {
            EXPECT_TRUE(section.set(0x4DE8, i & 0xFFF));
            EXPECT_TRUE(section.get(0x4C40, value));
            EXPECT_TRUE(section.get(0x1C0C0, value));
        }
    });
    for (unsigned i = 0; i < 500; ++i) {
        board->getVitesse(200).setCounter(1, 0x50, i);
        board->getVitesse(200).peek("port 3", 0x7A);
        board->getVitesse(200).learn(i, 1, 3);
        board->getBusNanoseconds();
    }
    driver.join();
    EXPECT_EQ(board->getVitesse(200).peek("port 3", 0x7A), 499U);
    EXPECT_EQ(board->getRegisterAccesses(), 1000U);
}

} // namespace
