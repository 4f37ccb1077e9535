#pragma once

#include <cstdint>

namespace simulation {

/// Sees each 32-bit access of the process's hardware sections, simulated windows and real ones alike,
/// once it is over and by the thread that made it.
class AccessObserver {
public:
    virtual ~AccessObserver() = default;

    /// \param address where, as the process sees it; of a section that is not mapped, anywhere.
    /// \param value as written, or as read; what the caller had there when a read failed.
    virtual void accessed(std::uintptr_t address, bool isWrite, std::uint32_t value, bool succeeded) = 0;

    /// Has `observer`, or nobody when it is null, see the accesses from now on. It must not go while
    /// an access can still be made.
    /// \return who saw them before, or null.
    static AccessObserver* install(AccessObserver* observer);
};

} // namespace simulation
