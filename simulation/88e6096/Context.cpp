#include "simulation/88e6096/Context.hpp"

#include "simulation/88e6096/Registers.hpp"

namespace simulation::marvell {

bool startCommand(RegisterFile& registers, unsigned address, std::uint32_t word, CommandTimer& timer) {
    registers.store(address, word & ~busy.getMask());
    if (!busy.isSet(word)) {
        return false;
    }
    if (timer.isBusy()) {
        registers.report(MisuseReport::Kind::commandWhileBusy, address, "the last command still runs");
    }
    timer.start();
    return true;
}

std::uint32_t withBusy(std::uint32_t stored, CommandTimer const& timer) {
    return timer.isBusy() ? stored | busy.getMask() : stored;
}

} // namespace simulation::marvell
