#pragma once

#include "chips/ChipTables.hpp"
#include "chips/vsc7390/VitesseTableReader.hpp"

namespace chips {

/// The VLAN table and the MAC table of a VSC7390.
class VitesseTables : public ChipTables {
public:
    explicit VitesseTables(ChipCatalogue const& catalogue) : _catalogue(catalogue) {}

    void take(simulation::AccessLog::Entry const& entry) override;
    void read(RegisterTransport& transport, ChipImage& image) const override;

private:
    void takeCommand(unsigned address, std::uint32_t word);

    ChipCatalogue const& _catalogue;
    VitesseTableReader::Wanted _wanted;
    /// The index registers as the log goes by.
    unsigned _vlanIndex = 0;
    unsigned _macIndex = 0;
};

} // namespace chips
