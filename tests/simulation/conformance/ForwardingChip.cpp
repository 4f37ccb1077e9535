#include "tests/simulation/conformance/ForwardingChip.hpp"

#include "simulation/ChipFamilies.hpp"
#include "tests/simulation/conformance/Forwarding88E6096.hpp"
#include "tests/simulation/conformance/ForwardingVsc7390.hpp"

namespace simulation_test {

std::unique_ptr<ForwardingChip> ForwardingChip::make(std::string const& model) {
    if (model == "88e6096") {
        return std::make_unique<Forwarding88E6096>();
    }
    return std::make_unique<ForwardingVsc7390>();
}

ForwardingChip::ForwardingChip(std::string const& model)
    : _chip(simulation::ChipFamilies::find(model)->create(_services, 0, {})) {}

void ForwardingChip::apply(Writes const& writes) {
    for (Write const& write : writes) {
        side().getUnit(write.unit).write(write.address, write.value, 0);
    }
}

} // namespace simulation_test
