#pragma once

#include <functional>

#include "chips/ChipCatalogue.hpp"
#include "chips/ChipTable.hpp"
#include "chips/RegisterTransport.hpp"

namespace chips {

/// Reads the tables of a chip for people, and makes it forget addresses that it has learnt. Reading writes to
/// index, staging and operation registers, and only starts searches and reads.
class TableReader {
public:
    /// What addresses are to be forgotten: all without either.
    struct Scope {
        std::optional<unsigned> vlan;
        std::optional<unsigned> port;
    };

    /// Both must outlive the reader.
    TableReader(ChipCatalogue const& catalogue, RegisterTransport& transport)
        : _catalogue(catalogue), _transport(transport) {}
    virtual ~TableReader() = default;
    TableReader(TableReader const&) = delete;
    TableReader& operator=(TableReader const&) = delete;

    /// Throws ToolError (registerFailed).
    /// \param vlan the one that is asked for, if one is; others may be left out.
    virtual ChipTable read(ChipTable::Kind kind, std::optional<unsigned> vlan) = 0;

    /// Throws ToolError (registerFailed). Static addresses stay.
    /// \param learnt the rows of the table that are meant.
    virtual void flush(Scope const& scope, std::vector<ChipTable::Row> const& learnt) = 0;

protected:
    RegisterLocation at(simulation::UnitKind unit, unsigned number, unsigned address) const {
        return _catalogue.at(unit, number, address);
    }
    std::uint32_t read(simulation::UnitKind unit, unsigned number, unsigned address) {
        return _transport.read(at(unit, number, address));
    }
    ChipCatalogue const& getCatalogue() const { return _catalogue; }
    RegisterTransport& getTransport() { return _transport; }

    static bool isGroup(std::uint64_t address) { return (address >> 40U & 1U) != 0; }

    /// The ports of a mask, with nothing to say of them.
    static std::vector<ChipTable::Member> portsOf(std::uint32_t mask) {
        std::vector<ChipTable::Member> ports;
        for (unsigned port = 0; port < 32; ++port) {
            if ((mask >> port & 1U) != 0) {
                ports.push_back({port, ""});
            }
        }
        return ports;
    }

private:
    ChipCatalogue const& _catalogue;
    RegisterTransport& _transport;
};

} // namespace chips
