#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

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

    /// \name A counter by its register: a frame moves it, or it gets a value
    /// @{
    void count(unsigned address, std::size_t amount = 1) {
        _counted[address - Vsc7390TestSide::firstCounter] += static_cast<std::uint32_t>(amount);
    }
    void setCounter(unsigned address, std::uint32_t value);
    void clearCounters();
    /// @}

    static constexpr unsigned numberOfCounters =
        Vsc7390TestSide::lastCounter - Vsc7390TestSide::firstCounter + 1;

private:
    RegisterTable table();
    void addClassifier(RegisterTable& table) const;
    static void addNamedOnly(RegisterTable& table);
    static void addWatermarks(RegisterTable& table);
    void addCounters(RegisterTable& table);
    std::uint32_t settle(unsigned index, std::uint32_t stored);

    Context& _context;
    /// What frames have moved since the registers were last looked at.
    std::array<std::uint32_t, numberOfCounters> _counted{};
};

} // namespace simulation::vitesse
