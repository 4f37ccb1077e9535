#pragma once

#include <string>

#include "chips/RegisterLocation.hpp"
#include "simulation/RegisterTable.hpp"

namespace switchctl::audit {

/// What of the registers that a bring-up writes is compared: what stays until somebody writes it.
struct AuditSelection {
    /// Whether a register is compared at all.
    static bool contains(chips::RegisterLocation const& location);

    /// Whether a field of it is: one that can be written and does not clear itself.
    static bool contains(chips::RegisterLocation const& location, simulation::Register::Field const& field);

    /// What is left out and why, for people.
    static std::string explain();
};

} // namespace switchctl::audit
