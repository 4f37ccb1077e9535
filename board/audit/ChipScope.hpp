#pragma once

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "board/ModelBringUp.hpp"
#include "chips/ChipCatalogue.hpp"
#include "chips/ChipTables.hpp"
#include "chips/RegisterLocation.hpp"
#include "simulation/AccessLog.hpp"

namespace board {

/// What a document determines of one chip: the registers and the table entries that its bring-up wrote
/// to the models.
class ChipScope {
public:
    /// \param switchId of a chip of the board. The bring-up is not needed afterwards.
    ChipScope(ModelBringUp& bringUp, unsigned switchId);

    unsigned getSwitchId() const { return _switchId; }
    /// As in the access log, for example "switch 0".
    std::string getChip() const;
    std::string const& getModel() const { return _catalogue.getModel(); }

    chips::ChipCatalogue const& getCatalogue() const { return _catalogue; }

    /// Those that the catalogue knows, in the order of their first write.
    std::vector<chips::RegisterLocation> const& getRegisters() const { return _registers; }

    chips::ChipTables const& getTables() const { return *_tables; }

private:
    void takeRegister(simulation::AccessLog::Entry const& entry);

    unsigned _switchId;
    chips::ChipCatalogue _catalogue;
    std::unique_ptr<chips::ChipTables> _tables;
    std::set<std::pair<simulation::UnitPlace, unsigned>> _seen;
    std::vector<chips::RegisterLocation> _registers;
};

} // namespace board
