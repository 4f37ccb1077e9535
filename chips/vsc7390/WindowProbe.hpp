#pragma once

#include <cstdint>
#include <optional>

#include "host/Application.hpp"
#include "host/MappedSection.hpp"

namespace chips {

/// Reads of a VSC7390's window as they are, for a chip that may not answer. Writes nothing.
class WindowProbe {
public:
    explicit WindowProbe(Application& application);

    /// A word of the window; nothing when the access failed.
    std::optional<std::uint32_t> read(unsigned block, unsigned subBlock, unsigned address);

    struct Fetched {
        /// Nothing when an access failed or, after a hundredth of a second, the value was not ready.
        std::optional<std::uint32_t> value;
        bool hasFailed = false;
    };

    /// A register that the chip has to fetch first.
    Fetched fetch(unsigned block, unsigned subBlock, unsigned address);

private:
    MappedSection _window;
};

} // namespace chips
