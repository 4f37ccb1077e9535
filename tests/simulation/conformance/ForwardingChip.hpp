#pragma once

#include <memory>
#include <string>
#include <vector>

#include "simulation/Services.hpp"
#include "simulation/SimulatedChip.hpp"
#include "simulation/network/ChipForwarding.hpp"
#include "tests/simulation/conformance/Chance.hpp"

namespace simulation_test {

/// A chip without a board. Its units take their registers as from the bus.
class ForwardingChip {
public:
    struct Write {
        std::string unit;
        unsigned address;
        std::uint32_t value;
    };
    using Writes = std::vector<Write>;

    /// By the model's name in documents.
    static std::unique_ptr<ForwardingChip> make(std::string const& model);

    explicit ForwardingChip(std::string const& model);
    virtual ~ForwardingChip() = default;
    ForwardingChip(ForwardingChip const&) = delete;
    ForwardingChip& operator=(ForwardingChip const&) = delete;

    simulation::ChipTestSide& side() { return _chip->getTestSide(); }
    simulation::ChipForwarding& forwarding() { return *side().getForwarding(); }
    void apply(Writes const& writes);

    /// All that matters to frames, in a way that lets many of them pass.
    virtual Writes contents(Chance& chance) const = 0;
    /// A command to one of the tables, with what it works on.
    virtual Writes command(Chance& chance) const = 0;
    /// The registers that are to matter to frames, as kind of unit and address: "port 04".
    virtual std::vector<std::string> deciding() const = 0;

    /// Forgets what the chip keeps ready of its registers, so that the next frame has them read anew.
    virtual void forget() = 0;

    /// Whether what registers say may let a frame leave by the port where it came in.
    virtual bool mayReturn(unsigned port) = 0;

    /// Whether the port's MAC gets and counts what comes.
    virtual bool isOn(unsigned port) = 0;

    /// \name What counters of a port say
    /// @{
    virtual std::uint32_t received(unsigned port) = 0;
    virtual std::uint32_t sent(unsigned port) = 0;
    virtual std::uint32_t octetsSent(unsigned port) = 0;
    /// @}

private:
    simulation::Services _services;
    std::unique_ptr<simulation::SimulatedChip> _chip;
};

} // namespace simulation_test
