#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/fuzz/FuzzTarget.hpp"

using fuzz::FuzzTarget;

namespace {

std::vector<std::filesystem::path> inputsOf(FuzzTarget const& target) {
    std::vector<std::filesystem::path> paths;
    for (auto const& entry :
         std::filesystem::directory_iterator(std::filesystem::path(CORPUS_FOLDER) / target.name)) {
        paths.push_back(entry.path());
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

std::string contents(std::filesystem::path const& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// What the fuzzer has found to be worth keeping must still be stood.
class CorpusTest : public testing::TestWithParam<FuzzTarget> {};

TEST_P(CorpusTest, IsStood) {
    auto const paths = inputsOf(GetParam());
    EXPECT_FALSE(paths.empty());
    for (auto const& path : paths) {
        EXPECT_NO_THROW(GetParam().run(contents(path))) << path.filename();
    }
}

INSTANTIATE_TEST_SUITE_P(Targets, CorpusTest, testing::ValuesIn(FuzzTarget::getAll()),
                         [](auto const& target) { return std::string(target.param.name); });

} // namespace
