#pragma once

#include "tests/support/WindowBench.hpp"

namespace test_support {

/// An application on a board whose only hardware is a scripted Ethernet MAC at its physical address.
///
/// \tparam Script WordScript, MdioScript or SmiScript.
template <typename Script> class MacBench : public WindowBench<Script> {
public:
    static constexpr unsigned int macAddress = 0x8001'0000;
    static constexpr unsigned int macSize = 0x30;

    MacBench() : WindowBench<Script>(macAddress, macSize) {}
};

} // namespace test_support
