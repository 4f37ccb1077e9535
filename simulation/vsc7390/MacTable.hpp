#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "simulation/vsc7390/MacEntry.hpp"
#include "simulation/vsc7390/TableUnit.hpp"

namespace simulation::vitesse {

/// The MAC table, 2048 rows of four buckets, and the unit through which it is reached.
class MacTable : public TableUnit {
public:
    /// \param registers those of the analyser. Both must outlive the unit.
    MacTable(Context& context, RegisterFile& registers);

    /// The bucket itself; rows 0 to 2047, buckets 0 to 3.
    MacEntry& at(unsigned row, unsigned bucket);
    MacEntry const& at(unsigned row, unsigned bucket) const;

    /// What becomes of a locked entry of the same address and VID.
    enum class LockedSame { kept, replaced };

    /// Puts an entry into a bucket of the row of its address: over the entry of the same address and
    /// VID, else into an empty bucket, else over an aged entry, else over one after the other. Locked
    /// ones of other addresses stay.
    /// \return false when there is no bucket to be had.
    bool insert(MacEntry const& entry, LockedSame locked);

    /// Whether insert() would find a bucket for what a frame brings.
    bool canLearn(std::uint64_t address, unsigned vid) const;

    /// Null when there is none.
    MacEntry const* find(std::uint64_t address, unsigned vid) const;
    MacEntry const* findGroup(std::uint64_t address, unsigned vid) const;

    void clear();

    static unsigned rowOf(std::uint64_t address, unsigned vid);

private:
    using Row = std::array<MacEntry, Vsc7390TestSide::numberOfBuckets>;

    std::uint64_t usualNanoseconds(unsigned command) const override;
    void perform(unsigned command, std::uint32_t word) override;
    void learn(std::uint32_t word);
    void forget();
    void age();
    void flush();
    void readIndexed();
    void writeIndexed(std::uint32_t word);
    MacEntry& indexed();
    MacEntry staged(std::uint32_t word) const;
    MacEntry* bucketFor(Vsc7390TestSide::MacEntry const& key, LockedSame locked);
    MacEntry* nextInTurn(Row& row);

    unsigned _turn = 0;
    std::vector<Row> _rows;
};

} // namespace simulation::vitesse
