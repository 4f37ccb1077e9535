#pragma once

#include "simulation/BusDevice.hpp"
#include "tests/support/AccessTable.hpp"

namespace test_support {

/// A window of registers as a table of word accesses at offsets from its start: gets and sets.
class WordScript : public simulation::BusDevice {
public:
    void expect(Accesses accesses) { _table.expect(std::move(accesses)); }
    void verify() { _table.verify(); }

    bool read(unsigned int offset, unsigned int& value) override;
    bool write(unsigned int offset, unsigned int value) override;

private:
    AccessTable _table;
};

} // namespace test_support
