#include "switchctl/statistics/OpenMetrics.hpp"

#include <set>
#include <string>

namespace switchctl::statistics {

namespace {

void printValue(std::ostream& out, chips::Counter const& counter, chips::PortCounters const& port,
                std::uint64_t value) {
    out << counter.getFamily() << "_total{switch=\"" << port.port.switchId << "\",port=\"" << port.port.portId
        << "\",chip=\"" << port.model << "\"} " << value << '\n';
}

void printFamily(std::ostream& out, std::string const& model, std::size_t index,
                 chips::CounterSample const& sample) {
    chips::Counter const& counter = chips::Counter::ofChip(model)[index];
    bool hasHead = false;
    for (chips::PortCounters const& port : sample.ports) {
        if (port.model != model || !port.values[index]) {
            continue;
        }
        if (!hasHead) {
            hasHead = true;
            std::string const family = counter.getFamily();
            out << "# TYPE " << family << " counter\n"
                << "# UNIT " << family << ' ' << counter.getUnitName() << '\n'
                << "# HELP " << family << ' ' << counter.help << '\n';
        }
        printValue(out, counter, port, *port.values[index]);
    }
}

} // namespace

void OpenMetrics::print(chips::CounterSample const& sample, std::ostream& out) {
    std::set<std::string> models;
    for (chips::PortCounters const& port : sample.ports) {
        models.insert(port.model);
    }
    for (std::string const& model : models) {
        for (std::size_t index = 0; index < chips::Counter::ofChip(model).size(); ++index) {
            printFamily(out, model, index, sample);
        }
    }
    out << "# EOF\n";
}

} // namespace switchctl::statistics
