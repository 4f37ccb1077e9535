// Rates, in simulated time, of models whose counters the test moves.

#include "switchctl/statistics/RateWatch.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <nlohmann/json.hpp>
#include <sstream>

#include "StatisticsBench.hpp"
#include "simulation/88e6096/Marvell88E6096TestSide.hpp"
#include "simulation/PseudoTerminal.hpp"
#include "simulation/vsc7390/Vsc7390TestSide.hpp"
#include "switchctl/statistics/RateDisplay.hpp"
#include "switchctl/statistics/RateLines.hpp"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

using switchctl::statistics::RateDisplay;
using switchctl::statistics::RateLines;
using switchctl::statistics::RateWatch;
using switchctl::statistics::WatchPace;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

/// Waits take no time; what happens meanwhile is the test's.
class TestPace : public WatchPace {
public:
    /// \param meanwhile gets the number of the wait, from 1; false ends the watch.
    explicit TestPace(std::function<bool(unsigned)> meanwhile) : _meanwhile(std::move(meanwhile)) {}

    double getSeconds() override { return _seconds; }

    bool wait(double seconds) override {
        _seconds += seconds;
        return _meanwhile(++_waits);
    }

    unsigned getWaits() const { return _waits; }

private:
    std::function<bool(unsigned)> _meanwhile;
    double _seconds = 1000;
    unsigned _waits = 0;
};

std::string watch(StatisticsBench& bench, TestPace& pace, double seconds, unsigned rounds) {
    std::ostringstream out;
    RateDisplay display(out);
    RateWatch([&] { return bench.sample(); }, display, pace).run(seconds, rounds);
    return out.str();
}

/// A terminal of a test: 6 rows of 40 columns.
class TestTerminal {
public:
    TestTerminal() : _device(open(_terminal.getDevicePath().c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC)) {
        winsize const size{6, 40, 0, 0};
        ioctl(_device, TIOCSWINSZ, &size);
        setenv("TERM", "xterm", 1);
    }
    ~TestTerminal() { close(_device); }
    TestTerminal(TestTerminal const&) = delete;
    TestTerminal& operator=(TestTerminal const&) = delete;

    int getDescriptor() const { return _device; }

private:
    simulation::PseudoTerminal _terminal;
    int _device;
};

} // namespace

TEST(RateWatchTest, ShowsWhatWasCountedPerSecond) {
    StatisticsBench bench("trap-minimal", {"0.8", "0.9"});
    auto& chip = bench.getBoard().getMarvell(0);
    chip.setCounter(8, 4, 1000);
    TestPace pace([&](unsigned) {
        chip.setCounter(8, 4, 1300);
        chip.setCounter(8, 0, 6400);
        return true;
    });
    EXPECT_EQ(watch(bench, pace, 2, 1), "round 1, rates over 2.0 s\n"
                                        "port 0.8 (88e6096)\n"
                                        "  inGoodOctets                   3200.0 bytes/s   6400\n"
                                        "  inUnicast                       150.0 frames/s  1300\n"
                                        "nothing counted: 0.9\n");
}

TEST(RateWatchTest, GoesOnAcrossAWrap) {
    StatisticsBench bench("trap-mixed", {"3.1"});
    auto& chip = bench.getBoard().getVitesse(3);
    chip.setCounter(1, 0x50, 0xFFFFFFFF);
    TestPace pace([&](unsigned) {
        chip.setCounter(1, 0x50, 9);
        return true;
    });
    EXPECT_THAT(watch(bench, pace, 1, 1), HasSubstr("  inGoodandBadOctets               10.0 bytes/s   9\n"));
}

TEST(RateWatchTest, SaysThatACounterWasCleared) {
    StatisticsBench bench("trap-mixed", {"3.1"});
    auto& chip = bench.getBoard().getVitesse(3);
    chip.setCounter(1, 0x52, 5000);
    TestPace pace([&](unsigned) {
        chip.setCounter(1, 0x52, 0);
        return true;
    });
    EXPECT_THAT(watch(bench, pace, 1, 1), HasSubstr("  inGoodandBadPackets           cleared           0\n"));
}

TEST(RateWatchTest, ACounterWithoutAValueHasNoRateAndIsNamed) {
    StatisticsBench bench("trap-mixed", {"3.1"});
    auto& chip = bench.getBoard().getVitesse(3);
    chip.setCounter(1, 0x50, 7);
    TestPace pace([&](unsigned wait) {
        if (wait == 1) {
            bench.loseVitesseRead();
        }
        return true;
    });
    std::string const text = watch(bench, pace, 1, 2);
    EXPECT_THAT(text, StartsWith("round 1, rates over 1.0 s\n"
                                 "port 3.1 (vsc7390)\n"
                                 "  without a value: inGoodandBadOctets\n"
                                 "not readable: port 3.1: inGoodandBadOctets: "));
    // Back again, it is no jump from 0.
    EXPECT_THAT(text, HasSubstr("\n\nround 2, rates over 1.0 s\nnothing counted: 3.1\n"));
}

TEST(RateWatchTest, ShowsProgramsAnObjectALine) {
    StatisticsBench bench("trap-minimal", {"0.8"});
    auto& chip = bench.getBoard().getMarvell(0);
    chip.setCounter(8, 4, 1000);
    TestPace pace([&](unsigned wait) {
        chip.setCounter(8, 4, wait == 1 ? 1300 : 7);
        return true;
    });
    std::ostringstream out;
    std::vector<nlohmann::ordered_json> lines;
    RateLines view(
        out, [&](std::ostream&, nlohmann::ordered_json const& json) { lines.push_back(json); }, "a.xml",
        "models");
    RateWatch([&] { return bench.sample(); }, view, pace).run(2, 2);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0]["seconds"], 2.0);
    EXPECT_EQ(lines[0]["file"], "a.xml");
    auto const& counters = lines[0]["ports"][0]["counters"];
    EXPECT_EQ(counters["inUnicast"],
              (nlohmann::ordered_json{{"value", 1300}, {"unit", "frames"}, {"perSecond", 150.0}}));
    EXPECT_EQ(counters["inGoodOctets"]["perSecond"], 0.0);
    EXPECT_EQ(lines[1]["ports"][0]["counters"]["inUnicast"],
              (nlohmann::ordered_json{{"value", 7}, {"unit", "frames"}, {"cleared", true}}));
}

TEST(RateWatchTest, EndsAfterSoManyRounds) {
    StatisticsBench bench("trap-minimal", {"0.8"});
    TestPace pace([](unsigned) { return true; });
    std::string const text = watch(bench, pace, 1, 3);
    EXPECT_EQ(pace.getWaits(), 3U);
    EXPECT_THAT(text, HasSubstr("round 3,"));
    EXPECT_THAT(text, Not(HasSubstr("round 4,")));
}

TEST(RateWatchTest, EndsWhenItIsToldTo) {
    StatisticsBench bench("trap-minimal", {"0.8"});
    TestPace pace([](unsigned wait) { return wait < 3; });
    std::string const text = watch(bench, pace, 1, 0);
    EXPECT_THAT(text, HasSubstr("round 2,"));
    EXPECT_THAT(text, Not(HasSubstr("round 3,")));
}

TEST(RateWatchTest, WithoutATerminalThereAreNoControlCharacters) {
    StatisticsBench bench("trap-minimal", {"0.8"});
    TestPace pace([](unsigned) { return true; });
    EXPECT_THAT(watch(bench, pace, 1, 2), Not(HasSubstr("\033")));
}

TEST(RateWatchTest, OnATerminalItDrawsInPlaceWithinItsSize) {
    StatisticsBench bench("trap-minimal", {});
    auto& chip = bench.getBoard().getMarvell(0);
    for (unsigned counter = 3; counter < 14; ++counter) {
        chip.setCounter(8, counter, 1);
    }
    TestPace pace([&](unsigned wait) {
        for (unsigned counter = 3; counter < 14; ++counter) {
            chip.setCounter(8, counter, 1 + wait);
        }
        return true;
    });
    TestTerminal const terminal;
    std::ostringstream out;
    RateDisplay display(out, terminal.getDescriptor());
    RateWatch([&] { return bench.sample(); }, display, pace).run(1, 2);
    std::string const text = out.str();
    EXPECT_THAT(text, StartsWith("\033[2J\033[H"));
    // Cleared once, drawn three times: what is to come, and two rounds.
    EXPECT_EQ(text.find("\033[2J", 1), std::string::npos);
    std::string rest = text;
    unsigned drawings = 0;
    for (std::size_t home = rest.find("\033[H"); home != std::string::npos; home = rest.find("\033[H")) {
        rest = rest.substr(home + 3);
        std::string const drawing = rest.substr(0, rest.find("\033[H"));
        EXPECT_LE(std::count(drawing.begin(), drawing.end(), '\n'), 5) << drawing;
        ++drawings;
    }
    EXPECT_EQ(drawings, 3U);
    EXPECT_THAT(text, HasSubstr(" more lines"));
}
