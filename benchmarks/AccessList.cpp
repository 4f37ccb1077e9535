#include "benchmarks/AccessList.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace benchmarks {

namespace {

Access parse(std::string const& line) {
    std::istringstream stream(line);
    Access access{};
    char kind = 0;
    char colons[2] = {};
    stream >> kind >> colons[0] >> std::hex >> access.physicalAddress >> colons[1] >> access.value;
    access.isWrite = kind == 'w';
    if (!stream || !stream.eof() || colons[0] != ':' || colons[1] != ':' || (kind != 'r' && kind != 'w')) {
        throw std::runtime_error("list of accesses: " + line);
    }
    return access;
}

std::string textOf(Access const& access) {
    return fmt::format("{}:{:x}:{:x}", access.isWrite ? 'w' : 'r', access.physicalAddress, access.value);
}

std::string describe(std::vector<Access> const& accesses, std::size_t index) {
    return index < accesses.size() ? textOf(accesses[index]) : "nothing";
}

} // namespace

std::vector<AccessList::Section> AccessList::read(std::istream& file) {
    std::vector<Section> sections;
    for (std::string line; std::getline(file, line);) {
        if (line.size() > 2 && line.front() == '[') {
            sections.push_back({line.substr(1, line.size() - 2), {}});
        } else if (sections.empty()) {
            throw std::runtime_error("list of accesses: " + line);
        } else {
            sections.back().accesses.push_back(parse(line));
        }
    }
    return sections.empty() ? throw std::runtime_error("list of accesses: no section") : sections;
}

std::vector<AccessList::Section> AccessList::readFile(std::string const& path) {
    std::ifstream file(path);
    return file ? read(file) : throw std::runtime_error("cannot open " + path);
}

std::string AccessList::textOf(std::vector<Section> const& sections) {
    std::string text;
    for (Section const& section : sections) {
        text += '[' + section.name + "]\n";
        for (Access const& access : section.accesses) {
            text += benchmarks::textOf(access) + '\n';
        }
    }
    return text;
}

std::string AccessList::differenceOf(std::vector<Section> const& made, std::vector<Section> const& listed) {
    for (std::size_t i = 0; i < std::max(made.size(), listed.size()); ++i) {
        if (i == made.size() || i == listed.size() || made[i].name != listed[i].name) {
            return "operation " + std::to_string(i + 1) + " is " +
                   (i < made.size() ? "\"" + made[i].name + "\"" : "missing") + ", listed is " +
                   (i < listed.size() ? "\"" + listed[i].name + "\"" : "none");
        }
        auto const& ours = made[i].accesses;
        auto const& theirs = listed[i].accesses;
        auto const differing = std::mismatch(ours.begin(), ours.end(), theirs.begin(), theirs.end());
        if (differing.first != ours.end() || differing.second != theirs.end()) {
            auto const index = static_cast<std::size_t>(differing.first - ours.begin());
            return made[i].name + ", access " + std::to_string(index + 1) + ": " + describe(ours, index) +
                   ", listed is " + describe(theirs, index);
        }
    }
    return {};
}

} // namespace benchmarks
