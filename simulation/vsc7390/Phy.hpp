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
    bool isPlugged() const;
    void setPlugged(bool plugged);

private:
    RegisterTable table();
    void control(std::uint32_t value);

    bool _isPlugged = true;
};

} // namespace simulation::vitesse
