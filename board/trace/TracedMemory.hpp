#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "board/trace/BusListener.hpp"
#include "reference_host/PhysicalMemory.hpp"
#include "simulation/AccessObserver.hpp"

namespace board {

/// Memory that shows what is accessed in it to a listener, simulated or not.
///
/// Of several in a process, the last made has to go first; each shows what is accessed to those before it,
/// too.
class TracedMemory : public reference_host::PhysicalMemory, private simulation::AccessObserver {
public:
    /// \param memory what is behind it.
    /// \param listener must outlive the memory.
    TracedMemory(std::unique_ptr<reference_host::PhysicalMemory> memory, BusListener& listener);
    ~TracedMemory() override;
    TracedMemory(TracedMemory const&) = delete;
    TracedMemory& operator=(TracedMemory const&) = delete;

    bool map(unsigned int physicalAddress, unsigned int size, Mapping& mapping, std::string& reason) override;
    void unmap(Mapping const& mapping) noexcept override;

private:
    struct Window {
        std::uintptr_t begin;
        std::uintptr_t end;
        unsigned physicalAddress;
        std::uintptr_t baseAddress;
    };

    void accessed(std::uintptr_t address, bool isWrite, std::uint32_t value, bool succeeded) override;
    std::optional<unsigned> physicalAddressOf(std::uintptr_t address);

    std::unique_ptr<reference_host::PhysicalMemory> _memory;
    BusListener& _listener;
    simulation::AccessObserver* _previous = nullptr;
    std::mutex _mutex;
    std::vector<Window> _windows;
};

} // namespace board
