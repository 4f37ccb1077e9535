#pragma once

#include <string>

namespace test_support {

/// A file with the given content, removed at the end.
class TemporaryFile {
public:
    explicit TemporaryFile(std::string const& content = "");
    ~TemporaryFile();
    TemporaryFile(TemporaryFile const&) = delete;
    TemporaryFile& operator=(TemporaryFile const&) = delete;

    std::string const& path() const { return _path; }
    std::string content() const;

private:
    std::string _path;
};

} // namespace test_support
