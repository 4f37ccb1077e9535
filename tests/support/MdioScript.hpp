#pragma once

#include "tests/support/AccessTable.hpp"
#include "tests/support/ScriptedMac.hpp"

namespace test_support {

/// The MDIO bus as a table of frames: frameReads and frameWrites.
class MdioScript : public ScriptedMac {
public:
    void expect(Accesses accesses) { _table.expect(std::move(accesses)); }
    void verify() { _table.verify(); }

protected:
    bool frameRead(unsigned int address, unsigned int registerNumber, unsigned short& value) override;
    bool frameWrite(unsigned int address, unsigned int registerNumber, unsigned short value) override;

private:
    AccessTable _table;
};

} // namespace test_support
