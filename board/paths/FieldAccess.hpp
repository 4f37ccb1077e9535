#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "chips/ChipCatalogue.hpp"
#include "simulation/ChipTestSide.hpp"

namespace board {

/// Fields of a chip model's registers by name, beside its bus. A name that there is not throws
/// std::out_of_range or ToolError (usage).
class FieldAccess {
public:
    /// Takes back what was done.
    using Undo = std::function<void()>;

    /// \param model as in configuration documents. `chip` must outlive the object and what it returns.
    FieldAccess(simulation::ChipTestSide& chip, std::string const& model) : _chip(chip), _catalogue(model) {}

    std::uint32_t get(std::string const& unit, std::string const& name, std::string const& field) const;
    Undo set(std::string const& unit, std::string const& name, std::string const& field,
             std::uint32_t value) const;

    /// "port 1/PortControl2:802.1QMode".
    static std::string describe(std::string const& unit, std::string const& name, std::string const& field) {
        return unit + "/" + name + ":" + field;
    }

private:
    struct Place {
        unsigned address;
        simulation::Field field;
    };

    Place find(std::string const& unit, std::string const& name, std::string const& field) const;

    simulation::ChipTestSide& _chip;
    chips::ChipCatalogue _catalogue;
};

} // namespace board
