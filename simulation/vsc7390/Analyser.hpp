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
    MacTable& getMacTable() { return _macTable; }

    /// Where frames from port `ingress` may leave; the VID is the one they were put into.
    std::uint32_t getEgressPorts(unsigned ingress, std::uint64_t destination, std::uint64_t source,
                                 unsigned vid) const;

private:
    RegisterTable table();
    static void addNamedOnly(RegisterTable& table);
    void addPortMasks(RegisterTable& table) const;
    void addMaskArrays(RegisterTable& table) const;
    void addTableAccess(RegisterTable& table);
    std::uint32_t destinationReset(unsigned number) const;
    std::uint32_t aggregationReset() const;
    std::uint32_t sourceReset(unsigned number) const;
    bool isAccepted(unsigned ingress, VlanTable::Entry const& vlan) const;
    std::uint32_t destinationPorts(std::uint64_t destination, unsigned vid, std::uint32_t members) const;
    unsigned floodRegister(std::uint64_t destination) const;
    unsigned aggregationCode(std::uint64_t destination, std::uint64_t source) const;

    Context& _context;
    VlanTable _vlanTable;
    MacTable _macTable;
};

} // namespace simulation::vitesse
