#include "board/trace/RegisterTrace.hpp"

#include <cerrno>
#include <system_error>

#include "chips/ToolError.hpp"

namespace board {

RegisterTrace::RegisterTrace(std::string path, std::string const& model, unsigned switchId,
                             chips::TraceAccess::Transport transport)
    : _path(std::move(path)), _switchId(switchId), _transport(transport), _out(_path) {
    if (!_out) {
        throw chips::ToolError(chips::ExitStatus::noTrace,
                               _path + ": " + std::generic_category().message(errno));
    }
    _chips.add(_switchId, model);
    _writer = std::make_unique<TraceWriter>(_out, _chips);
    requireWritten();
}

void RegisterTrace::attach(chips::RegisterTransport& transport) {
    transport.setObserver([this](chips::RegisterLocation const& location, bool isWrite, std::uint32_t value,
                                 bool succeeded) { add(location, isWrite, value, succeeded); });
}

void RegisterTrace::add(chips::RegisterLocation const& location, bool isWrite, std::uint32_t value,
                        bool succeeded) {
    chips::TraceAccess access;
    access.nanoseconds = _clock.getNanoseconds();
    access.switchId = _switchId;
    access.transport = _transport;
    access.isWrite = isWrite;
    access.address = location.address;
    if (isWrite || succeeded) {
        access.value = value;
    }
    access.succeeded = succeeded;
    _writer->add(access);
    requireWritten();
}

void RegisterTrace::requireWritten() {
    if (!_out.flush()) {
        throw chips::ToolError(chips::ExitStatus::noTrace, _path + ": the trace could not be written");
    }
}

} // namespace board
