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

Json SampleJson::of(chips::CounterSample const& sample, std::string const& file, std::string const& source) {
    Json ports = Json::array();
    for (chips::PortCounters const& port : sample.ports) {
        ports.push_back({{"switch", port.port.switchId},
                         {"port", port.port.portId},
                         {"chip", port.model},
                         {"counters", countersOf(port)}});
        if (!port.label.empty()) {
            ports.back()["label"] = port.label;
        }
    }
    return {{"file", file}, {"read", source}, {"ports", ports}, {"unread", sample.unread}};
}

} // namespace switchctl::statistics
