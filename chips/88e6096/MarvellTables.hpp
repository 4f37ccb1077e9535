#pragma once

#include <set>
#include <string>
#include <vector>

#include "chips/ChipCatalogue.hpp"
#include "chips/ChipTables.hpp"
#include "simulation/88e6096/Registers.hpp"

namespace chips {

/// The VTU and the STU of an 88E6096 and, where learned addresses count, the ATU. To read them it writes to
/// their staging and operation registers, and only starts searches.
class MarvellTables : public ChipTables {
public:
    explicit MarvellTables(ChipCatalogue const& catalogue) : _catalogue(catalogue) {}

    void take(simulation::AccessLog::Entry const& entry) override;
    void takeAll() override { _all = true; }
    void takeLearned() override { _learned = true; }
    std::vector<std::string> getNames() const override { return {"VTU", "STU", "ATU"}; }
    std::vector<std::string> getLeftOut() const override { return {"ATU"}; }
    void read(RegisterTransport& transport, ChipImage& image) const override;

private:
    void takeOperation(std::uint32_t word);
    void readVtu(RegisterTransport& transport, ChipImage& image) const;
    void readStu(RegisterTransport& transport, ChipImage& image) const;
    void readAtu(RegisterTransport& transport, ChipImage& image) const;
    void readAddresses(unsigned fid, RegisterTransport& transport, ChipImage& image) const;
    void perform(unsigned operationRegister, unsigned operation, RegisterTransport& transport) const;
    void addFields(std::string const& prefix, RegisterTransport& transport,
                   std::vector<ChipImage::Field>& fields) const;
    RegisterLocation at(unsigned address) const;

    ChipCatalogue const& _catalogue;
    bool _all = false;
    bool _learned = false;
    std::set<unsigned> _vids;
    std::set<unsigned> _sids;
    /// The staging registers as the log goes by.
    unsigned _vid = 0;
    unsigned _sid = 0;
};

} // namespace chips
