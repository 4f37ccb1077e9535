#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

#include "marvell/Arm920tMdioAccess.hpp"
#include "tests/support/MacBench.hpp"
#include "tests/support/MdioScript.hpp"
#include "tests/support/NullMemory.hpp"

using test_support::frameReads;
using test_support::Lines;
using test_support::MacBench;
using test_support::MdioScript;
using test_support::NullMemory;
using test_support::RecordingLog;
using testing::AllOf;
using testing::Each;
using testing::HasSubstr;

namespace {

class MdioAccessLifetimeTest : public testing::Test {
protected:
    std::unique_ptr<Arm920tMdioAccess> open(bool noHardwareAccess = false) {
        return std::make_unique<Arm920tMdioAccess>(bench.application, noHardwareAccess);
    }

    MacBench<MdioScript> bench;
};

static_assert(std::is_nothrow_destructible<Arm920tMdioAccess>::value, "restoring must not throw");

TEST_F(MdioAccessLifetimeTest, MapsTheRegistersOfTheMac) {
    auto mdio = open();
    EXPECT_EQ(bench.memory.lastPhysicalAddress(), 0x80010000U);
    EXPECT_EQ(bench.memory.lastSize(), 0x30U);
    EXPECT_EQ(bench.memory.mappedSections(), 1);
    mdio.reset();
    EXPECT_EQ(bench.memory.mappedSections(), 0);
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST_F(MdioAccessLifetimeTest, SetsTheClockWhileItLivesAndRestoresTheControlRegister) {
    bench.script.setControl(0xDEAD'BEEF);
    auto mdio = open();
    EXPECT_EQ(bench.script.getControl(), 0x3E00U);
    mdio.reset();
    EXPECT_EQ(bench.script.getControl(), 0xDEAD'BEEFU);
    EXPECT_EQ(bench.script.wordAccesses(), 3);
}

TEST_F(MdioAccessLifetimeTest, NestedObjectsRestoreWhatWasThereBeforeTheFirst) {
    bench.script.setControl(0x5A00);
    auto outer = open();
    auto inner = open();
    EXPECT_EQ(bench.memory.mappedSections(), 2);
    inner.reset();
    EXPECT_EQ(bench.script.getControl(), 0x3E00U);
    outer.reset();
    EXPECT_EQ(bench.script.getControl(), 0x5A00U);
    EXPECT_EQ(bench.memory.mappedSections(), 0);
}

TEST_F(MdioAccessLifetimeTest, TheObjectThatGoesLastDecidesWhatIsLeftBehind) {
    bench.script.setControl(0x5A00);
    auto first = open();
    auto second = open();
    first.reset();
    EXPECT_EQ(bench.script.getControl(), 0x5A00U);
    second.reset();
    EXPECT_EQ(bench.script.getControl(), 0x3E00U);
}

TEST_F(MdioAccessLifetimeTest, WithoutHardwareAccessNothingIsMappedOrTouched) {
    auto mdio = open(true);
    unsigned short value = 0;
    EXPECT_FALSE(mdio->isMacBusy());
    EXPECT_TRUE(mdio->mdioReadRegister(3, 2, value));
    EXPECT_TRUE(mdio->mdioWriteRegister(3, 2, 0xBEEF));
    mdio.reset();
    EXPECT_EQ(bench.memory.mappingsSoFar(), 0);
    EXPECT_EQ(bench.script.wordAccesses(), 0);
    EXPECT_EQ(bench.log.take(), Lines{});
}

TEST(MdioAccessOnNoHardware, TransfersClaimSuccessWhenTheSectionCouldNotBeMapped) {
    RecordingLog log;
    NullMemory memory;
    reference_host::HostApplication application(log, memory);
    {
        Arm920tMdioAccess mdio(application, false);
        EXPECT_THAT(log.take(), AllOf(testing::SizeIs(1), Each(HasSubstr("MiiAccess"))))
            << "the host names the section that it could not map";
        unsigned short value = 0;
        EXPECT_FALSE(mdio.isMacBusy());
        EXPECT_TRUE(mdio.mdioReadRegister(3, 2, value));
        EXPECT_TRUE(mdio.mdioWriteRegister(3, 2, 0xBEEF));
    }
    EXPECT_EQ(log.take(), Lines{});
}

class DummySection : public MappedSection {
public:
    explicit DummySection(SystemLogInterface& log) : MappedSection("Dummy", log, false) {}
    void becomeDummy() { _dummySection = this; }
    static unsigned int writeCount() { return _dummySectionWriteCounts; }
};

TEST_F(MdioAccessLifetimeTest, EveryWordWrittenIsCountedInTheDummySection) {
    std::uint32_t counter = 0;
    bench.memory.place(0x2000, 4, reinterpret_cast<std::uintptr_t>(&counter));
    DummySection dummy(bench.application);
    ASSERT_TRUE(dummy.map(0x2000, 4));
    dummy.becomeDummy();
    unsigned int const before = DummySection::writeCount();
    auto mdio = open();
    EXPECT_EQ(counter, before + 1) << "the control register";
    bench.script.expect({frameReads(3, 2, 0x1234)});
    unsigned short value = 0;
    EXPECT_TRUE(mdio->mdioReadRegister(3, 2, value));
    EXPECT_EQ(counter, before + 2) << "one command";
    mdio.reset();
    EXPECT_EQ(counter, before + 3) << "the control register";
    EXPECT_EQ(DummySection::writeCount(), before + 3);
}

} // namespace
