#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "reference_host/XmlDocument.hpp"
#include "simulation/SimulatedBoard.hpp"

namespace simulation_test {

/// A board with one 88E6096 at MDIO address 4, driven through the registers of the MAC as its makers
/// describe: no driver takes part.
class BoardFixture : public testing::Test {
protected:
    static constexpr unsigned chipAddress = 4;

    /// Devices of the chip by number.
    static constexpr unsigned port0 = 0x10;
    static constexpr unsigned global1 = 0x1B;
    static constexpr unsigned global2 = 0x1C;

    using Kind = simulation::MisuseReport::Kind;
    using Unit = simulation::Marvell88E6096TestSide::CommandUnit;

    BoardFixture();

    /// Replaces the board by one with these options.
    void rebuild(simulation::SimulatedBoard::Options const& options);
    void rebuild(simulation::Marvell88E6096Options const& options);

    /// One MDIO frame.
    unsigned mdioRead(unsigned address, unsigned reg);
    void mdioWrite(unsigned address, unsigned reg, unsigned value);

    /// One access to an internal register, with the polls before and after that drivers make.
    unsigned read(unsigned device, unsigned reg);
    void write(unsigned device, unsigned reg, unsigned value);

    unsigned phyRead(unsigned phy, unsigned reg);
    void phyWrite(unsigned phy, unsigned reg, unsigned value);

    /// Whether the chip ends being busy within a second of polling, as drivers wait.
    bool becomesReady();

    simulation::Marvell88E6096TestSide& chip();
    simulation::AccessLog& log();
    simulation::MisuseReport& misuse();

    /// The misuse report as text, to show when it should have been empty.
    std::string misuseText();

    /// VLANs and spanning tree by the command words.
    void flush();
    void loadVtu(unsigned vid, unsigned fid, unsigned sid, unsigned data0, unsigned data1, unsigned data2);
    void loadStu(unsigned sid, unsigned data0, unsigned data1, unsigned data2);

    std::unique_ptr<simulation::SimulatedBoard> _board;
};

} // namespace simulation_test
