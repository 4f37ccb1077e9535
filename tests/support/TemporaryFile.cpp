#include "tests/support/TemporaryFile.hpp"

#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace test_support {

TemporaryFile::TemporaryFile(std::string const& content) : _path("/tmp/switchmanager_test_XXXXXX") {
    int const descriptor = mkstemp(_path.data());
    if (descriptor < 0) {
        throw std::runtime_error("cannot create " + _path);
    }
    close(descriptor);
    std::ofstream(_path, std::ios::binary) << content;
}

TemporaryFile::~TemporaryFile() {
    unlink(_path.c_str());
}

std::string TemporaryFile::content() const {
    std::ostringstream result;
    result << std::ifstream(_path, std::ios::binary).rdbuf();
    return result.str();
}

} // namespace test_support
