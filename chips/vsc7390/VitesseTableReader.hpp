#pragma once

#include <cstdint>
#include <set>
#include <string>

#include "chips/ChipCatalogue.hpp"
#include "chips/ChipImage.hpp"
#include "chips/RegisterTransport.hpp"

namespace chips {

/// Reads the VLAN table and the locked entries of the MAC table of a VSC7390. It writes to their index
/// and command registers, and only starts reads.
class VitesseTableReader {
public:
    /// Entries that are to be read.
    struct Wanted {
        /// Of the VLAN table.
        std::set<unsigned> vids;
        /// Of the MAC table.
        std::set<unsigned> rows;
    };

    /// All must outlive the reader.
    VitesseTableReader(ChipCatalogue const& catalogue, Wanted const& wanted, RegisterTransport& transport,
                       ChipImage& image);

    /// Reads what is wanted; throws ToolError (registerFailed).
    void read();

private:
    void readVlan(unsigned vid);
    void readBucket(unsigned row, unsigned bucket);
    void addMacEntry(std::uint32_t access, std::uint32_t high, std::uint32_t low);
    std::uint32_t perform(RegisterLocation const& access, unsigned command, simulation::Field const& field);
    RegisterLocation at(unsigned address) const;

    ChipCatalogue const& _catalogue;
    Wanted const& _wanted;
    RegisterTransport& _transport;
    ChipImage& _image;
    RegisterLocation _vlanIndex;
    RegisterLocation _vlanAccess;
    RegisterLocation _macIndex;
    RegisterLocation _macAccess;
    RegisterLocation _macHigh;
    RegisterLocation _macLow;
};

} // namespace chips
