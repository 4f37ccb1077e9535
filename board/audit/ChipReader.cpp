#include "board/audit/ChipReader.hpp"

#include <fmt/format.h>

#include "chips/ChipKinds.hpp"
#include "chips/ToolError.hpp"

namespace board {

using chips::ChipImage;

ChipReader::ChipReader(ChipScope const& scope, chips::RegisterTransport& transport)
    : _scope(scope), _transport(transport) {}

// A bus without a chip, or one that has died meanwhile, answers each read as well as a chip does.
ChipImage ChipReader::read() {
    try {
        requireChip();
        readRegisters();
        readTables();
        requireChip();
    } catch (chips::ToolError const& error) {
        _image = {};
        _image.addUnread(ChipImage::wholeChip, error.what());
    }
    return _image;
}

void ChipReader::requireChip() {
    chips::ChipKind::Facts const& facts = chips::ChipKinds::get(_scope.getModel(), "audit").getFacts();
    chips::RegisterLocation const location =
        _scope.getCatalogue().at(facts.identifierUnit, 0, facts.identifier);
    std::uint32_t const word = _transport.read(location);
    if (facts.product.get(word) != facts.productNumber) {
        throw chips::ToolError(chips::ExitStatus::registerFailed,
                               fmt::format("no {} answers: {} reads 0x{:0{}x}", facts.name,
                                           location.getText(), word, location.getDigits()));
    }
}

void ChipReader::readRegisters() {
    for (ChipScope::Item const& item : _scope.getRegisters()) {
        std::string const& unit = item.location.unit;
        if (_image.isUnread(unit)) {
            continue;
        }
        try {
            readRegister(item);
        } catch (chips::ToolError const& error) {
            // A PHY may be missing; a chip that does not answer will not do so for the next register.
            if (item.location.address.space != chips::RegisterAddress::Space::phy) {
                throw;
            }
            _image.addUnread(unit, error.what());
        }
    }
}

void ChipReader::readTables() {
    try {
        _scope.getTables().read(_transport, _image);
    } catch (chips::ToolError const& error) {
        _image.addUnread(ChipImage::tables, std::string("the tables: ") + error.what());
    }
}

void ChipReader::readRegister(ChipScope::Item const& item) {
    chips::RegisterLocation const& location = item.location;
    _image.addRegister(location.unit, location.name, item.fieldsOf(_transport.read(location)),
                       !item.isWritten);
}

} // namespace board
