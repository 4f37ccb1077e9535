#include "host/HardwareMapping.hpp"

#include <gtest/gtest.h>

#include <cstdarg>
#include <cstdio>
#include <string>
#include <vector>

#include "host/MappedSection.hpp"
#include "reference_host/HostApplication.hpp"
#include "tests/support/RecordingLog.hpp"

using reference_host::HostApplication;
using reference_host::PhysicalMemory;

using test_support::RecordingLog;

namespace {

/// A few words that stand for a register block; notes what is asked of it.
class WordMemory : public PhysicalMemory {
public:
    bool map(unsigned int physicalAddress, unsigned int size, Mapping& mapping,
             std::string& reason) override {
        requests.emplace_back(physicalAddress, size);
        if (!refusal.empty()) {
            reason = refusal;
            return false;
        }
        mapping.baseAddress = reinterpret_cast<std::uintptr_t>(words);
        mapping.startOffset = 8;
        mapping.length = sizeof words;
        ++mapped;
        return true;
    }

    void unmap(Mapping const& mapping) noexcept override {
        lastUnmapped = mapping;
        --mapped;
    }

    std::uint32_t words[16] = {};
    std::string refusal;
    std::vector<std::pair<unsigned int, unsigned int>> requests;
    Mapping lastUnmapped;
    int mapped = 0;
};

/// Shows what derived classes see.
class Section : public MappedSection {
public:
    using HardwareMapping::_baseAddress;
    using HardwareMapping::_dummySection;
    using HardwareMapping::_dummySectionWriteCounts;
    using HardwareMapping::_startOffset;
    using HardwareMapping::notMapped;
    using MappedSection::MappedSection;
};

class HardwareMappingTest : public testing::Test {
protected:
    RecordingLog log;
    WordMemory memory;
    HostApplication application{log, memory};
};

TEST_F(HardwareMappingTest, IsNotMappedAtFirst) {
    Section section("MiiAccess", application, false);
    EXPECT_EQ(section._baseAddress, Section::notMapped);
    EXPECT_EQ(section._startOffset, 0U);
    EXPECT_TRUE(memory.requests.empty());
    unsigned int value = 77;
    EXPECT_FALSE(section.get(0, value));
    EXPECT_FALSE(section.set(0, 1));
    EXPECT_EQ(value, 77U);
}

TEST_F(HardwareMappingTest, TakesItsAddressesFromTheApplicationThatItLogsTo) {
    Section section("MiiAccess", application, false);
    EXPECT_TRUE(section.map(0x80010000, 0x30));
    EXPECT_EQ(memory.requests, (std::vector<std::pair<unsigned int, unsigned int>>{{0x80010000, 0x30}}));
    EXPECT_EQ(section._baseAddress, reinterpret_cast<std::uintptr_t>(memory.words));
    EXPECT_EQ(section._startOffset, 8U);
    EXPECT_TRUE(section.set(4, 0x12345678));
    EXPECT_EQ(memory.words[3], 0x12345678U);
    unsigned int value = 0;
    EXPECT_TRUE(section.get(4, value));
    EXPECT_EQ(value, 0x12345678U);
    EXPECT_TRUE(log.lines().empty());
}

TEST_F(HardwareMappingTest, UnMapGivesBackExactlyOnce) {
    Section section("MiiAccess", application, false);
    section.unMap();
    EXPECT_EQ(memory.mapped, 0);
    section.map(0x80010000, 0x30);
    section.unMap();
    section.unMap();
    EXPECT_EQ(memory.mapped, 0);
    EXPECT_EQ(memory.lastUnmapped.baseAddress, reinterpret_cast<std::uintptr_t>(memory.words));
    EXPECT_EQ(memory.lastUnmapped.startOffset, 8U);
    EXPECT_EQ(memory.lastUnmapped.length, sizeof memory.words);
    EXPECT_EQ(section._baseAddress, Section::notMapped);
    unsigned int value = 77;
    EXPECT_FALSE(section.get(0, value));
}

TEST_F(HardwareMappingTest, TheDestructorUnmaps) {
    {
        Section section("MiiAccess", application, false);
        section.map(0x80010000, 0x30);
        EXPECT_EQ(memory.mapped, 1);
    }
    EXPECT_EQ(memory.mapped, 0);
}

TEST_F(HardwareMappingTest, MappingAgainGivesBackTheFirstWindow) {
    Section section("MiiAccess", application, false);
    section.map(0x80010000, 0x30);
    section.map(0xF3000000, 0x100);
    EXPECT_EQ(memory.mapped, 1);
    memory.refusal = "no";
    EXPECT_FALSE(section.map(0x80010000, 0x30));
    EXPECT_EQ(memory.mapped, 0);
    EXPECT_EQ(section._baseAddress, Section::notMapped);
}

TEST_F(HardwareMappingTest, WithoutHardwareAccessNothingIsMappedAndNothingIsSaid) {
    Section section("MiiAccess", application, true);
    EXPECT_FALSE(section.map(0x80010000, 0x30));
    EXPECT_EQ(section._baseAddress, Section::notMapped);
    EXPECT_TRUE(memory.requests.empty());
    EXPECT_TRUE(log.lines().empty());
}

TEST_F(HardwareMappingTest, AFailureIsReportedOnceWithSectionAddressAndReason) {
    memory.refusal = "/dev/mem: Permission denied";
    Section section("MiiAccess", application, false);
    EXPECT_FALSE(section.map(0x80010000, 0x30));
    EXPECT_FALSE(section.set(0, 1));
    EXPECT_EQ(log.lines(), (std::vector<std::string>{"error|HardwareMapping::map section \"MiiAccess\" at "
                                                     "0x80010000: /dev/mem: Permission denied\n"}));
    EXPECT_EQ(memory.mapped, 0);
}

TEST_F(HardwareMappingTest, NoDummySectionIsRegistered) {
    Section section("MiiAccess", application, false);
    section.map(0x80010000, 0x30);
    EXPECT_EQ(Section::_dummySection, nullptr);
}

TEST_F(HardwareMappingTest, ADummySectionCountsStoresAndIsForgottenWithItsObject) {
    Section section("MiiAccess", application, false);
    section.map(0x80010000, 0x30);
    unsigned int const before = Section::_dummySectionWriteCounts;
    WordMemory dummyMemory;
    HostApplication dummyApplication(log, dummyMemory);
    {
        Section dummy("Dummy", dummyApplication, false);
        dummy.map(0, 4);
        Section::_dummySection = &dummy;
        section.set(0, 1);
        section.set(0, 2);
        EXPECT_EQ(dummyMemory.words[0], before + 2);
    }
    EXPECT_EQ(Section::_dummySection, nullptr);
    EXPECT_TRUE(section.set(0, 3));
    EXPECT_EQ(Section::_dummySectionWriteCounts, before + 2);
}

/// A host's log that is no HostApplication.
class BareLog : public SystemLogInterface {
public:
    void logCritical(char const*, ...) override { ++others; }
    void logError(char const* format, ...) override {
        std::va_list values;
        va_start(values, format);
        char text[256];
        std::vsnprintf(text, sizeof text, format, values);
        va_end(values);
        errors.emplace_back(text);
    }
    void logWarning(char const*, ...) override { ++others; }
    void logInfo(char const*, ...) override { ++others; }
    void logDebug(char const*, ...) override { ++others; }
    void log(unsigned int, char const*, ...) override { ++others; }

    std::vector<std::string> errors;
    int others = 0;
};

// The window asked for does not exist on any machine with memory protection, and size 0 never maps.
TEST(HardwareMappingLogTest, AnotherLogGetsTheMachinesMemory) {
    BareLog log;
    Section section("MiiAccess", log, false);
    EXPECT_FALSE(section.map(0x80010000, 0));
    ASSERT_EQ(log.errors.size(), 1U);
    EXPECT_EQ(log.errors[0].rfind("HardwareMapping::map section \"MiiAccess\" at 0x80010000: /dev/mem: ", 0),
              0U)
        << log.errors[0];
    EXPECT_EQ(log.others, 0);
}

} // namespace
