// Reading traces back, and refusing what is none.

#include "board/trace/TraceReader.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "board/trace/TraceFormat.hpp"
#include "chips/ToolError.hpp"

using board::TraceFormat;
using board::TraceReader;
using chips::ExitStatus;
using chips::ToolError;
using chips::TraceAccess;

namespace {

std::string const header = "switchctl trace 1\nchip 0 88e6096\nchip 3 vsc7390\n";

board::TraceReader read(std::string const& text) {
    std::istringstream in(text);
    return {in, "t.txt"};
}

std::string refusalOf(std::string const& text) {
    try {
        read(text);
    } catch (chips::ToolError const& error) {
        EXPECT_EQ(error.getStatus(), chips::ExitStatus::badDocument);
        return error.what();
    }
    return "accepted";
}

struct Malformed {
    char const* line;
    char const* reason;
};

class MalformedTraceTest : public testing::TestWithParam<Malformed> {};

} // namespace

TEST(TraceReaderTest, ReadsWhatIsWritten) {
    std::string const lines[] = {
        "0.000153600 0 smi R 0x10/0x03 port0/SwitchIdentifier 0x0980 ok",
        "0.000256000 0 smi W 0x1b/0x0a global1/ATUControl 0x0140 ok",
        "0.000256100 3 parallel W 1.2/0x00 port2/MAC_CFG 0x10050000 failed",
        "1.500000000 3 serial R 7.0/0x18 system/CHIPID - failed",
        "1.500000001 0 smi R phy3/0x02 phy3/Identifier1 0x0141 ok",
        "2.000000000 0 smi R - SMICommand 0xffff failed",
        "2.000000000 0 smi W 0x1f/0x1e - 0x1234 ok",
    };
    std::string text = header;
    for (std::string const& line : lines) {
        text += line + "\n";
    }
    board::TraceReader const trace = read(text);
    ASSERT_EQ(trace.getLines().size(), std::size(lines));
    for (std::size_t index = 0; index < std::size(lines); ++index) {
        EXPECT_EQ(trace.getLines()[index].number, index + 4);
        EXPECT_EQ(board::TraceFormat::line(trace.getChips(), trace.getLines()[index].access), lines[index]);
    }
    chips::TraceAccess const& third = trace.getLines()[2].access;
    EXPECT_EQ(third.nanoseconds, 256'100U);
    EXPECT_EQ(third.switchId, 3U);
    EXPECT_TRUE(third.isWrite);
    EXPECT_FALSE(third.succeeded);
    EXPECT_EQ(third.value, 0x10050000U);
}

TEST(TraceReaderTest, CommentsAndEmptyLinesAreNothing) {
    board::TraceReader const trace = read(header + "\n# a comment\n  # another\n");
    EXPECT_TRUE(trace.getLines().empty());
    EXPECT_EQ(trace.getChips().getAll().size(), 2U);
}

TEST(TraceReaderTest, FilesThatAreNoTraceAreRefused) {
    EXPECT_EQ(refusalOf(""), "t.txt:1: the file is empty");
    EXPECT_EQ(refusalOf("<board/>\n"), "t.txt:1: not a trace, which begins with \"switchctl trace 1\"");
    EXPECT_EQ(refusalOf("switchctl trace 2\n"), "t.txt:1: version \"2\" of the format is not known");
}

TEST_P(MalformedTraceTest, IsRefusedWithFileLineAndReason) {
    EXPECT_EQ(refusalOf(header + GetParam().line + "\n"), std::string("t.txt:4: ") + GetParam().reason);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, MalformedTraceTest,
    testing::Values(Malformed{"chip 1", "not of the form \"chip ID MODEL\""},
                    Malformed{"chip x 88e6096", "\"x\" is not the id of a switch"},
                    Malformed{"chip 65536 88e6096", "\"65536\" is not the id of a switch"},
                    Malformed{"chip 0 88e6096", "chip 0 is there already"},
                    Malformed{"chip 1 abacus", "no model of a \"abacus\""},
                    Malformed{"0.1 0 smi R", "an access has 8 words, not 4"},
                    Malformed{"0.1 0 smi R 0x10/0x03 port0/SwitchIdentifier 0x0980 ok",
                              "\"0.1\" is not a time in seconds with nine decimals"},
                    Malformed{"-.000000000 0 smi R 0x10/0x03 port0/SwitchIdentifier 0x0980 ok",
                              "\"-.000000000\" is not a time in seconds with nine decimals"},
                    Malformed{"0.000000000 7 smi R 0x10/0x03 port0/SwitchIdentifier 0x0980 ok",
                              "there is no chip \"7\" above"},
                    Malformed{"0.000000000 0 parallel R 0x10/0x03 port0/SwitchIdentifier 0x0980 ok",
                              "\"parallel\" is not a transport of a 88e6096"},
                    Malformed{"0.000000000 3 smi R 7.0/0x18 system/CHIPID 0x00000000 ok",
                              "\"smi\" is not a transport of a vsc7390"},
                    Malformed{"0.000000000 0 i2c R 0x10/0x03 port0/SwitchIdentifier 0x0980 ok",
                              "\"i2c\" is not a transport of a 88e6096"},
                    Malformed{"0.000000000 0 smi X 0x10/0x03 port0/SwitchIdentifier 0x0980 ok",
                              "\"X\" is neither R nor W"},
                    Malformed{"0.000000000 0 smi R 0x10/0x04 port0/SwitchIdentifier 0x0980 ok",
                              "0x10/0x04 is \"port0/PortControl\", not \"port0/SwitchIdentifier\""},
                    Malformed{"0.000000000 0 smi R 0x10/0x03 - 0x0980 ok",
                              "0x10/0x03 is \"port0/SwitchIdentifier\", not \"-\""},
                    Malformed{"0.000000000 0 smi R 0x10/0x03 port0/SwitchIdentifier 0x10980 ok",
                              "\"0x10980\" is not a value of 16 bits"},
                    Malformed{"0.000000000 0 smi R 0x10/0x03 port0/SwitchIdentifier zero ok",
                              "\"zero\" is not a value of 16 bits"},
                    Malformed{"0.000000000 0 smi R 0x10/0x03 port0/SwitchIdentifier 0x0980 fine",
                              "\"fine\" is neither ok nor failed"},
                    Malformed{"0.000000000 0 smi R 0x10/0x03 port0/SwitchIdentifier - ok",
                              "only a read that has failed has no value"},
                    Malformed{"0.000000000 0 smi W 0x10/0x04 port0/PortControl - failed",
                              "only a read that has failed has no value"},
                    Malformed{"0.000000000 0 smi R - SMICommand 0x0000 ok",
                              "an access without a register cannot be ok"}));

TEST(TraceReaderTest, NumbersThatAreNoRegisterAreRefused) {
    for (char const* const number : {"0x10", "0x10/", "0x20/0x00", "0x10/0x20", "nonsense/0x00", "-"}) {
        std::string const line = std::string("0.000000000 0 smi R ") + number + " x 0x0000 ok\n";
        EXPECT_THAT(refusalOf(header + line), testing::StartsWith("t.txt:4: ")) << number;
    }
}
