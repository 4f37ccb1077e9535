// What is read off the registers is what stations get when frames are really sent, on the documents of all
// checks: each pair of ports, each VID, unknown and known stations, groups and broadcasts.

#include <gtest/gtest.h>

#include <memory>

#include "chips/ToolError.hpp"
#include "tests/board/paths/ComparedBoard.hpp"
#include "tests/board/paths/SentFrames.hpp"
#include "tests/switchctl/check/AllCases.hpp"

using board::FrameKind;
using board::RegisterPaths;
using board_test::ComparedBoard;
using board_test::SentFrames;
using reference_host::XmlDocument;
using simulation::EthernetFrame;

namespace {

#ifdef SLOW_BUILD
constexpr unsigned stepOfKnown = 7;
#else
constexpr unsigned stepOfKnown = 1;
#endif

/// Beyond the addresses of those that ask.
constexpr unsigned firstKnown = 0x1000;

struct Counts {
    std::size_t sent = 0;
    std::size_t copies = 0;
    std::size_t learned = 0;
};

class CasesByFramesTest : public testing::TestWithParam<CheckCase> {
protected:
    /// Null for a document that does not come up.
    static std::unique_ptr<ComparedBoard> bringUp(std::string const& text) {
        try {
            return std::make_unique<ComparedBoard>(XmlDocument::fromText(text, "board.xml"), "board.xml");
        } catch (chips::ToolError const&) {
            return nullptr;
        } catch (reference_host::XmlError const&) {
            return nullptr;
        }
    }

    void tryBoard(ComparedBoard& compared) {
        SentFrames stations(compared.bringUp.getBoard(), compared.registers);
        for (std::size_t to = 0; to < compared.frames.getDestinations().size(); ++to) {
            for (std::size_t tags = 0; tags < compared.frames.getTags().size(); ++tags) {
                EthernetFrame const frame = RegisterPaths::frameOf(compared.frames.getFrame(tags, to));
                sendFromAll(compared, stations, frame);
            }
        }
        for (auto const& [id, chip] : compared.registers.getChips()) {
            for (unsigned port = 0; port < chip->getNumberOfPorts(); port += stepOfKnown) {
                tryKnown(compared, stations, {id, port});
            }
        }
    }

    /// A station speaks at a port, with each tag, and gets answers from everywhere.
    void tryKnown(ComparedBoard& compared, SentFrames& stations, SentFrames::End const& at) {
        EthernetFrame::Address known = 0;
        for (FrameKind::Tags const& tags : compared.frames.getTags()) {
            FrameKind kind;
            kind.tags = tags;
            EthernetFrame const hello = RegisterPaths::frameOf(kind, firstKnown + at.switchId * 32 + at.port);
            known = hello.getSource();
            counts.learned +=
                compared.registers.getChips().at(at.switchId)->decide(at.port, hello).learnt ? 1 : 0;
            stations.send(at, hello);
        }
        for (FrameKind::Tags const& tags : compared.frames.getTags()) {
            FrameKind kind;
            kind.tags = tags;
            kind.address = known;
            sendFromAll(compared, stations, RegisterPaths::frameOf(kind));
        }
    }

    void sendFromAll(ComparedBoard& compared, SentFrames& stations, EthernetFrame const& frame) {
        for (auto const& [id, chip] : compared.registers.getChips()) {
            for (unsigned port = 0; port < chip->getNumberOfPorts(); ++port) {
                SentFrames::Arrivals const predicted = stations.predict({id, port}, frame);
                ASSERT_EQ(stations.send({id, port}, frame), predicted) << id << "." << port;
                ++counts.sent;
                counts.copies += predicted.size();
            }
        }
    }

    Counts counts;
};

TEST_P(CasesByFramesTest, StationsGetIt) {
    unsigned boards = 0;
    for (std::string const& text : {GetParam().with, GetParam().without}) {
        auto const compared = bringUp(text);
        if (compared == nullptr) {
            continue;
        }
        ++boards;
        ASSERT_NO_FATAL_FAILURE(tryBoard(*compared)) << text;
    }
    RecordProperty("boards", static_cast<int>(boards));
    RecordProperty("sent", static_cast<int>(counts.sent));
    RecordProperty("copies", static_cast<int>(counts.copies));
    RecordProperty("learned", static_cast<int>(counts.learned));
    if (boards == 0) {
        GTEST_SKIP() << "neither document comes up";
    }
    EXPECT_GT(counts.sent, 0U);
}

INSTANTIATE_TEST_SUITE_P(All, CasesByFramesTest, testing::ValuesIn(allCases()), nameOfCase);

} // namespace
