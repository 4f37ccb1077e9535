#pragma once

#include "chips/TableReader.hpp"
#include "chips/vsc7390/VitesseTables.hpp"

namespace chips {

/// VLAN table, MAC table and the masks of the analyser of a VSC7390.
class VitesseTableReader : public TableReader {
public:
    VitesseTableReader(ChipCatalogue const& catalogue, RegisterTransport& transport)
        : TableReader(catalogue, transport), _tables(catalogue) {}

    ChipTable read(ChipTable::Kind kind, std::optional<unsigned> vlan) override;
    void flush(Scope const& scope, std::vector<ChipTable::Row> const& learnt) override;

private:
    using TableReader::read;

    ChipTable readMacTable(bool groups);
    ChipTable::Row rowOf(VitesseTables::Bucket const& bucket,
                         std::vector<std::uint32_t> const& destinations) const;
    ChipTable readVlans(std::optional<unsigned> vlan);
    std::vector<ChipTable::Member> membersOf(unsigned vid, std::uint32_t mask,
                                             std::vector<std::uint32_t> const& tagging) const;
    ChipTable readRoutes();
    ChipTable readTrunks();
    std::vector<std::uint32_t> readMasks(unsigned first, unsigned count);
    static std::vector<ChipTable::Member> portsOfMask(std::uint32_t mask);

    VitesseTables _tables;
};

} // namespace chips
