// The stations that ping, byte by byte: what they send is worked out by hand from RFC 826, 791 and 792.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/support/IpStation.hpp"

using simulation::EthernetFrame;
using test_support::IpStation;

namespace {

class IpStationTest : public testing::Test {
protected:
    static EthernetFrame frameOf(std::string const& digits) {
        EthernetFrame::Bytes bytes;
        for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
            bytes.push_back(static_cast<std::uint8_t>(std::stoul(digits.substr(i, 2), nullptr, 16)));
        }
        bytes.resize(std::max<std::size_t>(bytes.size(), 60));
        return EthernetFrame(bytes);
    }

    void expectSent(std::vector<std::string> const& expected) {
        ASSERT_EQ(_sent.size(), expected.size());
        for (std::size_t i = 0; i < expected.size(); ++i) {
            EXPECT_EQ(_sent[i], frameOf(expected[i])) << i;
        }
    }

    std::vector<EthernetFrame> _sent;
    IpStation _station{0x020000000007, 0x0A000407,
                       [this](EthernetFrame const& frame) { _sent.push_back(frame); }};

    std::string const _question = "FFFFFFFFFFFF020000000007"
                                  "0806"
                                  "0001080006040001"
                                  "0200000000070A000407"
                                  "0000000000000A000405";
    std::string const _answer = "020000000007020000000005"
                                "0806"
                                "0001080006040002"
                                "0200000000050A000405"
                                "0200000000070A000407";
    std::string const _data = "6162636465666768696A6B6C6D6E6F707172737475767778797A616263646566";
    std::string const _echo = "020000000005020000000007"
                              "0800"
                              "4500003C0000000040015EB60A0004070A000405"
                              "080021351D000102" +
                              _data;
    std::string const _reply = "020000000007020000000005"
                               "0800"
                               "4500003C0000000040015EB60A0004050A000407"
                               "000029351D000102" +
                               _data;
};

TEST_F(IpStationTest, AsksForTheAddressThenSendsTheEcho) {
    _station.ping(0x0A000405, 0x0102);
    expectSent({_question});
    _station.receive(frameOf(_answer));
    expectSent({_question, _echo});
    EXPECT_TRUE(_station.getAnswered().empty());
    _station.receive(frameOf(_reply));
    EXPECT_EQ(_station.getAnswered(), std::vector<unsigned>{0x0102});
    EXPECT_EQ(_station.getDamaged(), 0U);
}

TEST_F(IpStationTest, AnswersQuestionsAndEchoes) {
    IpStation other(0x020000000005, 0x0A000405,
                    [this](EthernetFrame const& frame) { _sent.push_back(frame); });
    other.receive(frameOf(_question));
    expectSent({_answer});
    other.receive(frameOf(_echo));
    expectSent({_answer, _reply});
}

TEST_F(IpStationTest, SaysNothingToWhatIsNotForIt) {
    _station.receive(frameOf(_question));
    _station.receive(frameOf(_echo));
    _station.receive(frameOf(_answer).withTagPushed({4, 0, false}));
    expectSent({});
    EXPECT_TRUE(_station.getNeighbours().empty());
}

TEST_F(IpStationTest, DamagedPacketsAreNotTaken) {
    _station.receive(frameOf(_answer));
    for (std::size_t const at : {14U, 17U, 25U, 35U, 40U, 70U}) {
        EthernetFrame::Bytes bytes = frameOf(_reply).getBytes();
        bytes[at] ^= 0x40;
        _station.receive(EthernetFrame(bytes));
    }
    EXPECT_TRUE(_station.getAnswered().empty());
    EXPECT_EQ(_station.getDamaged(), 6U);
}

} // namespace
