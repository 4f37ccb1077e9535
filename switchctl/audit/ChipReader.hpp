#pragma once

#include "chips/ChipImage.hpp"
#include "chips/RegisterTransport.hpp"
#include "switchctl/audit/ChipScope.hpp"

namespace switchctl::audit {

/// Reads what a scope has from a chip, simulated or real, over one of the library's transports.
class ChipReader {
public:
    /// Both must outlive the reader.
    ChipReader(ChipScope const& scope, chips::RegisterTransport& transport);

    /// A PHY that does not answer is noted as unread; so are the tables, and the chip when it does not.
    chips::ChipImage read();

private:
    void readRegisters();
    void readRegister(chips::RegisterLocation const& location);

    ChipScope const& _scope;
    chips::RegisterTransport& _transport;
    chips::ChipImage _image;
};

} // namespace switchctl::audit
