#include "switchctl/statistics/OpenMetrics.hpp"

#include <fmt/ostream.h>

#include <set>
#include <string>
#include <utility>

#include "chips/ChipKinds.hpp"

namespace switchctl::statistics {

namespace {

void printFamily(std::ostream& out, chips::ChipKind::Facts const& chip, std::size_t index,
                 chips::CounterSample const& sample) {
    chips::Counter const& counter = chip.counters[index];
    std::string const family = counter.getFamily();
    bool hasHead = false;
    for (chips::PortCounters const& port : sample.ports) {
        if (port.model != chip.model || !port.values[index]) {
            continue;
        }
        if (!std::exchange(hasHead, true)) {
            fmt::print(out, "# TYPE {0} counter\n# UNIT {0} {1}\n# HELP {0} {2}\n", family,
                       counter.getUnitName(), counter.help);
        }
        fmt::print(out, "{}_total{{switch=\"{}\",port=\"{}\",chip=\"{}\"}} {}\n", family, port.port.switchId,
                   port.port.portId, port.model, *port.values[index]);
    }
}

} // namespace

void OpenMetrics::print(chips::CounterSample const& sample, std::ostream& out) {
    std::set<std::string> models;
    for (chips::PortCounters const& port : sample.ports) {
        models.insert(port.model);
    }
    for (std::string const& model : models) {
        chips::ChipKind::Facts const& chip = chips::ChipKinds::get(model, "statistics").getFacts();
        for (std::size_t index = 0; index < chip.counters.size(); ++index) {
            printFamily(out, chip, index, sample);
        }
    }
    out << "# EOF\n";
}

} // namespace switchctl::statistics
