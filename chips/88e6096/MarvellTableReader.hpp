#pragma once

#include <map>
#include <set>

#include "chips/TableReader.hpp"

namespace chips {

/// ATU, VTU, STU, port-based VLAN maps and trunk tables of an 88E6096.
class MarvellTableReader : public TableReader {
public:
    using TableReader::TableReader;

    ChipTable read(ChipTable::Kind kind, std::optional<unsigned> vlan) override;
    void flush(Scope const& scope, std::vector<ChipTable::Row> const& learnt) override;

private:
    using TableReader::read;

    /// VLANs by a field of their VTU entries: FID or SID.
    using Vlans = std::map<unsigned, std::vector<unsigned>>;

    ChipTable readAddresses(bool groups);
    void readDatabase(unsigned fid, std::vector<unsigned> const& vlans, bool groups, ChipTable& table);
    ChipTable readVtu();
    ChipTable readStu();
    ChipTable readRoutes();
    ChipTable readTrunks();
    Vlans vlansBy(std::string const& fact);
    std::set<unsigned> fidsOfPorts();
    std::uint32_t readPointed(unsigned address, std::uint32_t pointer);
    /// An entry without a state is none.
    void forget(ChipTable::Row const& row);
    void operate(unsigned operation);
    std::uint32_t global(unsigned address);
    void setGlobal(unsigned address, std::uint32_t value);
};

} // namespace chips
