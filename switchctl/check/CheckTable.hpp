#pragma once

#include <vector>

#include "switchctl/check/Check.hpp"

namespace switchctl::check {

/// All checks, in the order in which they are listed.
std::vector<Check> const& allChecks();

/// \name By topic
/// @{

/// About the time after which a switch forgets an address.
std::vector<Check> ageTimeChecks();

/// About cables between ports, which the library does not look at.
std::vector<Check> cableChecks();

/// About what holds for a chip whatever the document says, while it starts and after.
std::vector<Check> conditionChecks();

/// About forwarded multicast groups and the ports that receive them.
std::vector<Check> groupChecks();

/// About the entries that groups get in the MAC table of a VSC7390.
std::vector<Check> groupTableChecks();

/// About the members of VLANs.
std::vector<Check> memberChecks();

/// About numbers, wherever they stand.
std::vector<Check> numberChecks();

/// About ways that VLANs open or do not open between ports.
std::vector<Check> pathChecks();

/// About the ports of a switch.
std::vector<Check> portChecks();

/// The check against the schema.
std::vector<Check> schemaChecks();

/// About switch elements: where they stand, their ids and models.
std::vector<Check> switchChecks();

/// About how ports treat tags, over all VLANs that they are in.
std::vector<Check> taggingChecks();

/// About link-aggregation groups.
std::vector<Check> trunkChecks();

/// About the ports that a VSC7390 takes for its own.
std::vector<Check> vitessePortChecks();

/// About VLANs: their ids and types, and which members they find.
std::vector<Check> vlanChecks();
/// @}

} // namespace switchctl::check
