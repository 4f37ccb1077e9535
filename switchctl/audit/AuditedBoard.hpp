#pragma once

#include <memory>
#include <string>

#include "reference_host/HostApplication.hpp"
#include "reference_host/PhysicalMemory.hpp"
#include "simulation/SimulatedBoard.hpp"
#include "switchctl/registers/AccessErrors.hpp"
#include "switchctl/registers/RegisterTransport.hpp"

namespace switchctl::audit {

/// The chips of a board within reach: in hardware, or models that were brought up before.
///
/// Belongs to the thread that constructs it.
class AuditedBoard {
public:
    /// `board` must outlive the object; the thread lives by its clock.
    explicit AuditedBoard(simulation::SimulatedBoard& board);

    /// The hardware behind a memory device; throws CommandError (noHardware) when it cannot be reached.
    explicit AuditedBoard(std::string const& memoryDevice);

    /// The way to a chip: MDIO to an 88E6096, the parallel bus to a VSC7390. Must not outlive the object.
    /// Throws CommandError (noHardware).
    /// \param model as in configuration documents.
    std::unique_ptr<RegisterTransport> connect(unsigned switchId, std::string const& model);

    /// For the library's own objects: what they belong to, and what they complain of.
    Application& getApplication();
    AccessErrors& getErrors();

private:
    std::unique_ptr<reference_host::PhysicalMemory> _memory;
    AccessErrors _errors;
    reference_host::HostApplication _application;
};

} // namespace switchctl::audit
