#pragma once

namespace simulation {

/// What answers 32-bit accesses in one simulated window of physical addresses.
class BusDevice {
public:
    virtual ~BusDevice() = default;

    /// \param offset bytes from the start of the window, a multiple of 4.
    /// \return false when the access fails; `value` is then left alone.
    virtual bool read(unsigned int offset, unsigned int& value) = 0;

    /// \return false when the access fails.
    virtual bool write(unsigned int offset, unsigned int value) = 0;
};

} // namespace simulation
