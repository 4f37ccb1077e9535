// What frames do on the boards of the examples once the library has brought them up, compared with texts that
// people have read. UPDATE_GOLDEN=1 writes them anew: read the difference before you commit it.

#include <dtl/dtl.hpp>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "tests/traffic/TrafficReport.hpp"

namespace {

struct GoldenCase {
    char const* name;
    char const* example;
    std::vector<TrafficBoard::Cable> cables;
};

class GoldenTrafficTest : public testing::TestWithParam<GoldenCase> {
protected:
    static std::vector<std::string> linesOf(std::string const& text) {
        std::istringstream stream(text);
        std::vector<std::string> lines;
        for (std::string line; std::getline(stream, line);) {
            lines.push_back(line);
        }
        return lines;
    }

    static std::string difference(std::string const& expected, std::string const& found) {
        dtl::Diff<std::string> diff(linesOf(expected), linesOf(found));
        diff.compose();
        diff.composeUnifiedHunks();
        std::ostringstream text;
        diff.printUnifiedFormat(text);
        return text.str();
    }
};

TEST_P(GoldenTrafficTest, FramesTakeTheWaysOfTheGoldenFile) {
    GoldenCase const& example = GetParam();
    TrafficBoard board(std::string(EXAMPLES_FOLDER) + "/" + example.example + ".xml", example.cables);
    std::string found = std::string("examples/") + example.example + ".xml on the models\n";
    for (auto const& [one, other] : example.cables) {
        found += "cable " + one.describe() + " to " + other.describe() + "\n";
    }
    found += TrafficReport(board).write();

    std::string const path = std::string(GOLDEN_FOLDER) + "/" + example.name + ".txt";
    if (std::getenv("UPDATE_GOLDEN") != nullptr) {
        std::ofstream(path) << found;
    }
    std::ifstream file(path);
    std::ostringstream expected;
    expected << file.rdbuf();
    EXPECT_TRUE(expected.str() == found) << path << '\n' << difference(expected.str(), found);
}

INSTANTIATE_TEST_SUITE_P(
    Examples, GoldenTrafficTest,
    testing::Values(
        GoldenCase{"home-gateway", "home-gateway", {}}, GoldenCase{"video-rooms", "video-rooms", {}},
        GoldenCase{"trap-minimal", "trap-minimal", {}},
        // Both links of the interlink, into one another.
        GoldenCase{"trap-minimal-looped", "trap-minimal", {{{0, 8}, {0, 9}}}},
        GoldenCase{"trap-access-point", "trap-access-point", {}},
        GoldenCase{"trap-three-switches",
                   "trap-three-switches",
                   {{{0, 8}, {1, 9}}, {{1, 10}, {2, 8}}, {{2, 9}, {0, 10}}}},
        GoldenCase{"trap-video-switch", "trap-video-switch", {}},
        GoldenCase{"trap-mixed", "trap-mixed", {{{0, 10}, {3, 20}}, {{1, 10}, {3, 21}}, {{2, 10}, {3, 22}}}}),
    [](auto const& example) {
        std::string name = example.param.name;
        std::replace(name.begin(), name.end(), '-', '_');
        return name;
    });

} // namespace
