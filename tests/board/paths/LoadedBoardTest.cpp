// Models that were loaded with what is read of others over their buses forward as those do.

#include "board/paths/LoadedBoard.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "simulation/network/ChipForwarding.hpp"
#include "tests/board/paths/ComparedBoard.hpp"

using board::RegisterPaths;
using board_test::ComparedBoard;

namespace {

class LoadedBoardTest : public testing::TestWithParam<char const*> {
protected:
    /// Cases in which the two decide otherwise.
    static unsigned differences(ComparedBoard const& compared, RegisterPaths const& loaded) {
        unsigned count = 0;
        auto const& frames = compared.frames;
        for (std::size_t to = 0; to < frames.getDestinations().size(); ++to) {
            for (std::size_t tags = 0; tags < frames.getTags().size(); ++tags) {
                simulation::EthernetFrame const frame = RegisterPaths::frameOf(frames.getFrame(tags, to));
                for (auto const& [id, chip] : compared.registers.getChips()) {
                    for (unsigned port = 0; port < chip->getNumberOfPorts(); ++port) {
                        bool const isSame = chip->decide(port, frame).describe() ==
                                            loaded.getChips().at(id)->decide(port, frame).describe();
                        count += isSame ? 0 : 1;
                    }
                }
            }
        }
        return count;
    }
};

} // namespace

TEST_P(LoadedBoardTest, ForwardsAsTheChipsDo) {
    std::string const path = ComparedBoard::example(GetParam());
    auto const document = reference_host::XmlDocument::fromFile(path);
    board::LoadedBoard loaded(*document, path);
    ComparedBoard compared(path);
    board::BoardAccess access(compared.bringUp.getBoard());
    {
        RegisterPaths const before(RegisterPaths::chipsOf(loaded.getBoard()));
        EXPECT_NE(differences(compared, before), 0U) << "nothing is loaded yet";
    }
    loaded.load(access);
    RegisterPaths const after(RegisterPaths::chipsOf(loaded.getBoard()));
    EXPECT_EQ(differences(compared, after), 0U);
    EXPECT_FALSE(loaded.getVids().empty());
}

INSTANTIATE_TEST_SUITE_P(Examples, LoadedBoardTest,
                         testing::Values("trap-minimal", "trap-access-point", "trap-three-switches",
                                         "trap-video-switch", "trap-mixed"),
                         [](auto const& example) {
                             std::string name = example.param;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });
