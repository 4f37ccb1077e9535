#include "board/audit/ChipReader.hpp"

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
    chips::ChipKinds::get(_scope.getModel(), "audit").requireChip(_scope.getCatalogue(), _transport);
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
