#pragma once

#include <optional>
#include <string>
#include <vector>

#include "model/ManagedSwitchPort.hpp"

namespace board {

/// \name Numbers and lists in texts about a document
/// @{

/// "0x1f".
std::string hexadecimal(unsigned int number);

/// "0.10".
std::string portAddress(int switchId, int portId);

/// "1", "1 and 2", "1, 2 and 3".
std::string listed(std::vector<std::string> const& items);
std::string listed(std::vector<unsigned int> const& numbers);

/// `VLAN 16 (0x10, written "10")`; without the last part where nothing is written.
std::string vlanName(unsigned int id, std::optional<std::string> const& written = {});

/// The id of a switch or port: "7"; `7 (written "07")` where the document writes it in another way.
std::string idName(int id, std::optional<std::string> const& written);

/// The name of an entry of a chip's table, "VID 16", with its ids in hexadecimal, too: "VID 16 (0x10)".
std::string entryName(std::string const& name);

/// The value of a register's field: "0x10"; "0x10 (16)" where the field holds the id of a VLAN or of
/// spanning-tree states and the two could be mistaken for one another.
std::string fieldValue(std::string const& field, unsigned int value);

/// The words that a document may write in `connectedTo`.
std::vector<std::string> knownPortTypes();

/// What the document writes in `connectedTo` for the type, "unknown" for others.
std::string portTypeName(ManagedSwitchPort::PortType type);

/// What it writes in `portStatus` for the state.
std::string portStateName(ManagedSwitchPort::PortEnabledStatus state);

/// "port 3" or "ports 3 and 4".
std::string portsName(std::vector<unsigned int> const& numbers);
/// @}

} // namespace board
