#pragma once

#include "simulation/BusDevice.hpp"
#include "simulation/BusFaults.hpp"

namespace simulation {

/// The way to what answers a window, with the faults that the board has on it.
class FaultyBus : public BusDevice {
public:
    /// Both references must outlive the object.
    FaultyBus(BusFaults& faults, unsigned physicalAddress, BusDevice& device);

    bool read(unsigned offset, unsigned& value) override;
    bool write(unsigned offset, unsigned value) override;

private:
    BusFaults& _faults;
    unsigned _physicalAddress;
    BusDevice& _device;
};

} // namespace simulation
