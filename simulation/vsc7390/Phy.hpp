#pragma once

#include "simulation/RegisterFile.hpp"
#include "simulation/vsc7390/Context.hpp"

namespace simulation::vitesse {

/// A PHY beside the chip. What its maker put past the registers that all PHYs have is storage.
class Phy : public RegisterFile {
public:
    /// `context` must outlive the PHY.
    Phy(Context& context, unsigned number);

    /// Whether it answers.
    bool isPlugged() const { return _isPlugged; }
    void setPlugged(bool plugged) { _isPlugged = plugged; }

private:
    RegisterTable table();

    bool _isPlugged = true;
};

} // namespace simulation::vitesse
