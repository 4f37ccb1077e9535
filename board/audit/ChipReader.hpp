#pragma once

#include "board/audit/ChipScope.hpp"
#include "chips/ChipImage.hpp"
#include "chips/RegisterTransport.hpp"

namespace board {

/// Reads what a scope has from a chip, simulated or real, over one of the library's transports.
class ChipReader {
public:
    /// Both must outlive the reader.
    ChipReader(ChipScope const& scope, chips::RegisterTransport& transport);

    /// A PHY that does not answer is noted as unread; so are the tables when one of them cannot be read, and
    /// the chip when it, or one of its family, does not answer before and after everything else.
    chips::ChipImage read();

private:
    void requireChip();
    void readRegisters();
    void readTables();
    void readRegister(ChipScope::Item const& item);

    ChipScope const& _scope;
    chips::RegisterTransport& _transport;
    chips::ChipImage _image;
};

} // namespace board
