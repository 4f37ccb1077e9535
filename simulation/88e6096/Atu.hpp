#pragma once

#include <cstdint>
#include <map>
#include <utility>

#include "simulation/88e6096/Context.hpp"

namespace simulation::marvell {

/// The address table unit. Entries come and go by its operations only: this model carries no frames
/// that could be learned from, and nothing ages.
class Atu {
public:
    /// \param registers those of Global 1. Both must outlive the unit.
    Atu(Context& context, RegisterFile& registers);

    /// The word that was written to the operation register.
    void operate(std::uint32_t word);

    CommandTimer& getTimer();
    CommandTimer const& getTimer() const;

private:
    /// FID and MAC address, first byte on the wire highest.
    using Key = std::pair<unsigned, std::uint64_t>;

    Key stagedKey() const;
    void load();
    void next();
    void flushOrMove(bool staticsToo, bool allFids);
    static bool isStatic(Key const& key, std::uint32_t data);

    RegisterFile& _registers;
    CommandTimer _timer;
    /// The data register of each entry.
    std::map<Key, std::uint32_t> _entries;
};

} // namespace simulation::marvell
