#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "host/Application.hpp"
#include "model/ManagedSwitch.hpp"

namespace fault_test {

/// A public operation of a chip driver, as a host calls it on its own.
struct ChipOperation {
    /// What it gives back through references and results other than success.
    using Values = std::vector<std::uint64_t>;

    /// \param device null when the operation needs no switch.
    /// \return success.
    using Call = std::function<bool(Application&, ManagedSwitch* device, Values&)>;

    std::string name;
    Call call;
    /// The switch is constructed before; false for what constructs or looks for one.
    bool needsSwitch = true;
    /// The result is the answer to a question, which a fault may change, and not a success.
    bool isQuestion = false;
};

/// All operations that access an 88E6096.
std::vector<ChipOperation> marvellOperations();

/// All operations that access a VSC7390.
std::vector<ChipOperation> vitesseOperations();

} // namespace fault_test
