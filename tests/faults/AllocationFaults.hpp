#pragma once

#include <cstdint>

namespace fault_test {

/// Makes allocations with operator new fail, on any thread of this process, which has its own operator
/// new for that. What other libraries allocate in other ways is not touched, nor are the chip models.
class AllocationFaults {
public:
    /// Counts allocations from now on, until the object goes, and has some of them fail.
    /// \param first the first one that fails, counted from 1; 0 = none.
    /// \param count how many fail from there on.
    AllocationFaults(std::uint64_t first, std::uint64_t count);
    ~AllocationFaults();
    AllocationFaults(AllocationFaults const&) = delete;
    AllocationFaults& operator=(AllocationFaults const&) = delete;

    /// Allocations so far.
    std::uint64_t getAllocations() const;

    /// Allocations of the calling thread are not counted and do not fail while this exists.
    class Exemption {
    public:
        Exemption();
        ~Exemption();
        Exemption(Exemption const&) = delete;
        Exemption& operator=(Exemption const&) = delete;
    };
};

} // namespace fault_test
