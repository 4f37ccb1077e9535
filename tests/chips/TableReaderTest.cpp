// Tables of chips that have seen frames, and flushing what was learnt.

#include "chips/TableReader.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "board/BoardAccess.hpp"
#include "board/ModelBringUp.hpp"
#include "board/ReachedChip.hpp"
#include "simulation/network/SimulatedNetwork.hpp"

using chips::ChipTable;
using simulation::EthernetFrame;
using simulation::SimulatedNetwork;
using testing::IsEmpty;
using testing::SizeIs;
using Kind = ChipTable::Kind;

namespace {

constexpr EthernetFrame::Address station = 0x020000000001;
constexpr EthernetFrame::Address fixed = 0x020000000002;

class TableReaderTest : public testing::Test {
protected:
    std::vector<ChipTable::Row> rows(unsigned id, Kind kind) {
        board::ReachedChip chip(_access, id, models.getModel(id));
        return chip.getKind().makeTableReader(chip.getCatalogue(), chip.getTransport())->read(kind, {}).rows;
    }

    void flush(unsigned id, chips::TableReader::Scope const& scope) {
        board::ReachedChip chip(_access, id, models.getModel(id));
        auto learnt = rows(id, Kind::addresses);
        learnt.erase(
            std::remove_if(learnt.begin(), learnt.end(), [](auto const& row) { return *row.isStatic; }),
            learnt.end());
        chip.getKind().makeTableReader(chip.getCatalogue(), chip.getTransport())->flush(scope, learnt);
    }

    void send(SimulatedNetwork::End const& at, unsigned vid) {
        SimulatedNetwork network(models.getBoard());
        network.attach(at, [](EthernetFrame const&) {});
        auto const frame = EthernetFrame::make(EthernetFrame::broadcastAddress, station, 0x88B5);
        network.inject(at, vid == 0 ? frame : frame.withTagPushed({vid}));
        network.run();
    }

    board::ModelBringUp models{EXAMPLES_FOLDER "/trap-mixed.xml"};

private:
    board::BoardAccess _access{models.getBoard()};
};

} // namespace

TEST_F(TableReaderTest, AMarvellTellsWhereAnAddressWasLearntAndForgetsIt) {
    EXPECT_THAT(rows(0, Kind::addresses), IsEmpty());
    for (unsigned const port : {1U, 2U}) {
        send({0, 1}, 0);
        auto const found = rows(0, Kind::addresses);
        ASSERT_THAT(found, SizeIs(1));
        EXPECT_EQ(found[0].address, station);
        EXPECT_EQ(found[0].isStatic, false);
        EXPECT_EQ(found[0].vlans, std::vector<unsigned>{5});
        ASSERT_THAT(found[0].members, SizeIs(1));
        EXPECT_EQ(found[0].members[0].port, 1U);
        flush(0, port == 1 ? chips::TableReader::Scope{{}, 1} : chips::TableReader::Scope{5, {}});
        EXPECT_THAT(rows(0, Kind::addresses), IsEmpty());
    }
}

TEST_F(TableReaderTest, FlushingAnotherPortOfAMarvellLosesNothing) {
    send({0, 1}, 0);
    flush(0, {{}, 2});
    EXPECT_THAT(rows(0, Kind::addresses), SizeIs(1));
}

TEST_F(TableReaderTest, FlushingAPortOfAMarvellSparesTrunksOfThatNumberAndStaticAddresses) {
    auto& chip = models.getBoard().getMarvell(0);
    constexpr unsigned fid = 5;
    chip.setAtuEntry(fid, station, 0x8017);
    chip.setAtuEntry(fid, fixed, 0x001E);
    chip.setAtuEntry(fid, fixed + 1, 0x0017);
    EXPECT_THAT(rows(0, Kind::addresses), SizeIs(3));
    flush(0, {{}, 0});
    EXPECT_THAT(rows(0, Kind::addresses), SizeIs(2));
}

TEST_F(TableReaderTest, AVsc7390ForgetsWhatItLearntAndKeepsWhatIsLocked) {
    auto& chip = models.getBoard().getVitesse(3);
    ASSERT_TRUE(chip.learn(station, 5, 20));
    simulation::Vsc7390TestSide::MacEntry entry;
    entry.mac = fixed;
    entry.vid = 5;
    entry.locked = true;
    chip.setMacEntry(chip.getRow(fixed, 5), 3, entry);
    EXPECT_THAT(rows(3, Kind::addresses), SizeIs(2));
    flush(3, {});
    auto const left = rows(3, Kind::addresses);
    ASSERT_THAT(left, SizeIs(1));
    EXPECT_EQ(left[0].address, fixed);
    EXPECT_EQ(left[0].isStatic, true);
    EXPECT_THAT(rows(3, Kind::groups), SizeIs(2)) << "of the document";
}

TEST_F(TableReaderTest, VlansHaveTheirMembersAndTags) {
    auto const marvell = rows(0, Kind::vlans);
    ASSERT_THAT(marvell, testing::Not(IsEmpty()));
    EXPECT_EQ(marvell[0].vlans, std::vector<unsigned>{5});
    ASSERT_THAT(marvell[0].members, SizeIs(3));
    EXPECT_EQ(marvell[0].members[0].what, "untagged");
    EXPECT_EQ(marvell[0].members[2].what, "tagged");
    EXPECT_THAT(rows(3, Kind::vlans), SizeIs(3));
    EXPECT_THAT(rows(3, Kind::spanningTree), IsEmpty());
    EXPECT_THAT(rows(0, Kind::routes), SizeIs(11));
    EXPECT_THAT(rows(3, Kind::routes), SizeIs(25));
}
