#pragma once

#include <string>
#include <vector>

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

/// "VLAN 0x5".
std::string vlanName(unsigned int id);

/// "port 3" or "ports 3 and 4".
std::string portsName(std::vector<unsigned int> const& numbers);
/// @}

} // namespace board
