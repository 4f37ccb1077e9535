// What is read off the registers is what stations get when frames are really sent.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>

#include "simulation/network/ChipForwarding.hpp"
#include "simulation/network/SimulatedNetwork.hpp"
#include "tests/board/paths/ComparedBoard.hpp"

using board::FrameKind;
using board::RegisterPaths;
using board_test::ComparedBoard;
using End = simulation::SimulatedNetwork::End;

namespace {

using Arrivals = std::multimap<End, FrameKind::Tags>;

class PathsByFramesTest : public testing::TestWithParam<char const*> {
protected:
    PathsByFramesTest() {
        for (auto const& [id, chip] : compared.registers.getChips()) {
            for (unsigned port = 0; port < chip->getNumberOfPorts(); ++port) {
                End const end{id, port};
                _network.attach(end, [this, end](simulation::EthernetFrame const& frame) {
                    _arrivals.emplace(end, RegisterPaths::tagsOf(frame));
                });
            }
        }
    }

    Arrivals send(End const& from, FrameKind const& kind) {
        _arrivals.clear();
        _network.inject(from, RegisterPaths::frameOf(kind));
        _network.run();
        return _arrivals;
    }

    Arrivals predict(End const& from, FrameKind const& kind) const {
        Arrivals arrivals;
        auto const decision =
            compared.registers.getChips().at(from.switchId)->decide(from.port, RegisterPaths::frameOf(kind));
        for (RegisterPaths::Copies const& copies : RegisterPaths::copiesOf(decision)) {
            for (unsigned port = 0; port < 32; ++port) {
                if ((copies.ports >> port & 1U) != 0) {
                    arrivals.emplace(End{from.switchId, port}, copies.tags);
                }
            }
        }
        return arrivals;
    }

    ComparedBoard compared{ComparedBoard::example(GetParam())};

private:
    simulation::SimulatedNetwork _network{compared.bringUp.getBoard()};
    Arrivals _arrivals;
};

} // namespace

TEST_P(PathsByFramesTest, StationsGetWhatRegistersSay) {
    std::size_t copies = 0;
    for (std::size_t destination = 0; destination < compared.frames.getDestinations().size(); ++destination) {
        for (std::size_t tags = 0; tags < compared.frames.getTags().size(); ++tags) {
            FrameKind const kind = compared.frames.getFrame(tags, destination);
            for (auto const& [id, chip] : compared.registers.getChips()) {
                for (unsigned port = 0; port < chip->getNumberOfPorts(); ++port) {
                    Arrivals const predicted = predict({id, port}, kind);
                    ASSERT_EQ(send({id, port}, kind), predicted)
                        << id << "." << port << " " << kind.tags.describe() << " "
                        << compared.frames.getDestinations()[destination].name;
                    copies += predicted.size();
                }
            }
        }
    }
    EXPECT_GT(copies, 0U);
}

INSTANTIATE_TEST_SUITE_P(Examples, PathsByFramesTest,
                         testing::Values("home-gateway", "video-rooms", "trap-minimal", "trap-access-point",
                                         "trap-three-switches", "trap-video-switch", "trap-mixed"),
                         [](auto const& example) {
                             std::string name = example.param;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });
