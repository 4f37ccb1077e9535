#pragma once

#include <cstdint>
#include <vector>

#include "benchmarks/Access.hpp"
#include "simulation/AccessObserver.hpp"
#include "simulation/SimulatedBoard.hpp"

namespace benchmarks {

/// Writes down each 32-bit access to a simulated board while it exists. One at a time; the accesses
/// come from one thread after the other.
class AccessRecorder : public simulation::AccessObserver {
public:
    explicit AccessRecorder(simulation::SimulatedBoard& board);
    ~AccessRecorder() override;
    AccessRecorder(AccessRecorder const&) = delete;
    AccessRecorder& operator=(AccessRecorder const&) = delete;

    void accessed(std::uintptr_t address, bool isWrite, std::uint32_t value, bool succeeded) override;

    /// What came since the last call.
    std::vector<Access> take();

private:
    struct Window {
        std::uintptr_t base;
        std::size_t length;
        unsigned physicalAddress;
    };

    std::vector<Window> _windows;
    std::vector<Access> _accesses;
};

} // namespace benchmarks
