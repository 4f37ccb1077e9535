#pragma once

#include <cstdint>
#include <map>
#include <optional>

#include "chips/88e6096/SmiDecoder.hpp"
#include "chips/BusAccess.hpp"

namespace chips {

/// Makes MDIO frames of what the registers of the MAC see, and register accesses of the frames.
class MdioDecoder {
public:
    /// \param switchId the chip's address on the bus; higher bits do not count.
    void addChip(unsigned switchId, chips::TraceSink& sink);

    /// The MAC's window was accessed.
    void accessed(BusAccess const& access);

    /// Nothing more comes.
    void finish();

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
