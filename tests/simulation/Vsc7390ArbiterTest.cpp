#include "tests/simulation/Vsc7390Fixture.hpp"

using simulation_test::Vsc7390Fixture;

namespace {

class Vsc7390ArbiterTest : public Vsc7390Fixture {
protected:
    static constexpr unsigned allPorts = 0x01FFFFFF;

    unsigned empty() { return chip().peek("arbiter", 0x0C); }
    void discard(unsigned mask) { write(arbiter, 0, 0x0E, mask); }
};

TEST_F(Vsc7390ArbiterTest, APortWithoutFramesIsEmpty) {
    EXPECT_EQ(read(arbiter, 0, 0x0C), allPorts);
    discard(0x8);
    EXPECT_EQ(read(arbiter, 0, 0x0C), allPorts);
    EXPECT_EQ(read(arbiter, 0, 0x0E), 0x8U);
    discard(0);
    EXPECT_EQ(read(arbiter, 0, 0x0C), allPorts);
}

TEST_F(Vsc7390ArbiterTest, FramesWaitUntilTheyAreDiscarded) {
    chip().queueFrames(3);
    chip().queueFrames(23);
    EXPECT_EQ(empty(), allPorts & ~0x800008U);
    discard(0x8);
    EXPECT_EQ(empty(), allPorts & ~0x800000U);
    discard(0);
    EXPECT_EQ(empty(), allPorts & ~0x800000U) << "they do not come back";
}

TEST_F(Vsc7390ArbiterTest, APortThatStillReceivesIsNeverDone) {
    writePort(3, 0x00, 0x00010000);
    chip().queueFrames(3);
    discard(0x8);
    EXPECT_EQ(empty(), allPorts & ~0x8U);
    writePort(3, 0x00, 0);
    EXPECT_EQ(empty(), allPorts);
}

TEST_F(Vsc7390ArbiterTest, ALateDrain) {
    Options options;
    options.arbiterDrainNanoseconds = 30'000;
    rebuild(options);
    discard(0x8);
    EXPECT_EQ(empty(), allPorts & ~0x8U);
    advance(29'999);
    EXPECT_EQ(empty(), allPorts & ~0x8U);
    advance(1);
    EXPECT_EQ(empty(), allPorts);
    discard(0x8);
    EXPECT_EQ(empty(), allPorts) << "nothing new to discard";
    discard(0x18);
    EXPECT_EQ(empty(), allPorts & ~0x18U);
    discard(0);
    EXPECT_EQ(empty(), allPorts);
    EXPECT_EQ(chip().getCommands(Unit::arbiter), 2U);
}

TEST_F(Vsc7390ArbiterTest, ADrainThatTakesForEver) {
    chip().hang(Unit::arbiter);
    discard(0x8);
    advance(3'600'000'000'000);
    EXPECT_EQ(read(arbiter, 0, 0x0C), allPorts & ~0x8U);
    chip().release(Unit::arbiter);
    EXPECT_EQ(read(arbiter, 0, 0x0C), allPorts);
}

TEST_F(Vsc7390ArbiterTest, EmptyIsReadOnly) {
    write(arbiter, 0, 0x0C, 0);
    EXPECT_EQ(read(arbiter, 0, 0x0C), allPorts);
}

} // namespace
