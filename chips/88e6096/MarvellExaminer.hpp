#pragma once

#include <set>

#include "chips/88e6096/MdioScan.hpp"
#include "chips/ChipKind.hpp"

namespace chips {

/// Looks for the 88E6096 chips of a board on its MDIO bus.
class MarvellExaminer {
public:
    /// All must outlive the examiner; `reach` is that of any switch.
    MarvellExaminer(ChipKind const& kind, ChipKind::Reach const& reach, ExaminationRequest const& request);

    Examination run();

private:
    using Switch = ExaminationRequest::Switch;

    void showReadings();
    std::string meaningOf(unsigned number) const;
    bool answersAsChip(unsigned address) const;
    bool isPortOfSingleChip(unsigned address) const;
    void explainBus(MdioScan::End end);
    void explainBusyMaster();
    void explainFlatLine();
    void examine(Switch const& wanted);
    void explainSilence(unsigned id);
    void readInside(Switch const& wanted);
    void readIdentifier(unsigned id, RegisterTransport& transport);
    void readPhys(Switch const& wanted, RegisterTransport& transport);
    std::string whereOf(unsigned address) const;

    ChipKind const& _kind;
    ChipKind::Reach const& _reach;
    ExaminationRequest const& _request;
    ChipCatalogue const _catalogue;
    MdioScan _scan;
    std::set<unsigned> _wanted;
    bool _isSingleChip = false;
    Examination _result;
};

} // namespace chips
