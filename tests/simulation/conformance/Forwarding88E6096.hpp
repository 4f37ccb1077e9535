#pragma once

#include "tests/simulation/conformance/ForwardingChip.hpp"

namespace simulation_test {

class Forwarding88E6096 : public ForwardingChip {
public:
    Forwarding88E6096();

    Writes contents(Chance& chance) const override;
    Writes command(Chance& chance) const override;
    std::vector<std::string> deciding() const override;
    void forget() override;
    bool mayReturn(unsigned port) override;
    bool isOn(unsigned port) override;
    std::uint32_t received(unsigned port) override;
    std::uint32_t sent(unsigned port) override;
    std::uint32_t octetsSent(unsigned port) override;

private:
    std::uint32_t sum(unsigned port, std::initializer_list<unsigned> counters);
};

} // namespace simulation_test
