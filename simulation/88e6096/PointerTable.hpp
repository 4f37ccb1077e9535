#pragma once

#include <cstdint>
#include <vector>

#include "simulation/RegisterFile.hpp"

namespace simulation::marvell {

/// A table of Global 2 that is reached through one register: a pointer, the data of the entry there, and a
/// bit that makes a write change the entry and clears itself.
class PointerTable {
public:
    /// \param registers those of Global 2. They must outlive the table.
    /// \param entryReset what every entry holds after a reset.
    PointerTable(RegisterFile& registers, unsigned address, Field const& pointer, Field const& data,
                 std::uint32_t entryReset = 0);
    PointerTable(PointerTable const&) = delete;
    PointerTable& operator=(PointerTable const&) = delete;

    /// The row of the register, which has its fields, with the table behind it.
    Register attachedTo(Register row);

    std::uint32_t get(std::size_t number) const { return _entries.at(number); }
    void reset();

private:
    void write(std::uint32_t word);

    RegisterFile& _registers;
    unsigned _address;
    Field _pointer;
    Field _data;
    std::uint32_t _entryReset;
    std::vector<std::uint32_t> _entries;
    /// What belongs to the table as a whole, for example how trunks are hashed.
    std::uint32_t _common = 0;
};

} // namespace simulation::marvell
