#pragma once

#include <deque>
#include <memory>
#include <optional>

#include "simulation/SimulatedChip.hpp"
#include "simulation/UnitDirectory.hpp"
#include "simulation/vsc7390/Analyser.hpp"
#include "simulation/vsc7390/Arbiter.hpp"
#include "simulation/vsc7390/Bus.hpp"
#include "simulation/vsc7390/Context.hpp"
#include "simulation/vsc7390/Forwarding.hpp"
#include "simulation/vsc7390/Mii.hpp"
#include "simulation/vsc7390/Phy.hpp"
#include "simulation/vsc7390/Port.hpp"
#include "simulation/vsc7390/Registers.hpp"
#include "simulation/vsc7390/System.hpp"
#include "simulation/vsc7390/Vsc7390Options.hpp"
#include "simulation/vsc7390/Vsc7390TestSide.hpp"

namespace simulation {

/// A VSC7390 on the board's parallel bus: 24 ports with a PHY each.
class Vsc7390 : public SimulatedChip {
public:
    /// \param services must outlive the chip.
    /// \param id what the chip is called in logs; it makes no difference on the bus.
    Vsc7390(Services& services, unsigned id, Vsc7390Options const& options);
    ~Vsc7390() override;
    Vsc7390(Vsc7390 const&) = delete;
    Vsc7390& operator=(Vsc7390 const&) = delete;

    std::string getModel() const override;
    void attach(BoardBuses& buses) override;
    ChipTestSide& getTestSide() override;
    std::uint64_t getBusNanoseconds() const override;

private:
    friend class Vsc7390TestSide;

    /// All but the PHYs, which stand beside the chip.
    void reset();

    vitesse::Context _context;
    UnitDirectory _units;
    std::deque<vitesse::Port> _ports;
    vitesse::Mii::Phys _phys;
    vitesse::Analyser _analyser;
    vitesse::Arbiter _arbiter;
    std::deque<vitesse::Mii> _miis;
    RegisterFile _memory;
    std::deque<RegisterFile> _captures;
    vitesse::System _system;
    vitesse::Bus _bus;
    std::optional<vitesse::Forwarding> _forwarding;
    std::unique_ptr<Vsc7390TestSide> _testSide;
};

} // namespace simulation
