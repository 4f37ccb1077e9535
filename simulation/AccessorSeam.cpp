// The register accessors for sections that lie in a simulated window. The dynamic linker prefers
// these definitions to the library's, which stay in use for all other sections.

#include <dlfcn.h>

#include <atomic>

#include "host/HardwareMapping.hpp"
#include "simulation/AccessObserver.hpp"
#include "simulation/WindowRegistry.hpp"

// Keeps this file in the executable although nothing in it calls the accessors by name.
extern "C" char const simulationAccessorSeam = 0;

namespace {

using Setter = bool (*)(HardwareMapping*, unsigned, unsigned);
using Getter = bool (*)(HardwareMapping const*, unsigned, unsigned*);

// The names of HardwareMapping::set(unsigned, unsigned) and get(unsigned, unsigned&) const to the
// linker.
constexpr char const* setterName = "_ZN15HardwareMapping3setEjj";
constexpr char const* getterName = "_ZNK15HardwareMapping3getEjRj";

constexpr unsigned wordAligned = ~3U;

std::atomic<simulation::AccessObserver*> installedObserver{nullptr};

void observe(std::uintptr_t address, bool isWrite, unsigned value, bool succeeded) {
    if (simulation::AccessObserver* const observer = installedObserver.load()) {
        observer->accessed(address, isWrite, value, succeeded);
    }
}

simulation::BusDevice* simulatedDevice(std::uintptr_t baseAddress) {
    return simulation::WindowRegistry::getInstance().find(baseAddress);
}

void storeWord(std::uintptr_t baseAddress, unsigned value) {
    if (simulation::BusDevice* const device = simulatedDevice(baseAddress)) {
        device->write(0, value);
    } else {
        *reinterpret_cast<unsigned volatile*>(baseAddress) = value; // NOLINT: that is what an address is
    }
}

} // namespace

simulation::AccessObserver* simulation::AccessObserver::install(AccessObserver* observer) {
    return installedObserver.exchange(observer);
}

bool HardwareMapping::set(unsigned int offset, unsigned int value) {
    unsigned const place = (_startOffset + offset) & wordAligned;
    simulation::BusDevice* const device = simulatedDevice(_baseAddress);
    bool succeeded = false;
    if (device == nullptr) {
        static auto const library = reinterpret_cast<Setter>(dlsym(RTLD_NEXT, setterName));
        succeeded = library != nullptr && library(this, offset, value);
    } else {
        succeeded = device->write(place, value);
        if (succeeded && _dummySection != nullptr && _dummySection->_baseAddress != notMapped) {
            ++_dummySectionWriteCounts;
            storeWord(_dummySection->_baseAddress, _dummySectionWriteCounts);
        }
    }
    observe(_baseAddress + place, true, value, succeeded);
    return succeeded;
}

bool HardwareMapping::get(unsigned int offset, unsigned int& value) const {
    unsigned const place = (_startOffset + offset) & wordAligned;
    simulation::BusDevice* const device = simulatedDevice(_baseAddress);
    bool succeeded = false;
    if (device == nullptr) {
        static auto const library = reinterpret_cast<Getter>(dlsym(RTLD_NEXT, getterName));
        succeeded = library != nullptr && library(this, offset, &value);
    } else {
        succeeded = device->read(place, value);
    }
    observe(_baseAddress + place, false, value, succeeded);
    return succeeded;
}
