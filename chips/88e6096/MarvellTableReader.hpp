#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "chips/ChipCatalogue.hpp"
#include "chips/ChipImage.hpp"
#include "chips/RegisterTransport.hpp"

namespace chips {

/// Reads the VTU and the STU of an 88E6096, entry by entry. It writes to their staging and operation
/// registers, and only starts searches.
class MarvellTableReader {
public:
    /// As the operation register has them.
    enum class Operation : unsigned {
        flushAll = 1,
        vtuLoad = 3,
        vtuGetNext = 4,
        stuLoad = 5,
        stuGetNext = 6
    };

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

    /// Reads what is wanted; throws CommandError (registerFailed).
    void read();

    static Operation operationIn(std::uint32_t word);

private:
    void readVtu();
    void readStu();
    void perform(Operation operation);
    std::vector<ChipImage::Field> dataFields(std::string const& prefix);
    RegisterLocation at(unsigned address) const;
    std::uint32_t readAt(unsigned address);

    ChipCatalogue const& _catalogue;
    Wanted const& _wanted;
    RegisterTransport& _transport;
    ChipImage& _image;
};

} // namespace chips
