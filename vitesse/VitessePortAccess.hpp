#pragma once

#include <algorithm>

#include "vitesse/AnalyserRegisters.hpp"
#include "vitesse/ArbiterRegisters.hpp"
#include "vitesse/VitessePort.hpp"

/// What source files of VitessePort share: where chip-wide registers are, and changes of registers.

inline VitesseManagementCommunications::Bsa analyserRegister(unsigned int address) {
    return {vsc7390::analyser::block, vsc7390::analyser::subBlock, static_cast<unsigned short>(address)};
}

inline VitesseManagementCommunications::Bsa arbiterRegister(unsigned short address) {
    return {vsc7390::arbiter::block, vsc7390::arbiter::subBlock, address};
}

template <std::size_t count> void VitessePort::readAll(std::array<Change, count>& changes) {
    for (Change& change : changes) {
        _communications.readRegister(change.location, change.value);
    }
}

template <std::size_t count> bool VitessePort::writeAll(std::array<Change, count> const& changes) {
    return std::all_of(changes.begin(), changes.end(), [this](Change const& change) {
        return _communications.writeRegister(change.location, change.value);
    });
}

template <typename Modify> bool VitessePort::modifyMac(unsigned short address, Modify modify) {
    Bsa location;
    return registerAt(address, location) && _communications.modifyRegister(location, modify);
}
