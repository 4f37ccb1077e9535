#pragma once

#include "chips/RegisterTransport.hpp"
#include "marvell/MarvellMultiMdioManagementCommunications.hpp"

namespace chips {

/// The 88E6096 at an address of the MDIO bus.
class SmiTransport : public RegisterTransport {
public:
    /// `application` must outlive the transport.
    SmiTransport(Application& application, AccessErrors& errors, unsigned switchId);

private:
    bool tryRead(RegisterAddress const& address, std::uint32_t& value) override;
    bool tryWrite(RegisterAddress const& address, std::uint32_t value) override;

    MarvellMultiMdioManagementCommunications _communications;
};

} // namespace chips
