#include "switchctl/plan/WriteAlignment.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

using switchctl::plan::PlannedWrite;
using switchctl::plan::WriteAlignment;

namespace {

/// Each letter is a write of another value.
WriteAlignment::Writes writesOf(std::string const& letters) {
    WriteAlignment::Writes writes;
    for (char const letter : letters) {
        PlannedWrite write;
        write.registerName = "R";
        write.value = static_cast<std::uint32_t>(letter);
        writes.push_back(write);
    }
    return writes;
}

std::string loneOf(std::string const& first, std::string const& second) {
    auto const a = writesOf(first);
    auto const b = writesOf(second);
    std::string text;
    WriteAlignment const alignment(a, b);
    for (WriteAlignment::Lone const& lone : alignment.getLone()) {
        text += lone.isInFirst ? '-' : '+';
        text += static_cast<char>(lone.write.value);
    }
    return text;
}

std::size_t longestCommon(std::string const& a, std::string const& b) {
    if (a.empty() || b.empty()) {
        return 0;
    }
    if (a[0] == b[0]) {
        return 1 + longestCommon(a.substr(1), b.substr(1));
    }
    return std::max(longestCommon(a.substr(1), b), longestCommon(a, b.substr(1)));
}

/// All texts of the letters a and b that are so long.
std::vector<std::string> textsOf(std::size_t length) {
    std::vector<std::string> texts = {""};
    for (std::size_t i = 0; i < length; ++i) {
        std::vector<std::string> longer;
        for (std::string const& text : texts) {
            longer.push_back(text + "a");
            longer.push_back(text + "b");
        }
        texts = longer;
    }
    return texts;
}

std::string sorted(std::string text) {
    std::sort(text.begin(), text.end());
    return text;
}

} // namespace

TEST(WriteAlignmentTest, EqualSequencesHaveNoLoneWrite) {
    EXPECT_EQ(loneOf("", ""), "");
    EXPECT_EQ(loneOf("abc", "abc"), "");
}

TEST(WriteAlignmentTest, NamesWhatOnlyOneHas) {
    EXPECT_EQ(loneOf("abc", ""), "-a-b-c");
    EXPECT_EQ(loneOf("", "abc"), "+a+b+c");
    EXPECT_EQ(loneOf("abc", "axc"), "-b+x");
    EXPECT_EQ(loneOf("abcd", "acd"), "-b");
    EXPECT_EQ(loneOf("acd", "abcd"), "+b");
}

TEST(WriteAlignmentTest, TheSameWritesInAnotherOrderDiffer) {
    EXPECT_EQ(loneOf("ab", "ba").size(), 4U);
}

TEST(WriteAlignmentTest, OtherValueRegisterOrNumberIsAnotherWrite) {
    PlannedWrite write;
    write.registerName = "PortControl";
    write.address = 4;
    write.value = 0x7F;
    PlannedWrite other = write;
    other.nanoseconds = 99;
    other.changes = {{"PortState", 0, 3}};
    EXPECT_TRUE(write == other) << "when it comes and what was there before make no difference";
    other.value = 0x7C;
    EXPECT_FALSE(write == other);
    other = write;
    other.address = 5;
    EXPECT_FALSE(write == other);
}

TEST(WriteAlignmentTest, HasAsMuchInCommonAsThereIs) {
    for (std::size_t length = 0; length <= 5; ++length) {
        for (std::string const& first : textsOf(length)) {
            for (std::string const& second : textsOf(5)) {
                std::string const lone = loneOf(first, second);
                std::string removed;
                std::string added;
                for (std::size_t i = 0; i < lone.size(); i += 2) {
                    (lone[i] == '-' ? removed : added) += lone[i + 1];
                }
                std::size_t const common = longestCommon(first, second);
                ASSERT_EQ(removed.size(), first.size() - common) << first << ' ' << second << ' ' << lone;
                ASSERT_EQ(added.size(), second.size() - common) << first << ' ' << second << ' ' << lone;
                // Taking away the one and putting in the other makes the second of the first.
                ASSERT_EQ(sorted(first + added), sorted(second + removed));
            }
        }
    }
}
