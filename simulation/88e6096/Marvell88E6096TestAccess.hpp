#pragma once

#include <mutex>

#include "simulation/88e6096/Marvell88E6096TestSide.hpp"
#include "simulation/CommandTimer.hpp"
#include "simulation/RegisterFile.hpp"

namespace simulation {

namespace marvell {
class Port;
}

class Marvell88E6096;

/// The test side of an 88E6096. Each operation is one step for the threads that use the board.
class Marvell88E6096TestAccess : public Marvell88E6096TestSide {
public:
    /// `chip` owns this object.
    explicit Marvell88E6096TestAccess(Marvell88E6096& chip);

    std::vector<std::string> getUnits() const override;
    RegisterTable const& getRegisters(std::string const& unit) const override;
    std::uint32_t peek(std::string const& unit, unsigned address) const override;
    void poke(std::string const& unit, unsigned address, std::uint32_t value) override;
    void stick(std::string const& unit, unsigned address, std::uint32_t ones, std::uint32_t zeros) override;
    void failAccess(unsigned nth) override;

    void setCounter(unsigned port, unsigned counter, std::uint32_t value) override;
    std::uint32_t getCounter(unsigned port, unsigned counter) const override;
    void setInDiscards(unsigned number, std::uint32_t value) override;
    void setInFiltered(unsigned number, std::uint16_t value) override;
    void setOutFiltered(unsigned number, std::uint16_t value) override;
    void plugLink(unsigned number, unsigned megabits, bool fullDuplex) override;
    void unplugLink(unsigned number) override;
    void setLinkLevel(unsigned number, bool up) override;
    bool hasLink(unsigned number) const override;
    std::map<unsigned, VtuEntry> getVtu() const override;
    std::map<unsigned, StuEntry> getStu() const override;
    std::optional<VtuEntry> getVtuEntry(unsigned vid) const override;
    std::optional<StuEntry> getStuEntry(unsigned sid) const override;
    void setVtuEntry(unsigned vid, VtuEntry const& entry) override;
    void setStuEntry(unsigned sid, StuEntry const& entry) override;
    void addVtuViolation(unsigned vid, unsigned sourcePort, VtuViolation violation) override;
    unsigned getAgeSeconds() const override;
    void unplug() override;
    void plug() override;
    void setBusyTime(CommandUnit unit, std::uint64_t nanoseconds) override;
    void hang(CommandUnit unit, unsigned nthCommand) override;
    void release(CommandUnit unit) override;
    unsigned getCommands(CommandUnit unit) const override;

private:
    std::unique_lock<std::recursive_mutex> lock() const;
    RegisterFile& find(std::string const& unit) const;
    marvell::Port& port(unsigned number) const;
    CommandTimer& timer(CommandUnit unit) const;

    Marvell88E6096& _chip;
};

} // namespace simulation
