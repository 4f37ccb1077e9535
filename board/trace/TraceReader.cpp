#include "board/trace/TraceReader.hpp"

#include <sstream>

#include "board/trace/TraceFormat.hpp"
#include "chips/ChipKinds.hpp"
#include "chips/NumberText.hpp"
#include "chips/ToolError.hpp"
#include "reference_host/InputFile.hpp"

namespace board {

namespace {

/// The words of a line for an access.
enum Column : std::size_t { time, chip, transport, kind, number, name, value, outcome, columns };

constexpr std::size_t wordsOfChip = 3;
constexpr unsigned highestSwitchId = 0xFFFF;
constexpr unsigned bitsPerDigit = 4;

std::vector<std::string> wordsOf(std::string const& text) {
    std::istringstream in(text);
    std::vector<std::string> words;
    for (std::string word; in >> word;) {
        words.push_back(word);
    }
    return words;
}

/// A line without its end, which may have been through a system that ends lines by two characters.
bool getLine(std::istream& in, std::string& text) {
    if (!std::getline(in, text)) {
        return false;
    }
    if (!text.empty() && text.back() == '\r') {
        text.pop_back();
    }
    return true;
}

std::string contentOf(std::string const& path) {
    try {
        return reference_host::InputFile::read(path);
    } catch (reference_host::InputFile::Error const& error) {
        throw chips::ToolError(chips::ExitStatus::badDocument, path + ": " + error.what());
    }
}

std::string quoted(std::string const& text) {
    return "\"" + text + "\"";
}

} // namespace

TraceReader::TraceReader(std::istream& in, std::string const& name) : _name(name) {
    std::string text;
    _number = 1;
    if (!getLine(in, text)) {
        refuse("the file is empty");
    }
    readFirst(text);
    while (getLine(in, text)) {
        ++_number;
        readLine(text);
    }
}

TraceReader TraceReader::fromFile(std::string const& path) {
    std::istringstream in(contentOf(path));
    return {in, path};
}

void TraceReader::readFirst(std::string const& text) {
    if (text == TraceFormat::firstLine) {
        return;
    }
    std::string const start = TraceFormat::firstWords;
    if (text.compare(0, start.size(), start) == 0) {
        refuse("version " + quoted(text.substr(start.size())) + " of the format is not known");
    }
    refuse("not a trace, which begins with " + quoted(TraceFormat::firstLine));
}

void TraceReader::readLine(std::string const& text) {
    std::vector<std::string> const words = wordsOf(text);
    if (words.empty() || words[0][0] == '#') {
        return;
    }
    if (words[0] == "chip") {
        readChip(words);
    } else {
        readAccess(words);
    }
}

void TraceReader::readChip(std::vector<std::string> const& words) {
    if (words.size() != wordsOfChip) {
        refuse("not of the form \"chip ID MODEL\"");
    }
    auto const id = chips::NumberText::parse(words[1]);
    if (!id || *id > highestSwitchId) {
        refuse(quoted(words[1]) + " is not the id of a switch");
    }
    if (_chips.find(*id) != nullptr) {
        refuse("chip " + words[1] + " is there already");
    }
    if (!_chips.add(*id, words[2])) {
        refuse("no model of a " + quoted(words[2]));
    }
}

void TraceReader::readAccess(std::vector<std::string> const& words) {
    if (words.size() != columns) {
        refuse("an access has " + std::to_string(columns) + " words, not " + std::to_string(words.size()));
    }
    chips::TraceAccess access;
    auto const nanoseconds = TraceFormat::timeOf(words[time]);
    if (!nanoseconds) {
        refuse(quoted(words[time]) + " is not a time in seconds with nine decimals");
    }
    access.nanoseconds = *nanoseconds;
    unsigned digits = 0;
    readPlace(words, access, digits);
    readOutcome(words, access, digits);
    _lines.push_back({_number, access});
}

void TraceReader::readPlace(std::vector<std::string> const& words, chips::TraceAccess& access,
                            unsigned& digits) {
    auto const id = chips::NumberText::parse(words[chip]);
    chips::ChipCatalogue const* const catalogue = id ? _chips.find(*id) : nullptr;
    if (catalogue == nullptr) {
        refuse("there is no chip " + quoted(words[chip]) + " above");
    }
    access.switchId = *id;
    auto const way = TraceFormat::transportOf(words[transport]);
    chips::ChipKind const* const family = chips::ChipKinds::find(catalogue->getModel());
    if (!way || family == nullptr || !family->isReachedOver(*way)) {
        refuse(quoted(words[transport]) + " is not a transport of a " + catalogue->getModel());
    }
    access.transport = *way;
    if (words[kind] != TraceFormat::read && words[kind] != TraceFormat::write) {
        refuse(quoted(words[kind]) + " is neither R nor W");
    }
    access.isWrite = words[kind] == TraceFormat::write;
    digits = TraceFormat::digitsOfSmiWord;
    if (*way == chips::TraceAccess::Transport::smi && words[number] == TraceFormat::none &&
        words[name] == TraceFormat::busyChip) {
        return;
    }
    chips::RegisterLocation const location = find(*catalogue, words[number]);
    if (TraceFormat::nameOf(location) != words[name]) {
        refuse(words[number] + " is " + quoted(TraceFormat::nameOf(location)) + ", not " +
               quoted(words[name]));
    }
    access.address = location.address;
    digits = location.getDigits();
}

chips::RegisterLocation TraceReader::find(chips::ChipCatalogue const& chip, std::string const& text) const {
    try {
        return TraceFormat::find(chip, text);
    } catch (chips::ToolError const& error) {
        refuse(error.what());
    }
}

void TraceReader::readOutcome(std::vector<std::string> const& words, chips::TraceAccess& access,
                              unsigned digits) {
    if (words[outcome] != TraceFormat::ok && words[outcome] != TraceFormat::failed) {
        refuse(quoted(words[outcome]) + " is neither ok nor failed");
    }
    access.succeeded = words[outcome] == TraceFormat::ok;
    if (!access.address && access.succeeded) {
        refuse("an access without a register cannot be ok");
    }
    if (words[value] == TraceFormat::none) {
        if (access.succeeded || access.isWrite) {
            refuse("only a read that has failed has no value");
        }
        return;
    }
    access.value = chips::NumberText::parse(words[value]);
    bool const fits = access.value && (*access.value >> (digits * bitsPerDigit - 1) >> 1) == 0;
    if (!fits) {
        refuse(quoted(words[value]) + " is not a value of " + std::to_string(digits * bitsPerDigit) +
               " bits");
    }
}

void TraceReader::refuse(std::string const& reason) const {
    throw chips::ToolError(chips::ExitStatus::badDocument,
                           _name + ":" + std::to_string(_number) + ": " + reason);
}

} // namespace board
