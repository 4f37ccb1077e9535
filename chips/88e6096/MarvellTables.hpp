#pragma once

#include "chips/88e6096/MarvellTableReader.hpp"
#include "chips/ChipTables.hpp"

namespace chips {

/// The VTU and the STU of an 88E6096.
class MarvellTables : public ChipTables {
public:
    explicit MarvellTables(ChipCatalogue const& catalogue) : _catalogue(catalogue) {}

    void take(simulation::AccessLog::Entry const& entry) override;
    void read(RegisterTransport& transport, ChipImage& image) const override;

private:
    void takeOperation(std::uint32_t word);

    ChipCatalogue const& _catalogue;
    MarvellTableReader::Wanted _wanted;
    /// The staging registers as the log goes by.
    unsigned _vid = 0;
    unsigned _sid = 0;
};

} // namespace chips
