// Addresses that chips learned are in dumps, and in models that are loaded from them.

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "board/BoardAccess.hpp"
#include "board/dump/DumpReader.hpp"
#include "board/paths/LoadedBoard.hpp"
#include "chips/ChipKinds.hpp"
#include "tests/board/paths/ComparedBoard.hpp"

using board::RegisterDump;
using board_test::ComparedBoard;

namespace {

/// As `register dump --tables` writes it.
std::string dumpOf(simulation::SimulatedBoard& board, unsigned id, std::string const& model,
                   std::string const& transport) {
    RegisterDump dump;
    dump.catalogue = std::make_shared<chips::ChipCatalogue const>(model);
    dump.transport = transport;
    board::BoardAccess access(board);
    auto const way = access.connect(id, model);
    for (chips::RegisterLocation const& location : dump.catalogue->getAll()) {
        if (location.address.space != chips::RegisterAddress::Space::phy &&
            !location.description->isChangedByRead()) {
            dump.readings.push_back({location, way->read(location)});
        }
    }
    auto const tables = chips::ChipKinds::get(model, "test").makeTables(*dump.catalogue);
    tables->takeAll();
    tables->takeLearned();
    chips::ChipImage image;
    tables->read(*way, image);
    dump.addTables(image, tables->getNames());
    std::ostringstream text;
    dump.print(text);
    return text.str();
}

} // namespace

TEST(DumpedAddressesTest, The88E6096KeepsThem) {
    ComparedBoard compared(ComparedBoard::example("home-gateway"));
    auto& chip = compared.bringUp.getBoard().getMarvell(0);
    constexpr std::uint64_t broadcast = 0xFFFFFFFFFFFF;
    chip.setAtuEntry(2, 0x020000000010, 0x0027);
    chip.setAtuEntry(2, 0x01005E010203, 0x003E);
    chip.setAtuEntry(4095, 0x020000000011, 0x8017);
    chip.setAtuEntry(0, 0, 0x7FF7);
    chip.setAtuEntry(3, broadcast, 0x7FFE);
    std::string const text = dumpOf(compared.bringUp.getBoard(), 0, "88e6096", "smi --switch 0");
    EXPECT_NE(text.find("\n  address 01:00:5e:01:02:03 FID 2  Trunk=0x0  PortVector=0x3  EntryState=0xe\n"),
              std::string::npos);

    board::LoadedBoard loaded(*compared.document, "home-gateway.xml");
    loaded.load(std::vector<RegisterDump>{board::DumpReader("dump").read(text)});
    auto& copy = loaded.getBoard().getMarvell(0);
    EXPECT_EQ(copy.getAtuEntry(2, 0x020000000010), 0x0027U);
    EXPECT_EQ(copy.getAtuEntry(2, 0x01005E010203), 0x003EU);
    EXPECT_EQ(copy.getAtuEntry(4095, 0x020000000011), 0x8017U);
    EXPECT_EQ(copy.getAtuEntry(0, 0), 0x7FF7U);
    EXPECT_EQ(copy.getAtuEntry(3, broadcast), 0x7FFEU);
    EXPECT_EQ(copy.getAtuEntry(1, 0x020000000010), 0U);
}

TEST(DumpedAddressesTest, TheVsc7390KeepsThem) {
    ComparedBoard compared(ComparedBoard::example("trap-video-switch"));
    auto& board = compared.bringUp.getBoard();
    auto& chip = board.getVitesse(2);
    std::size_t const before = chip.getMacTable().size();
    ASSERT_TRUE(chip.learn(0x020000000010, 5, 3));
    ASSERT_TRUE(chip.learn(0x020000000011, 6, 23));
    std::string const text = dumpOf(board, 2, "vsc7390", "parallel");
    EXPECT_NE(text.find("\n  learned 02:00:00:00:00:10 VID 5  DEST_IDX=0x3  "), std::string::npos);

    board::LoadedBoard loaded(*compared.document, "trap-video-switch.xml");
    loaded.load(std::vector<RegisterDump>{board::DumpReader("dump").read(text)});
    auto& copy = loaded.getBoard().getVitesse(2);
    EXPECT_EQ(copy.getMacTable().size(), before + 2);
    using Address = std::pair<std::uint64_t, unsigned>;
    for (auto const& [mac, vid] : {Address{0x020000000010, 5}, Address{0x020000000011, 6}}) {
        for (unsigned port = 0; port < simulation::Vsc7390TestSide::numberOfPorts; ++port) {
            EXPECT_EQ(copy.getEgressPorts(port, mac, 0x020000000099, vid),
                      chip.getEgressPorts(port, mac, 0x020000000099, vid));
        }
    }
}
