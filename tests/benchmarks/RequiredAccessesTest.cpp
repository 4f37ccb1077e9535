// The library makes the accesses that are required, and no more: whatever it wastes on a bus shows here.

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

#include "benchmarks/LibraryRun.hpp"
#include "benchmarks/OperationCounts.hpp"
#include "benchmarks/RequiredRun.hpp"
#include "reference_host/XmlDocument.hpp"

namespace benchmarks {

void PrintTo(AccessRecorder::Access const& access, std::ostream* out) {
    *out << (access.isWrite ? "write 0x" : "read 0x") << std::hex << access.physicalAddress << " 0x"
         << access.value << std::dec;
}

namespace {

using Accesses = std::vector<AccessRecorder::Access>;

std::string example(std::string const& name) {
    return std::string(EXAMPLES_FOLDER) + "/" + name + ".xml";
}

template <typename Run> std::vector<OperationCounts> countsOf(std::string const& name) {
    auto const document = reference_host::XmlDocument::fromFile(example(name));
    Run run(*document);
    return OperationCounts::of(run);
}

/// The first access that differs is worth more than ten thousand that do not.
void expectSame(Accesses const& made, Accesses const& required, std::string const& name) {
    EXPECT_EQ(made.size(), required.size()) << name;
    auto const [ours, theirs] = std::mismatch(made.begin(), made.end(), required.begin(), required.end());
    if (ours != made.end() && theirs != required.end()) {
        EXPECT_EQ(*ours, *theirs) << name << ", access " << ours - made.begin() + 1;
    }
}

class RequiredAccessesTest : public testing::TestWithParam<char const*> {};

TEST_P(RequiredAccessesTest, AreTheOnesThatTheLibraryMakes) {
    auto const made = countsOf<LibraryRun>(GetParam());
    auto const required = countsOf<RequiredRun>(GetParam());

    ASSERT_EQ(made.size(), required.size());
    for (std::size_t i = 0; i < made.size(); ++i) {
        EXPECT_EQ(made[i].name, required[i].name);
        EXPECT_FALSE(made[i].accesses.empty()) << made[i].name;
        expectSame(made[i].accesses, required[i].accesses, made[i].name);
        EXPECT_EQ(made[i].busNanoseconds, required[i].busNanoseconds) << made[i].name;
        EXPECT_EQ(made[i].elapsedNanoseconds, required[i].elapsedNanoseconds) << made[i].name;
    }
}

INSTANTIATE_TEST_SUITE_P(Examples, RequiredAccessesTest,
                         testing::Values("minimal", "access-point", "three-switches", "video-switch",
                                         "mixed"),
                         [](testing::TestParamInfo<char const*> const& instance) {
                             std::string name = instance.param;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

OperationCounts const& find(std::vector<OperationCounts> const& all, std::string const& name) {
    return *std::find_if(all.begin(), all.end(), [&](auto const& counts) { return counts.name == name; });
}

TEST(RequiredCountsTest, ARegisterOfAnMdioChipTakesSixFramesToReadAndFourToWrite) {
    auto const counts = countsOf<RequiredRun>("minimal");

    OperationCounts const& read = find(counts, "88e6096 read a register");
    EXPECT_EQ(read.chipRegisters, 1U);
    EXPECT_EQ(read.mdioFrames, 6U);
    EXPECT_EQ(read.busCycles(), 384U);
    EXPECT_EQ(read.busNanoseconds, 153600U);
    // Each frame waits for the MAC before and after; then the command, the data.
    EXPECT_EQ(read.idleLoops, 12U);
    EXPECT_EQ(read.accesses.size(), 24U);
    EXPECT_EQ(find(counts, "88e6096 write a register").mdioFrames, 4U);
}

TEST(RequiredCountsTest, ARegisterOnTheParallelBusTakesOneAccessToWrite) {
    auto const counts = countsOf<RequiredRun>("video-switch");

    OperationCounts const& write = find(counts, "vsc7390 write a register");
    ASSERT_EQ(write.accesses.size(), 1U);
    // Block 2, sub-block 0, address 0x0D.
    EXPECT_EQ(write.accesses[0], (AccessRecorder::Access{0xF3008034, true, 0xFFFFFF}));
    EXPECT_EQ(write.busCycles(), 1U);
    EXPECT_EQ(write.idleLoops, 0U);
}

} // namespace

} // namespace benchmarks
