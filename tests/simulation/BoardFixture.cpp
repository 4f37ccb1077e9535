#include "tests/simulation/BoardFixture.hpp"

#include <sstream>

using reference_host::XmlDocument;
using simulation::SimulatedBoard;

namespace simulation_test {

namespace {

constexpr unsigned miiCommand = 0x10;
constexpr unsigned miiData = 0x14;
constexpr unsigned readFrame = 0x8000;
constexpr unsigned writeFrame = 0x4000;
constexpr std::uint64_t second = 1'000'000'000;

constexpr char const* document =
    "<board><switches><switch id=\"4\" switchModel=\"88e6096\"/></switches></board>";

} // namespace

BoardFixture::BoardFixture() {
    rebuild(SimulatedBoard::Options());
}

void BoardFixture::rebuild(SimulatedBoard::Options const& options) {
    auto const xml = XmlDocument::fromText(document, "board");
    _board = std::make_unique<SimulatedBoard>(*xml, options);
}

void BoardFixture::rebuild(simulation::Marvell88E6096Options const& options) {
    SimulatedBoard::Options boardOptions;
    boardOptions.marvell = options;
    rebuild(boardOptions);
}

unsigned BoardFixture::mdioRead(unsigned address, unsigned reg) {
    unsigned value = 0;
    EXPECT_TRUE(_board->getMac().write(miiCommand, readFrame | address << 5 | reg));
    EXPECT_TRUE(_board->getMac().read(miiData, value));
    return value;
}

void BoardFixture::mdioWrite(unsigned address, unsigned reg, unsigned value) {
    EXPECT_TRUE(_board->getMac().write(miiData, value));
    EXPECT_TRUE(_board->getMac().write(miiCommand, writeFrame | address << 5 | reg));
}

unsigned BoardFixture::read(unsigned device, unsigned reg) {
    EXPECT_TRUE(becomesReady());
    mdioWrite(chipAddress, 0, 0x9800 | device << 5 | reg);
    EXPECT_TRUE(becomesReady());
    return mdioRead(chipAddress, 1);
}

void BoardFixture::write(unsigned device, unsigned reg, unsigned value) {
    EXPECT_TRUE(becomesReady());
    mdioWrite(chipAddress, 1, value);
    mdioWrite(chipAddress, 0, 0x9400 | device << 5 | reg);
}

unsigned BoardFixture::phyRead(unsigned phy, unsigned reg) {
    write(global2, 0x18, 0x9800 | phy << 5 | reg);
    EXPECT_EQ(read(global2, 0x18) & 0x8000, 0U);
    return read(global2, 0x19);
}

void BoardFixture::phyWrite(unsigned phy, unsigned reg, unsigned value) {
    write(global2, 0x19, value);
    write(global2, 0x18, 0x8400 | phy << 5 | reg);
}

bool BoardFixture::becomesReady() {
    std::uint64_t const start = _board->getClock().getNanoseconds();
    do {
        mdioRead(chipAddress, 0);
        if ((mdioRead(chipAddress, 0) & 0x8000) == 0) {
            return true;
        }
    } while (_board->getClock().getNanoseconds() - start < second);
    return false;
}

simulation::Marvell88E6096TestSide& BoardFixture::chip() {
    return _board->getMarvell(chipAddress);
}

simulation::AccessLog& BoardFixture::log() {
    return _board->getLog();
}

simulation::MisuseReport& BoardFixture::misuse() {
    return _board->getMisuse();
}

std::string BoardFixture::misuseText() {
    std::ostringstream text;
    misuse().print(text);
    return text.str();
}

void BoardFixture::flush() {
    write(global1, 0x05, 0x9000);
}

void BoardFixture::loadVtu(unsigned vid, unsigned fid, unsigned sid, unsigned data0, unsigned data1,
                           unsigned data2) {
    write(global1, 0x06, 0x1000 | vid);
    write(global1, 0x02, fid);
    write(global1, 0x03, sid);
    write(global1, 0x07, data0);
    write(global1, 0x08, data1);
    write(global1, 0x09, data2);
    write(global1, 0x05, 0xB000);
}

void BoardFixture::loadStu(unsigned sid, unsigned data0, unsigned data1, unsigned data2) {
    write(global1, 0x06, 0x1000);
    write(global1, 0x03, sid);
    write(global1, 0x07, data0);
    write(global1, 0x08, data1);
    write(global1, 0x09, data2);
    write(global1, 0x05, 0xD000);
}

} // namespace simulation_test
