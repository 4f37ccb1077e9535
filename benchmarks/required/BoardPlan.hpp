#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/Xml.hpp"

namespace required {

enum class PortKind { other, smac, hmac, interlink };
enum class PortState { disabled, listening, learning, forwarding };
enum class Ingress { addTag, validateTag, addTagIfUntagged };
enum class Egress { stripTag, validateTag };

struct TagMembership {
    unsigned vid;
    Ingress ingress;
    Egress egress;
};

struct GroupMembership {
    std::string address;
    unsigned vid;
};

struct PortPlan {
    unsigned id;
    PortKind kind;
    PortState state;
    std::vector<TagMembership> vlans; ///< by ascending VLAN id
    std::vector<unsigned> routes;     ///< ports that share a port-based VLAN, as often as they do
    std::vector<GroupMembership> groups;
};

struct SwitchPlan {
    unsigned id;
    bool isMarvell;
    /// What the chip's tables are sized by: port and trunk elements, doubles included.
    unsigned countedPorts;
    std::optional<unsigned> ageSeconds;
    std::vector<PortPlan> ports; ///< by ascending id
    std::vector<std::vector<unsigned>> trunks;
};

/// A chip that is looked for.
struct Probe {
    unsigned id;
    bool isMarvell;
};

/// What a document asks of a board's chips, as plain numbers: everything that a program would need
/// that had the configuration compiled in.
struct BoardPlan {
    /// Reads the document. Its switches must have ids and models of their own, and all of them must
    /// be on the board.
    static BoardPlan of(Xml& document);

    std::vector<Probe> probes;        ///< in document order
    std::vector<SwitchPlan> switches; ///< by ascending id
};

} // namespace required
