#pragma once

#include <string>

/// \name Documents of a few lines
/// @{

/// Ends a line on which a finding is expected.
constexpr char const* here = "<!--!-->\n";

/// One port element of a switch, without a line end.
std::string port(std::string const& id, std::string const& connectedTo = "external",
                 std::string const& portStatus = "forwarding");

/// Ports `first` to `last`, a line each.
std::string ports(unsigned int first, unsigned int last, std::string const& connectedTo = "external");

/// Switches with all of their ports, the first connected to the processor.
std::string marvell(std::string const& id, std::string const& more = "");
std::string vitesse(std::string const& id, std::string const& more = "");

/// A VLAN; the last line of the start tag ends before `members`.
std::string tagBased(std::string const& id, std::string const& members);
std::string portBased(std::string const& id, std::string const& members);

/// A member that keeps tags.
std::string member(std::string const& switchId, std::string const& portId, std::string const& groups = "");

std::string group(std::string const& address);

/// A whole document.
std::string boardOf(std::string const& switches, std::string const& more = "");
/// @}
