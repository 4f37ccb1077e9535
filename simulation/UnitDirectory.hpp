#pragma once

#include <map>
#include <string>
#include <vector>

#include "simulation/RegisterFile.hpp"

namespace simulation {

/// The units of a chip that have registers.
class UnitDirectory {
public:
    /// The unit must outlive the directory.
    void add(RegisterFile& unit);
    template <typename Units> void addAll(Units& units) {
        for (auto& unit : units) {
            add(unit);
        }
    }

    /// In the order in which they were added.
    std::vector<RegisterFile*> const& getAll() const { return _units; }

    /// \name Null when there is none
    /// @{
    RegisterFile* find(UnitKind kind, unsigned number) const;
    RegisterFile* find(std::string const& name) const;
    RegisterFile* find(UnitPlace const& place) const;
    /// @}

private:
    template <typename Condition> RegisterFile* findIf(Condition condition) const;

    std::vector<RegisterFile*> _units;
    std::map<UnitPlace, RegisterFile*> _places;
};

} // namespace simulation
