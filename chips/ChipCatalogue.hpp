#pragma once

#include <memory>
#include <string>
#include <vector>

#include "chips/RegisterAddress.hpp"
#include "chips/RegisterLocation.hpp"
#include "simulation/UnitIdentity.hpp"

namespace chips {

/// What a chip's units, registers and fields are called, by the tables of its model.
///
/// A location is written UNIT/REGISTER, each by name or by number. In names, upper and lower case are
/// the same, and blanks, "-" and "_" do not count: "port 3/PortControl" is "Port3/port_control".
/// Numbers are decimal or, after 0x, hexadecimal. The number of a unit is the device of an 88E6096
/// ("0x13/0x04"), block and sub-block of a VSC7390 ("2.0/0xE0", or "2.0.0xE0" in one), or the PHY where
/// only PHYs are meant.
class ChipCatalogue {
public:
    /// \param model as in configuration documents; throws std::out_of_range when there is no such chip.
    explicit ChipCatalogue(std::string const& model);
    ~ChipCatalogue();
    ChipCatalogue(ChipCatalogue const&) = delete;
    ChipCatalogue& operator=(ChipCatalogue const&) = delete;

    std::string const& getModel() const { return _model; }

    /// \name By the unit and the register's number there
    /// @{
    RegisterLocation at(simulation::UnitKind kind, unsigned number, unsigned address) const;
    /// Without names where the chip has no such unit or register.
    RegisterLocation locate(RegisterAddress const& address) const;
    /// @}

    /// The location that the text stands for; throws ToolError (usage) when it stands for none.
    /// \param physOnly a number alone is a PHY, and nothing else is a unit.
    RegisterLocation find(std::string const& text, bool physOnly = false) const;

    /// All registers that are known, by unit, in the order of the chip.
    std::vector<RegisterLocation> getAll() const;

    /// Whether two names are the same.
    static bool isSameName(std::string const& first, std::string const& second);

private:
    using Unit = simulation::UnitIdentity;
    struct Chip;

    RegisterAddress::Space getSpace() const;
    std::string expand(std::string const& text) const;
    RegisterAddress parseUnit(std::string const& text, bool physOnly, std::string const& location) const;
    bool parseNumber(std::string const& text, bool physOnly, RegisterAddress& address) const;
    Unit const* findUnit(simulation::UnitPlace const& place) const;

    std::string _model;
    std::unique_ptr<Chip> _chip;
    std::vector<Unit const*> _units;
};

} // namespace chips
