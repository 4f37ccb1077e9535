#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <vector>

#include "simulation/Services.hpp"

namespace simulation {

/// What goes wrong on the way between the processor and a board's windows. All 32-bit accesses of a
/// board are counted in one sequence, whichever window they are made to.
///
/// Any thread may call.
class BusFaults {
public:
    enum class Kind {
        /// The accessor reports failure and nothing reaches the chip.
        accessFails,
        /// The word arrives as 0, as all ones, or with one bit turned over: at the processor when it
        /// was read, at the chip when it was written.
        allZeros,
        allOnes,
        bitFlipped,
    };

    /// One access to a window.
    struct Access {
        /// Where, as the processor's bus has it.
        unsigned physicalAddress;
        bool isWrite;
        /// As sent, or as received; 0 for a read that failed.
        std::uint32_t value;
    };

    /// `services` must outlive the object.
    explicit BusFaults(Services& services);

    /// \param access which one, counted from the board's first, which is 1.
    /// \param bit 0 to 31, which one is flipped.
    void strike(std::uint64_t access, Kind kind, unsigned bit = 0);

    /// As strike(), for every access from that one on that nothing else strikes.
    void strikeFrom(std::uint64_t access, Kind kind);

    /// Has `action` called, once, right before that access, by the thread that makes it.
    void callBefore(std::uint64_t access, std::function<void()> action);

    /// Every access from now on takes so much longer: waits end after fewer looks, in the same time.
    void slowDown(std::uint64_t nanoseconds);

    /// Keeps a record of all accesses from now on.
    void startRecord();
    std::vector<Access> getRecord() const;

    /// Accesses so far.
    std::uint64_t getAccesses() const;

    /// Whether the calling thread is inside a chip model, on an access to it.
    static bool isInAccess();

private:
    friend class FaultyBus;

    struct Strike {
        Kind kind;
        unsigned bit;
    };

    /// Counts an access; null when nothing goes wrong with it.
    Strike const* begin();
    void note(Access const& access);
    static std::uint32_t disturbed(std::uint32_t value, Strike const& strike);

    Services& _services;
    std::uint64_t _accesses = 0;
    std::uint64_t _slowness = 0;
    bool _isRecording = false;
    std::map<std::uint64_t, Strike> _strikes;
    std::uint64_t _breakdown = std::numeric_limits<std::uint64_t>::max();
    Strike _afterBreakdown{};
    std::multimap<std::uint64_t, std::function<void()>> _actions;
    std::vector<Access> _record;
};

} // namespace simulation
