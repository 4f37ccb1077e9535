#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "chips/ChipCatalogue.hpp"
#include "chips/ChipImage.hpp"
#include "chips/RegisterTransport.hpp"
#include "simulation/88e6096/Registers.hpp"

namespace chips {

/// Reads the VTU and the STU of an 88E6096, entry by entry. It writes to their staging and operation
/// registers, and only starts searches.
class MarvellTableReader {
public:
    /// Entries that are to be read.
    struct Wanted {
        /// All of both tables.
        bool all = false;
        std::set<unsigned> vids;
        std::set<unsigned> sids;
    };

    /// All must outlive the reader.
    MarvellTableReader(ChipCatalogue const& catalogue, Wanted const& wanted, RegisterTransport& transport,
                       ChipImage& image);

    /// Reads what is wanted; throws ToolError (registerFailed).
    void read();

private:
    void readVtu();
    void readStu();
    void perform(simulation::marvell::vtu::Operation operation);
    std::vector<ChipImage::Field> dataFields(std::string const& prefix);
    RegisterLocation at(unsigned address) const;
    std::uint32_t readAt(unsigned address);

    ChipCatalogue const& _catalogue;
    Wanted const& _wanted;
    RegisterTransport& _transport;
    ChipImage& _image;
};

} // namespace chips
