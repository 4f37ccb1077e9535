#include "switchctl/bringup/MisuseList.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <tuple>

namespace switchctl::bringup {

using simulation::MisuseReport;

std::vector<std::string> linesOfMisuse(MisuseReport const& misuse) {
    auto entries = misuse.getEntries();
    auto const place = [](MisuseReport::Entry const& entry) {
        return std::tie(entry.chip, entry.unit, entry.registerName, entry.access);
    };
    std::stable_sort(entries.begin(), entries.end(),
                     [&](auto const& one, auto const& other) { return place(one) < place(other); });
    std::vector<std::string> lines;
    lines.reserve(entries.size());
    for (MisuseReport::Entry const& entry : entries) {
        lines.push_back(fmt::format("{}  {}/{}  access {}: {}: {}", entry.chip, entry.unit,
                                    entry.registerName, entry.access, MisuseReport::name(entry.kind),
                                    entry.text));
    }
    return lines;
}

} // namespace switchctl::bringup
