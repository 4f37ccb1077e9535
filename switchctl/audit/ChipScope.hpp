#pragma once

#include <set>
#include <string>
#include <vector>

#include "simulation/AccessLog.hpp"
#include "switchctl/plan/ModelBringUp.hpp"
#include "switchctl/registers/ChipCatalogue.hpp"
#include "switchctl/registers/RegisterLocation.hpp"

namespace switchctl::audit {

/// What a document determines of one chip: the registers and the table entries that its bring-up wrote
/// to the models.
class ChipScope {
public:
    /// \param switchId of a chip of the board. The bring-up is not needed afterwards.
    ChipScope(plan::ModelBringUp& bringUp, unsigned switchId);

    unsigned getSwitchId() const;
    /// As in the access log, for example "switch 0".
    std::string getChip() const;
    ChipCatalogue const& getCatalogue() const;

    /// Those that the catalogue knows, in the order of their first write.
    std::vector<RegisterLocation> const& getRegisters() const;

    /// VIDs of the VSC7390's VLAN table; all of them when the table was cleared.
    std::set<unsigned> const& getVlanTableVids() const;

    /// VIDs of the VTU and SIDs of the STU that were loaded.
    std::set<unsigned> const& getVtuVids() const;
    std::set<unsigned> const& getStuSids() const;

    /// Whether the VTU and the STU were emptied first, so that what else is in them is not the document's.
    bool areVlansFlushed() const;

    /// Rows of the MAC table that were written; all of them when the table was cleared.
    std::set<unsigned> const& getMacTableRows() const;

private:
    void take(simulation::AccessLog::Entry const& entry);
    void takeRegister(simulation::AccessLog::Entry const& entry);
    void takeGlobal1(simulation::AccessLog::Entry const& entry);
    void takeAnalyser(simulation::AccessLog::Entry const& entry);

    unsigned _switchId;
    ChipCatalogue _catalogue;
    std::set<std::string> _seen;
    std::vector<RegisterLocation> _registers;
    std::set<unsigned> _vlanTableVids;
    std::set<unsigned> _vtuVids;
    std::set<unsigned> _stuSids;
    std::set<unsigned> _macTableRows;
    bool _areVlansFlushed = false;

    // The staging registers as the log goes by.
    unsigned _vlanIndex = 0;
    unsigned _macIndex = 0;
    unsigned _vtuVid = 0;
    unsigned _vtuSid = 0;
};

} // namespace switchctl::audit
