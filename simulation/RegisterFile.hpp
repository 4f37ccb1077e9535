#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "simulation/RegisterTable.hpp"
#include "simulation/Services.hpp"
#include "simulation/UnitIdentity.hpp"

namespace simulation {

/// A hardware unit with registers: stores, logs, reports misuse, and calls what the table says. An
/// address without a row is plain storage that starts at 0.
class RegisterFile {
public:
    enum class Logging { on, off };

    /// `services` must outlive the file.
    RegisterFile(Services& services, UnitIdentity identity, RegisterTable table = {},
                 Logging logging = Logging::on);
    RegisterFile(RegisterFile const&) = delete;
    RegisterFile& operator=(RegisterFile const&) = delete;

    /// \name Bus side
    /// `transfer` goes to the access log.
    /// @{
    std::uint32_t read(unsigned address, unsigned transfer);
    void write(unsigned address, std::uint32_t value, unsigned transfer);
    /// @}

    /// \name Model side: no log, no hook of a write
    /// @{
    std::uint32_t getStored(unsigned address) const;
    /// A field of what is stored.
    std::uint32_t getStored(unsigned address, Field const& field) const;
    void store(unsigned address, std::uint32_t value);
    void report(MisuseReport::Kind kind, unsigned address, std::string const& text) const;
    /// Back to the reset values of the table.
    void reset();

    /// Has `changed` called with the address after each write over the bus, once it has had its effect,
    /// and after each poke() and stick(); with the board's mutex held. What the model itself stores
    /// or resets, it knows. One listener a unit.
    void onChange(std::function<void(unsigned address)> changed);
    /// @}

    /// \name Test side: any thread may call, nothing shows in the access log
    /// @{

    /// What a read over the bus would return now.
    std::uint32_t peek(unsigned address) const;

    /// Stores a value, read-only and reserved bits included, without starting anything.
    void poke(unsigned address, std::uint32_t value);

    /// From now on the bits of `ones` read as 1 and those of `zeros` as 0, whatever is written.
    /// Two zero masks heal the register.
    void stick(unsigned address, std::uint32_t ones, std::uint32_t zeros);

    UnitIdentity const& getIdentity() const { return *_identity; }
    std::string const& getName() const { return _identity->unit; }
    RegisterTable const& getTable() const { return _identity->registers; }
    /// @}

protected:
    /// Gives a unit its registers, at their reset values, when it is constructed.
    void define(RegisterTable table);

private:
    struct StuckBits {
        std::uint32_t ones;
        std::uint32_t zeros;
    };

    void notifyChange(unsigned address) const;
    std::uint32_t withStuckBits(unsigned address, std::uint32_t value) const;
    void reportUnwritable(Register const& description, std::uint32_t value, std::uint32_t shown) const;

    Services& _services;
    std::shared_ptr<UnitIdentity> _identity;
    Logging _logging;
    std::map<unsigned, std::uint32_t> _values;
    std::map<unsigned, StuckBits> _stuckBits;
    std::function<void(unsigned address)> _changed;
};

} // namespace simulation
