#pragma once

#include "simulation/RegisterFile.hpp"
#include "simulation/vsc7390/Context.hpp"

namespace simulation::vitesse {

/// A PHY beside the chip. Registers past those that all PHYs have are plain storage.
class Phy : public RegisterFile {
public:
    /// `context` must outlive the PHY.
    Phy(Context& context, unsigned number);

    /// An unplugged PHY does not answer.
    bool isPlugged() const { return _isPlugged; }
    void setPlugged(bool plugged) { _isPlugged = plugged; }

private:
    RegisterTable table();

    bool _isPlugged = true;
};

} // namespace simulation::vitesse
