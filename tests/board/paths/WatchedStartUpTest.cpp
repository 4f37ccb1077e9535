// What is open while boards that were made up for it start.

#include "board/paths/WatchedStartUp.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tests/board/paths/StartingDocuments.hpp"
#include "tests/support/TemporaryFile.hpp"

using board::OpenPaths;
using board::PathLine;
using board::PortSet;
using board::WatchedStartUp;
using board_test::allPorts;
using board_test::boardOf;
using board_test::pairVlan;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

namespace {

constexpr PortSet portsBelow(unsigned number) {
    return (PortSet{1} << number) - 1;
}

class WatchedStartUpTest : public testing::Test {
protected:
    void start(std::string const& document, std::string const& old = "") {
        test_support::TemporaryFile const file(document);
        test_support::TemporaryFile const oldFile(old);
        _startUp = std::make_unique<WatchedStartUp>(file.path(), old.empty() ? "" : oldFile.path());
    }

    WatchedStartUp const& startUp() const { return *_startUp; }

    std::vector<OpenPaths::Interval> intervals() const { return _startUp->getPaths().getIntervals(); }

    std::vector<PathLine> left() const { return _startUp->getPaths().getLeft(); }
    OpenPaths::Silence silence() const { return _startUp->getPaths().getSilence(); }

    /// "port 3 PortControl2"
    std::string writeOf(OpenPaths::Write write) const {
        auto const& entry = _startUp->getWrites().at(write - 1);
        return entry.unit + " " + entry.registerName;
    }

private:
    std::unique_ptr<WatchedStartUp> _startUp;
};

} // namespace

TEST_F(WatchedStartUpTest, PortsOfAn88E6096AreOpenFromTheResetUntilTheirModes) {
    start(board_test::marvellBoard());
    ASSERT_THAT(intervals(), SizeIs(11));
    for (unsigned port = 0; port < 11; ++port) {
        OpenPaths::Interval const interval = intervals()[port];
        EXPECT_EQ(interval.switchId, 0U);
        EXPECT_EQ(interval.opened, 0U);
        EXPECT_EQ(interval.closed, 127U + port);
        EXPECT_EQ(writeOf(interval.closed), "port " + std::to_string(port) + " PortControl2");
        ASSERT_THAT(interval.lines, SizeIs(1));
        PathLine const& line = interval.lines.front();
        EXPECT_EQ(line.from, PortSet{1} << port);
        // Members of its own VLAN may get everything.
        PortSet const own = port < 2 ? 0x3 : port < 4 ? 0xC : PortSet{1} << port;
        EXPECT_EQ(PathLine::portsOf(line.reach), portsBelow(11) & ~own);
        EXPECT_THAT(line.frames, SizeIs(6)); // none, 0, 1, 5, 6, 4094
        EXPECT_THAT(line.destinations, SizeIs(2));
    }
    EXPECT_THAT(left(), IsEmpty());
}

TEST_F(WatchedStartUpTest, AnotherBringUpOfAn88E6096InterruptsAndOpensNothing) {
    start(board_test::marvellBoard(), board_test::marvellBoard());
    EXPECT_THAT(intervals(), IsEmpty());
    EXPECT_THAT(left(), IsEmpty());
    EXPECT_GT(silence().writes, 0U);
    EXPECT_EQ(writeOf(silence().first), "global 1 VTUOperation");
    EXPECT_LT(silence().last, startUp().getWrites().size());
}

TEST_F(WatchedStartUpTest, AfterAResetNothingIsInterrupted) {
    start(board_test::marvellBoard());
    EXPECT_EQ(silence().writes, 0U);
}

// Once the VLANs are cleared, each port is in all of them until its source mask is.
TEST_F(WatchedStartUpTest, AnotherBringUpOfAVsc7390OpensPortsUntilTheirSourceMasks) {
    start(board_test::vitesseBoard(), board_test::vitesseBoard());
    ASSERT_THAT(intervals(), SizeIs(5));
    for (unsigned port = 0; port < 5; ++port) {
        OpenPaths::Interval const interval = intervals()[port];
        EXPECT_EQ(writeOf(interval.opened), "analyser VLANACCESS");
        EXPECT_EQ(interval.opened, 5U);
        EXPECT_EQ(writeOf(interval.closed), "analyser SRCMASKS_" + std::to_string(port));
        EXPECT_EQ(interval.closed, 6U + port);
        EXPECT_EQ(startUp().getWrites()[interval.closed - 1].nanoseconds -
                      startUp().getWrites()[interval.opened - 1].nanoseconds,
                  100U * (port + 1));
        ASSERT_THAT(interval.lines, SizeIs(1));
        EXPECT_EQ(interval.lines.front().from, PortSet{1} << port);
    }
}

TEST_F(WatchedStartUpTest, WhatTheOldDocumentAllowsIsWantedUntilTheEnd) {
    std::string const ports = allPorts("0", "88e6096", 11);
    start(boardOf(ports, pairVlan("5", "0", 0, 1)), boardOf(ports, pairVlan("5", "0", 0, 2)));
    EXPECT_THAT(intervals(), IsEmpty());
    EXPECT_THAT(left(), IsEmpty());
    EXPECT_EQ(silence().writes, 0U);
}

// Start-up writes nothing to port 10: it stays as it was.
TEST_F(WatchedStartUpTest, APortThatIsNotListedIsLeftOpenAfterAReset) {
    start(boardOf(allPorts("0", "88e6096", 10), pairVlan("5", "0", 0, 1)));
    ASSERT_THAT(left(), Not(IsEmpty()));
    EXPECT_EQ(left().front().from, PortSet{1} << 10);
    EXPECT_EQ(left().front().key.reason, board::Intent::Reason::senderNotListed);
}

TEST_F(WatchedStartUpTest, ASwitchThatTheOldDocumentDoesNotHaveComesFromAReset) {
    std::string const first = allPorts("0", "88e6096", 11);
    std::string const second = allPorts("1", "88e6096", 11);
    start(boardOf(first + second, pairVlan("5", "0", 0, 1)), boardOf(first, pairVlan("5", "0", 0, 1)));
    ASSERT_THAT(intervals(), SizeIs(11));
    for (OpenPaths::Interval const& interval : intervals()) {
        EXPECT_EQ(interval.switchId, 1U);
        EXPECT_EQ(interval.opened, 0U);
    }
    // One of the same number that is another chip is another switch.
    start(boardOf(first, pairVlan("5", "0", 0, 1)), boardOf(allPorts("0", "vsc7390", 24), ""));
    EXPECT_THAT(intervals(), SizeIs(11));
}
