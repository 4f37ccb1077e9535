#include "switchctl/doctor/ExaminedBoard.hpp"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "board/SimulatedMemory.hpp"
#include "chips/ChipKinds.hpp"
#include "chips/ToolError.hpp"
#include "reference_host/DeviceLock.hpp"
#include "reference_host/DeviceMemory.hpp"

namespace switchctl::doctor {

using chips::ChipKind;
using chips::ToolError;
using reference_host::DeviceMemory;
using Transport = ChipKind::Transport;

ExaminedBoard::ExaminedBoard(board::BoardReading const& document, std::string const& memoryDevice,
                             std::string line)
    : _document(document), _line(std::move(line)), _memory(std::make_unique<DeviceMemory>(memoryDevice)) {
    std::string reason;
    if (needsMemory() && !DeviceMemory::isAccessible(memoryDevice, reason)) {
        throw ToolError(chips::ExitStatus::noHardware,
                        reason + " (the chips are reached through this device; see --simulate)");
    }
    if (!_line.empty() && !reference_host::DeviceLock::take(_line, reason)) {
        throw ToolError(chips::ExitStatus::noHardware, reason);
    }
    _application = std::make_unique<reference_host::HostApplication>(_errors, *_memory);
}

ExaminedBoard::ExaminedBoard(board::BoardReading const& document, Simulation const& simulation,
                             std::string const& path, bool isOverLine)
    : _document(document),
      _xml(reference_host::XmlDocument::fromFile(path)),
      _board(std::make_unique<simulation::SimulatedBoard>(*_xml)),
      // The far end of a line lives by the machine's clock.
      _clock(std::make_unique<board::ClockAdoption>(isOverLine ? nullptr : &_board->getClock())),
      _memory(std::make_unique<board::SimulatedMemory>(*_board)) {
    if (isOverLine) {
        try {
            _controller = std::make_unique<simulation::SerialController>(*_board);
        } catch (std::out_of_range const& error) {
            throw ToolError(chips::ExitStatus::noHardware, path + ": " + error.what());
        }
        _line = _controller->getDevicePath();
    }
    simulation.strike(*_board, _controller.get());
    _application = std::make_unique<reference_host::HostApplication>(_errors, *_memory);
}

std::vector<ExaminedBoard::Family> ExaminedBoard::examine(bool allowsWrites) {
    std::vector<Family> families;
    for (ChipKind const* const kind : chips::ChipKinds::getAll()) {
        chips::ExaminationRequest const request = requestFor(*kind, allowsWrites);
        if (request.switches.empty() && !needsMemory()) {
            continue;
        }
        ChipKind::Reach const reach{*_application, _errors, 0, isOverLine(*kind) ? _line : ""};
        families.push_back({*kind, kind->examine(reach, request)});
    }
    return families;
}

bool ExaminedBoard::isOverLine(ChipKind const& kind) const {
    return !_line.empty() && kind.isReachedOver(Transport::serial);
}

/// Whether the processor's buses lead to any chip of the document.
bool ExaminedBoard::needsMemory() const {
    auto const& switches = _document.getSwitches();
    return _line.empty() || std::any_of(switches.begin(), switches.end(), [this](auto const& entry) {
               return !isOverLine(*entry.second.kind);
           });
}

chips::ExaminationRequest ExaminedBoard::requestFor(ChipKind const& kind, bool allowsWrites) const {
    chips::ExaminationRequest request;
    request.allowsWrites = allowsWrites;
    for (board::BoardReading::Wanted const& wanted : _document.getWanted()) {
        if (wanted.model != kind.getFacts().model) {
            continue;
        }
        chips::ExaminationRequest::Switch entry{wanted.id, {}};
        auto const found = _document.getSwitches().find(wanted.id);
        if (found != _document.getSwitches().end()) {
            for (auto const& [number, port] : found->second.ports) {
                if (port.connectedTo == "external") {
                    entry.portsWithPhy.push_back(number);
                }
            }
        }
        request.switches.push_back(entry);
    }
    return request;
}

} // namespace switchctl::doctor
