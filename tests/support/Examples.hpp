#pragma once

#include <string>

namespace test_support {

/// Paths of documents that come with the project.
inline std::string const minimal = EXAMPLES_FOLDER "/trap-minimal.xml";

} // namespace test_support
