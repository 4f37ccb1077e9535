#include "switchctl/audit/ChipReader.hpp"

#include "chips/88e6096/MarvellTableReader.hpp"
#include "chips/ToolError.hpp"
#include "chips/vsc7390/VitesseTableReader.hpp"
#include "switchctl/audit/AuditSelection.hpp"

namespace switchctl::audit {

ChipReader::ChipReader(ChipScope const& scope, chips::RegisterTransport& transport)
    : _scope(scope), _transport(transport) {}

chips::ChipImage ChipReader::read() {
    try {
        readRegisters();
        readTables();
    } catch (chips::ToolError const& error) {
        _image.addUnread("", error.what());
    }
    return _image;
}

void ChipReader::readRegisters() {
    for (chips::RegisterLocation const& location : _scope.getRegisters()) {
        if (_image.isUnread(location.unit)) {
            continue;
        }
        try {
            readRegister(location);
        } catch (chips::ToolError const& error) {
            // A PHY may be missing; a chip that does not answer will not do so for the next register.
            if (location.address.space != chips::RegisterAddress::Space::phy) {
                throw;
            }
            _image.addUnread(location.unit, error.what());
        }
    }
}

void ChipReader::readRegister(chips::RegisterLocation const& location) {
    std::uint32_t const value = _transport.read(location);
    std::vector<chips::ChipImage::Field> fields;
    for (simulation::Register::Field const& field : location.description->getFields()) {
        if (AuditSelection::contains(location, field)) {
            fields.push_back({field.name, field.get(value)});
        }
    }
    _image.addRegister(location.unit, location.name, fields);
}

void ChipReader::readTables() {
    if (_scope.getCatalogue().getModel() == "vsc7390") {
        chips::VitesseTableReader(_scope.getCatalogue(), _scope.getVitesseTables(), _transport, _image)
            .read();
    } else {
        chips::MarvellTableReader(_scope.getCatalogue(), _scope.getMarvellTables(), _transport, _image)
            .read();
    }
}

} // namespace switchctl::audit
