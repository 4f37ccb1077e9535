#include "tests/vitesse/ReportedFailures.hpp"

#include <dlfcn.h>

#include "vitesse/VitesseParallelCommunication.hpp"

namespace {

thread_local test_support::ParallelScript const* failingScript = nullptr;

// The names of VitesseParallelCommunication::readRegister and writeRegister to the linker.
constexpr char const* readerName =
    "_ZN28VitesseParallelCommunication12readRegisterERKN31VitesseManagementCommunications3BsaERj";
constexpr char const* writerName =
    "_ZN28VitesseParallelCommunication13writeRegisterERKN31VitesseManagementCommunications3BsaERKj";

using Bus = VitesseParallelCommunication;
using Reader = bool (*)(Bus*, Bus::Bsa const*, unsigned int*);
using Writer = bool (*)(Bus*, Bus::Bsa const*, unsigned int const*);

bool hasFailed() {
    return failingScript != nullptr && failingScript->lastAccessFailed();
}

} // namespace

ReportedFailures::ReportedFailures(test_support::ParallelScript const& script) {
    failingScript = &script;
}

ReportedFailures::~ReportedFailures() {
    failingScript = nullptr;
}

// The dynamic linker prefers these two to the library's, which they hand on to.

bool VitesseParallelCommunication::readRegister(Bsa const& location, unsigned int& value) {
    static auto const library = reinterpret_cast<Reader>(dlsym(RTLD_NEXT, readerName));
    return library(this, &location, &value) && !hasFailed();
}

bool VitesseParallelCommunication::writeRegister(Bsa const& location, unsigned int const& value) {
    static auto const library = reinterpret_cast<Writer>(dlsym(RTLD_NEXT, writerName));
    return library(this, &location, &value) && !hasFailed();
}
