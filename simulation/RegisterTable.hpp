#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <map>
#include <string>
#include <vector>

#include "simulation/Field.hpp"

namespace simulation {

/// One row of a register table: what a register is called, what is in it and what it does.
///
/// Written as a chain: `Register(0x04, "PortControl", 0x007F).field("PortState", 1, 0)`. A bit that
/// no part of the chain mentions is reserved: it cannot be written.
class Register {
public:
    using Field = simulation::Field;

    /// How the contents behave, for tools that save, compare or restore them.
    enum class Kind {
        /// Configuration: keeps what is written.
        setting,
        /// Gives access to a table or to other registers: what stands there is left over from the last
        /// command.
        staging,
        counter,
        /// Does not keep still: status, captured frames, what clears itself, what reaching the chip sets.
        unstable,
    };

    /// Called after a write was stored, with the register's new contents.
    using WriteHook = std::function<void(std::uint32_t value)>;
    /// Called on a read, with the stored contents; returns what the read shows.
    using ReadHook = std::function<std::uint32_t(std::uint32_t value)>;

    Register(unsigned address, std::string name, std::uint32_t reset = 0);

    /// Bits that keep what is written: a field, or its name and its highest and lowest bit.
    Register& field(Field const& field);
    template <typename... Bits> Register& field(char const* name, Bits... bits) {
        return field(Field(name, static_cast<unsigned>(bits)...));
    }

    /// Bits that writes leave alone.
    Register& readOnly(Field const& field);
    template <typename... Bits> Register& readOnly(char const* name, Bits... bits) {
        return readOnly(Field(name, static_cast<unsigned>(bits)...));
    }

    /// Bits that a write may set without effect and without complaint.
    Register& ignored(Field const& field);

    /// Bits that can be written and that the chip clears once it has acted on them.
    Register& selfClearing(Field const& field);

    /// \name What is not a setting
    /// @{
    Register& staging();
    Register& counter();
    Register& unstable();
    /// @}

    /// A read changes what is there, for example clears it, or nobody but the maker knows that it does not.
    Register& changedByRead();

    /// Only the maker knows what is there after a reset: the reset value holds the place and says nothing.
    Register& unknownReset();

    Register& onWrite(WriteHook hook);
    /// Called after onWrite's, with all bits that the write had, those included that cannot be written.
    Register& onAttempt(WriteHook hook);
    Register& onRead(ReadHook hook);
    /// Called after a read over the bus; not after a look of the test side.
    Register& afterRead(std::function<void()> hook);

    unsigned getAddress() const { return _address; }
    std::string const& getName() const { return _name; }
    std::uint32_t getReset() const { return _reset; }
    std::uint32_t getWritable() const { return _writable; }
    std::uint32_t getIgnored() const { return _ignored; }
    std::vector<Field> const& getFields() const { return _fields; }
    Kind getKind() const { return _kind; }
    bool isChangedByRead() const { return _isChangedByRead; }
    bool isResetKnown() const { return _isResetKnown; }

    /// Whether the field keeps what is written: all of it can be written, and none of it clears itself.
    bool keeps(Field const& field) const;

    /// What a read shows of the stored contents.
    std::uint32_t shown(std::uint32_t stored) const;
    void written(std::uint32_t stored, std::uint32_t attempted) const;
    void wasRead() const;

private:
    unsigned _address;
    std::string _name;
    std::uint32_t _reset;
    std::uint32_t _writable = 0;
    std::uint32_t _ignored = 0;
    std::uint32_t _selfClearing = 0;
    Kind _kind = Kind::setting;
    bool _isChangedByRead = false;
    bool _isResetKnown = true;
    std::vector<Field> _fields;
    WriteHook _writeHook;
    WriteHook _attemptHook;
    ReadHook _readHook;
    std::function<void()> _afterRead;
};

/// The registers of one hardware unit by address.
class RegisterTable {
public:
    RegisterTable() = default;
    RegisterTable(std::initializer_list<Register> registers);

    /// A further register; for those that come in rows.
    void add(Register const& description);

    /// Null when the unit has no register there.
    Register const* find(unsigned address) const;
    std::map<unsigned, Register> const& getRegisters() const { return _registers; }

private:
    std::map<unsigned, Register> _registers;
};

} // namespace simulation
