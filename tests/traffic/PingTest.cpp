// Two stations for voice ping each other across examples/trap-three-switches.xml, brought up by the library,
// and the chips' registers tell of it: read as switchctl reads them, over the MDIO bus.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "board/BoardAccess.hpp"
#include "board/ModelBringUp.hpp"
#include "chips/ChipCatalogue.hpp"
#include "chips/RegisterAssignment.hpp"
#include "simulation/network/SimulatedNetwork.hpp"
#include "switchctl/statistics/BoardSampler.hpp"
#include "tests/support/IpStation.hpp"

using chips::ChipCatalogue;
using chips::RegisterAssignment;
using simulation::EthernetFrame;
using simulation::SimulatedNetwork;
using test_support::IpStation;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using End = SimulatedNetwork::End;

class PingTest : public testing::Test {
protected:
    static constexpr End office{2, 7};
    static constexpr End officeLink{2, 9};
    static constexpr End processorLink{0, 10};
    static constexpr End processor{0, 5};
    static constexpr IpStation::IpAddress officeIp = 0x0A000407;
    static constexpr IpStation::IpAddress processorIp = 0x0A000405;
    static constexpr EthernetFrame::Address officeMac = 0x020000000007;
    static constexpr EthernetFrame::Address processorMac = 0x020000000005;

    /// Ports 10 to 0 in bits 14 to 4, over the entry's state.
    struct Entry {
        EthernetFrame::Address address;
        unsigned ports;

        bool operator==(Entry const& other) const {
            return std::tie(address, ports) == std::tie(other.address, other.ports);
        }
    };

    PingTest() {
        _network.connect({0, 8}, {1, 9});
        _network.connect({1, 10}, {2, 8});
        plugVoice();
        attach(office, _office);
        attach(processor, _processor);
    }

    void plugVoice() { _network.connect(officeLink, processorLink); }

    void attach(End const& end, IpStation& station) {
        _network.attach(end, [&station](EthernetFrame const& frame) { station.receive(frame); });
    }

    IpStation::Send senderAt(End const& end) {
        return [this, end](EthernetFrame const& frame) { _network.inject(end, frame); };
    }

    void ping(std::uint16_t sequence) {
        _office.ping(processorIp, sequence);
        _network.run();
    }

    /// The addresses of a VLAN that a switch has learnt, by GetNext as `switchctl register write ...
    /// --then-read` would do it.
    std::vector<Entry> addressesOf(unsigned switchId, unsigned fid) {
        ChipCatalogue const catalogue("88e6096");
        auto const transport = _access.connect(switchId, "88e6096");
        auto const write = [&](std::string const& text) {
            auto const assignment = RegisterAssignment::parse(catalogue, text, false);
            transport->write(assignment.getLocation(), assignment.apply(0));
        };
        auto const read = [&](char const* location) { return transport->read(catalogue.find(location)); };
        write("global1/ATUFID=" + std::to_string(fid));
        for (char const* const word : {"ATUMAC01", "ATUMAC23", "ATUMAC45"}) {
            write(std::string("global1/") + word + "=0xFFFF");
        }
        std::vector<Entry> entries;
        while (entries.size() < 8192) {
            write("global1/ATUOperation=0xC000");
            unsigned const data = read("global1/ATUData");
            if ((data & 0xF) == 0) {
                break;
            }
            EthernetFrame::Address address = read("global1/ATUMAC01");
            address = address << 16 | read("global1/ATUMAC23");
            address = address << 16 | read("global1/ATUMAC45");
            entries.push_back({address, data >> 4});
        }
        return entries;
    }

    /// As `switchctl statistics` has it.
    std::uint64_t counterOf(End const& end, std::string const& name) {
        switchctl::statistics::PortSelection const port(_models.getDocument(), _models.getPath(),
                                                        {end.describe()});
        auto const sample = switchctl::statistics::BoardSampler(_access, port).sample();
        auto const& counters = sample.ports.at(0).getCounters();
        for (std::size_t i = 0; i < counters.size(); ++i) {
            if (name == counters[i].name) {
                return sample.ports[0].values[i].value();
            }
        }
        throw std::out_of_range(name);
    }

    board::ModelBringUp _models{EXAMPLES_FOLDER "/trap-three-switches.xml"};
    board::BoardAccess _access{_models.getBoard()};
    SimulatedNetwork _network{_models.getBoard()};
    IpStation _office{officeMac, officeIp, senderAt(office)};
    IpStation _processor{processorMac, processorIp, senderAt(processor)};
};

TEST_F(PingTest, TheEchoComesBack) {
    std::vector<std::string> tags;
    _network.observe([&tags](End const& at, EthernetFrame const& frame, auto const&) {
        auto const tag = frame.getTag();
        tags.push_back(at.describe() + (tag ? " tagged " + std::to_string(tag->vid) : " untagged"));
    });
    ping(1);
    ping(2);
    EXPECT_THAT(_office.getAnswered(), ElementsAre(1, 2));
    EXPECT_EQ(_office.getDamaged() + _processor.getDamaged(), 0U);
    EXPECT_EQ(_processor.getNeighbours().at(officeIp), officeMac);
    // Addresses are asked for once, then two echoes: there and back, each over the link with its tag.
    std::vector<std::string> const there{"2.7 untagged", "0.10 tagged 4"};
    std::vector<std::string> const back{"0.5 untagged", "2.9 tagged 4"};
    std::vector<std::string> expected;
    for (unsigned round = 0; round < 3; ++round) {
        expected.insert(expected.end(), there.begin(), there.end());
        expected.insert(expected.end(), back.begin(), back.end());
    }
    EXPECT_EQ(tags, expected);
}

TEST_F(PingTest, BothChipsLearnBothAddresses) {
    EXPECT_THAT(addressesOf(0, 4), IsEmpty());
    EXPECT_THAT(addressesOf(2, 4), IsEmpty());
    ping(1);
    EXPECT_THAT(addressesOf(0, 4), ElementsAre(Entry{processorMac, 1U << 5}, Entry{officeMac, 1U << 10}));
    EXPECT_THAT(addressesOf(2, 4), ElementsAre(Entry{processorMac, 1U << 9}, Entry{officeMac, 1U << 7}));
    EXPECT_THAT(addressesOf(1, 4), IsEmpty());
    EXPECT_THAT(addressesOf(2, 3), IsEmpty());
}

TEST_F(PingTest, ThePortsOfTheWayCount) {
    ping(1);
    ping(2);
    // The question is a broadcast, its answer and the echoes are not. An echo has 78 bytes, 82 with a tag;
    // what else there is has 64 and 68.
    for (End const& end : {office, officeLink, processorLink, processor}) {
        bool const isTowards = end == office || end == processorLink;
        EXPECT_EQ(counterOf(end, "inBroadcast"), isTowards ? 1U : 0U) << end.describe();
        EXPECT_EQ(counterOf(end, "outBroadcast"), isTowards ? 0U : 1U) << end.describe();
        EXPECT_EQ(counterOf(end, "inUnicast"), isTowards ? 2U : 3U) << end.describe();
        EXPECT_EQ(counterOf(end, "outUnicast"), isTowards ? 3U : 2U) << end.describe();
        bool const isTagged = end == officeLink || end == processorLink;
        EXPECT_EQ(counterOf(end, "inGoodOctets"), isTagged ? 68U + 2 * 82 : 64U + 2 * 78) << end.describe();
        EXPECT_EQ(counterOf(end, "outOctets"), isTagged ? 68U + 2 * 82 : 64U + 2 * 78) << end.describe();
    }
    EXPECT_EQ(counterOf({2, 6}, "outBroadcast"), 0U);
    EXPECT_EQ(counterOf({0, 0}, "outUnicast"), 0U);
}

// The library forces the links between switches: the chip goes on sending there.
TEST_F(PingTest, AnUnpluggedLinkEndsTheWayUntilItIsPluggedIn) {
    ping(1);
    ASSERT_TRUE(_network.unplug(processorLink));
    ping(2);
    EXPECT_THAT(_office.getAnswered(), ElementsAre(1));
    EXPECT_EQ(_network.getTotals().unconnected, 1U);
    plugVoice();
    ping(3);
    EXPECT_THAT(_office.getAnswered(), ElementsAre(1, 3));
    EXPECT_EQ(_network.getTotals().unconnected, 1U);
}

// The chip sees that a station has no link any more.
TEST_F(PingTest, AStationThatIsUnpluggedAnswersNoMore) {
    ping(1);
    ASSERT_TRUE(_network.unplug(processor));
    ping(2);
    EXPECT_THAT(_office.getAnswered(), ElementsAre(1));
    EXPECT_EQ(_network.getTotals().dropped, 1U);
    attach(processor, _processor);
    ping(3);
    EXPECT_THAT(_office.getAnswered(), ElementsAre(1, 3));
    EXPECT_EQ(_network.getTotals().dropped, 1U);
}

} // namespace
