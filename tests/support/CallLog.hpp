#pragma once

#include <string>
#include <vector>

namespace test_support {

/// What recording chip classes were asked to do, in order, over all objects that share the list.
using CallLog = std::vector<std::string>;

} // namespace test_support
