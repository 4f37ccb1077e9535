#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "simulation/RegisterTable.hpp"
#include "simulation/Services.hpp"
#include "simulation/UnitIdentity.hpp"

namespace simulation {

/// The registers of one hardware unit at work: stores, logs, reports misuse, and calls what the
/// table says. An address without a row is plain storage that starts at 0.
class RegisterFile {
public:
    enum class Logging { on, off };

    /// `services` must outlive the file.
    RegisterFile(Services& services, std::string const& chip, std::string const& unit, RegisterTable table,
                 Logging logging = Logging::on);

    /// \name Bus side
    /// `transfer` goes to the access log.
    /// @{
    std::uint32_t read(unsigned address, unsigned transfer);
    void write(unsigned address, std::uint32_t value, unsigned transfer);
    /// @}

    /// \name Model side: no log, no hook of a write
    /// @{
    std::uint32_t getStored(unsigned address) const;
    void store(unsigned address, std::uint32_t value);
    void report(MisuseReport::Kind kind, unsigned address, std::string const& text) const;
    /// Back to the reset values of the table.
    void reset();
    /// @}

    /// \name Test side
    /// @{
    std::uint32_t peek(unsigned address) const;
    void stick(unsigned address, std::uint32_t ones, std::uint32_t zeros);
    std::string const& getUnit() const;
    RegisterTable const& getTable() const;
    /// @}

private:
    struct StuckBits {
        std::uint32_t ones;
        std::uint32_t zeros;
    };

    std::uint32_t withStuckBits(unsigned address, std::uint32_t value) const;
    void reportUnwritable(Register const& description, std::uint32_t value, std::uint32_t shown) const;

    Services& _services;
    std::shared_ptr<UnitIdentity const> _identity;
    Logging _logging;
    std::map<unsigned, std::uint32_t> _values;
    std::map<unsigned, StuckBits> _stuckBits;
};

} // namespace simulation
