#include "switchctl/bringup/FindingCounts.hpp"

#include <nlohmann/json.hpp>

#include <fmt/ostream.h>

namespace switchctl::bringup {

namespace {

std::string counted(std::size_t number, char const* what) {
    return fmt::format("{} {}{}", number, what, number == 1 ? "" : "s");
}

} // namespace

void FindingCounts::print(std::ostream& out, std::string const& path) const {
    out << "check: " << counted(errors, "error") << ", " << counted(warnings, "warning") << ", "
        << counted(notes, "note");
    if (errors + warnings + notes > 0) {
        out << "; \"switchctl check " << path << "\" shows them";
    }
    out << '\n';
}

nlohmann::ordered_json FindingCounts::toJson() const {
    return {{"errors", errors}, {"warnings", warnings}, {"notes", notes}};
}

} // namespace switchctl::bringup
