#include "chips/RegisterTransport.hpp"

#include <utility>

#include "chips/ToolError.hpp"

namespace chips {

RegisterTransport::RegisterTransport(AccessErrors& errors) : _errors(errors) {}

RegisterTransport::~RegisterTransport() = default;

std::uint32_t RegisterTransport::read(RegisterLocation const& location) {
    std::uint32_t value = 0;
    perform(location, false, value, [&] { return tryRead(location.address, value); });
    return value;
}

void RegisterTransport::write(RegisterLocation const& location, std::uint32_t value) {
    perform(location, true, value, [&] { return tryWrite(location.address, value); });
}

void RegisterTransport::setObserver(Observer observer) {
    _observer = std::move(observer);
}

unsigned RegisterTransport::getAccesses() const {
    return _accesses;
}

template <typename Access>
void RegisterTransport::perform(RegisterLocation const& location, bool isWrite, std::uint32_t& value,
                                Access access) {
    ++_accesses;
    std::string thrown;
    bool succeeded = false;
    try {
        succeeded = access();
    } catch (char const* text) {
        thrown = text;
    }
    std::string reason = _errors.take();
    bool const isGood = succeeded && reason.empty();
    if (_observer) {
        _observer(location, isWrite, value, isGood);
    }
    if (isGood) {
        return;
    }
    if (!thrown.empty()) {
        reason += (reason.empty() ? "" : "; ") + thrown;
    }
    throw ToolError(ExitStatus::registerFailed,
                    location.getText() + (isWrite ? " could not be written" : " could not be read") +
                        (reason.empty() ? "" : ": " + reason));
}

} // namespace chips
