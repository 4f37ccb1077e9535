// What libFuzzer calls. One program for all targets; FUZZ_TARGET in the environment names one.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <iostream>

#include "tests/fuzz/DocumentMutator.hpp"
#include "tests/fuzz/FuzzTarget.hpp"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t longest);
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t longest,
                                               unsigned int seed);

namespace {

fuzz::FuzzTarget const& target() {
    static fuzz::FuzzTarget const& chosen = [&]() -> fuzz::FuzzTarget const& {
        char const* const name = std::getenv("FUZZ_TARGET");
        // What the library prints would drown what the fuzzer does.
        std::cout.setstate(std::ios::failbit);
        return fuzz::FuzzTarget::find(name == nullptr ? "" : name);
    }();
    return chosen;
}

} // namespace

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    target().run(std::string(data, data + size));
    return 0;
}

std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t longest,
                                    unsigned int seed) {
    constexpr unsigned plainBytesOneIn = 4;
    if (target().takesDocuments && seed % plainBytesOneIn != 0) {
        std::string const changed =
            fuzz::DocumentMutator(seed).mutate(std::string(data, data + size), longest);
        if (!changed.empty()) {
            std::copy(changed.begin(), changed.end(), data);
            return changed.size();
        }
    }
    return LLVMFuzzerMutate(data, size, longest);
}
