#pragma once

#include "marvell/MarvellManagementCommunications.hpp"
#include "tests/support/AccessTable.hpp"

namespace test_support {

/// The registers of an 88E6096 as a table of transactions: reads, writes, phyReads and phyWrites.
class ScriptedRegisters : public MarvellManagementCommunications {
public:
    explicit ScriptedRegisters(Application& application);

    void expect(Accesses accesses) { _table.expect(std::move(accesses)); }
    void verify() { _table.verify(); }

    bool initialise() override;
    bool readRegister(MarvelRegisterValues& registerValues) override;
    bool writeRegister(MarvelRegisterValues registerValues) override;
    bool phyReadRegister(unsigned short phyAddress, unsigned short phyRegister,
                         unsigned short& value) override;
    bool phyWriteRegister(unsigned short phyAddress, unsigned short phyRegister,
                          unsigned short value) override;

private:
    bool read(Access const& actual, unsigned short& value);
    bool write(Access const& actual);

    AccessTable _table;
};

} // namespace test_support
