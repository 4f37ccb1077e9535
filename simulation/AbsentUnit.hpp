#pragma once

#include <cstdint>
#include <string>

#include "simulation/Services.hpp"

namespace simulation {

/// A place where a chip has nothing: accesses show in the log, and reads give always the same.
class AbsentUnit {
public:
    /// `services` must outlive the object.
    AbsentUnit(Services& services, std::string const& chip, std::string const& unit, UnitPlace place,
               std::uint32_t value)
        : _services(services),
          _identity(std::make_shared<UnitIdentity const>(chip, unit, place)),
          _value(value) {}

    std::uint32_t read(unsigned address, unsigned transfer) const {
        _services.log.addRead(_identity, address, transfer, _value);
        return _value;
    }

    void write(unsigned address, std::uint32_t value, unsigned transfer) const {
        _services.log.addWrite(_identity, address, transfer, value, _value, _value);
    }

    void report(MisuseReport::Kind kind, unsigned address, char const* text) const {
        _services.misuse.add(kind, _identity->chip, _identity->unit, _identity->registerName(address), text);
    }

private:
    Services& _services;
    std::shared_ptr<UnitIdentity const> _identity;
    std::uint32_t _value;
};

} // namespace simulation
