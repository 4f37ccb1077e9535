#pragma once

#include <cstdint>
#include <functional>

#include "simulation/CommandTimer.hpp"
#include "simulation/RegisterFile.hpp"
#include "simulation/vsc7390/Context.hpp"

namespace simulation::vitesse {

/// The arbiter: which ports have frames waiting, and which have them thrown away.
class Arbiter : public RegisterFile {
public:
    /// Whether a port's MAC still brings frames in.
    using Receives = std::function<bool(unsigned port)>;

    /// `context` must outlive the unit.
    Arbiter(Context& context, Receives receives);

    CommandTimer& getTimer() { return _timer; }

    /// Frames of the port wait from now on.
    void queueFrames(unsigned port);

    /// No frame waits and none is discarded, as after a reset.
    void forget();

private:
    RegisterTable table();
    void discard(std::uint32_t mask);
    std::uint32_t empty();

    Context& _context;
    Receives _receives;
    CommandTimer _timer;
    std::uint32_t _queued = 0;
    std::uint32_t _discarded = 0;
};

} // namespace simulation::vitesse
