#pragma once

#include <set>
#include <string>
#include <vector>

#include "board/ModelBringUp.hpp"
#include "chips/88e6096/MarvellTableReader.hpp"
#include "chips/ChipCatalogue.hpp"
#include "chips/RegisterLocation.hpp"
#include "chips/vsc7390/VitesseTableReader.hpp"
#include "simulation/AccessLog.hpp"

namespace switchctl::audit {

/// What a document determines of one chip: the registers and the table entries that its bring-up wrote
/// to the models.
class ChipScope {
public:
    /// \param switchId of a chip of the board. The bring-up is not needed afterwards.
    ChipScope(board::ModelBringUp& bringUp, unsigned switchId);

    unsigned getSwitchId() const;
    /// As in the access log, for example "switch 0".
    std::string getChip() const;
    chips::ChipCatalogue const& getCatalogue() const;

    /// Those that the catalogue knows, in the order of their first write.
    std::vector<chips::RegisterLocation> const& getRegisters() const;

    /// Entries that were written; all of a table that was cleared first, so that what else is in it is
    /// not the document's.
    chips::VitesseTableReader::Wanted const& getVitesseTables() const;
    chips::MarvellTableReader::Wanted const& getMarvellTables() const;

private:
    void take(simulation::AccessLog::Entry const& entry);
    void takeRegister(simulation::AccessLog::Entry const& entry);
    void takeGlobal1(simulation::AccessLog::Entry const& entry);
    void takeAnalyser(simulation::AccessLog::Entry const& entry);

    unsigned _switchId;
    chips::ChipCatalogue _catalogue;
    std::set<std::string> _seen;
    std::vector<chips::RegisterLocation> _registers;
    chips::VitesseTableReader::Wanted _vitesseTables;
    chips::MarvellTableReader::Wanted _marvellTables;

    // The staging registers as the log goes by.
    unsigned _vlanIndex = 0;
    unsigned _macIndex = 0;
    unsigned _vtuVid = 0;
    unsigned _vtuSid = 0;
};

} // namespace switchctl::audit
