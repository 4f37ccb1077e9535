#include "chips/88e6096/MdioDecoder.hpp"

#include "marvell/Arm920tMacRegisters.hpp"
#include "simulation/MdioBus.hpp"

namespace chips {

namespace {

using namespace arm920t_mac;

} // namespace

void MdioDecoder::addChip(unsigned switchId, chips::TraceSink& sink) {
    _chips.emplace(switchId % simulation::MdioBus::numberOfAddresses, SmiDecoder(switchId, sink));
}

void MdioDecoder::accessed(BusAccess const& access) {
    if (access.offset == miiCommandOffset && access.isWrite) {
        startFrame(access);
    } else if (access.offset == miiDataOffset && access.isWrite) {
        _data = static_cast<std::uint16_t>(mii_data::data.in(access.value));
        _isDataSent = access.succeeded;
    } else if (access.offset == miiDataOffset) {
        takeData(access);
    }
}

void MdioDecoder::finish() {
    for (auto& [address, chip] : _chips) {
        chip.finish();
    }
}

void MdioDecoder::startFrame(BusAccess const& access) {
    auto const word = static_cast<unsigned short>(access.value);
    unsigned const address = mii_command::phyAddress.in(word);
    unsigned const registerNumber = mii_command::registerNumber.in(word);
    unsigned const operation = mii_command::operation.in(word);
    _read.reset();
    if (operation == mii_command::readOperation) {
        _read = Read{address, registerNumber, access.succeeded};
    } else if (operation == mii_command::writeOperation) {
        if (SmiDecoder* const chip = chipAt(address)) {
            chip->frameWritten(access.nanoseconds, registerNumber, _data, access.succeeded && _isDataSent);
        }
    }
}

void MdioDecoder::takeData(BusAccess const& access) {
    SmiDecoder* const chip = _read ? chipAt(_read->address) : nullptr;
    if (chip != nullptr) {
        chip->frameRead(access.nanoseconds, _read->registerNumber,
                        static_cast<std::uint16_t>(mii_data::data.in(access.value)),
                        access.succeeded && _read->isSent);
    }
    _read.reset();
}

SmiDecoder* MdioDecoder::chipAt(unsigned address) {
    auto const found = _chips.find(address);
    return found == _chips.end() ? nullptr : &found->second;
}

} // namespace chips
