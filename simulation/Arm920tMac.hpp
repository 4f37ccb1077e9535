#pragma once

#include <cstddef>
#include <cstdint>

#include "simulation/BusDevice.hpp"
#include "simulation/CommandTimer.hpp"
#include "simulation/MdioBus.hpp"
#include "simulation/RegisterFile.hpp"
#include "simulation/Services.hpp"

namespace simulation {

/// The registers of the ARM920T's Ethernet MAC that make it an MDIO master. The rest of the block
/// is plain storage. Addresses are offsets as on the bus.
///
/// Any thread may call it.
class Arm920tMac : public BusDevice, public RegisterFile {
public:
    static constexpr unsigned physicalAddress = 0x80010000;
    static constexpr std::size_t size = 0x30;

    struct Options {
        /// How long the busy bit stays set after a frame is over.
        std::uint64_t busyNanoseconds = 0;
        /// Reset value of the MAC control register.
        std::uint32_t controlReset = 0;
    };

    /// Both references must outlive the MAC.
    Arm920tMac(Services& services, MdioBus& bus, Options const& options);

    bool read(unsigned offset, unsigned& value) override;
    bool write(unsigned offset, unsigned value) override;

    /// \name Test side
    /// @{

    /// The nth access of the bus from now on (1 = the next, 0 = none) fails: read() or write()
    /// returns false and nothing happens.
    void failAccess(unsigned nth);

    /// How long the busy bit stays set after each frame from now on.
    void setBusyTime(std::uint64_t nanoseconds);

    /// Busy for ever; from the nth frame on (1 = the next), or 0 = from now on.
    void hang(unsigned nthFrame = 0);
    void release();
    /// @}

private:
    bool failsNow();
    void startFrame(std::uint32_t command);
    RegisterTable table(Options const& options);

    Services& _services;
    MdioBus& _bus;
    CommandTimer _timer;
    unsigned _accessesToFailure = 0;
};

} // namespace simulation
