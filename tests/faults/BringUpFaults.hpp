#pragma once

#include <functional>
#include <memory>
#include <string>

#include "reference_host/XmlDocument.hpp"
#include "tests/faults/FaultSubject.hpp"

namespace fault_test {

/// Bringing up the board of a document.
class BringUpFaults : public FaultSubject {
public:
    explicit BringUpFaults(std::string const& documentPath);

protected:
    RunResult perform(std::function<void(simulation::SimulatedBoard&)> const& begin,
                      std::function<void(RunResult&)> const& end) override;

private:
    std::unique_ptr<reference_host::XmlDocument> _document;
};

} // namespace fault_test
