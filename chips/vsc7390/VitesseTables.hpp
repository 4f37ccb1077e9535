#pragma once

#include <cstdint>
#include <optional>
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

    /// An entry of the MAC table, as the registers show it.
    struct Bucket {
        std::uint32_t access;
        std::uint32_t high;
        std::uint32_t low;
    };

    /// \name Single entries; all throw ToolError (registerFailed)
    /// @{

    /// The entry of a VLAN, as the register shows it.
    std::uint32_t readVlan(unsigned vid, RegisterTransport& transport) const;
    /// Nothing when it is empty.
    std::optional<Bucket> readBucket(unsigned row, unsigned bucket, RegisterTransport& transport) const;
    /// Locked or not. \param high and `low`: address and VLAN, as the registers take them.
    void forget(std::uint32_t high, std::uint32_t low, RegisterTransport& transport) const;
    /// @}

private:
    void takeCommand(unsigned address, std::uint32_t word);
    void readVlan(unsigned vid, RegisterTransport& transport, ChipImage& image) const;
    void readPlace(unsigned row, unsigned bucket, RegisterTransport& transport, ChipImage& image) const;
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
