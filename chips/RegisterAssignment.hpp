#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "chips/ChipCatalogue.hpp"
#include "chips/RegisterLocation.hpp"

namespace chips {

/// What the command line wants written: LOCATION=VALUE, or LOCATION:FIELD=VALUE[,FIELD=VALUE]..., which
/// leaves the register's other bits as they are.
class RegisterAssignment {
public:
    /// Throws ToolError (usage) when the text is wrong or the value does not fit.
    static RegisterAssignment parse(ChipCatalogue const& catalogue, std::string const& text, bool physOnly);

    RegisterLocation const& getLocation() const { return _location; }

    /// Whether the register has to be read first.
    bool isPartial() const;

    /// The bits that it names: all of the register unless isPartial().
    std::uint32_t getBits() const;

    /// The register's new contents.
    /// \param before its contents; makes no difference unless isPartial().
    std::uint32_t apply(std::uint32_t before) const;

    /// For people: location, number, and what it is to become.
    std::string getText() const;

private:
    struct Part {
        std::string name;
        std::uint32_t mask;
        std::uint32_t value;
        unsigned low;
    };

    void addField(std::string const& text, std::string const& assignment);

    RegisterLocation _location;
    std::vector<Part> _fields;
    std::uint32_t _value = 0;
};

} // namespace chips
