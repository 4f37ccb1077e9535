#pragma once

#include <memory>
#include <string>
#include <vector>

#include "board/BoardReading.hpp"
#include "board/ClockAdoption.hpp"
#include "chips/AccessErrors.hpp"
#include "chips/Examination.hpp"
#include "reference_host/HostApplication.hpp"
#include "reference_host/PhysicalMemory.hpp"
#include "reference_host/XmlDocument.hpp"
#include "simulation/SerialController.hpp"
#include "simulation/SimulatedBoard.hpp"
#include "switchctl/Simulation.hpp"

namespace switchctl::doctor {

/// A board that may not answer: the hardware, or fresh models that nobody brought up.
///
/// Belongs to the thread that constructs it.
class ExaminedBoard {
public:
    /// What the examination of one family shows.
    struct Family {
        chips::ChipKind const& kind;
        chips::Examination examination;
    };

    /// Hardware. Throws ToolError (noHardware) when the memory device is needed and cannot be reached.
    /// \param line path of the serial line; empty where the processor's buses are to be used.
    ExaminedBoard(board::BoardReading const& document, std::string const& memoryDevice, std::string line);

    /// Models of the document at `path`, with the faults of the command line. Throws as these, and ToolError
    /// (noHardware) when a serial line is wanted and there is no VSC7390 at its end.
    ExaminedBoard(board::BoardReading const& document, Simulation const& simulation, std::string const& path,
                  bool isOverLine);

    /// All families whose chips the document has, and those whose bus is there anyway.
    std::vector<Family> examine(bool allowsWrites);

private:
    bool isOverLine(chips::ChipKind const& kind) const;
    bool needsMemory() const;
    chips::ExaminationRequest requestFor(chips::ChipKind const& kind, bool allowsWrites) const;

    board::BoardReading const& _document;
    std::string _line;

    // From the board up.
    std::unique_ptr<reference_host::XmlDocument> _xml;
    std::unique_ptr<simulation::SimulatedBoard> _board;
    std::unique_ptr<board::ClockAdoption> _clock;
    std::unique_ptr<simulation::SerialController> _controller;
    std::unique_ptr<reference_host::PhysicalMemory> _memory;
    chips::AccessErrors _errors;
    std::unique_ptr<reference_host::HostApplication> _application;
};

} // namespace switchctl::doctor
