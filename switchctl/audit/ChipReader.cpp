#include "switchctl/audit/ChipReader.hpp"

#include "switchctl/audit/AuditSelection.hpp"
#include "switchctl/audit/MarvellTableReader.hpp"
#include "switchctl/audit/VitesseTableReader.hpp"
#include "switchctl/registers/CommandError.hpp"

namespace switchctl::audit {

ChipReader::ChipReader(ChipScope const& scope, RegisterTransport& transport)
    : _scope(scope), _transport(transport) {}

ChipImage ChipReader::read() {
    try {
        readRegisters();
        readTables();
    } catch (CommandError const& error) {
        _image.addUnread("", error.what());
    }
    return _image;
}

void ChipReader::readRegisters() {
    for (RegisterLocation const& location : _scope.getRegisters()) {
        if (_image.isUnread(location.unit)) {
            continue;
        }
        try {
            readRegister(location);
        } catch (CommandError const& error) {
            // A PHY may be missing; a chip that does not answer will not do so for the next register.
            if (location.address.space != RegisterAddress::Space::phy) {
                throw;
            }
            _image.addUnread(location.unit, error.what());
        }
    }
}

void ChipReader::readRegister(RegisterLocation const& location) {
    std::uint32_t const value = _transport.read(location);
    std::vector<ChipImage::Field> fields;
    for (simulation::Register::Field const& field : location.description->getFields()) {
        if (AuditSelection::contains(location, field)) {
            fields.push_back({field.name, field.get(value)});
        }
    }
    _image.addRegister(location.unit, location.name, fields);
}

void ChipReader::readTables() {
    if (_scope.getCatalogue().getModel() == "vsc7390") {
        VitesseTableReader(_scope, _transport, _image).read();
    } else {
        MarvellTableReader(_scope, _transport, _image).read();
    }
}

} // namespace switchctl::audit
