#include "simulation/vsc7390/Arbiter.hpp"

#include <utility>

#include "simulation/vsc7390/Registers.hpp"

namespace simulation::vitesse {

Arbiter::Arbiter(Context& context, Receives receives)
    : RegisterFile(context.services,
                   {context.chip, UnitKind::arbiter, 0, {UnitPlace::Space::block, block::arbiter, 0}}),
      _context(context),
      _receives(std::move(receives)),
      _timer(context.services.clock) {
    define(table());
}

RegisterTable Arbiter::table() {
    return {
        Register(arbiter::empty, "ARBEMPTY").unstable().readOnly(ports).onRead([this](std::uint32_t) {
            return empty();
        }),
        Register(arbiter::discard, "ARBDISC").field(ports).onWrite([this](std::uint32_t mask) {
            discard(mask);
        }),
    };
}

// Each port that joins takes the time of a drain; those that drain already wait for it, too.
void Arbiter::discard(std::uint32_t mask) {
    _queued &= ~empty();
    for (unsigned port = 0; port <= ports.high; ++port) {
        if ((mask & ~_discarded & bit(port)) != 0) {
            _timer.start(_context.options.arbiterDrainNanoseconds);
        }
    }
    _discarded = mask;
}

// A port whose frames are not discarded has those in its queue that a test put there. One whose frames
// are has none once the drain is over, unless it had some and gets more.
std::uint32_t Arbiter::empty() {
    std::uint32_t mask = 0;
    for (unsigned port = 0; port <= ports.high; ++port) {
        bool const waits = (_queued & bit(port)) != 0;
        bool const isEmpty =
            (_discarded & bit(port)) != 0 ? !_timer.isBusy() && !(waits && _receives(port)) : !waits;
        if (isEmpty) {
            mask |= bit(port);
        }
    }
    return mask;
}

void Arbiter::queueFrames(unsigned port) {
    _queued |= bit(port);
}

void Arbiter::forget() {
    _queued = 0;
    _discarded = 0;
    _timer.release();
}

} // namespace simulation::vitesse
