#pragma once

#include <string>

namespace switchctl::check {

/// How to write a VLAN's id so that the library reads that id and finds the members by it, without a full
/// stop: "VLAN 100 is written 64"; or that there is no way: the id's hexadecimal digits have to be a
/// number to XPath, too.
std::string vlanSpelling(unsigned int vlanId);

} // namespace switchctl::check
