#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "simulation/Field.hpp"
#include "simulation/RegisterFile.hpp"

using simulation::Field;
using simulation::Register;
using simulation::RegisterFile;
using simulation::RegisterTable;
using simulation::Services;

namespace {

static_assert(Field("All", 31, 0).getMask() == 0xFFFFFFFF);
static_assert(Field("Two", 4, 3).getMask() == 0x18);
static_assert(Field("Inner", 11, 4).get(0x1234) == 0x23);
static_assert(Field("Cut", 11, 8).placed(0x1F) == 0xF00);
static_assert(Field("Top", 31).isSet(0x80000000) && !Field("Top", 31).isSet(0x7FFFFFFF));

// Registers of 32 bits, as chips on a parallel bus have them.
class RegisterFileTest : public testing::Test {
protected:
    RegisterFile make() {
        return RegisterFile(_services, {"chip", "unit"},
                            {Register(0, "Command", 0x80000000)
                                 .field("Low", 7, 0)
                                 .ignored({"Middle", 15, 8})
                                 .readOnly("High", 31, 28)
                                 .onRead([](std::uint32_t stored) { return stored | 0x10000000; })
                                 .onWrite([this](std::uint32_t stored) { _written = stored; })});
    }

    Services _services;
    std::uint32_t _written = 0;
};

TEST_F(RegisterFileTest, OnlyWritableBitsAreStoredAndHandedOn) {
    RegisterFile file = make();
    file.write(0, 0x000000FF, 1);
    EXPECT_EQ(_written, 0x800000FFU);
    EXPECT_EQ(file.getStored(0), 0x800000FFU);
    EXPECT_EQ(file.read(0, 2), 0x900000FFU);
    EXPECT_EQ(_services.misuse.getSize(), 0U);
}

TEST_F(RegisterFileTest, OnlyBitsThatWereNotShownAreRefusedAloud) {
    RegisterFile file = make();
    file.write(0, 0x9000FF00, 1);
    EXPECT_EQ(_services.misuse.getSize(), 0U);
    file.write(0, 0x40000000, 2);
    EXPECT_EQ(_services.misuse.getSize(), 1U);
    EXPECT_EQ(file.getStored(0), 0x80000000U);
}

TEST_F(RegisterFileTest, ResetRestoresTheTable) {
    RegisterFile file = make();
    file.write(0, 5, 1);
    file.write(9, 5, 2);
    file.reset();
    EXPECT_EQ(file.getStored(0), 0x80000000U);
    EXPECT_EQ(file.getStored(9), 0U);
}

TEST_F(RegisterFileTest, StoringCallsNoHook) {
    RegisterFile file = make();
    file.store(0, 3);
    EXPECT_EQ(_written, 0U);
    EXPECT_EQ(file.peek(0), 0x10000003U);
}

TEST_F(RegisterFileTest, StuckBitsBeatEverything) {
    RegisterFile file = make();
    file.stick(0, 0x00000100, 0x10000000);
    EXPECT_EQ(file.peek(0), 0x80000100U);
}

TEST_F(RegisterFileTest, WithoutLoggingTheLogStaysEmpty) {
    RegisterFile file(_services, {"chip", "unit"}, {}, RegisterFile::Logging::off);
    file.write(1, 2, 0);
    file.read(1, 0);
    EXPECT_EQ(_services.log.getSize(), 0U);
}

TEST_F(RegisterFileTest, TellsWhatChangedAfterItsEffect) {
    RegisterFile file = make();
    std::vector<std::pair<unsigned, std::uint32_t>> changes;
    file.onChange([&](unsigned address) { changes.emplace_back(address, _written); });
    file.write(0, 5, 1);
    file.write(9, 1, 2);
    file.poke(7, 1);
    file.stick(8, 1, 0);
    file.stick(8, 0, 0);
    EXPECT_EQ(changes,
              (std::vector<std::pair<unsigned, std::uint32_t>>{
                  {0, 0x80000005}, {9, 0x80000005}, {7, 0x80000005}, {8, 0x80000005}, {8, 0x80000005}}));
    changes.clear();
    file.read(0, 3);
    file.store(0, 6);
    file.reset();
    EXPECT_TRUE(changes.empty());
}

} // namespace
