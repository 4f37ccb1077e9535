#pragma once

#include <cstdint>
#include <functional>
#include <utility>

#include "chips/AccessErrors.hpp"
#include "chips/RegisterLocation.hpp"

namespace chips {

/// A way to the registers of one chip and of its PHYs.
class RegisterTransport {
public:
    /// \param errors gets the library's messages; must outlive the transport.
    explicit RegisterTransport(AccessErrors& errors) : _errors(errors) {}
    virtual ~RegisterTransport() = default;
    RegisterTransport(RegisterTransport const&) = delete;
    RegisterTransport& operator=(RegisterTransport const&) = delete;

    /// Both throw ToolError (registerFailed) when the access fails.
    std::uint32_t read(RegisterLocation const& location);
    void write(RegisterLocation const& location, std::uint32_t value);

    /// Reads until the field is 0; throws ToolError (registerFailed) with `complaint` when it is not after
    /// so many looks.
    /// \return what was read last.
    std::uint32_t waitUntilClear(RegisterLocation const& location, simulation::Field const& field,
                                 unsigned mostLooks, std::string const& complaint);

    /// What sees each access once it is over; `value` of a read that failed means nothing.
    using Observer = std::function<void(RegisterLocation const& location, bool isWrite, std::uint32_t value,
                                        bool succeeded)>;
    void setObserver(Observer observer) { _observer = std::move(observer); }

    /// Accesses so far.
    unsigned getAccesses() const { return _accesses; }

    /// What the drivers take for numbers.
    static unsigned short narrow(unsigned value) { return static_cast<unsigned short>(value); }

protected:
    /// \return here and below: false when the access failed. May throw a text (char const*).
    virtual bool tryRead(RegisterAddress const& address, std::uint32_t& value) = 0;
    virtual bool tryWrite(RegisterAddress const& address, std::uint32_t value) = 0;

private:
    template <typename Access>
    void perform(RegisterLocation const& location, bool isWrite, std::uint32_t& value, Access access);

    AccessErrors& _errors;
    Observer _observer;
    unsigned _accesses = 0;
};

} // namespace chips
