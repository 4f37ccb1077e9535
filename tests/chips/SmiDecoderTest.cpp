// MDIO frames of an 88E6096 that become register accesses.

#include "chips/88e6096/SmiDecoder.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "board/trace/TraceFormat.hpp"

using board::TraceChips;
using board::TraceFormat;
using chips::SmiDecoder;
using chips::TraceAccess;
using chips::TraceSink;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class SmiDecoderTest : public testing::Test, private chips::TraceSink {
protected:
    SmiDecoderTest() { chips.add(4, "88e6096"); }

    static constexpr unsigned command = 0;
    static constexpr unsigned data = 1;
    static constexpr std::uint16_t busy = 0x8000;
    /// Clause 22, operation, device 0x13 (port 3), register 4.
    static constexpr std::uint16_t readPort3 = 0x9A64;
    static constexpr std::uint16_t writePort3 = 0x9664;

    board::TraceChips chips;
    std::vector<std::string> lines;
    chips::SmiDecoder decoder{4, *this};

private:
    void add(chips::TraceAccess const& access) override {
        lines.push_back(board::TraceFormat::line(chips, access));
    }
};

} // namespace

TEST_F(SmiDecoderTest, AWriteIsDataThenCommand) {
    decoder.frameRead(100, command, 0, true);
    decoder.frameWritten(200, data, 0x007F, true);
    EXPECT_THAT(lines, IsEmpty());
    decoder.frameWritten(300, command, writePort3, true);
    EXPECT_THAT(lines, ElementsAre("0.000000300 4 smi W 0x13/0x04 port3/PortControl 0x007f ok"));
}

TEST_F(SmiDecoderTest, AReadIsCommandWaitData) {
    decoder.frameWritten(100, command, readPort3, true);
    decoder.frameRead(200, command, busy, true);
    decoder.frameRead(300, command, 0, true);
    EXPECT_THAT(lines, IsEmpty());
    decoder.frameRead(400, data, 0x007C, true);
    EXPECT_THAT(lines, ElementsAre("0.000000400 4 smi R 0x13/0x04 port3/PortControl 0x007c ok"));
}

TEST_F(SmiDecoderTest, AFrameThatFailsFailsTheAccess) {
    decoder.frameWritten(100, data, 1, false);
    decoder.frameWritten(200, command, writePort3, true);
    decoder.frameWritten(300, data, 2, true);
    decoder.frameWritten(400, command, writePort3, false);
    decoder.frameWritten(500, command, readPort3, true);
    decoder.frameRead(600, data, 3, false);
    decoder.frameWritten(700, command, readPort3, false);
    decoder.frameRead(800, data, 4, true);
    EXPECT_THAT(lines, ElementsAre("0.000000200 4 smi W 0x13/0x04 port3/PortControl 0x0001 failed",
                                   "0.000000400 4 smi W 0x13/0x04 port3/PortControl 0x0002 failed",
                                   "0.000000600 4 smi R 0x13/0x04 port3/PortControl - failed",
                                   "0.000000800 4 smi R 0x13/0x04 port3/PortControl - failed"));
}

TEST_F(SmiDecoderTest, AReadWhoseChipStaysBusyFails) {
    decoder.frameWritten(0, command, readPort3, true);
    for (std::uint64_t look = 0; look <= 1'000'000'000; look += 100'000'000) {
        decoder.frameRead(look, command, busy, true);
    }
    EXPECT_THAT(lines, IsEmpty()) << "the next look may find it ready";
    decoder.frameRead(1'100'000'000, command, 0, true);
    EXPECT_THAT(lines, ElementsAre("1.000000000 4 smi R 0x13/0x04 port3/PortControl - failed"));
}

TEST_F(SmiDecoderTest, AChipThatNeverTakesTheAccessFailsWithoutRegister) {
    for (std::uint64_t look = 0; look <= 2'100'000'000; look += 100'000'000) {
        decoder.frameRead(look, command, 0xFFFF, true);
    }
    decoder.finish();
    EXPECT_THAT(lines, ElementsAre("1.000000000 4 smi R - SMICommand 0xffff failed",
                                   "2.100000000 4 smi R - SMICommand 0xffff failed"));
}

TEST_F(SmiDecoderTest, AChipThatIsBusyForAWhileDoesNotFail) {
    for (std::uint64_t look = 0; look <= 900'000'000; look += 100'000'000) {
        decoder.frameRead(look, command, busy, true);
    }
    decoder.frameRead(950'000'000, command, 0, true);
    decoder.finish();
    EXPECT_THAT(lines, IsEmpty());
}

TEST_F(SmiDecoderTest, AReadThatNothingEndsFails) {
    decoder.frameWritten(100, command, readPort3, true);
    decoder.frameWritten(200, data, 0x0001, true);
    decoder.frameWritten(300, command, writePort3, true);
    decoder.frameWritten(400, command, readPort3, true);
    decoder.finish();
    EXPECT_THAT(lines, ElementsAre("0.000000300 4 smi R 0x13/0x04 port3/PortControl - failed",
                                   "0.000000300 4 smi W 0x13/0x04 port3/PortControl 0x0001 ok",
                                   "0.000000400 4 smi R 0x13/0x04 port3/PortControl - failed"));
}
