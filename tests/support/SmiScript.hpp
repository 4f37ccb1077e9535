#pragma once

#include "tests/support/AccessTable.hpp"
#include "tests/support/ScriptedMac.hpp"

namespace test_support {

/// One 88E6096 in multi-chip mode as a table of accesses to its internal registers: reads and
/// writes. It is never busy, and nothing else answers on the bus.
///
/// An access that fails takes place on the bus, but the MAC stays busy afterwards for as long as the
/// driver waits.
class SmiScript : public ScriptedMac {
public:
    /// The chip's address on the bus.
    static constexpr unsigned int chipAddress = 5;

    void expect(Accesses accesses) { _table.expect(std::move(accesses)); }
    void verify() { _table.verify(); }

protected:
    bool frameRead(unsigned int address, unsigned int registerNumber, unsigned short& value) override;
    bool frameWrite(unsigned int address, unsigned int registerNumber, unsigned short value) override;

private:
    bool runSmiCommand(unsigned int command);

    AccessTable _table;
    unsigned short _command = 0;
    unsigned short _data = 0;
};

} // namespace test_support
