// Frames that a simulated board has carried are in what `switchctl statistics` prints.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <nlohmann/json.hpp>
#include <sstream>

#include "StatisticsBench.hpp"
#include "simulation/network/SimulatedNetwork.hpp"
#include "switchctl/statistics/LibraryText.hpp"
#include "switchctl/statistics/SampleJson.hpp"

using simulation::EthernetFrame;
using testing::HasSubstr;

namespace {

using Counts = std::map<std::string, std::uint64_t>;

class CountedFramesTest : public testing::Test {
protected:
    static constexpr EthernetFrame::Address everybody = 0xFFFFFFFFFFFF;
    static constexpr EthernetFrame::Address nobody = 0x0200000000FF;

    CountedFramesTest() {
        for (auto const& port : _bench.getSelection().getPorts()) {
            _network.attach({port.address.switchId, port.address.portId}, [](EthernetFrame const&) {});
        }
    }

    /// \param octets on the wire.
    static EthernetFrame frame(EthernetFrame::Address to, std::size_t octets) {
        return EthernetFrame::make(to, 0x020000000001, 0x0800, EthernetFrame::Bytes(octets - 18));
    }

    static EthernetFrame damaged() {
        return EthernetFrame(frame(everybody, 64).getBytes(), EthernetFrame::Fcs::bad);
    }

    void send(simulation::SimulatedNetwork::End const& from, EthernetFrame const& frame, unsigned times = 1) {
        for (unsigned i = 0; i < times; ++i) {
            _network.inject(from, frame);
        }
        _network.run();
    }

    /// Without those that are 0.
    std::map<unsigned, Counts> readSwitch(unsigned switchId) {
        auto const json = switchctl::statistics::SampleJson::of(_bench.sample(), "", "");
        std::map<unsigned, Counts> ports;
        for (auto const& port : json["ports"]) {
            for (auto const& [name, counter] : port["counters"].items()) {
                if (port["switch"] == switchId && counter["value"] != 0) {
                    ports[port["port"]][name] = counter["value"];
                }
            }
        }
        return ports;
    }

    std::string textOf(unsigned switchId, unsigned port) {
        std::ostringstream out;
        switchctl::statistics::LibraryText(_bench.getChips())
            .write(*_bench.getSelection().find({switchId, port}), out);
        return out.str();
    }

    StatisticsBench _bench{"trap-mixed", {"0.1", "0.2", "0.10", "3.1", "3.2"}};
    simulation::SimulatedNetwork _network{_bench.getBoard()};
};

TEST_F(CountedFramesTest, An88E6096Counts) {
    send({0, 1}, frame(everybody, 64), 3);
    send({0, 1}, frame(nobody, 200), 2);
    send({0, 1}, damaged());
    send({0, 1}, frame(nobody, 64).withTag({99, 0, false}));
    auto const ports = readSwitch(0);
    EXPECT_EQ(ports.at(1), (Counts{{"inGoodOctets", 3 * 64 + 2 * 200 + 68},
                                   {"inBadOctets", 64},
                                   {"inUnicast", 3},
                                   {"inBroadcast", 3},
                                   {"inFCSErr", 1},
                                   {"inFiltered", 1},
                                   {"octets64", 3},
                                   {"octets65to127", 1},
                                   {"octets128to255", 2}}));
    EXPECT_EQ(ports.at(2), (Counts{{"outOctets", 3 * 64 + 2 * 200},
                                   {"outUnicast", 2},
                                   {"outBroadcast", 3},
                                   {"octets64", 3},
                                   {"octets128to255", 2}}));
    EXPECT_EQ(ports.at(10), (Counts{{"outOctets", 3 * 68 + 2 * 204},
                                    {"outUnicast", 2},
                                    {"outBroadcast", 3},
                                    {"octets65to127", 3},
                                    {"octets128to255", 2}}));
    EXPECT_THAT(textOf(0, 1), HasSubstr("inUnicast\t\t00000003\tinBroadcast\t00000003\t"));
    EXPECT_THAT(textOf(0, 2), HasSubstr("outOctets\t0000000000000250\n"));
}

TEST_F(CountedFramesTest, AVsc7390Counts) {
    send({3, 1}, frame(everybody, 64), 4);
    send({3, 1}, frame(nobody, 100));
    send({3, 1}, damaged());
    auto const ports = readSwitch(3);
    EXPECT_EQ(ports.at(1), (Counts{{"inGoodandBadOctets", 5 * 64 + 100},
                                   {"inGoodandBadPackets", 6},
                                   {"inMulticastBroadCast", 4},
                                   {"inErrorPackets", 1}}));
    EXPECT_EQ(ports.at(2), (Counts{{"outGoodandBadOctets", 4 * 64 + 100},
                                   {"outGoodandBadPackets", 5},
                                   {"outMulticastBroadCast", 4}}));
    EXPECT_THAT(textOf(3, 1), HasSubstr("inGoodandBadOctets\t0001a4\tinGoodandBadPackets\t000006\n"));
    // The library clears what it has read.
    EXPECT_EQ(readSwitch(3).count(1), 0U);
}

} // namespace
