// Flushing chips that hold static addresses, and others that were learnt from frames, besides.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "switchctl/table/BoardTableReader.hpp"
#include "switchctl/table/SimulatedStation.hpp"
#include "switchctl/table/TableFlush.hpp"

using chips::ChipTable;
using switchctl::table::BoardTable;
using switchctl::table::BoardTableReader;
using switchctl::table::SimulatedStation;
using switchctl::table::TableFilter;
using switchctl::table::TableFlush;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

constexpr std::uint64_t fixed = 0x02000000000F;

/// Three stations of VLAN 5 and a static address on each kind of chip.
class TableFlushTest : public testing::Test {
protected:
    TableFlushTest() {
        for (char const* const text : {"0.1=02:00:00:00:00:01", "0.2=02:00:00:00:00:02",
                                       "3.20=02:00:00:00:00:03/5", "3.21=02:00:00:00:00:04/6"}) {
            SimulatedStation(text).send(_models);
        }
        auto& marvell = _models.getBoard().getMarvell(0);
        // Static, at port 1.
        marvell.setAtuEntry(5, fixed, 0x002E);
        auto& vitesse = _models.getBoard().getVitesse(3);
        simulation::Vsc7390TestSide::MacEntry entry;
        entry.mac = fixed;
        entry.vid = 5;
        entry.locked = true;
        vitesse.setMacEntry(vitesse.getRow(fixed, 5), 3, entry);
    }

    /// \param words as on a command line.
    TableFlush flush(std::vector<std::string> const& words) {
        TableFilter filter;
        switchctl::Arguments program("switchctl", "", "");
        auto command = program.subcommand("table", "");
        filter.addTo(command);
        std::vector<std::string> line = {"table"};
        line.insert(line.end(), words.begin(), words.end());
        std::ostringstream ignored;
        EXPECT_FALSE(program.parse(line, ignored, ignored)) << ignored.str();
        BoardTableReader reader(_access, _models.getDocument(), filter);
        BoardTable before = reader.read(ChipTable::Kind::addresses);
        reader.flush(before);
        return TableFlush(before, reader.read(ChipTable::Kind::addresses));
    }

    /// All addresses that a chip has now.
    std::vector<std::uint64_t> addressesOf(unsigned id) {
        TableFilter const all;
        std::vector<std::uint64_t> addresses;
        for (BoardTable::Part const& part :
             BoardTableReader(_access, _models.getDocument(), all).read(ChipTable::Kind::addresses).parts) {
            for (ChipTable::Row const& row :
                 part.switchId == id ? part.table->rows : std::vector<ChipTable::Row>()) {
                addresses.push_back(*row.address);
            }
        }
        return addresses;
    }

    board::ModelBringUp _models{EXAMPLES_FOLDER "/trap-mixed.xml"};
    board::BoardAccess _access{_models.getBoard()};
};

} // namespace

TEST_F(TableFlushTest, EverythingThatWasLearntGoesAndStaticAddressesStay) {
    EXPECT_THAT(addressesOf(0), SizeIs(3));
    EXPECT_THAT(addressesOf(3), SizeIs(3));
    auto const json = flush({}).toJson(_models.getDocument());
    EXPECT_THAT(addressesOf(0), ElementsAre(fixed));
    EXPECT_THAT(addressesOf(3), ElementsAre(fixed));
    EXPECT_THAT(json[0]["flushed"], SizeIs(2));
    EXPECT_THAT(json[0]["there"], IsEmpty());
    EXPECT_EQ(json[0]["staticKept"], 1);
    EXPECT_THAT(json[3]["flushed"], SizeIs(2));
    EXPECT_EQ(json[3]["staticKept"], 1);
}

TEST_F(TableFlushTest, OnePortsAddressesGo) {
    flush({"--port", "0.1"});
    EXPECT_THAT(addressesOf(0), ElementsAre(0x020000000002, fixed));
    EXPECT_THAT(addressesOf(3), SizeIs(3));
    flush({"--port", "3.21"});
    EXPECT_THAT(addressesOf(3), SizeIs(2));
}

TEST_F(TableFlushTest, OneVlansAddressesGo) {
    flush({"--vlan", "6"});
    EXPECT_THAT(addressesOf(0), SizeIs(3));
    EXPECT_THAT(addressesOf(3), SizeIs(2));
    flush({"--vlan", "5"});
    EXPECT_THAT(addressesOf(0), ElementsAre(fixed));
    EXPECT_THAT(addressesOf(3), ElementsAre(fixed));
}

TEST_F(TableFlushTest, OnePortsAddressesOfOneVlanGo) {
    flush({"--vlan", "5", "--port", "0.2"});
    EXPECT_THAT(addressesOf(0), ElementsAre(0x020000000001, fixed));
}

TEST_F(TableFlushTest, AChipThatIsGoneIsNotTakenForFlushed) {
    _models.getBoard().getMarvell(0).unplug();
    TableFlush const result = flush({});
    EXPECT_THAT(result.getUnread(), ElementsAre(HasSubstr("switch 0: no 88e6096 answers")));
    auto const json = result.toJson(_models.getDocument());
    EXPECT_EQ(json[0]["unread"], true);
    EXPECT_FALSE(json[0].contains("flushed"));
    EXPECT_EQ(json[1]["unread"], false);
}
