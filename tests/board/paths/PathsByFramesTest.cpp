// What is read off the registers is what stations get when frames are really sent.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "tests/board/paths/ComparedBoard.hpp"
#include "tests/board/paths/SentFrames.hpp"

using board::FrameKind;
using board::RegisterPaths;
using board_test::ComparedBoard;
using board_test::SentFrames;

namespace {

class PathsByFramesTest : public testing::TestWithParam<char const*> {
protected:
    ComparedBoard compared{ComparedBoard::example(GetParam())};
    SentFrames stations{compared.bringUp.getBoard(), compared.registers};
};

} // namespace

TEST_P(PathsByFramesTest, StationsGetWhatRegistersSay) {
    std::size_t copies = 0;
    for (std::size_t destination = 0; destination < compared.frames.getDestinations().size(); ++destination) {
        for (std::size_t tags = 0; tags < compared.frames.getTags().size(); ++tags) {
            FrameKind const kind = compared.frames.getFrame(tags, destination);
            for (auto const& [id, chip] : compared.registers.getChips()) {
                for (unsigned port = 0; port < chip->getNumberOfPorts(); ++port) {
                    auto const frame = RegisterPaths::frameOf(kind);
                    SentFrames::Arrivals const predicted = stations.predict({id, port}, frame);
                    ASSERT_EQ(stations.send({id, port}, frame), predicted)
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
