#include "switchctl/check/Severity.hpp"

namespace switchctl::check {

std::string severityName(Severity severity) {
    switch (severity) {
    case Severity::error:
        return "error";
    case Severity::warning:
        return "warning";
    default:
        return "note";
    }
}

} // namespace switchctl::check
