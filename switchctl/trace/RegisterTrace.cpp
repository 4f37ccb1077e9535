#include "switchctl/trace/RegisterTrace.hpp"

#include <cerrno>
#include <system_error>

#include "switchctl/registers/CommandError.hpp"

namespace switchctl::trace {

using Way = TransportOptions::Way;

namespace {

TraceAccess::Transport transportOf(Way way) {
    switch (way) {
    case Way::smi:
        return TraceAccess::Transport::smi;
    case Way::serial:
        return TraceAccess::Transport::serial;
    case Way::parallel:
        break;
    }
    return TraceAccess::Transport::parallel;
}

} // namespace

RegisterTrace::RegisterTrace(TransportOptions const& options)
    : _options(options), _out(options.getTracePath()) {
    if (!_out) {
        throw CommandError(ExitStatus::noTrace,
                           _options.getTracePath() + ": " + std::generic_category().message(errno));
    }
    _chips.add(getSwitchId(), _options.getModel());
    _writer = std::make_unique<TraceWriter>(_out, _chips);
    requireWritten();
}

void RegisterTrace::attach(RegisterTransport& transport) {
    transport.setObserver([this](RegisterLocation const& location, bool isWrite, std::uint32_t value,
                                 bool succeeded) { add(location, isWrite, value, succeeded); });
}

void RegisterTrace::add(RegisterLocation const& location, bool isWrite, std::uint32_t value, bool succeeded) {
    TraceAccess access;
    access.nanoseconds = _clock.getNanoseconds();
    access.switchId = getSwitchId();
    access.transport = transportOf(_options.getWay());
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
        throw CommandError(ExitStatus::noTrace, _options.getTracePath() + ": the trace could not be written");
    }
}

unsigned RegisterTrace::getSwitchId() const {
    return _options.getWay() == Way::smi ? _options.getSwitchId() : 0;
}

} // namespace switchctl::trace
