#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "simulation/SimulatedBoard.hpp"
#include "simulation/SimulatedChip.hpp"

namespace simulation {

/// The chips that boards can be built of.
struct ChipFamilies {
    struct Family {
        /// The text of the switchModel attribute.
        std::string model;
        std::function<std::unique_ptr<SimulatedChip>(Services&, unsigned id, SimulatedBoard::Options const&)>
            create;
    };

    /// A new family joins by a row here.
    static std::vector<Family> const& getAll();

    /// Null when there is none of that name.
    static Family const* find(std::string const& model);
};

} // namespace simulation
