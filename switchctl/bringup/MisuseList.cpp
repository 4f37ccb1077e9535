#include "switchctl/bringup/MisuseList.hpp"

#include <fmt/ostream.h>

#include <algorithm>
#include <tuple>

namespace switchctl::bringup {

using simulation::MisuseReport;

void printMisuse(std::ostream& out, MisuseReport const& misuse) {
    auto entries = misuse.getEntries();
    auto const place = [](MisuseReport::Entry const& entry) {
        return std::tie(entry.chip, entry.unit, entry.registerName, entry.access);
    };
    std::stable_sort(entries.begin(), entries.end(),
                     [&](auto const& one, auto const& other) { return place(one) < place(other); });
    for (MisuseReport::Entry const& entry : entries) {
        fmt::print(out, "  {}  {}/{}  access {}: {}: {}\n", entry.chip, entry.unit, entry.registerName,
                   entry.access, MisuseReport::name(entry.kind), entry.text);
    }
}

} // namespace switchctl::bringup
