#include "chips/RegisterTransport.hpp"

#include "chips/ToolError.hpp"

namespace chips {

std::uint32_t RegisterTransport::read(RegisterLocation const& location) {
    std::uint32_t value = 0;
    perform(location, false, value, [&] { return tryRead(location.address, value); });
    return value;
}

void RegisterTransport::write(RegisterLocation const& location, std::uint32_t value) {
    perform(location, true, value, [&] { return tryWrite(location.address, value); });
}

std::uint32_t RegisterTransport::waitUntilClear(RegisterLocation const& location,
                                                simulation::Field const& field, unsigned mostLooks,
                                                std::string const& complaint) {
    for (unsigned looks = 0; looks < mostLooks; ++looks) {
        std::uint32_t const word = read(location);
        if (!field.isSet(word)) {
            return word;
        }
    }
    throw ToolError(ExitStatus::registerFailed, complaint);
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
