#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "host/Xml.hpp"
#include "simulation/88e6096/Marvell88E6096Options.hpp"
#include "simulation/88e6096/Marvell88E6096TestSide.hpp"
#include "simulation/AccessLog.hpp"
#include "simulation/Arm920tMac.hpp"
#include "simulation/BoardBuses.hpp"
#include "simulation/BusFaults.hpp"
#include "simulation/FaultyBus.hpp"
#include "simulation/MdioBus.hpp"
#include "simulation/MisuseReport.hpp"
#include "simulation/Services.hpp"
#include "simulation/SimulatedChip.hpp"
#include "simulation/SimulatedWindow.hpp"
#include "simulation/VirtualClock.hpp"
#include "simulation/vsc7390/Vsc7390Options.hpp"
#include "simulation/vsc7390/Vsc7390TestSide.hpp"

namespace simulation {

/// The board that a configuration document describes, built of models: the MDIO master of the
/// Ethernet MAC at its physical address, and one chip for each `switch` element. The 88E6096 chips
/// are on the MDIO bus; the parallel bus has room for one VSC7390, which is the first of the document.
///
/// Several boards can live in one process. Any thread may use one; the clock has to be adopted by
/// each thread that is to live by it.
class SimulatedBoard final : private BoardBuses {
public:
    struct Options {
        /// Ids of switches that the document has and the board has not.
        std::set<unsigned> missingSwitches;
        Marvell88E6096Options marvell;
        Vsc7390Options vitesse;
        MdioBus::Options mdio;
        Arm920tMac::Options mac;
    };

    /// Reads `//switches/switch`; the document is not needed afterwards. A switch is left out when
    /// it is missing by the options, its model is unknown, its id is taken, or its place on the bus is:
    /// an 88E6096 needs an id that is an MDIO address (0 to 31). See getSkippedSwitches().
    explicit SimulatedBoard(Xml& document);
    SimulatedBoard(Xml& document, Options const& options);
    ~SimulatedBoard() override;
    SimulatedBoard(SimulatedBoard const&) = delete;
    SimulatedBoard& operator=(SimulatedBoard const&) = delete;

    /// What stands for the physical addresses from `physicalAddress` on; null when nothing on the
    /// board answers there or the answering window is shorter than `size` bytes. Owned by the board.
    SimulatedWindow* window(unsigned physicalAddress, unsigned size);

    VirtualClock& getClock() { return _services.clock; }
    AccessLog& getLog() { return _services.log; }
    MisuseReport& getMisuse() { return _services.misuse; }
    Arm920tMac& getMac() { return _mac; }

    /// What goes wrong between the processor and the windows, whichever chip they lead to.
    BusFaults& getFaults() { return _faults; }

    /// What is attached to the MDIO master, and what holds its data line.
    MdioBus& getMdio() { return _mdioBus; }

    /// Ids of the chips that are there, ascending.
    std::vector<unsigned> getSwitchIds() const;

    /// One line for each switch of the document that is not there, with the reason.
    std::vector<std::string> const& getSkippedSwitches() const { return _skippedSwitches; }

    /// Test side of the chip with that id; throws std::out_of_range when there is none.
    ChipTestSide& getChip(unsigned id);

    /// As getChip(), for an 88E6096; throws std::out_of_range when the chip is another one.
    Marvell88E6096TestSide& getMarvell(unsigned id);

    /// As getChip(), for a VSC7390; throws std::out_of_range when the chip is another one.
    Vsc7390TestSide& getVitesse(unsigned id);

    /// Accesses to internal registers of chips so far: the entries of the log.
    std::uint64_t getRegisterAccesses() const;

    /// 32-bit accesses to the board's windows so far.
    std::uint64_t getBusAccesses() const;

    /// Nanoseconds that the transfers so far, over MDIO and the parallel bus, would have kept the buses
    /// of a real board busy. Sleeps are not in it; they are in the clock.
    std::uint64_t getBusNanoseconds() const;

private:
    struct Window {
        Window(BusFaults& faults, unsigned physicalAddress, BusDevice& device, std::size_t size)
            : bus(faults, physicalAddress, device), simulated(bus, size), requested(size) {}
        FaultyBus bus;
        SimulatedWindow simulated;
        std::size_t requested;
    };

    template <typename TestSide> TestSide& getAs(unsigned id, char const* what);
    MdioBus& getMdioBus() override;
    void addWindow(unsigned physicalAddress, std::size_t size, BusDevice& device) override;
    void addSwitch(std::string const& idText, std::string const& model, Options const& options);

    Services _services;
    BusFaults _faults{_services};
    MdioBus _mdioBus;
    Arm920tMac _mac;
    std::map<unsigned, std::unique_ptr<SimulatedChip>> _chips;
    std::map<unsigned, std::unique_ptr<Window>> _windows;
    std::vector<std::string> _skippedSwitches;
};

} // namespace simulation
