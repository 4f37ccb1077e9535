// The MAC table of VitesseSwitch, and the forwarded multicast groups that are kept in it.

#include <cstdint>
#include <locale>
#include <sstream>

#include "host/Application.hpp"
#include "model/ManagedSwitchPort.hpp"
#include "model/Polling.hpp"
#include "vitesse/AnalyserRegisters.hpp"
#include "vitesse/VitesseSwitch.hpp"

using namespace vsc7390::analyser;

namespace {

constexpr unsigned int bytesPerAddress = 6;

using MacBytes = unsigned char[bytesPerAddress];

constexpr unsigned int lowBytes = 3;
constexpr BitField<unsigned int> bitsOfSecondNumber(0, 7);
constexpr BitField<unsigned int> bitsOfByte(0, 8);

std::uint64_t asNumber(unsigned char const* mac) {
    std::uint64_t number = 0;
    for (unsigned int byte = 0; byte < bytesPerAddress; ++byte) {
        number |= BitField<std::uint64_t>(byte * mac_hash::bitsPerByte, mac_hash::bitsPerByte).of(mac[byte]);
    }
    return number;
}

unsigned int lowBytesOf(unsigned char const* mac) {
    return mac_data_low::byte0.of(mac[0]) | mac_data_low::byte1.of(mac[1]) | mac_data_low::byte2.of(mac[2]);
}

unsigned int indexOf(unsigned int hash, unsigned int bucket) {
    return mac_table_index::row.of(hash) | mac_table_index::bucket.of(bucket);
}

/// Reads the next number of a dotted address; text that is none leaves 0.
unsigned int nextNumber(std::istream& text) {
    unsigned int number = 0;
    text >> number;
    return number;
}

} // namespace

bool VitesseSwitch::waitForMacTableReady() {
    polling::Outcome const outcome =
        polling::untilReady(_macTableTimeout, [this] { return polling::busyIf(!isMacTableIdle()); });
    if (outcome.end == polling::End::timedOut) {
        getApplication()->log(1, "VitesseSwitch::waitForMacTableReady                          "
                                 "Timeout waiting for Mac Table to be ready\n");
    }
    return outcome.end == polling::End::ready;
}

bool VitesseSwitch::isMacTableIdle() {
    unsigned int word = 0;
    return readAnalyser(macAccess, word) &&
           mac_access::command.in(word) == static_cast<unsigned int>(MacAddressCommand::idle);
}

bool VitesseSwitch::macTableCommand(MacAddressCommand command) {
    return runMacTableCommand(mac_access::command.of(static_cast<unsigned int>(command)));
}

/// Runs a command word and tells whether the entry that it was about is valid.
bool VitesseSwitch::runMacTableCommand(unsigned int command) {
    return waitForMacTableReady() && writeAnalyser(macAccess, command) && waitForMacTableReady() &&
           readAnalyser(macAccess, command) && mac_access::valid.isSet(command);
}

unsigned int VitesseSwitch::calculateHashKeyForMacIndex(unsigned char const* mac, unsigned int vid) {
    std::uint64_t const address = asNumber(mac);
    return static_cast<unsigned int>(mac_hash::bits0To10.in(address) ^ mac_hash::bits11To21.in(address) ^
                                     mac_hash::bits22To32.in(address) ^ mac_hash::bits33To43.in(address) ^
                                     (mac_hash::bits44To47.in(address) | mac_hash::vid.of(vid)));
}

bool VitesseSwitch::findMulticastGroup(unsigned char const* mac, unsigned short vid) {
    unsigned int const hash = calculateHashKeyForMacIndex(mac, vid);
    for (unsigned int bucket = 0; bucket < _multicastBuckets; ++bucket) {
        if (!writeAnalyser(macTableIndex, indexOf(hash, bucket))) {
            return false;
        }
        bool found = false;
        if (!isGroupInBucket(mac, found)) {
            return false;
        }
        if (found) {
            return writeAnalyser(macTableIndex, indexOf(hash, bucket));
        }
    }
    return false;
}

/// Checks whether the indexed bucket holds the group; false when its data could not be read.
bool VitesseSwitch::isGroupInBucket(unsigned char const* mac, bool& found) {
    if (!macTableCommand(MacAddressCommand::readEntry)) {
        return true;
    }
    unsigned int low = 0;
    if (!readAnalyser(macDataLow, low)) {
        return false;
    }
    found = mac_data_low::lowBytes.in(low) == lowBytesOf(mac);
    return true;
}

bool VitesseSwitch::findMulticastGroupUseableBucket(unsigned char const* mac, unsigned short vid) {
    if (findMulticastGroup(mac, vid)) {
        return true;
    }
    unsigned int const hash = calculateHashKeyForMacIndex(mac, vid);
    for (unsigned int bucket = 0; bucket < _multicastBuckets; ++bucket) {
        if (!writeAnalyser(macTableIndex, indexOf(hash, bucket))) {
            return false;
        }
        if (!macTableCommand(MacAddressCommand::readEntry)) {
            return writeAnalyser(macTableIndex, indexOf(hash, bucket));
        }
    }
    return false;
}

bool VitesseSwitch::writeMulticastGroup(std::string ipAddress, unsigned short vid,
                                        std::map<unsigned int, ManagedSwitchPort*> ports) {
    MacBytes mac;
    ipMulticastStringtoMacAddress(ipAddress, mac);
    // In a row without a free bucket the group takes the last one.
    findMulticastGroupUseableBucket(mac, vid);
    unsigned int mask = 0;
    for (auto const& member : ports) {
        mask |= portBit(member.second == nullptr ? member.first : member.second->getId());
    }
    writeAnalyser(macDataLow,
                  lowBytesOf(mac) | mac_data_low::ports0To7.of(multicast_ports::ports0To7.in(mask)));
    writeAnalyser(macDataHigh, mac_data_high::ports8To15.of(multicast_ports::ports8To15.in(mask)) |
                                   mac_data_high::ports16To23.of(multicast_ports::ports16To23.in(mask)) |
                                   mac_data_high::vid.of(vid));
    return runMacTableCommand(mac_access::multicastFlags | mac_access::command.of(static_cast<unsigned int>(
                                                               MacAddressCommand::writeEntry)));
}

bool VitesseSwitch::readMulticastGroup(std::string ipAddress, unsigned short vid,
                                       std::map<unsigned int, ManagedSwitchPort*>& ports) {
    MacBytes mac;
    ipMulticastStringtoMacAddress(ipAddress, mac);
    unsigned int low = 0;
    unsigned int high = 0;
    if (!findMulticastGroup(mac, vid) || !readAnalyser(macDataLow, low) || !readAnalyser(macDataHigh, high)) {
        return false;
    }
    unsigned int const mask = multicast_ports::ports16To23.of(mac_data_high::ports16To23.in(high)) |
                              multicast_ports::ports8To15.of(mac_data_high::ports8To15.in(high)) |
                              multicast_ports::ports0To7.of(mac_data_low::ports0To7.in(low));
    for (unsigned int port = 0; port < getNumberOfPorts(); ++port) {
        if ((mask & portBit(port)) != 0) {
            ports.insert({port, getPort(port)});
        }
    }
    return true;
}

void VitesseSwitch::ipMulticastStringtoMacAddress(std::string ipAddress, unsigned char* mac) {
    for (unsigned int byte = 0; byte < bytesPerAddress; ++byte) {
        mac[byte] = byte < lowBytes ? 0 : mac_data_low::multicastPrefix[byte - lowBytes];
    }
    std::istringstream text(ipAddress);
    // The host's locale may take the dots for groups of digits.
    text.imbue(std::locale::classic());
    // Out of memory, the stream must throw rather than yield another address.
    text.exceptions(std::ios_base::badbit);
    char separator = 0;
    nextNumber(text);
    text >> separator;
    mac[2] = static_cast<unsigned char>(bitsOfSecondNumber.in(nextNumber(text)));
    text >> separator;
    for (int byte = 1; byte >= 0 && text.good(); --byte) {
        mac[byte] = static_cast<unsigned char>(bitsOfByte.in(nextNumber(text)));
        text >> separator;
    }
}
