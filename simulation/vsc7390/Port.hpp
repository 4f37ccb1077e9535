#pragma once

#include "simulation/RegisterFile.hpp"
#include "simulation/vsc7390/Context.hpp"
#include "simulation/vsc7390/Vsc7390TestSide.hpp"

namespace simulation::vitesse {

/// The registers of one port.
class Port : public RegisterFile {
public:
    /// `context` must outlive the port.
    Port(Context& context, unsigned number);

    /// What the MAC's configuration makes of the port.
    Vsc7390TestSide::PortMac getMac() const;

private:
    RegisterTable table();
    void addClassifier(RegisterTable& table) const;
    static void addNamedOnly(RegisterTable& table);
    static void addWatermarks(RegisterTable& table);
    void addCounters(RegisterTable& table);
    void clearCounters();

    Context& _context;
};

} // namespace simulation::vitesse
