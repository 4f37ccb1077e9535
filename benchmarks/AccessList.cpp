#include "benchmarks/AccessList.hpp"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>

namespace benchmarks {

namespace {

/// A word's name and what follows it.
using Word = std::vector<std::string>;

/// A word that stands for others. Its parameters are capital letters and stand for a part of theirs.
struct Shape {
    Word word;
    std::vector<Word> content;
};

constexpr unsigned parallelBus = 0xF3000000;
constexpr unsigned lowestFullAddress = 0x80000000;
constexpr std::size_t longestLine = 110;

// In the order in which they are looked for: later ones are made of earlier ones.
constexpr std::pair<char const*, char const*> shapeTexts[] = {
    // An MDIO frame, of its command and its data, by a MAC that is not busy.
    {"get:C:V", "r:80010018:0 w:80010010:C r:80010018:0 r:80010014:V"},
    {"put:C:V", "r:80010018:0 w:80010014:V w:80010010:C r:80010018:0"},
    // An access to a register inside of an 88E6096, of the chip's address, what it is told, and the value;
    // the
    // chip is ready at once.
    {"smi-read:A:O:V", "put:4A0:9O get:8A0:1O*2 get:8A1:V get:8A0:1O*2"},
    {"smi-write:A:O:V", "put:4A1:V put:4A0:9O get:8A0:1O*2"},
    // A read from a VSC7390, which has the value ready at the tenth look.
    {"read:A:V", "r:A:0 r:1c0c0:0*9 r:1c0c0:10 r:1c0b0:V"},
};

Word split(std::string const& text) {
    Word parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, ':');) {
        parts.push_back(part);
    }
    return parts;
}

std::string join(Word const& word) {
    std::string text = word.front();
    std::for_each(word.begin() + 1, word.end(), [&](std::string const& part) { text += ":" + part; });
    return text;
}

/// Words of a line, those with a number behind them as often.
std::vector<Word> wordsOf(std::string const& line) {
    std::vector<Word> words;
    std::istringstream stream(line);
    for (std::string text; stream >> text;) {
        std::size_t const star = text.find('*');
        std::size_t const times = star == std::string::npos ? 1 : std::stoul(text.substr(star + 1));
        words.insert(words.end(), times, split(text.substr(0, star)));
    }
    return words;
}

std::vector<Shape> const& shapes() {
    static std::vector<Shape> const all = [] {
        std::vector<Shape> parsed;
        for (auto const& [word, content] : shapeTexts) {
            parsed.push_back({split(word), wordsOf(content)});
        }
        return parsed;
    }();
    return all;
}

std::size_t findParameter(std::string const& pattern) {
    auto const isCapital = [](unsigned char character) { return std::isupper(character) != 0; };
    return static_cast<std::size_t>(std::find_if(pattern.begin(), pattern.end(), isCapital) -
                                    pattern.begin());
}

using Parameters = std::map<char, std::string>;

bool matches(std::string const& pattern, std::string const& text, Parameters& parameters) {
    std::size_t const place = findParameter(pattern);
    if (place == pattern.size()) {
        return pattern == text;
    }
    std::size_t const rest = pattern.size() - place - 1;
    if (text.size() < place + rest || text.compare(0, place, pattern, 0, place) != 0 ||
        text.compare(text.size() - rest, rest, pattern, place + 1, rest) != 0) {
        return false;
    }
    std::string const value = text.substr(place, text.size() - place - rest);
    return parameters.emplace(pattern[place], value).first->second == value;
}

bool matches(Word const& pattern, Word const& word, Parameters& parameters) {
    return pattern.size() == word.size() &&
           std::equal(pattern.begin(), pattern.end(), word.begin(),
                      [&](auto const& part, auto const& text) { return matches(part, text, parameters); });
}

Word fill(Word pattern, Parameters const& parameters) {
    for (std::string& part : pattern) {
        if (std::size_t const place = findParameter(part); place != part.size()) {
            part.replace(place, 1, parameters.at(part[place]));
        }
    }
    return pattern;
}

std::vector<Word> shorten(std::vector<Word> const& words, Shape const& shape) {
    std::vector<Word> result;
    for (auto word = words.begin(); word != words.end();) {
        auto const length = static_cast<std::ptrdiff_t>(shape.content.size());
        Parameters parameters;
        if (words.end() - word >= length && std::equal(shape.content.begin(), shape.content.end(), word,
                                                       [&](Word const& pattern, Word const& text) {
                                                           return matches(pattern, text, parameters);
                                                       })) {
            result.push_back(fill(shape.word, parameters));
            word += length;
        } else {
            result.push_back(*word++);
        }
    }
    return result;
}

unsigned number(std::string const& text) {
    constexpr int hexadecimal = 16;
    std::size_t end = 0;
    unsigned long const value = std::stoul(text, &end, hexadecimal);
    if (end != text.size()) {
        throw std::invalid_argument(text);
    }
    return static_cast<unsigned>(value);
}

void expand(Word const& word, std::vector<Access>& accesses) {
    for (Shape const& shape : shapes()) {
        if (Parameters parameters;
            shape.word.front() == word.front() && matches(shape.word, word, parameters)) {
            for (Word const& part : shape.content) {
                expand(fill(part, parameters), accesses);
            }
            return;
        }
    }
    if (word.size() != 3 || (word[0] != "r" && word[0] != "w")) {
        throw std::invalid_argument(join(word));
    }
    unsigned const address = number(word[1]);
    accesses.push_back(
        {address < lowestFullAddress ? parallelBus + address : address, word[0] == "w", number(word[2])});
}

Word wordOf(Access const& access) {
    auto const hexadecimal = [](unsigned value) {
        std::ostringstream text;
        text << std::hex << value;
        return text.str();
    };
    unsigned const address = access.physicalAddress;
    return {access.isWrite ? "w" : "r", hexadecimal(address < parallelBus ? address : address - parallelBus),
            hexadecimal(access.value)};
}

/// Lines of words, equal ones counted.
void write(std::ostream& out, std::vector<Word> const& words) {
    std::string line;
    for (auto word = words.begin(); word != words.end();) {
        auto const next = std::find_if(word, words.end(), [&](Word const& other) { return other != *word; });
        std::string const text = join(*word) + (next - word > 1 ? "*" + std::to_string(next - word) : "");
        if (line.size() + 1 + text.size() > longestLine) {
            out << line << '\n';
            line.clear();
        }
        line += (line.empty() ? "" : " ") + text;
        word = next;
    }
    out << line << '\n';
}

std::string describe(std::vector<Access> const& accesses, std::size_t index) {
    return index < accesses.size() ? join(wordOf(accesses[index])) : "nothing";
}

} // namespace

std::vector<AccessList::Section> AccessList::read(std::istream& file) try {
    std::vector<Section> sections;
    for (std::string line; std::getline(file, line);) {
        if (line.size() > 2 && line.front() == '[') {
            sections.push_back({line.substr(1, line.size() - 2), {}});
            continue;
        }
        for (Word const& word : wordsOf(line)) {
            expand(word, sections.empty() ? throw std::invalid_argument(line) : sections.back().accesses);
        }
    }
    return sections.empty() ? throw std::invalid_argument("no section") : sections;
} catch (std::logic_error const& error) {
    throw std::runtime_error(std::string("list of accesses: ") + error.what());
}

std::vector<AccessList::Section> AccessList::readFile(std::string const& path) {
    std::ifstream file(path);
    return file ? read(file) : throw std::runtime_error("cannot open " + path);
}

std::string AccessList::textOf(std::vector<Section> const& sections) {
    std::ostringstream out;
    for (Section const& section : sections) {
        std::vector<Word> words;
        std::transform(section.accesses.begin(), section.accesses.end(), std::back_inserter(words), wordOf);
        for (Shape const& shape : shapes()) {
            words = shorten(words, shape);
        }
        out << '[' << section.name << "]\n";
        write(out, words);
    }
    return out.str();
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
