#include "switchctl/registers/RegisterTransport.hpp"

#include "switchctl/registers/CommandError.hpp"

namespace switchctl {

RegisterTransport::RegisterTransport(AccessErrors& errors) : _errors(errors) {}

RegisterTransport::~RegisterTransport() = default;

std::uint32_t RegisterTransport::read(RegisterLocation const& location) {
    std::uint32_t value = 0;
    perform(location, "could not be read", [&] { return tryRead(location.address, value); });
    return value;
}

void RegisterTransport::write(RegisterLocation const& location, std::uint32_t value) {
    perform(location, "could not be written", [&] { return tryWrite(location.address, value); });
}

unsigned RegisterTransport::getAccesses() const {
    return _accesses;
}

template <typename Access>
void RegisterTransport::perform(RegisterLocation const& location, char const* what, Access access) {
    ++_accesses;
    std::string thrown;
    bool succeeded = false;
    try {
        succeeded = access();
    } catch (char const* text) {
        thrown = text;
    }
    std::string reason = _errors.take();
    if (succeeded && reason.empty()) {
        return;
    }
    if (!thrown.empty()) {
        reason += (reason.empty() ? "" : "; ") + thrown;
    }
    throw CommandError(ExitStatus::registerFailed,
                       location.getText() + " " + what + (reason.empty() ? "" : ": " + reason));
}

} // namespace switchctl
