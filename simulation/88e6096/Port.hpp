#pragma once

#include "simulation/88e6096/Context.hpp"
#include "simulation/88e6096/Phy.hpp"

namespace simulation::marvell {

/// The registers of one port.
class Port : public RegisterFile {
public:
    /// \param phy the port's own PHY, or null. It and `context` must outlive the port.
    Port(Context& context, unsigned number, Phy const* phy);

    bool hasLink() const;
    /// 10, 100 or 1000; 0 without link.
    unsigned getMegabits() const;

    /// One frame more in InFiltered or OutFiltered.
    void countFiltered(unsigned address);

    /// What counts while the port does not follow a PHY.
    void setLevel(bool up) { _level = up; }
    void setLevelSpeed(unsigned megabits, bool fullDuplex);

private:
    RegisterTable table(unsigned number);
    void addStorage(RegisterTable& table) const;
    std::uint32_t status(std::uint32_t stored) const;
    bool followsPhy() const;
    bool isFullDuplex() const;
    unsigned speedCode() const;

    Context& _context;
    Phy const* _phy;
    bool _level = false;
    unsigned _levelMegabits = 0;
    bool _levelFullDuplex = false;
};

} // namespace simulation::marvell
