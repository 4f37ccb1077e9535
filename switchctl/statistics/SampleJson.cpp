#include "switchctl/statistics/SampleJson.hpp"

#include <nlohmann/json.hpp>

namespace switchctl::statistics {

namespace {

using Json = nlohmann::ordered_json;

Json countersOf(chips::PortCounters const& port) {
    Json counters = Json::object();
    for (std::size_t index = 0; index < port.values.size(); ++index) {
        chips::Counter const& counter = port.getCounters()[index];
        if (port.values[index]) {
            counters[counter.name] = {{"value", *port.values[index]}, {"unit", counter.getUnitName()}};
        }
    }
    return counters;
}

} // namespace

void SampleJson::print(chips::CounterSample const& sample, std::string const& file, std::string const& source,
                       std::ostream& out) {
    Json ports = Json::array();
    for (chips::PortCounters const& port : sample.ports) {
        ports.push_back({{"switch", port.port.switchId},
                         {"port", port.port.portId},
                         {"chip", port.model},
                         {"counters", countersOf(port)}});
    }
    Json const json = {{"file", file}, {"read", source}, {"ports", ports}, {"unread", sample.unread}};
    out << json.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

} // namespace switchctl::statistics
