#include "host/HardwareMapping.hpp"

#include "host/SystemLogInterface.hpp"
#include "reference_host/DeviceMemory.hpp"
#include "reference_host/HostApplication.hpp"

using reference_host::DeviceMemory;
using reference_host::HostApplication;
using reference_host::PhysicalMemory;

HardwareMapping* HardwareMapping::_dummySection = nullptr;
unsigned int HardwareMapping::_dummySectionWriteCounts = 0;

struct HardwareMapping::Implementation {
    Implementation(std::string const& sectionName, SystemLogInterface& systemLog, bool leaveUnmapped)
        : name(sectionName), log(systemLog), noHardwareAccess(leaveUnmapped) {}

    /// The application that the section logs to decides what its physical addresses are. A log that
    /// is no HostApplication has no opinion, so the section gets the real ones.
    PhysicalMemory& memory() {
        if (auto* const application = dynamic_cast<HostApplication*>(&log)) {
            return application->getPhysicalMemory();
        }
        return deviceMemory;
    }

    std::string name;
    SystemLogInterface& log;
    bool noHardwareAccess;
    DeviceMemory deviceMemory;
    /// Who gave the current mapping, or null.
    PhysicalMemory* source = nullptr;
    PhysicalMemory::Mapping mapping;
};

HardwareMapping::HardwareMapping(std::string const& name, SystemLogInterface& log, bool noHardwareAccess)
    : _baseAddress(notMapped),
      _startOffset(0),
      _implementation(std::make_unique<Implementation>(name, log, noHardwareAccess)) {}

HardwareMapping::~HardwareMapping() {
    unMap();
    if (_dummySection == this) {
        _dummySection = nullptr;
    }
}

bool HardwareMapping::map(unsigned int physicalAddress, unsigned int size) {
    Implementation& own = *_implementation;
    unMap();
    if (own.noHardwareAccess) {
        return false;
    }
    PhysicalMemory& memory = own.memory();
    PhysicalMemory::Mapping mapping;
    std::string reason;
    if (!memory.map(physicalAddress, size, mapping, reason)) {
        own.log.logError("HardwareMapping::map section \"%s\" at 0x%08X: %s\n", own.name.c_str(),
                         physicalAddress, reason.c_str());
        return false;
    }
    own.source = &memory;
    own.mapping = mapping;
    _baseAddress = mapping.baseAddress;
    _startOffset = mapping.startOffset;
    return true;
}

void HardwareMapping::unMap() {
    Implementation& own = *_implementation;
    if (own.source != nullptr) {
        own.source->unmap(own.mapping);
        own.source = nullptr;
    }
    _baseAddress = notMapped;
    _startOffset = 0;
}
