#pragma once

#include <memory>

#include "chips/RegisterTransport.hpp"
#include "vitesse/VitesseManagementCommunications.hpp"

namespace chips {

/// A VSC7390, over whatever reaches it.
class VitesseTransport : public RegisterTransport {
public:
    VitesseTransport(AccessErrors& errors, std::unique_ptr<VitesseManagementCommunications> communications);

private:
    bool tryRead(RegisterAddress const& address, std::uint32_t& value) override;
    bool tryWrite(RegisterAddress const& address, std::uint32_t value) override;

    std::unique_ptr<VitesseManagementCommunications> _communications;
};

} // namespace chips
