#include "chips/88e6096/SmiTransport.hpp"

namespace chips {

SmiTransport::SmiTransport(Application& application, AccessErrors& errors, unsigned switchId)
    : RegisterTransport(errors), _communications(application, narrow(switchId), false) {}

bool SmiTransport::tryRead(RegisterAddress const& address, std::uint32_t& value) {
    if (address.space == RegisterAddress::Space::phy) {
        unsigned short contents = 0;
        bool const succeeded =
            _communications.phyReadRegister(narrow(address.unit), narrow(address.address), contents);
        value = contents;
        return succeeded;
    }
    MarvellManagementCommunications::MarvelRegisterValues values(narrow(address.unit),
                                                                 narrow(address.address));
    bool const succeeded = _communications.readRegister(values);
    value = values.value;
    return succeeded;
}

bool SmiTransport::tryWrite(RegisterAddress const& address, std::uint32_t value) {
    if (address.space == RegisterAddress::Space::phy) {
        return _communications.phyWriteRegister(narrow(address.unit), narrow(address.address), narrow(value));
    }
    return _communications.writeRegister({narrow(address.unit), narrow(address.address), narrow(value)});
}

} // namespace chips
