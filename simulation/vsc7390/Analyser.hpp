#pragma once

#include <cstdint>
#include <string>

#include "simulation/RegisterFile.hpp"
#include "simulation/vsc7390/Context.hpp"
#include "simulation/vsc7390/MacTable.hpp"
#include "simulation/vsc7390/VlanTable.hpp"

namespace simulation::vitesse {

/// The port masks that decide where frames go, and the units of the two tables.
class Analyser : public RegisterFile {
public:
    /// `context` must outlive the unit.
    explicit Analyser(Context& context);

    /// Both tables as after a reset, with nothing that runs.
    void clearTables();

    VlanTable& getVlanTable() { return _vlanTable; }
    VlanTable const& getVlanTable() const { return _vlanTable; }
    MacTable& getMacTable() { return _macTable; }
    MacTable const& getMacTable() const { return _macTable; }

private:
    RegisterTable table();
    static void addNamedOnly(RegisterTable& table);
    void addPortMasks(RegisterTable& table) const;
    void addMaskArrays(RegisterTable& table) const;
    void addTableAccess(RegisterTable& table);
    std::uint32_t destinationReset(unsigned number) const;
    std::uint32_t aggregationReset() const;
    std::uint32_t sourceReset(unsigned number) const;

    Context& _context;
    VlanTable _vlanTable;
    MacTable _macTable;
};

} // namespace simulation::vitesse
