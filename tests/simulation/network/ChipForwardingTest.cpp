#include <gtest/gtest.h>

#include <future>
#include <stdexcept>

#include "simulation/RegisterFile.hpp"
#include "simulation/network/ChipForwarding.hpp"

using simulation::ChipForwarding;
using simulation::Decision;
using simulation::EthernetFrame;
using simulation::Services;

namespace {

EthernetFrame const frame = EthernetFrame::make(0x020000000002, 0x020000000001, 0x0800);

// Two ports, and a note of whether another thread could have had the board's mutex meanwhile.
class Repeater final : public ChipForwarding {
public:
    explicit Repeater(Services& services) : ChipForwarding(services), _services(services) {}

    unsigned getNumberOfPorts() const override { return 2; }

    unsigned _received = 0;
    mutable bool _wasUnlocked = false;

private:
    void doReceive(unsigned port, EthernetFrame const& got, Decision& decision) override {
        ++_received;
        doDecide(port, got, everyPort, decision);
    }
    void doDecide(unsigned port, EthernetFrame const& got, std::uint32_t /*among*/,
                  Decision& decision) const override {
        noteLock();
        decision.egress.push_back({1 - port, Decision::Form::asReceived, got});
    }
    bool doHasLink(unsigned port) const override {
        noteLock();
        return port == 1;
    }
    unsigned doGetMegabits(unsigned port) const override {
        noteLock();
        return port == 1 ? 100 : 0;
    }

    void noteLock() const {
        std::async(std::launch::async, [this] {
            if (_services.mutex.try_lock()) {
                _services.mutex.unlock();
                _wasUnlocked = true;
            }
        }).get();
    }

    Services& _services;
};

TEST(ChipForwardingTest, HoldsTheBoardsMutexMeanwhile) {
    Services services;
    Repeater repeater(services);
    EXPECT_EQ(repeater.decide(0, frame).getPorts(), 2U);
    EXPECT_EQ(repeater._received, 0U);
    EXPECT_EQ(repeater.receive(1, frame).getPorts(), 1U);
    EXPECT_EQ(repeater._received, 1U);
    EXPECT_TRUE(repeater.hasLink(1));
    EXPECT_EQ(repeater.getMegabits(1), 100U);
    EXPECT_FALSE(repeater._wasUnlocked);
    EXPECT_TRUE(std::async(std::launch::async, [&] {
                    bool const free = services.mutex.try_lock();
                    if (free) {
                        services.mutex.unlock();
                    }
                    return free;
                }).get());
}

TEST(ChipForwardingTest, RefusesPortsThatAreNotThere) {
    Services services;
    Repeater repeater(services);
    EXPECT_THROW(repeater.receive(2, frame), std::out_of_range);
    EXPECT_THROW(repeater.decide(2, frame), std::out_of_range);
    EXPECT_THROW(repeater.hasLink(2), std::out_of_range);
    EXPECT_THROW(repeater.getMegabits(2), std::out_of_range);
    EXPECT_EQ(repeater._received, 0U);
}

} // namespace
