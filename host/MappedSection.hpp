#pragma once

#include <string>

#include "host/HardwareMapping.hpp"

/// A named hardware section. Not mapped until HardwareMapping::map is called.
class MappedSection : public HardwareMapping {
public:
    /// \param log where the host reports a mapping that fails; must outlive the section.
    /// \param noHardwareAccess true: the section never gets mapped.
    MappedSection(std::string const& name, SystemLogInterface& log, bool noHardwareAccess);
    ~MappedSection() override;
};
