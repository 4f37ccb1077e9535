#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "board/ModelBringUp.hpp"
#include "board/audit/LeftOut.hpp"
#include "chips/ChipCatalogue.hpp"
#include "chips/ChipTables.hpp"
#include "chips/RegisterLocation.hpp"

namespace board {

/// What is compared of one chip after a bring-up, and what is not.
class ChipScope {
public:
    enum class Extent {
        /// All that can be read without disturbing the chip.
        everything,
        /// Of that, what the bring-up wrote to the models, and tables that it cleared.
        written,
    };

    struct Item {
        chips::RegisterLocation location;
        /// By the bring-up.
        bool isWritten;

        /// Those fields that are compared.
        std::vector<chips::ChipImage::Field> fieldsOf(std::uint32_t value) const;
    };

    /// \param switchId of a chip of the board. The bring-up is not needed afterwards.
    ChipScope(ModelBringUp& bringUp, unsigned switchId, Extent extent);

    unsigned getSwitchId() const { return _switchId; }
    /// As in the access log, for example "switch 0".
    std::string getChip() const;
    std::string const& getModel() const { return _catalogue.getModel(); }
    chips::ChipCatalogue const& getCatalogue() const { return _catalogue; }

    /// In the order of the chip.
    std::vector<Item> const& getRegisters() const { return _registers; }

    /// The bits of a register that are compared; none when it is not.
    std::uint32_t getComparedBits(chips::RegisterLocation const& location) const;

    chips::ChipTables const& getTables() const { return *_tables; }
    LeftOut const& getLeftOut() const { return _leftOut; }

private:
    void takeLog(ModelBringUp& bringUp);
    void takeRegister(chips::RegisterLocation const& location, Extent extent);
    /// What registers it is one of that cannot be compared; empty when it can.
    std::string whyNot(chips::RegisterLocation const& location) const;
    bool isWritten(chips::RegisterAddress const& address) const;

    unsigned _switchId;
    chips::ChipCatalogue _catalogue;
    std::unique_ptr<chips::ChipTables> _tables;
    bool _hasOwnPhys;
    std::set<std::pair<simulation::UnitPlace, unsigned>> _written;
    std::set<simulation::UnitPlace> _unitsWritten;
    std::vector<Item> _registers;
    LeftOut _leftOut;
};

} // namespace board
