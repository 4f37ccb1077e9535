#pragma once

#include "simulation/BusDevice.hpp"
#include "tests/support/AccessTable.hpp"

namespace test_support {

/// The registers of a VSC7390 behind its parallel bus as a table of reads and writes. The script
/// itself plays the second half of indirect reads, the status and the data register, and makes sure
/// that nothing comes between the halves. What the first half gives is no value of the register.
class ParallelScript : public simulation::BusDevice {
public:
    void expect(Accesses accesses) { _table.expect(std::move(accesses)); }
    void verify();

    bool read(unsigned int offset, unsigned int& value) override;
    bool write(unsigned int offset, unsigned int value) override;

    /// Whether the last row of the table that came to pass was to fail.
    bool lastAccessFailed() const { return _lastAccessFailed; }

private:
    enum class Fetch { none, requested, ready };

    bool readStatus(unsigned int& value);
    bool readData(unsigned int& value);
    void expectNoFetch();

    AccessTable _table;
    Fetch _fetch = Fetch::none;
    unsigned int _fetched = 0;
    bool _lastAccessFailed = false;
};

} // namespace test_support
