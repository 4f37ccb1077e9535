#pragma once

#include <cstdint>

#include "simulation/88e6096/Context.hpp"

namespace simulation::marvell {

/// A unit that takes commands by a register whose bit 15 starts them, and reads as 1 while they run.
class CommandUnit {
public:
    /// \param registers those of the device. They must outlive the unit.
    CommandUnit(Context& context, RegisterFile& registers, unsigned address, std::uint64_t busyNanoseconds);
    virtual ~CommandUnit() = default;
    CommandUnit(CommandUnit const&) = delete;
    CommandUnit& operator=(CommandUnit const&) = delete;

    CommandTimer& getTimer() { return _timer; }
    CommandTimer const& getTimer() const { return _timer; }

    /// Whether a command has ended since the last clearDone().
    bool isDone() const { return _timer.isDone() && _timer.getCommands() != _commandsSeenDone; }
    void clearDone();

    /// The row of the register, with the unit behind it.
    Register attachedTo(Register row);

    /// A command register as it reads, with the busy bit of its unit.
    static std::uint32_t withBusy(std::uint32_t stored, CommandTimer const& timer);

protected:
    virtual void perform(std::uint32_t word) = 0;
    void reportMeaningless(char const* what) const;

    RegisterFile& _registers;

private:
    void start(std::uint32_t word);

    unsigned _address;
    unsigned _commandsSeenDone = 0;
    CommandTimer _timer;
};

} // namespace simulation::marvell
