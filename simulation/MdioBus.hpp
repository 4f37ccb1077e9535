#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "simulation/MdioDevice.hpp"
#include "simulation/Services.hpp"

namespace simulation {

/// An MDIO bus with 32 addresses. Each frame takes its time on the virtual clock, answered or not.
class MdioBus {
public:
    static constexpr unsigned numberOfAddresses = 32;

    struct Options {
        /// What a read finds when nothing answers: the pulled-up line.
        std::uint16_t idleValue = 0xFFFF;
        /// 64 bits (32 of preamble) at 2.5 MHz.
        std::uint64_t frameNanoseconds = 25'600;
    };

    /// `services` must outlive the bus.
    MdioBus(Services& services, Options const& options);

    /// Puts a device at an address, 0 to 31; throws std::out_of_range, or std::invalid_argument when
    /// the address is taken. The device must outlive the bus.
    void attach(unsigned address, MdioDevice& device);

    /// The address becomes free. Nothing happens where nothing is attached.
    void detach(unsigned address);

    /// Whether something is attached there; address 0 to 31.
    bool isTaken(unsigned address) const { return _devices.at(address) != nullptr; }

    /// From now on the data line is held, whoever pulls: reads give `value`, frames that write are lost.
    void holdLine(std::uint16_t value) { _heldValue = value; }

    /// One read or write frame; address and register 0 to 31.
    std::uint16_t read(unsigned address, unsigned registerAddress);
    void write(unsigned address, unsigned registerAddress, std::uint16_t value);

    /// Time that frames have taken so far.
    std::uint64_t getBusNanoseconds() const { return _busNanoseconds; }

private:
    void passFrame();

    Services& _services;
    Options _options;
    std::array<MdioDevice*, numberOfAddresses> _devices{};
    std::optional<std::uint16_t> _heldValue;
    std::uint64_t _busNanoseconds = 0;
};

} // namespace simulation
