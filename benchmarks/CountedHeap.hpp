#pragma once

#include <cstddef>

namespace footprint {

/// Counts what the process has allocated, byte for byte as asked for, whatever room the allocator takes
/// for it. Linking this class replaces `malloc` and `operator new` of the whole process, its libraries
/// included. Any thread may call it.
class CountedHeap {
public:
    /// Who asked for memory.
    enum class Owner {
        anyone,
        /// Code of libswitchmanager.so itself, and not a library on its behalf.
        library,
    };

    /// From now on counts only what comes beyond what is allocated already.
    static void mark();

    /// The most bytes that were allocated at any one time since the mark.
    static std::size_t peakBytes(Owner owner);

    /// Allocations of an owner since the mark.
    static std::size_t allocations(Owner owner);
};

} // namespace footprint
