#pragma once

#include <set>

#include "chips/ChipCatalogue.hpp"
#include "chips/ChipTables.hpp"

namespace chips {

/// The VLAN table of a VSC7390 and its MAC table, of which locked entries are no learned ones. To read them
/// it writes to their index and command registers, and only starts reads.
class VitesseTables : public ChipTables {
public:
    explicit VitesseTables(ChipCatalogue const& catalogue);

    void take(simulation::AccessLog::Entry const& entry) override;
    void takeAll() override;
    void takeLearned() override { _learned = true; }
    std::vector<std::string> getNames() const override { return {"VLAN table", "MAC table"}; }
    std::vector<std::string> getLeftOut() const override { return {"MAC table entries that are not locked"}; }
    void read(RegisterTransport& transport, ChipImage& image) const override;

private:
    void takeCommand(unsigned address, std::uint32_t word);
    void readVlan(unsigned vid, RegisterTransport& transport, ChipImage& image) const;
    void readBucket(unsigned row, unsigned bucket, RegisterTransport& transport, ChipImage& image) const;
    static void addMacEntry(std::uint32_t access, std::uint32_t high, std::uint32_t low, ChipImage& image);

    RegisterLocation _vlanIndex;
    RegisterLocation _vlanAccess;
    RegisterLocation _macIndex;
    RegisterLocation _macAccess;
    RegisterLocation _macHigh;
    RegisterLocation _macLow;
    std::set<unsigned> _vids;
    std::set<unsigned> _rows;
    bool _learned = false;
    /// The index registers as the log goes by.
    unsigned _vid = 0;
    unsigned _place = 0;
};

} // namespace chips
