#pragma once

#include "simulation/RegisterFile.hpp"
#include "simulation/vsc7390/Context.hpp"
#include "simulation/vsc7390/Counters.hpp"
#include "simulation/vsc7390/Vsc7390TestSide.hpp"

namespace simulation::vitesse {

/// The registers of one port.
class Port {
public:
    /// `context` must outlive the port.
    Port(Context& context, unsigned number);
    Port(Port const&) = delete;
    Port& operator=(Port const&) = delete;

    RegisterFile& getRegisters();
    Counters& getCounters();

    /// What the MAC's configuration makes of the port.
    Vsc7390TestSide::PortMac getMac() const;

private:
    RegisterTable table();
    void addClassifier(RegisterTable& table) const;
    static void addWatermarks(RegisterTable& table);

    Context& _context;
    Counters _counters;
    RegisterFile _registers;
};

} // namespace simulation::vitesse
