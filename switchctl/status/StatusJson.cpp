#include "switchctl/status/StatusJson.hpp"

namespace switchctl::status {

using Json = nlohmann::ordered_json;

Json StatusJson::of(StatusSample const& sample, board::BoardReading const& document, std::string const& file,
                    std::string const& source) {
    Json ports = Json::array();
    for (StatusSample::Row const& row : sample.rows) {
        ports.push_back(of(row, document));
    }
    return {{"file", file}, {"read", source}, {"ports", ports}, {"unread", sample.unread}};
}

Json StatusJson::of(StatusSample::Row const& row, board::BoardReading const& document) {
    Json json = of(row.port);
    json["connectedTo"] = row.port.connectedTo;
    Json unread = Json::array();
    for (StatusFacts::Fact const& fact : StatusFacts::of(row.status, document)) {
        if (fact.isUnread) {
            unread.push_back(fact.name);
        } else {
            json[fact.name] = fact.value;
        }
    }
    json["unread"] = unread;
    return json;
}

Json StatusJson::of(board::PortSelection::Port const& port) {
    return {{"switch", port.address.switchId}, {"port", port.address.portId}, {"chip", port.model}};
}

} // namespace switchctl::status
