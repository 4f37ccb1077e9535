#pragma once

#include <cstdint>

#include "simulation/CommandTimer.hpp"
#include "simulation/RegisterFile.hpp"
#include "simulation/vsc7390/Context.hpp"

namespace simulation::vitesse {

/// A table of the analyser, and the register through which it takes commands. Command 0 does nothing.
class TableUnit {
public:
    /// \param registers those of the analyser. Both must outlive the unit.
    /// \param address, command of the access register and its command.
    /// \param readCommand what shows while the unit is busy and has not had a command.
    TableUnit(Context& context, RegisterFile& registers, unsigned address, Field const& command,
              unsigned readCommand);
    virtual ~TableUnit() = default;
    TableUnit(TableUnit const&) = delete;
    TableUnit& operator=(TableUnit const&) = delete;

    CommandTimer& getTimer() { return _timer; }

    /// The row of the access register, with the unit behind it: it reads with the command while one runs.
    Register attachedTo(Register row);

protected:
    virtual std::uint64_t usualNanoseconds(unsigned command) const = 0;
    virtual void perform(unsigned command, std::uint32_t word) = 0;

    Context& _context;
    RegisterFile& _registers;

private:
    void start(std::uint32_t word);

    unsigned _address;
    Field _field;
    unsigned _command;
    CommandTimer _timer;
};

} // namespace simulation::vitesse
