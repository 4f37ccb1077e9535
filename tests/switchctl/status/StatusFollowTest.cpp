// What is told of ports that change, in the time of the test.

#include "switchctl/status/StatusFollow.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "StatusBench.hpp"

using switchctl::status::StatusFollow;
using switchctl::status::StatusSample;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// A line for each port that has changed, and how many ports were told of first.
struct Told {
    std::vector<std::string> lines;
    unsigned first = 0;
    StatusSample last;
};

Told follow(StatusBench& bench, std::vector<std::function<void()>> const& steps) {
    Told told;
    ScriptedPace pace(steps);
    StatusFollow follow([&] { return bench.sampler.sample(); }, bench.models.getDocument(), pace,
                        [] { return true; });
    told.last = follow.run(1, 0, [&](auto const& row, auto const& changes) {
        told.first += changes.empty() ? 1U : 0U;
        std::string line;
        for (auto const& change : changes) {
            line += " " + std::string(change.now.name) + " " + change.before.text + ">" + change.now.text +
                    (change.remark.empty() ? "" : " " + change.remark);
        }
        if (!line.empty()) {
            told.lines.push_back(row.port.address.getText() + line);
        }
    });
    return told;
}

} // namespace

TEST(StatusFollowTest, TellsOfLinksThatComeAndGo) {
    StatusBench bench("trap-mixed", {"0.1", "1.3"});
    auto& board = bench.getBoard();
    Told const told = follow(bench, {[&] { board.getMarvell(1).plugLink(3); }, [] {},
                                     [&] {
                                         board.getMarvell(1).unplugLink(3);
                                         board.getMarvell(0).plugLink(1, 10);
                                     }});
    EXPECT_EQ(told.first, 2U);
    EXPECT_THAT(told.lines, ElementsAre("1.3 link down>up megabits ->100 duplex ->full",
                                        "0.1 link down>up megabits ->10 duplex ->full",
                                        "1.3 link up>down megabits 100>- duplex full>-"));
    EXPECT_THAT(told.last.unread, IsEmpty());
}

TEST(StatusFollowTest, AVsc7390sPhyTellsOfALinkThatCameBack) {
    StatusBench bench("trap-mixed", {"3.1"});
    auto& chip = bench.getBoard().getVitesse(3);
    chip.plugLink(1);
    Told const told = follow(bench, {[&] {
                                         chip.unplugLink(1);
                                         chip.plugLink(1);
                                     },
                                     [] {}});
    EXPECT_THAT(told.lines, ElementsAre("3.1 link up>up lost meanwhile"));
}

TEST(StatusFollowTest, TellsOfStatesAndErrors) {
    StatusBench bench("trap-mixed", {"0.1"});
    auto& chip = bench.getBoard().getMarvell(0);
    chip.setCounter(1, 0x1D, 10);
    Told const told =
        follow(bench, {[&] { chip.poke("port 1", 0x04, 0x007D); }, [&] { chip.setCounter(1, 0x1D, 12); },
                       [&] { chip.setCounter(1, 0x1D, 15); }, [&] { chip.setCounter(1, 0x1D, 0); }});
    EXPECT_THAT(told.lines, ElementsAre("0.1 state forwarding>blocking", "0.1 errors 10>12 2 since the start",
                                        "0.1 errors 12>15 5 since the start", "0.1 errors 15>0 cleared"));
}

TEST(StatusFollowTest, AChipThatGoesIsUnreadAtTheEnd) {
    StatusBench bench("trap-mixed", {"0.1"});
    Told const told = follow(bench, {[&] { bench.getBoard().getMarvell(0).unplug(); }});
    ASSERT_EQ(told.lines.size(), 1U);
    EXPECT_THAT(told.lines[0], testing::StartsWith("0.1 link down>unread"));
    EXPECT_FALSE(told.last.unread.empty());
}

TEST(StatusFollowTest, EndsWhenNobodyHearsIt) {
    StatusBench bench("trap-mixed", {"0.1"});
    bool wasAwaited = false;
    ScriptedPace pace({[&] { wasAwaited = true; }});
    StatusFollow([&] { return bench.sampler.sample(); }, bench.models.getDocument(), pace,
                 [] { return false; })
        .run(1, 0, [](auto const&, auto const&) {});
    EXPECT_FALSE(wasAwaited);
}
