#include <gtest/gtest.h>

#include <array>
#include <cstdint>

#include "host/MappedSection.hpp"
#include "reference_host/HostApplication.hpp"
#include "tests/support/RecordingLog.hpp"
#include "tests/support/TestMemory.hpp"

using test_support::RecordingLog;
using test_support::TestMemory;

namespace {

using Words = std::array<std::uint32_t, 4>;

class Section : public MappedSection {
public:
    explicit Section(SystemLogInterface& log) : MappedSection("Section", log, false) {}

    void becomeDummy() { _dummySection = this; }
    static unsigned int writeCount() { return _dummySectionWriteCounts; }
};

/// The accessors that are built into the library, on memory that is no simulated window.
class HardwareMappingTest : public testing::Test {
protected:
    void mapTo(Section& target, Words& memoryWords, unsigned int startOffset = 0) {
        memory.place(0x1000, 8, reinterpret_cast<std::uintptr_t>(memoryWords.data()), startOffset);
        ASSERT_TRUE(target.map(0x1000, 8));
    }

    RecordingLog log;
    TestMemory memory;
    reference_host::HostApplication application{log, memory};
    alignas(16) Words words{};
    alignas(16) Words dummyWords{};
    Section section{application};
    Section dummy{application};
};

TEST_F(HardwareMappingTest, FailsWithoutAnAccessWhenNotMapped) {
    unsigned int value = 0x1234;
    EXPECT_FALSE(section.set(0, 1));
    EXPECT_FALSE(section.get(0, value));
    EXPECT_EQ(value, 0x1234U);
}

TEST_F(HardwareMappingTest, FailsAgainAfterUnmapping) {
    mapTo(section, words);
    section.unMap();
    unsigned int value = 0x1234;
    EXPECT_FALSE(section.set(0, 1));
    EXPECT_FALSE(section.get(0, value));
    EXPECT_EQ(value, 0x1234U);
    EXPECT_EQ(words, (Words{0, 0, 0, 0}));
}

TEST_F(HardwareMappingTest, StoresAndLoadsWholeWords) {
    mapTo(section, words);
    EXPECT_TRUE(section.set(0, 0x89ABCDEF));
    EXPECT_TRUE(section.set(4, 0xFFFFFFFF));
    EXPECT_EQ(words, (Words{0x89ABCDEF, 0xFFFFFFFF, 0, 0}));
    words = {1, 0xFEDCBA98, 3, 4};
    unsigned int value = 0;
    EXPECT_TRUE(section.get(4, value));
    EXPECT_EQ(value, 0xFEDCBA98U);
}

TEST_F(HardwareMappingTest, ClearsTheLowTwoBitsOfTheOffset) {
    mapTo(section, words);
    EXPECT_TRUE(section.set(7, 0x77));
    EXPECT_EQ(words, (Words{0, 0x77, 0, 0}));
    for (unsigned int offset = 4; offset < 8; ++offset) {
        unsigned int value = 0;
        EXPECT_TRUE(section.get(offset, value));
        EXPECT_EQ(value, 0x77U) << offset;
    }
}

TEST_F(HardwareMappingTest, AddsTheStartOffsetBeforeAligning) {
    mapTo(section, words, 6);
    EXPECT_TRUE(section.set(0, 0x11));
    EXPECT_TRUE(section.set(2, 0x22));
    EXPECT_EQ(words, (Words{0, 0x11, 0x22, 0}));
    unsigned int value = 0;
    EXPECT_TRUE(section.get(5, value));
    EXPECT_EQ(value, 0x22U);
}

TEST_F(HardwareMappingTest, CountsStoresInTheDummySection) {
    mapTo(section, words);
    mapTo(dummy, dummyWords);
    unsigned int const before = Section::writeCount();
    dummy.becomeDummy();
    EXPECT_TRUE(section.set(0, 1));
    EXPECT_EQ(Section::writeCount(), before + 1);
    EXPECT_EQ(dummyWords, (Words{before + 1, 0, 0, 0}));
    EXPECT_TRUE(section.set(4, 1));
    EXPECT_EQ(Section::writeCount(), before + 2);
    EXPECT_EQ(dummyWords, (Words{before + 2, 0, 0, 0}));
}

TEST_F(HardwareMappingTest, TheCountIsStoredInTheFirstMappedWord) {
    mapTo(section, words);
    mapTo(dummy, dummyWords, 8);
    dummy.becomeDummy();
    EXPECT_TRUE(section.set(0, 1));
    EXPECT_EQ(dummyWords, (Words{Section::writeCount(), 0, 0, 0}));
}

TEST_F(HardwareMappingTest, LoadsAndFailedStoresAreNotCounted) {
    mapTo(section, words);
    mapTo(dummy, dummyWords);
    dummy.becomeDummy();
    unsigned int const before = Section::writeCount();
    unsigned int value = 0;
    EXPECT_TRUE(section.get(0, value));
    Section unmapped(application);
    EXPECT_FALSE(unmapped.set(0, 1));
    EXPECT_EQ(Section::writeCount(), before);
    EXPECT_EQ(dummyWords, (Words{0, 0, 0, 0}));
}

TEST_F(HardwareMappingTest, NothingIsCountedWhileTheDummySectionIsNotMapped) {
    mapTo(section, words);
    dummy.becomeDummy();
    unsigned int const before = Section::writeCount();
    EXPECT_TRUE(section.set(0, 1));
    EXPECT_EQ(Section::writeCount(), before);
}

TEST_F(HardwareMappingTest, NothingIsCountedWithoutADummySection) {
    mapTo(section, words);
    unsigned int const before = Section::writeCount();
    EXPECT_TRUE(section.set(0, 1));
    EXPECT_EQ(Section::writeCount(), before);
}

} // namespace
