#pragma once

#include <cstdint>
#include <optional>
#include <unordered_map>

#include "simulation/88e6096/CommandUnit.hpp"

namespace simulation::marvell {

/// The address table unit. Entries come by its operations and by learning, and age by the board's clock.
/// How addresses are spread over the chip's buckets is not public: only their number is bounded.
class Atu : public CommandUnit {
public:
    static constexpr std::size_t capacity = 8192;
    static constexpr unsigned highestFid = 0xFFF;
    static constexpr std::uint64_t highestMac = 0xFFFF'FFFF'FFFF;
    /// The state of an entry that was just learned or seen again.
    static constexpr unsigned newest = 7;

    enum class Learning {
        learned,
        /// An entry that no frame may change has the address.
        isStatic,
        full
    };

    /// \param registers those of Global 1. Both must outlive the unit.
    Atu(Context& context, RegisterFile& registers);

    /// The data register of the entry for an address, first byte on the wire highest; 0 when there is none.
    std::uint32_t find(unsigned fid, std::uint64_t address) const;

    /// As the operation that loads an entry.
    void setEntry(unsigned fid, std::uint64_t address, std::uint32_t data);

    /// What learn() would return.
    Learning tryLearning(unsigned fid, std::uint64_t address) const;
    /// \param ports the data register of the entry without its state.
    /// \param source the port that the frame came in by, for the violation when the table is full.
    Learning learn(unsigned fid, std::uint64_t address, std::uint32_t ports, unsigned source);

    bool hasViolation() const { return _violation.has_value(); }

    /// The AgeTime of the registers may have changed: ages so far are kept, the rest is at the new pace.
    void followAgeTime();
    void clear();

    static bool isStatic(std::uint64_t address, std::uint32_t data);

private:
    /// FID above the 48 bits of the address.
    using Key = std::uint64_t;

    struct Entry {
        std::uint32_t data;
        /// When the state of `data` was right.
        std::uint64_t since;
    };

    /// All bits count for the place of an address, as makers number theirs in a row.
    struct Spread {
        std::size_t operator()(Key key) const {
            return static_cast<std::size_t>(key * 0x9E3779B97F4A7C15 >> 16);
        }
    };
    using Entries = std::unordered_map<Key, Entry, Spread>;

    struct Violation {
        Key key;
        unsigned source;
    };

    void perform(std::uint32_t word) override;
    Key stagedKey() const;
    void load(Key key, std::uint32_t data);
    void put(Key key, std::uint32_t data);
    void next();
    void stage(Key key, std::uint32_t data);
    void flushOrMove(bool staticsToo, bool allFids);
    void fetchViolation();
    Learning judge(Entries::const_iterator found) const;
    bool isFull() const;
    /// When the entry is too old to be one.
    std::uint64_t goneAt(Key key, Entry const& entry) const;
    /// The entry's data with the age that it has by now; 0 when it is gone.
    std::uint32_t aged(Key key, Entry const& entry) const;
    void dropAged();
    std::uint64_t now() const { return _context.services.clock.getNanoseconds(); }

    Context& _context;
    Entries _entries;
    std::optional<Violation> _violation;
    /// Until then nothing in a full table gets too old; 0 when that is not known.
    mutable std::uint64_t _fullUntil = 0;
    unsigned _ageTime = 0;
    /// In which an entry gets older by one; 0 when none does.
    std::uint64_t _stepNanoseconds = 0;
};

} // namespace simulation::marvell
