#pragma once

#include <cstdint>
#include <map>
#include <utility>

#include "simulation/88e6096/CommandUnit.hpp"

namespace simulation::marvell {

/// The address table unit. Entries come and go by its operations only: this model carries no frames
/// that could be learned from, and nothing ages.
class Atu : public CommandUnit {
public:
    /// \param registers those of Global 1. Both must outlive the unit.
    Atu(Context& context, RegisterFile& registers);

private:
    void perform(std::uint32_t word) override;
    /// FID and MAC address, first byte on the wire highest.
    using Key = std::pair<unsigned, std::uint64_t>;

    Key stagedKey() const;
    void load();
    void next();
    void flushOrMove(bool staticsToo, bool allFids);
    static bool isStatic(Key const& key, std::uint32_t data);

    /// The data register of each entry.
    std::map<Key, std::uint32_t> _entries;
};

} // namespace simulation::marvell
