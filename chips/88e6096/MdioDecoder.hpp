#pragma once

#include <cstdint>
#include <map>
#include <optional>

#include "chips/88e6096/SmiDecoder.hpp"
#include "chips/WindowDecoder.hpp"

namespace chips {

/// Makes MDIO frames of what the registers of the MAC see, and register accesses of the frames.
class MdioDecoder : public WindowDecoder {
public:
    /// \param switchId the chip's address on the bus; higher bits do not count.
    void addChip(unsigned switchId, chips::TraceSink& sink);

    void accessed(BusAccess const& access) override;
    void finish() override;

private:
    struct Read {
        unsigned address;
        unsigned registerNumber;
        bool isSent;
    };

    void startFrame(BusAccess const& access);
    void takeData(BusAccess const& access);
    SmiDecoder* chipAt(unsigned address);

    std::map<unsigned, SmiDecoder> _chips;
    std::uint16_t _data = 0;
    bool _isDataSent = true;
    std::optional<Read> _read;
};

} // namespace chips
