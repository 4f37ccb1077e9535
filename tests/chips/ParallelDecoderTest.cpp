// Accesses to a VSC7390's window that become register accesses.

#include "chips/vsc7390/ParallelDecoder.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "board/trace/TraceFormat.hpp"

using board::TraceChips;
using board::TraceFormat;
using chips::ParallelDecoder;
using chips::TraceAccess;
using chips::TraceSink;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr unsigned offsetOf(unsigned block, unsigned subBlock, unsigned address) {
    return block << 14 | subBlock << 10 | address << 2;
}

class ParallelDecoderTest : public testing::Test, private chips::TraceSink {
protected:
    ParallelDecoderTest() { chips.add(3, "vsc7390"); }

    static constexpr unsigned portMacConfig = offsetOf(1, 2, 0x00);
    static constexpr unsigned vlanMask = offsetOf(2, 0, 0x05);
    static constexpr unsigned chipIdentifier = offsetOf(7, 0, 0x18);
    static constexpr unsigned data = offsetOf(7, 0, 0x2C);
    static constexpr unsigned status = offsetOf(7, 0, 0x30);

    void reads(unsigned offset, std::uint32_t value, bool succeeded = true) {
        decoder.accessed({time += 100, offset, false, value, succeeded});
    }
    void writes(unsigned offset, std::uint32_t value, bool succeeded = true) {
        decoder.accessed({time += 100, offset, true, value, succeeded});
    }

    board::TraceChips chips;
    std::vector<std::string> lines;
    std::uint64_t time = 0;
    chips::ParallelDecoder decoder{3, *this};

private:
    void add(chips::TraceAccess const& access) override {
        lines.push_back(board::TraceFormat::line(chips, access));
    }
};

} // namespace

TEST_F(ParallelDecoderTest, AWriteIsOneAccess) {
    writes(portMacConfig, 0x10050000);
    writes(portMacConfig, 0x1, false);
    EXPECT_THAT(lines, ElementsAre("0.000000100 3 parallel W 1.2/0x00 port2/MAC_CFG 0x10050000 ok",
                                   "0.000000200 3 parallel W 1.2/0x00 port2/MAC_CFG 0x00000001 failed"));
}

TEST_F(ParallelDecoderTest, TheSystemBlockIsReadAtOnce) {
    reads(chipIdentifier, 0x17390001);
    reads(chipIdentifier, 0, false);
    EXPECT_THAT(lines, ElementsAre("0.000000100 3 parallel R 7.0/0x18 system/CHIPID 0x17390001 ok",
                                   "0.000000200 3 parallel R 7.0/0x18 system/CHIPID - failed"));
}

TEST_F(ParallelDecoderTest, OtherReadsEndWithTheirData) {
    reads(vlanMask, 0xDEADBEEF);
    reads(status, 0);
    reads(status, 0x10);
    EXPECT_THAT(lines, IsEmpty());
    reads(data, 0x01FFFFFF);
    EXPECT_THAT(lines, ElementsAre("0.000000400 3 parallel R 2.0/0x05 analyser/VLANMASK 0x01ffffff ok"));
}

TEST_F(ParallelDecoderTest, AReadThatIsStartedOverIsOne) {
    reads(vlanMask, 0);
    reads(status, 0);
    reads(vlanMask, 0);
    reads(status, 0x10);
    reads(data, 7);
    EXPECT_THAT(lines, ElementsAre("0.000000500 3 parallel R 2.0/0x05 analyser/VLANMASK 0x00000007 ok"));
}

TEST_F(ParallelDecoderTest, AReadThatIsGivenUpHasFailed) {
    reads(vlanMask, 0);
    reads(status, 0);
    writes(portMacConfig, 1);
    reads(vlanMask, 0);
    reads(portMacConfig, 0);
    decoder.finish();
    EXPECT_THAT(lines, ElementsAre("0.000000200 3 parallel R 2.0/0x05 analyser/VLANMASK - failed",
                                   "0.000000300 3 parallel W 1.2/0x00 port2/MAC_CFG 0x00000001 ok",
                                   "0.000000400 3 parallel R 2.0/0x05 analyser/VLANMASK - failed",
                                   "0.000000500 3 parallel R 1.2/0x00 port2/MAC_CFG - failed"));
}

TEST_F(ParallelDecoderTest, AReadThatCannotStartHasFailed) {
    reads(vlanMask, 0, false);
    EXPECT_THAT(lines, ElementsAre("0.000000100 3 parallel R 2.0/0x05 analyser/VLANMASK - failed"));
}

TEST_F(ParallelDecoderTest, StatusAndDataByThemselvesAreRegisters) {
    reads(status, 0x10);
    EXPECT_THAT(lines, ElementsAre("0.000000100 3 parallel R 7.0/0x30 system/IndirectStatus 0x00000010 ok"));
}
