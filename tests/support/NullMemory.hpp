#pragma once

#include "reference_host/PhysicalMemory.hpp"

namespace test_support {

/// For applications whose sections never get mapped.
class NullMemory : public reference_host::PhysicalMemory {
public:
    bool map(unsigned int, unsigned int, Mapping&, std::string& reason) override {
        reason = "this test has no hardware";
        return false;
    }

    void unmap(Mapping const&) noexcept override {}
};

} // namespace test_support
