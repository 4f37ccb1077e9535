#pragma once

#include "switchctl/audit/ChipImage.hpp"
#include "switchctl/audit/ChipScope.hpp"
#include "switchctl/registers/RegisterTransport.hpp"

namespace switchctl::audit {

/// Reads what a scope has from a chip, simulated or real, over one of the library's transports.
class ChipReader {
public:
    /// Both must outlive the reader.
    ChipReader(ChipScope const& scope, RegisterTransport& transport);

    /// A PHY that does not answer is noted as unread; so are the tables, and the chip when it does not.
    ChipImage read();

private:
    void readRegisters();
    void readRegister(RegisterLocation const& location);
    void readTables();

    ChipScope const& _scope;
    RegisterTransport& _transport;
    ChipImage _image;
};

} // namespace switchctl::audit
