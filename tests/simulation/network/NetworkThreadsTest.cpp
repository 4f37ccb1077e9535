#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "reference_host/XmlDocument.hpp"
#include "simulation/RegisterFile.hpp"
#include "simulation/SimulatedBoard.hpp"
#include "tests/simulation/network/NetworkFixture.hpp"

using simulation::Decision;
using simulation::EthernetFrame;
using simulation::RegisterFile;

namespace {

constexpr unsigned frames = 300;

class NetworkThreadsTest : public simulation_test::NetworkFixture {};

// Two registers that are written as one step: a frame never meets one of them only.
TEST_F(NetworkThreadsTest, AFrameMeetsRegistersBetweenAccesses) {
    RegisterFile registers(_services, {"chip", "unit"});
    unsigned torn = 0;
    _zero._decide = [&](unsigned, EthernetFrame const& frame) {
        Decision decision;
        unsigned const port = registers.getStored(0);
        torn += registers.getStored(1) == port ? 0 : 1;
        decision.egress.push_back({port, Decision::Form::asReceived, frame});
        return decision;
    };
    _network.connect({0, 0}, {1, 0});
    attach({0, 1});
    attach({1, 1});
    std::atomic<bool> isOver = false;
    std::thread driver([&] {
        for (unsigned value = 0; !isOver; value = 1 - value) {
            std::lock_guard<std::recursive_mutex> const lock(_services.mutex);
            registers.write(0, value, 1);
            registers.write(1, value, 2);
            _services.clock.advanceNanoseconds(100);
        }
    });
    std::thread runner([&] {
        while (!isOver) {
            _network.run();
        }
    });
    for (unsigned i = 0; i < frames; ++i) {
        _network.inject({0, 2}, broadcast(i));
    }
    _network.run();
    isOver = true;
    driver.join();
    runner.join();
    EXPECT_EQ(torn, 0U);
    EXPECT_EQ(_arrivals.size(), frames);
    EXPECT_EQ(_network.getTotals().copies, frames + 3 * _network.getTotals().crossed);
    expectNothingLost();
}

TEST_F(NetworkThreadsTest, CablesComeAndGoBesideFrames) {
    attach({1, 1});
    std::atomic<bool> isOver = false;
    std::thread technician([&] {
        while (!isOver) {
            _network.connect({0, 1}, {1, 0});
            _network.getTotals();
            _network.unplug({1, 0});
            _network.getFindings();
        }
    });
    for (unsigned i = 0; i < frames; ++i) {
        _network.inject({0, 0}, broadcast(i));
        _network.run();
    }
    isOver = true;
    technician.join();
    EXPECT_EQ(_network.getTotals().injected, frames);
    EXPECT_EQ(_network.getTotals().delivered, _arrivals.size());
    expectNothingLost();
}

// The board's own chips, with a driver at the registers of one.
TEST(BoardThreadsTest, FramesRunBesideAccessesOfTheBus) {
    auto const document = reference_host::XmlDocument::fromText(
        "<board><switches><switch id=\"4\" switchModel=\"88e6096\"/><switch id=\"6\" "
        "switchModel=\"88e6096\"/>"
        "</switches></board>",
        "board");
    simulation::SimulatedBoard board(*document);
    simulation::SimulatedNetwork network(board);
    network.connect({4, 10}, {6, 10});
    network.connect({4, 9}, {6, 9}); // a loop, should the chips flood
    std::atomic<bool> isOver = false;
    std::thread driver([&] {
        for (unsigned value = 0; !isOver; ++value) {
            board.getMac().write(0x14, 0x003C | value % 4);     // PortState
            board.getMac().write(0x10, 0x4000 | 4 << 5 | 1);    // into the chip's data register
            board.getMac().write(0x14, 0x9400 | 0x1A << 5 | 4); // port 10, register 4
            board.getMac().write(0x10, 0x4000 | 4 << 5);
        }
    });
    for (unsigned i = 0; i < frames / 10; ++i) {
        network.inject({4, 8}, EthernetFrame::make(0xFFFFFFFFFFFF, 0x020000000001, 0x0800));
        network.run();
    }
    isOver = true;
    driver.join();
    auto const totals = network.getTotals();
    EXPECT_EQ(totals.injected, frames / 10);
    EXPECT_EQ(totals.copies,
              totals.crossed + totals.delivered + totals.unconnected + totals.cut + totals.stopped);
}

} // namespace
