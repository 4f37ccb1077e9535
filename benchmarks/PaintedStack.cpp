#include "benchmarks/PaintedStack.hpp"

namespace footprint {

namespace {

constexpr std::size_t paintedBytes = 256UL * 1024;
/// Room for the frame of the function that paints.
constexpr std::size_t ownFrame = 512;
constexpr unsigned char pattern = 0xA5;

} // namespace

__attribute__((noinline)) void PaintedStack::paint() {
    auto* const here = static_cast<unsigned char*>(__builtin_frame_address(0));
    _top = here;
    _lowest = here - paintedBytes;
    for (unsigned char volatile* byte = here - ownFrame; byte >= _lowest; --byte) {
        *byte = pattern;
    }
}

std::size_t PaintedStack::depth() const {
    unsigned char const volatile* byte = _lowest;
    while (byte < _top && *byte == pattern) {
        ++byte;
    }
    return static_cast<std::size_t>(_top - byte);
}

} // namespace footprint
