#include "host/MappedSection.hpp"

MappedSection::MappedSection(std::string const& name, SystemLogInterface& log, bool noHardwareAccess)
    : HardwareMapping(name, log, noHardwareAccess) {}

MappedSection::~MappedSection() = default;
