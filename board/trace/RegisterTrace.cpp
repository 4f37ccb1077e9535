#include "board/trace/RegisterTrace.hpp"

namespace board {

RegisterTrace::RegisterTrace(std::string const& path, std::ostream& standardOutput, std::string const& model,
                             unsigned switchId, chips::TraceAccess::Transport transport)
    : _file(path, standardOutput, chips::ExitStatus::noTrace), _switchId(switchId), _transport(transport) {
    _chips.add(_switchId, model);
    _writer = std::make_unique<TraceWriter>(_file.getStream(), _chips);
    _file.requireWritten();
}

RegisterTrace::~RegisterTrace() {
    if (!_isFinished) {
        _file.finishAnyway();
    }
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
    _file.requireWritten();
}

void RegisterTrace::finish() {
    _isFinished = true;
    _file.finish();
}

} // namespace board
