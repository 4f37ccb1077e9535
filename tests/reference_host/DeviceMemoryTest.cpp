#include "reference_host/DeviceMemory.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstring>
#include <string>

#include "tests/support/TemporaryFile.hpp"

using reference_host::DeviceMemory;
using reference_host::PhysicalMemory;
using test_support::TemporaryFile;

namespace {

unsigned int pageSize() {
    return static_cast<unsigned int>(sysconf(_SC_PAGESIZE));
}

/// A file of three pages stands for the device.
class DeviceMemoryTest : public testing::Test {
protected:
    unsigned char* at(PhysicalMemory::Mapping const& pages, unsigned int offset) const {
        return reinterpret_cast<unsigned char*>(pages.baseAddress + pages.startOffset + offset);
    }

    TemporaryFile device{std::string(3 * static_cast<std::size_t>(pageSize()), '.')};
    DeviceMemory memory{device.path()};
    PhysicalMemory::Mapping mapping;
    std::string reason;
};

TEST_F(DeviceMemoryTest, MapsWholePagesAroundTheWindow) {
    ASSERT_TRUE(memory.map(pageSize() + 0x24, 0x30, mapping, reason)) << reason;
    EXPECT_EQ(mapping.baseAddress % pageSize(), 0U);
    EXPECT_EQ(mapping.startOffset, 0x24U);
    EXPECT_EQ(mapping.length, pageSize());
    memory.unmap(mapping);
}

TEST_F(DeviceMemoryTest, AWindowAcrossAPageBoundaryTakesBothPages) {
    ASSERT_TRUE(memory.map(pageSize() - 4, 8, mapping, reason)) << reason;
    EXPECT_EQ(mapping.startOffset, pageSize() - 4);
    EXPECT_EQ(mapping.length, 2 * pageSize());
    memory.unmap(mapping);
}

TEST_F(DeviceMemoryTest, AnAlignedWindowStartsAtItsPage) {
    ASSERT_TRUE(memory.map(2 * pageSize(), pageSize(), mapping, reason)) << reason;
    EXPECT_EQ(mapping.startOffset, 0U);
    EXPECT_EQ(mapping.length, pageSize());
    memory.unmap(mapping);
}

TEST_F(DeviceMemoryTest, StoresReachTheDevice) {
    ASSERT_TRUE(memory.map(pageSize() + 0x10, 4, mapping, reason)) << reason;
    *at(mapping, 0) = 'X';
    *at(mapping, 3) = 'Y';
    memory.unmap(mapping);
    std::string const content = device.content();
    EXPECT_EQ(content.substr(pageSize() + 0x0F, 6), ".X..Y.");
}

TEST_F(DeviceMemoryTest, HighPhysicalAddressesAreNotTakenForNegativeOnes) {
    ASSERT_EQ(truncate(device.path().c_str(), 0x80011000), 0);
    ASSERT_TRUE(memory.map(0x80010000, 0x30, mapping, reason)) << reason;
    std::memcpy(at(mapping, 0x10), "MII", 3);
    memory.unmap(mapping);
    PhysicalMemory::Mapping again;
    ASSERT_TRUE(memory.map(0x80010010, 4, again, reason)) << reason;
    EXPECT_EQ(std::memcmp(at(again, 0), "MII", 3), 0);
    memory.unmap(again);
}

TEST_F(DeviceMemoryTest, SaysWhichDeviceIsMissing) {
    DeviceMemory missing("/nonexistent/mem");
    EXPECT_FALSE(missing.map(0x80010000, 0x30, mapping, reason));
    EXPECT_EQ(reason, "/nonexistent/mem: No such file or directory");
    EXPECT_EQ(mapping.baseAddress, ~std::uintptr_t{0});
}

TEST_F(DeviceMemoryTest, SaysWhatCannotBeMapped) {
    EXPECT_FALSE(memory.map(0x80010000, 0, mapping, reason));
    EXPECT_EQ(reason, device.path() + ": mmap: Invalid argument");
    DeviceMemory notMemory("/dev/null");
    EXPECT_FALSE(notMemory.map(0, 4, mapping, reason));
    EXPECT_EQ(reason, "/dev/null: mmap: No such device");
    EXPECT_EQ(mapping.baseAddress, ~std::uintptr_t{0});
}

TEST_F(DeviceMemoryTest, TellsBeforehandWhetherTheDeviceCanBeOpened) {
    EXPECT_TRUE(DeviceMemory::isAccessible(device.path(), reason));
    EXPECT_EQ(reason, "");
    EXPECT_FALSE(DeviceMemory::isAccessible("/nonexistent/mem", reason));
    EXPECT_EQ(reason, "/nonexistent/mem: No such file or directory");
    EXPECT_FALSE(DeviceMemory::isAccessible("/", reason));
    EXPECT_EQ(reason, "/: Is a directory");
}

TEST(DeviceMemoryDefaultTest, IsTheMemoryOfTheMachine) {
    EXPECT_STREQ(DeviceMemory::defaultDevicePath, "/dev/mem");
}

} // namespace
