#include "simulation/SimulatedWindow.hpp"

#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "simulation/WindowRegistry.hpp"

namespace simulation {

namespace {

std::size_t wholePages(std::size_t size) {
    auto const page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    return size == 0 ? page : (size + page - 1) / page * page;
}

} // namespace

SimulatedWindow::SimulatedWindow(BusDevice& device, std::size_t size)
    : _baseAddress(0), _length(wholePages(size)) {
    void* const memory =
        mmap(nullptr, _length, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (memory == MAP_FAILED) {
        throw std::system_error(errno, std::generic_category(), "cannot reserve a simulated window");
    }
    _baseAddress = reinterpret_cast<std::uintptr_t>(memory);
    WindowRegistry::getInstance().add(_baseAddress, device);
}

SimulatedWindow::~SimulatedWindow() {
    WindowRegistry::getInstance().remove(_baseAddress);
    munmap(reinterpret_cast<void*>(_baseAddress), _length); // NOLINT: that is what an address is
}

} // namespace simulation
