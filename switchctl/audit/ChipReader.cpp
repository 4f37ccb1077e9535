#include "switchctl/audit/ChipReader.hpp"

#include "chips/ToolError.hpp"

namespace switchctl::audit {

ChipReader::ChipReader(ChipScope const& scope, chips::RegisterTransport& transport)
    : _scope(scope), _transport(transport) {}

chips::ChipImage ChipReader::read() {
    try {
        readRegisters();
        _scope.getTables().read(_transport, _image);
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
        if (location.description->keeps(field)) {
            fields.push_back({field.name, field.get(value)});
        }
    }
    _image.addRegister(location.unit, location.name, fields);
}

} // namespace switchctl::audit
