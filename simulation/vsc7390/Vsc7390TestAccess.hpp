#pragma once

#include <mutex>

#include "simulation/CommandTimer.hpp"
#include "simulation/RegisterFile.hpp"
#include "simulation/vsc7390/Vsc7390TestSide.hpp"

namespace simulation {

class Vsc7390;

namespace vitesse {
class Phy;
class Port;
} // namespace vitesse

/// The test side of a VSC7390. Each operation is one step for the threads that use the board.
class Vsc7390TestAccess : public Vsc7390TestSide {
public:
    /// `chip` owns this object.
    explicit Vsc7390TestAccess(Vsc7390& chip);

    std::vector<std::string> getUnits() const override;
    RegisterTable const& getRegisters(std::string const& unit) const override;
    std::uint32_t peek(std::string const& unit, unsigned address) const override;
    void poke(std::string const& unit, unsigned address, std::uint32_t value) override;
    void stick(std::string const& unit, unsigned address, std::uint32_t ones, std::uint32_t zeros) override;
    void failAccess(unsigned nth) override;

    void setCounter(unsigned number, unsigned counter, std::uint32_t value) override;
    std::uint32_t getCounter(unsigned number, unsigned counter) const override;
    PortMac getPortMac(unsigned number) const override;
    void queueFrames(unsigned number) override;
    void plugPhy(unsigned number) override;
    void unplugPhy(unsigned number) override;
    void setPhyRegister(unsigned number, unsigned address, std::uint16_t value) override;
    std::uint16_t getPhyRegister(unsigned number, unsigned address) const override;
    VlanEntry getVlanEntry(unsigned vid) const override;
    std::map<unsigned, VlanEntry> getVlans() const override;
    void setVlanEntry(unsigned vid, VlanEntry const& entry) override;
    std::optional<MacEntry> getMacEntry(unsigned row, unsigned bucket) const override;
    std::map<MacPlace, MacEntry> getMacTable() const override;
    void setMacEntry(unsigned row, unsigned bucket, MacEntry const& entry) override;
    void removeMacEntry(unsigned row, unsigned bucket) override;
    unsigned getRow(std::uint64_t mac, unsigned vid) const override;
    bool learn(std::uint64_t mac, unsigned vid, unsigned number) override;
    std::optional<std::uint32_t> getMulticastPorts(std::uint64_t mac, unsigned vid) const override;
    std::uint32_t getEgressPorts(unsigned ingress, std::uint64_t destination, std::uint64_t source,
                                 unsigned vid) const override;
    void failBusAccess(unsigned nth) override;
    void unplug() override;
    void plug() override;
    void loseReads(unsigned count) override;
    void setBusyTime(CommandUnit unit, std::uint64_t nanoseconds) override;
    void hang(CommandUnit unit, unsigned nthCommand) override;
    void release(CommandUnit unit) override;
    unsigned getCommands(CommandUnit unit) const override;

private:
    std::unique_lock<std::recursive_mutex> lock() const;
    RegisterFile& find(std::string const& unit) const;
    vitesse::Port& port(unsigned number) const;
    vitesse::Phy& phy(unsigned number) const;
    CommandTimer& timer(CommandUnit unit) const;

    Vsc7390& _chip;
};

} // namespace simulation
