#include "tests/faults/AllocationFaults.hpp"

#include <atomic>
#include <cstdlib>
#include <new>

#include "simulation/BusFaults.hpp"

namespace {

std::atomic<bool> isArmed{false};
std::atomic<std::uint64_t> allocations{0};
std::atomic<std::uint64_t> firstToFail{0};
std::atomic<std::uint64_t> numberToFail{0};
thread_local unsigned exemptions = 0;

bool failsNow() {
    if (!isArmed || exemptions > 0 || simulation::BusFaults::isInAccess()) {
        return false;
    }
    std::uint64_t const number = ++allocations;
    std::uint64_t const first = firstToFail;
    return first != 0 && number >= first && number - first < numberToFail;
}

void* allocate(std::size_t size) noexcept {
    return failsNow() ? nullptr : std::malloc(size == 0 ? 1 : size);
}

void* allocateOrThrow(std::size_t size) {
    void* const memory = allocate(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

} // namespace

namespace fault_test {

AllocationFaults::AllocationFaults(std::uint64_t first, std::uint64_t count) {
    allocations = 0;
    firstToFail = first;
    numberToFail = count;
    isArmed = true;
}

AllocationFaults::~AllocationFaults() {
    isArmed = false;
}

std::uint64_t AllocationFaults::getAllocations() const {
    return allocations;
}

AllocationFaults::Exemption::Exemption() {
    ++exemptions;
}

AllocationFaults::Exemption::~Exemption() {
    --exemptions;
}

} // namespace fault_test

void* operator new(std::size_t size) {
    return allocateOrThrow(size);
}

void* operator new[](std::size_t size) {
    return allocateOrThrow(size);
}

void* operator new(std::size_t size, std::nothrow_t const& /*tag*/) noexcept {
    return allocate(size);
}

void* operator new[](std::size_t size, std::nothrow_t const& /*tag*/) noexcept {
    return allocate(size);
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete[](void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}

void operator delete[](void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::nothrow_t const& /*tag*/) noexcept {
    std::free(memory);
}

void operator delete[](void* memory, std::nothrow_t const& /*tag*/) noexcept {
    std::free(memory);
}
