#pragma once

#include <cstdint>
#include <functional>

#include "simulation/88e6096/Context.hpp"

namespace simulation::marvell {

/// One of the internal PHYs.
class Phy : public RegisterFile {
public:
    /// `context` must outlive the PHY.
    Phy(Context& context, unsigned number);

    /// What the PHY has agreed on or was set to. Meaningful while it has link.
    bool hasLink() const;
    unsigned getMegabits() const;
    bool isFullDuplex() const;

    void plug(unsigned megabits, bool fullDuplex);
    void unplug() { _isPlugged = false; }

private:
    RegisterTable table();
    static Register statusRow(unsigned address, char const* name, std::function<std::uint32_t()> value);
    void control(std::uint32_t value);
    bool isNegotiated() const;
    std::uint32_t status() const;
    std::uint32_t partnerOffers() const;
    std::uint32_t specific() const;

    Context& _context;
    bool _isPlugged = false;
    unsigned _partnerMegabits = 0;
    bool _partnerFullDuplex = false;
};

} // namespace simulation::marvell
