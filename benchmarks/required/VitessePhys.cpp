#include <ctime>

#include "benchmarks/required/Vitesse.hpp"
#include "benchmarks/required/VitesseRegisters.hpp"

namespace required::vitesse {

namespace {

void waitForController(Chip const& chip) {
    time_t const start = time(nullptr);
    while ((read(chip.bus, mii, controller, miiStatus) & miiBusy) != 0 &&
           difftime(time(nullptr), start) <= 1.0) {
    }
}

} // namespace

unsigned readPhy(Chip const& chip, unsigned phy, unsigned number) {
    constexpr unsigned dataField = 0xFFFF;
    waitForController(chip);
    write(chip.bus, mii, controller, miiCommand, miiRead | phy << 21 | number << 16);
    waitForController(chip);
    return read(chip.bus, mii, controller, miiData) & dataField;
}

void writePhy(Chip const& chip, unsigned phy, unsigned number, unsigned value) {
    waitForController(chip);
    write(chip.bus, mii, controller, miiCommand, phy << 21 | number << 16 | value);
}

} // namespace required::vitesse
