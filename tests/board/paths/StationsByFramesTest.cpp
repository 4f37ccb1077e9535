// Where frames get over cables by the registers is where stations get them when they are really sent.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "board/paths/StationComparison.hpp"
#include "simulation/network/ChipForwarding.hpp"
#include "simulation/network/SimulatedNetwork.hpp"
#include "tests/board/paths/ComparedBoard.hpp"

using board::CableWalk;
using board::FrameKind;
using board::RegisterPaths;
using board::StationComparison;
using board_test::ComparedBoard;
using End = simulation::SimulatedNetwork::End;

namespace {

struct CabledBoard {
    char const* example;
    std::vector<std::string> cables;
};

void PrintTo(CabledBoard const& board, std::ostream* out) {
    std::string name = board.example;
    std::replace(name.begin(), name.end(), '-', '_');
    *out << name;
}

/// From, tags sent, index of the destination, to, tags received.
using Delivery =
    std::tuple<CableWalk::Place, FrameKind::Tags, std::size_t, CableWalk::Place, FrameKind::Tags>;

class StationsByFramesTest : public testing::TestWithParam<CabledBoard> {
protected:
    StationsByFramesTest() {
        std::set<End> cabled;
        for (std::string const& text : GetParam().cables) {
            auto const [one, other] = *board::Cables::read(text);
            _network.connect({one.switchId, one.portId}, {other.switchId, other.portId});
            cabled.insert({{one.switchId, one.portId}, {other.switchId, other.portId}});
        }
        for (auto const& [id, chip] : compared.registers.getChips()) {
            for (unsigned port = 0; port < chip->getNumberOfPorts(); ++port) {
                if (cabled.count({id, port}) == 0) {
                    attach({id, port});
                }
            }
        }
    }

    /// Over cables only: to other switches, as the examples are cabled.
    std::set<Delivery> sendAll() {
        for (std::size_t destination = 0; destination < compared.frames.getDestinations().size();
             ++destination) {
            for (std::size_t tags = 0; tags < compared.frames.getTags().size(); ++tags) {
                FrameKind const kind = compared.frames.getFrame(tags, destination);
                for (End const& station : _stations) {
                    _arrivals.clear();
                    _network.inject(station, RegisterPaths::frameOf(kind));
                    _network.run();
                    for (auto const& [at, received] : _arrivals) {
                        if (at.switchId != station.switchId) {
                            _deliveries.insert({{station.switchId, station.port},
                                                kind.tags,
                                                destination,
                                                {at.switchId, at.port},
                                                received});
                        }
                    }
                }
            }
        }
        return _deliveries;
    }

    ComparedBoard compared{ComparedBoard::example(GetParam().example)};
    board::Cables cables{GetParam().cables, compared.intended};

private:
    void attach(End const& end) {
        _stations.push_back(end);
        _network.attach(end, [this, end](simulation::EthernetFrame const& frame) {
            _arrivals.emplace_back(end, RegisterPaths::tagsOf(frame));
        });
    }

    simulation::SimulatedNetwork _network{compared.bringUp.getBoard()};
    std::vector<End> _stations;
    std::vector<std::pair<End, FrameKind::Tags>> _arrivals;
    std::set<Delivery> _deliveries;
};

std::set<Delivery> deliveriesOf(std::vector<StationComparison::Line> const& lines) {
    std::set<Delivery> deliveries;
    for (StationComparison::Line const& line : lines) {
        if (line.kind != StationComparison::Kind::path) {
            continue;
        }
        for (auto const& from : line.from) {
            for (FrameKind::Tags const& tags : line.frames) {
                for (std::size_t const destination : line.destinations) {
                    for (auto const& [form, ports] : line.reach) {
                        for (auto const& to : ports) {
                            deliveries.insert(
                                {from, tags, destination, to, form.isAsReceived ? tags : form.tags});
                        }
                    }
                }
            }
        }
    }
    return deliveries;
}

} // namespace

TEST_P(StationsByFramesTest, StationsGetWhatRegistersSay) {
    StationComparison::Selection const all{{0, ~0U}, {1, ~0U}, {2, ~0U}, {3, ~0U}};
    StationComparison const comparison(compared.intent, compared.registers, compared.frames, cables, all);
    EXPECT_EQ(deliveriesOf(comparison.getLines()), sendAll());
}

INSTANTIATE_TEST_SUITE_P(
    Examples, StationsByFramesTest,
    testing::Values(CabledBoard{"trap-three-switches", {"0.8=1.9", "1.10=2.8", "2.9=0.10"}},
                    CabledBoard{"trap-mixed", {"0.10=3.20", "1.10=3.21", "2.10=3.22"}},
                    // Wrong on purpose: an uplink where a terminal belongs.
                    CabledBoard{"trap-mixed", {"0.1=3.1", "1.10=3.21", "2.6=3.22"}}),
    [](auto const& board) { return testing::PrintToString(board.param) + std::to_string(board.index); });

// By hand: VLANs 2, 3 and 4 run over one cable of the ring each.
TEST(StationComparisonTest, TheRingOfThreeSwitches) {
    ComparedBoard const compared(ComparedBoard::example("trap-three-switches"));
    board::Cables const cables({"0.8=1.9", "1.10=2.8", "2.9=0.10"}, compared.intended);
    StationComparison const comparison(compared.intent, compared.registers, compared.frames, cables,
                                       {{0, ~0U}, {1, ~0U}, {2, ~0U}});
    std::set<std::pair<CableWalk::Place, CableWalk::Place>> pairs;
    for (Delivery const& delivery : deliveriesOf(comparison.getLines())) {
        pairs.emplace(std::get<0>(delivery), std::get<3>(delivery));
    }
    std::set<std::pair<CableWalk::Place, CableWalk::Place>> expected;
    for (auto const& [one, other] : std::vector<std::pair<CableWalk::Place, CableWalk::Place>>{
             {{0, 0}, {1, 1}}, {{0, 0}, {1, 2}}, {{1, 3}, {2, 4}}, {{2, 6}, {0, 5}}, {{2, 7}, {0, 5}}}) {
        expected.insert({{one, other}, {other, one}});
    }
    EXPECT_EQ(pairs, expected);
    for (StationComparison::Line const& line : comparison.getLines()) {
        EXPECT_EQ(line.kind, StationComparison::Kind::path);
    }
}
