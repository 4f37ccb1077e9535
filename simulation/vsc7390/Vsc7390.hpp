#pragma once

#include <array>
#include <map>
#include <memory>
#include <vector>

#include "simulation/SimulatedChip.hpp"
#include "simulation/vsc7390/Analyser.hpp"
#include "simulation/vsc7390/Arbiter.hpp"
#include "simulation/vsc7390/Bus.hpp"
#include "simulation/vsc7390/Context.hpp"
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
    friend class Vsc7390TestAccess;

    using Ports = std::array<std::unique_ptr<vitesse::Port>, Vsc7390TestSide::numberOfPorts>;

    /// Null where the chip has nothing.
    RegisterFile* findBlock(unsigned block, unsigned subBlock);
    RegisterFile* findMiiOrMemory(unsigned subBlock);
    std::vector<RegisterFile*> getUnits();

    vitesse::Context _context;
    Ports _ports;
    vitesse::Mii::Phys _phys;
    vitesse::Analyser _analyser;
    vitesse::Arbiter _arbiter;
    std::array<vitesse::Mii, vitesse::block::miiControllers> _miis;
    RegisterFile _memory;
    std::vector<RegisterFile> _captures;
    vitesse::System _system;
    vitesse::Bus _bus;
    std::unique_ptr<Vsc7390TestSide> _testSide;
};

} // namespace simulation
