// The library makes the accesses that are in benchmarks/accesses/, and no others. That these are right is for
// the tests of the drivers to say; here shows what a change does to a whole board.

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "benchmarks/AccessList.hpp"
#include "benchmarks/LibraryRun.hpp"
#include "benchmarks/OperationCounts.hpp"
#include "benchmarks/ReplayRun.hpp"
#include "reference_host/XmlDocument.hpp"

namespace benchmarks {

namespace {

std::shared_ptr<Xml> example(std::string const& name) {
    return reference_host::XmlDocument::fromFile(std::string(EXAMPLES_FOLDER) + "/" + name + ".xml");
}

std::vector<AccessList::Section> parse(std::string text) {
    std::replace(text.begin(), text.end(), ' ', '\n');
    std::istringstream stream(text);
    return AccessList::read(stream);
}

std::vector<OperationCounts> libraryCounts(std::string const& name) {
    auto const document = example(name);
    LibraryRun run(*document);
    return OperationCounts::of(run);
}

class RecordedAccessesTest : public testing::TestWithParam<char const*> {};

TEST_P(RecordedAccessesTest, AreTheOnesThatTheLibraryMakes) {
    auto const listed = AccessList::readFile(std::string(ACCESSES_FOLDER) + "/" + GetParam() + ".txt");
    auto const counts = libraryCounts(GetParam());
    auto const made = OperationCounts::accessesOf(counts);

    ASSERT_EQ(AccessList::differenceOf(made, listed), "")
        << "scripts/measure/record-accesses writes the lists anew";

    auto const document = example(GetParam());
    ReplayRun replay(*document, listed);
    auto const replayed = OperationCounts::of(replay);
    // Pauses are not replayed: one look finds the VLAN table of a VSC7390 still being cleared.
    std::set<std::string> const withVsc7390{"trap-mixed", "video-rooms", "trap-video-switch"};
    EXPECT_EQ(replay.getUnexpected(), withVsc7390.count(GetParam()));
    for (std::size_t i = 0; i < counts.size(); ++i) {
        EXPECT_EQ(replayed[i].busNanoseconds, counts[i].busNanoseconds) << counts[i].name;
    }
}

INSTANTIATE_TEST_SUITE_P(Examples, RecordedAccessesTest,
                         testing::Values("home-gateway", "video-rooms", "trap-minimal", "trap-access-point",
                                         "trap-three-switches", "trap-video-switch", "trap-mixed"),
                         [](testing::TestParamInfo<char const*> const& instance) {
                             std::string name = instance.param;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

OperationCounts const& find(std::vector<OperationCounts> const& all, std::string const& name) {
    return *std::find_if(all.begin(), all.end(), [&](auto const& counts) { return counts.name == name; });
}

TEST(OperationCountsTest, ARegisterOfAnMdioChipTakesSixFramesToReadAndFourToWrite) {
    auto const counts = libraryCounts("trap-minimal");

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

TEST(OperationCountsTest, ARegisterOnTheParallelBusTakesOneAccessToWrite) {
    auto const counts = libraryCounts("trap-video-switch");

    OperationCounts const& write = find(counts, "vsc7390 write a register");
    ASSERT_EQ(write.accesses.size(), 1U);
    // Block 2, sub-block 0, address 0x0D.
    EXPECT_EQ(write.accesses[0], (Access{0xF3008034, true, 0xFFFFFF}));
    EXPECT_EQ(write.busCycles(), 1U);
    EXPECT_EQ(write.idleLoops, 0U);
}

TEST(AccessListTest, ReadsWhatItWrites) {
    std::string const text = "[a]\nr:80010014:5\nw:f301c0c0:3e00\n[b]\n";
    std::vector<AccessList::Section> const list = parse(text);

    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[0].name, "a");
    EXPECT_EQ(list[0].accesses, (std::vector<Access>{{0x80010014, false, 5}, {0xF301C0C0, true, 0x3E00}}));
    EXPECT_TRUE(list[1].accesses.empty());
    EXPECT_EQ(AccessList::textOf(list), text);
}

TEST(AccessListTest, RefusesOtherText) {
    for (char const* text : {"", "r:1:2", "[a]\nx:1:2", "[a]\nr:1", "[a]\nr:1:2:3", "[a]\nr:1:2g",
                             "[a]\nr::2", "[a]\nget:1:2", "[a]\nr:1:2*2", "[a]\nr-1-2", "[a]\n\n"}) {
        EXPECT_THROW(parse(text), std::runtime_error) << text;
    }
}

TEST(AccessListTest, NamesTheFirstDifference) {
    auto const difference = [](char const* made) {
        return AccessList::differenceOf(parse(made), parse("[a]\nr:1:2 w:3:4\n[b]\nw:5:6"));
    };

    EXPECT_EQ(difference("[a]\nr:1:2 w:3:4\n[b]\nw:5:6"), "");
    EXPECT_EQ(difference("[a]\nr:1:2 w:3:5\n[b]\nw:5:7"), "a, access 2: w:3:5, listed is w:3:4");
    EXPECT_EQ(difference("[a]\nr:1:2 r:3:4\n[b]\nw:5:6"), "a, access 2: r:3:4, listed is w:3:4");
    EXPECT_EQ(difference("[a]\nr:1:2 w:4:4\n[b]\nw:5:6"), "a, access 2: w:4:4, listed is w:3:4");
    EXPECT_EQ(difference("[a]\nr:1:2\n[b]\nw:5:6"), "a, access 2: nothing, listed is w:3:4");
    EXPECT_EQ(difference("[a]\nr:1:2 w:3:4 r:1:2\n[b]\nw:5:6"), "a, access 3: r:1:2, listed is nothing");
    EXPECT_EQ(difference("[a]\nr:1:2 w:3:4"), "operation 2 is missing, listed is \"b\"");
    EXPECT_EQ(difference("[a]\nr:1:2 w:3:4\n[c]"), "operation 2 is \"c\", listed is \"b\"");
}

} // namespace

} // namespace benchmarks
