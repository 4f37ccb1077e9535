#pragma once

#include "tests/support/AccessTable.hpp"
#include "vitesse/VitesseManagementCommunications.hpp"

namespace test_support {

/// The registers of a VSC7390 as a table of transactions: reads and writes of block, sub-block and
/// address, and, of one of its MII management controllers and a PHY, phyReads and phyWrites.
class ScriptedVitesseRegisters : public VitesseManagementCommunications {
public:
    explicit ScriptedVitesseRegisters(Application& application);

    void expect(Accesses accesses) { _table.expect(std::move(accesses)); }
    void verify() { _table.verify(); }

    bool readRegister(Bsa const& location, unsigned int& value) override;
    bool writeRegister(Bsa const& location, unsigned int const& value) override;
    bool phyReadRegister(MiiManagementLocation controller, unsigned short phyAddress,
                         unsigned short registerAddress, unsigned short& value) override;
    bool phyWriteRegister(MiiManagementLocation controller, unsigned short phyAddress,
                          unsigned short registerAddress, unsigned short value) override;

private:
    AccessTable _table;
};

} // namespace test_support
