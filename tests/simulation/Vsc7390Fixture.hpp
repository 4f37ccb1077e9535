#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>

#include "simulation/BusDevice.hpp"
#include "simulation/SimulatedBoard.hpp"

namespace simulation_test {

/// A board with one VSC7390, id 2, driven through its window as its makers describe: no driver takes
/// part.
class Vsc7390Fixture : public testing::Test {
protected:
    static constexpr unsigned id = 2;

    /// Blocks of the chip by number; the ports of block 6 are 16 to 23.
    static constexpr unsigned lowPorts = 1;
    static constexpr unsigned analyser = 2;
    static constexpr unsigned mii = 3;
    static constexpr unsigned capture = 4;
    static constexpr unsigned arbiter = 5;
    static constexpr unsigned highPorts = 6;
    static constexpr unsigned system = 7;

    /// The window's offsets of the data and the status of indirect reads.
    static constexpr unsigned indirectData = 0x1C0B0;
    static constexpr unsigned indirectStatus = 0x1C0C0;

    using Kind = simulation::MisuseReport::Kind;
    using Unit = simulation::Vsc7390TestSide::CommandUnit;
    using TestSide = simulation::Vsc7390TestSide;
    using Options = simulation::Vsc7390Options;

    Vsc7390Fixture();

    /// Replaces the board by one with these options.
    void rebuild(Options const& options);

    /// One access over the bus.
    unsigned busRead(unsigned offset);
    void busWrite(unsigned offset, unsigned value);
    bool tryBusRead(unsigned offset, unsigned& value);
    bool tryBusWrite(unsigned offset, unsigned value);

    static unsigned offsetOf(unsigned block, unsigned subBlock, unsigned address);

    /// One register, the way its block asks for.
    unsigned read(unsigned block, unsigned subBlock, unsigned address);
    void write(unsigned block, unsigned subBlock, unsigned address, unsigned value);
    unsigned readPort(unsigned port, unsigned address);
    void writePort(unsigned port, unsigned address, unsigned value);
    unsigned readAnalyser(unsigned address) { return read(analyser, 0, address); }
    void writeAnalyser(unsigned address, unsigned value) { write(analyser, 0, address, value); }

    /// Whether an indirect read's data gets ready within two seconds of polling.
    bool becomesReady();

    /// The VLAN table's commands; each waits until the table shows none.
    unsigned readVlan(unsigned vid);
    void writeVlan(unsigned vid, unsigned word);
    void clearVlans();
    bool vlanTableIdles();

    /// The MAC table's commands 6 and 7; the index has the bucket in 12:11 and the row below.
    unsigned readMac(unsigned index);
    void writeMac(unsigned index, unsigned high, unsigned low, unsigned word);
    void commandMac(unsigned word, unsigned high = 0, unsigned low = 0);

    void advance(std::uint64_t nanoseconds);

    simulation::Vsc7390TestSide& chip();
    simulation::AccessLog& log();
    simulation::MisuseReport& misuse();
    std::string misuseText();
    std::string logText();

    std::unique_ptr<simulation::SimulatedBoard> _board;
    simulation::BusDevice* _bus = nullptr;
};

} // namespace simulation_test
