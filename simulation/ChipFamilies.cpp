#include "simulation/ChipFamilies.hpp"

#include "simulation/88e6096/Marvell88E6096.hpp"
#include "simulation/vsc7390/Vsc7390.hpp"

namespace simulation {

std::vector<ChipFamilies::Family> const& ChipFamilies::getAll() {
    static std::vector<Family> const families = {
        {"88e6096",
         [](Services& services, unsigned id, SimulatedBoard::Options const& options) {
             return std::make_unique<Marvell88E6096>(services, id, options.marvell);
         }},
        {"vsc7390",
         [](Services& services, unsigned id, SimulatedBoard::Options const& options) {
             return std::make_unique<Vsc7390>(services, id, options.vitesse);
         }},
    };
    return families;
}

ChipFamilies::Family const* ChipFamilies::find(std::string const& model) {
    for (Family const& family : getAll()) {
        if (family.model == model) {
            return &family;
        }
    }
    return nullptr;
}

} // namespace simulation
