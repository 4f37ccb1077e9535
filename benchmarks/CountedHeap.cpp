#include "benchmarks/CountedHeap.hpp"

#include <link.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <mutex>
#include <new>
#include <string_view>

// The allocator that this one replaces, by the names that glibc keeps for that.
extern "C" {
void* __libc_malloc(std::size_t size);
void __libc_free(void* memory);
}

namespace footprint {

namespace {

using Owner = CountedHeap::Owner;

constexpr std::size_t owners = 2;

/// Stands directly before each block.
struct alignas(std::max_align_t) Header {
    void* allocated;
    std::size_t size;
    Owner owner;
};

struct Count {
    std::ptrdiff_t bytes = 0;
    std::ptrdiff_t peak = 0;
    std::size_t allocations = 0;

    void add(std::size_t size) {
        bytes += static_cast<std::ptrdiff_t>(size);
        peak = std::max(peak, bytes);
        ++allocations;
    }
};

struct Range {
    std::uintptr_t begin = 0;
    std::uintptr_t end = 0;
};

// Used before any constructor of the process runs, so these have none.
std::mutex mutex;
Count counts[owners];
Range libraryCode;

Count& countOf(Owner owner) {
    return counts[static_cast<std::size_t>(owner)];
}

void* allocate(std::size_t size, std::size_t alignment, Owner owner) {
    if (size > PTRDIFF_MAX - sizeof(Header) - alignment) {
        errno = ENOMEM;
        return nullptr;
    }
    void* const allocated = __libc_malloc(size + sizeof(Header) + alignment);
    if (allocated == nullptr) {
        return nullptr;
    }
    std::uintptr_t const lowest = reinterpret_cast<std::uintptr_t>(allocated) + sizeof(Header);
    std::uintptr_t const block = (lowest + alignment - 1) / alignment * alignment;
    reinterpret_cast<Header*>(block)[-1] = {allocated, size, owner};
    std::lock_guard<std::mutex> const lock(mutex);
    countOf(Owner::anyone).add(size);
    if (owner == Owner::library) {
        countOf(Owner::library).add(size);
    }
    return reinterpret_cast<void*>(block);
}

void release(void* block) {
    if (block == nullptr) {
        return;
    }
    Header const header = static_cast<Header*>(block)[-1];
    {
        std::lock_guard<std::mutex> const lock(mutex);
        countOf(Owner::anyone).bytes -= static_cast<std::ptrdiff_t>(header.size);
        if (header.owner == Owner::library) {
            countOf(Owner::library).bytes -= static_cast<std::ptrdiff_t>(header.size);
        }
    }
    __libc_free(header.allocated);
}

int findLibrary(dl_phdr_info* object, std::size_t /*size*/, void* /*unused*/) {
    if (std::string_view(object->dlpi_name).find("libswitchmanager.so") == std::string_view::npos) {
        return 0;
    }
    for (int i = 0; i < object->dlpi_phnum; ++i) {
        auto const& segment = object->dlpi_phdr[i];
        if (segment.p_type == PT_LOAD && (segment.p_flags & PF_X) != 0) {
            libraryCode.begin = object->dlpi_addr + segment.p_vaddr;
            libraryCode.end = libraryCode.begin + segment.p_memsz;
        }
    }
    return 1;
}

void* allocateFor(void const* caller, std::size_t size) {
    auto const address = reinterpret_cast<std::uintptr_t>(caller);
    bool const isLibrary = address >= libraryCode.begin && address < libraryCode.end;
    void* const block = allocate(size, alignof(std::max_align_t), isLibrary ? Owner::library : Owner::anyone);
    return block == nullptr ? throw std::bad_alloc() : block;
}

} // namespace

void CountedHeap::mark() {
    dl_iterate_phdr(findLibrary, nullptr);
    std::lock_guard<std::mutex> const lock(mutex);
    for (Count& count : counts) {
        count = Count();
    }
}

std::size_t CountedHeap::peakBytes(Owner owner) {
    std::lock_guard<std::mutex> const lock(mutex);
    return static_cast<std::size_t>(countOf(owner).peak);
}

std::size_t CountedHeap::allocations(Owner owner) {
    std::lock_guard<std::mutex> const lock(mutex);
    return countOf(owner).allocations;
}

} // namespace footprint

// What the whole process calls instead of the C library's allocator and of the C++ run time's.

using footprint::allocate;
using footprint::release;

extern "C" void* malloc(std::size_t size) {
    return allocate(size, alignof(std::max_align_t), footprint::Owner::anyone);
}

extern "C" void free(void* block) {
    release(block);
}

extern "C" void* calloc(std::size_t number, std::size_t size) {
    std::size_t bytes = 0;
    if (__builtin_mul_overflow(number, size, &bytes)) {
        errno = ENOMEM;
        return nullptr;
    }
    void* const block = malloc(bytes);
    return block == nullptr ? nullptr : std::memset(block, 0, bytes);
}

extern "C" void* realloc(void* block, std::size_t size) {
    void* const moved = malloc(size);
    if (moved != nullptr && block != nullptr) {
        std::memcpy(moved, block, std::min(size, static_cast<footprint::Header*>(block)[-1].size));
        release(block);
    }
    return moved;
}

extern "C" void* memalign(std::size_t alignment, std::size_t size) {
    return allocate(size, std::max(alignment, alignof(std::max_align_t)), footprint::Owner::anyone);
}

extern "C" void* aligned_alloc(std::size_t alignment, std::size_t size) {
    return memalign(alignment, size);
}

extern "C" int posix_memalign(void** block, std::size_t alignment, std::size_t size) {
    *block = memalign(alignment, size);
    return *block == nullptr ? ENOMEM : 0;
}

void* operator new(std::size_t size) {
    return footprint::allocateFor(__builtin_return_address(0), size);
}

void* operator new[](std::size_t size) {
    return footprint::allocateFor(__builtin_return_address(0), size);
}

void operator delete(void* block) noexcept {
    release(block);
}

void operator delete[](void* block) noexcept {
    release(block);
}

void operator delete(void* block, std::size_t /*size*/) noexcept {
    release(block);
}

void operator delete[](void* block, std::size_t /*size*/) noexcept {
    release(block);
}
