#pragma once

#include <functional>
#include <memory>
#include <string>

#include "chips/AccessErrors.hpp"
#include "chips/RegisterTransport.hpp"
#include "reference_host/HostApplication.hpp"
#include "reference_host/PhysicalMemory.hpp"
#include "simulation/SimulatedBoard.hpp"

namespace board {

/// The chips of a board within reach: in hardware, or models that were brought up before.
///
/// Belongs to the thread that constructs it.
class BoardAccess {
public:
    /// Gets the board's memory, and returns what is to be used in its place.
    using WrapMemory = std::function<std::unique_ptr<reference_host::PhysicalMemory>(
        std::unique_ptr<reference_host::PhysicalMemory>)>;

    /// `board` must outlive the object; the thread lives by its clock.
    /// \param wrap may be empty.
    explicit BoardAccess(simulation::SimulatedBoard& board, WrapMemory const& wrap = {});

    /// The hardware behind a memory device; throws ToolError (noHardware) when it cannot be reached.
    explicit BoardAccess(std::string const& memoryDevice, WrapMemory const& wrap = {});

    /// The way to a chip over the processor's buses. Must not outlive the object. Throws ToolError:
    /// noHardware, or badDocument when tools do not know such a chip.
    /// \param model as in configuration documents.
    std::unique_ptr<chips::RegisterTransport> connect(unsigned switchId, std::string const& model);

    /// For the library's own objects: what they belong to, and what they complain of.
    Application& getApplication() { return _application; }
    chips::AccessErrors& getErrors() { return _errors; }

private:
    std::unique_ptr<reference_host::PhysicalMemory> _memory;
    chips::AccessErrors _errors;
    reference_host::HostApplication _application;
};

} // namespace board
