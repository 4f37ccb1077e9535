#pragma once

#include <deque>
#include <map>
#include <memory>
#include <string>

#include "simulation/88e6096/Context.hpp"
#include "simulation/88e6096/DirectUnit.hpp"
#include "simulation/88e6096/Forwarding.hpp"
#include "simulation/88e6096/Global1.hpp"
#include "simulation/88e6096/Global2.hpp"
#include "simulation/88e6096/Marvell88E6096Options.hpp"
#include "simulation/88e6096/Marvell88E6096TestSide.hpp"
#include "simulation/88e6096/Port.hpp"
#include "simulation/88e6096/Smi.hpp"
#include "simulation/MdioBus.hpp"
#include "simulation/SimulatedChip.hpp"
#include "simulation/UnitDirectory.hpp"

namespace simulation {

/// An 88E6096 in multi-chip mode: eight Fast Ethernet ports with PHYs, three Gigabit ports without.
class Marvell88E6096 : public SimulatedChip {
public:
    /// \param services must outlive the chip.
    /// \param id the chip's address on the MDIO bus.
    Marvell88E6096(Services& services, unsigned id, Marvell88E6096Options const& options);
    ~Marvell88E6096() override;
    Marvell88E6096(Marvell88E6096 const&) = delete;
    Marvell88E6096& operator=(Marvell88E6096 const&) = delete;

    std::string getModel() const override;
    void attach(BoardBuses& buses) override;
    ChipTestSide& getTestSide() override;

private:
    friend class Marvell88E6096TestSide;

    RegisterFile& findDevice(unsigned device);
    void reset();
    void listen();

    unsigned _address;
    marvell::Context _context;
    UnitDirectory _units;
    marvell::Global2::Phys _phys;
    std::deque<marvell::Port> _ports;
    marvell::Global1 _global1;
    marvell::Global2 _global2;
    marvell::Forwarding _forwarding;
    marvell::Smi _smi;
    MdioBus* _mdioBus = nullptr;
    std::deque<marvell::DirectUnit> _direct;
    /// Devices that the chip does not have: accesses to them are stored and reported as misuse.
    std::map<unsigned, std::unique_ptr<RegisterFile>> _unknownDevices;
    std::unique_ptr<Marvell88E6096TestSide> _testSide;
};

} // namespace simulation
