#include "board/trace/BringUpTrace.hpp"

#include <utility>

#include "board/trace/TracedMemory.hpp"

namespace board {

BringUpTrace::BringUpTrace(std::ostream& out, BoardReading const& document)
    : _chips(document), _writer(out, _chips), _decoder(_chips, _writer) {}

std::unique_ptr<reference_host::PhysicalMemory>
BringUpTrace::wrap(std::unique_ptr<reference_host::PhysicalMemory> memory) {
    return std::make_unique<TracedMemory>(std::move(memory), _decoder);
}

void BringUpTrace::finish() {
    _decoder.finish();
}

} // namespace board
