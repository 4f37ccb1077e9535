#pragma once

#include <functional>
#include <memory>
#include <string>

#include "chips/PortAddress.hpp"
#include "reference_host/XmlDocument.hpp"
#include "tests/faults/FaultSubject.hpp"

namespace fault_test {

/// Reading the counters of a port of a board that has been brought up.
class DiagnosticsFaults : public FaultSubject {
public:
    DiagnosticsFaults(std::string const& documentPath, chips::PortAddress const& port);

protected:
    RunResult perform(std::function<void(simulation::SimulatedBoard&)> const& begin,
                      std::function<void(RunResult&)> const& end) override;

private:
    std::unique_ptr<reference_host::XmlDocument> _document;
    chips::PortAddress _port;
};

} // namespace fault_test
