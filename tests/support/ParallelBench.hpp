#pragma once

#include "tests/support/WindowBench.hpp"

namespace test_support {

/// An application on a board whose only hardware is a scripted VSC7390 on its parallel bus.
///
/// \tparam Script WordScript or ParallelScript.
template <typename Script> class ParallelBench : public WindowBench<Script> {
public:
    static constexpr unsigned int chipAddress = 0xF300'0000;
    static constexpr unsigned int chipSize = 0x100'0000;

    ParallelBench() : WindowBench<Script>(chipAddress, chipSize) {}
};

} // namespace test_support
