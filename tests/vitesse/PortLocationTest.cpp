#include <gtest/gtest.h>

#include "reference_host/HostApplication.hpp"
#include "tests/support/NullMemory.hpp"
#include "tests/support/RecordingLog.hpp"
#include "tests/support/ScriptedVitesseRegisters.hpp"

namespace {

using Bsa = VitesseManagementCommunications::Bsa;

class PortLocationTest : public testing::Test {
protected:
    void expectLocation(unsigned char port, unsigned int block, unsigned int subBlock) {
        SCOPED_TRACE(testing::Message() << "port " << int{port});
        Bsa location{0x1111, 0x2222, 0x3333};
        EXPECT_TRUE(registers.portToBSA(port, location));
        EXPECT_EQ(location.block, block);
        EXPECT_EQ(location.subBlock, subBlock);
        EXPECT_EQ(location.address, 0U);
    }

    test_support::RecordingLog log;
    test_support::NullMemory memory;
    reference_host::HostApplication application{log, memory};
    test_support::ScriptedVitesseRegisters registers{application};
};

TEST_F(PortLocationTest, PortsAreInTwoBlocks) {
    expectLocation(0, 1, 0);
    expectLocation(1, 1, 1);
    expectLocation(7, 1, 7);
    expectLocation(15, 1, 15);
    expectLocation(16, 6, 0);
    expectLocation(17, 6, 1);
    expectLocation(23, 6, 7);
}

TEST_F(PortLocationTest, PortsBeyondTheChipOnlyGetTheirAddressCleared) {
    for (int const number : {24, 25, 31, 32, 128, 255}) {
        SCOPED_TRACE(testing::Message() << "port " << number);
        Bsa location{0x1111, 0x2222, 0x3333};
        EXPECT_FALSE(registers.portToBSA(static_cast<unsigned char>(number), location));
        EXPECT_EQ(location.block, 0x1111);
        EXPECT_EQ(location.subBlock, 0x2222);
        EXPECT_EQ(location.address, 0);
    }
}

TEST_F(PortLocationTest, ALocationStartsAtZero) {
    Bsa const location;
    EXPECT_EQ(location.block, 0);
    EXPECT_EQ(location.subBlock, 0);
    EXPECT_EQ(location.address, 0);
}

} // namespace
