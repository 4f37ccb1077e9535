#include "chips/vsc7390/WindowProbe.hpp"

#include <unistd.h>

#include "simulation/vsc7390/Registers.hpp"
#include "simulation/vsc7390/Vsc7390TestSide.hpp"

namespace chips {

namespace vitesse = simulation::vitesse;

namespace {

constexpr int looksAtMost = 100;
constexpr useconds_t pauseMicroseconds = 100;

} // namespace

WindowProbe::WindowProbe(Application& application) : _window("VSC7390", application, false) {
    _window.map(simulation::Vsc7390TestSide::physicalAddress, simulation::Vsc7390TestSide::windowSize);
}

std::optional<std::uint32_t> WindowProbe::read(unsigned block, unsigned subBlock, unsigned address) {
    unsigned value = 0;
    unsigned const offset = vitesse::window::block.placed(block) |
                            vitesse::window::subBlock.placed(subBlock) |
                            vitesse::window::address.placed(address);
    return _window.get(offset, value) ? std::optional<std::uint32_t>(value) : std::nullopt;
}

WindowProbe::Fetched WindowProbe::fetch(unsigned block, unsigned subBlock, unsigned address) {
    if (!read(block, subBlock, address)) {
        return {std::nullopt, true};
    }
    for (int looks = 0; looks < looksAtMost; ++looks) {
        auto const status = read(vitesse::block::system, 0, vitesse::system::indirectStatus);
        if (!status) {
            return {std::nullopt, true};
        }
        if (vitesse::system::dataReady.isSet(*status)) {
            auto const value = read(vitesse::block::system, 0, vitesse::system::indirectData);
            return {value, !value};
        }
        usleep(pauseMicroseconds);
    }
    return {};
}

} // namespace chips
