#include "tests/fuzz/DocumentMutator.hpp"

#include <gtest/gtest.h>

#include <set>

#include "reference_host/XmlDocument.hpp"

using fuzz::DocumentMutator;

namespace {

std::string const board =
    "<board><switches><switch id='1' switchModel='88e6096'><port id='2'/></switch></switches>"
    "<vlan id='5'><port switchId='1' portId='2'/></vlan></board>";

TEST(DocumentMutatorTest, MakesOtherDocuments) {
    std::set<std::string> results;
    for (unsigned seed = 0; seed < 100; ++seed) {
        std::string const text = DocumentMutator(seed).mutate(board, 4096);
        EXPECT_NO_THROW(reference_host::XmlDocument::fromText(text, "mutated")) << text;
        results.insert(text);
    }
    EXPECT_GT(results.size(), 50U); // a change may well change nothing
}

TEST(DocumentMutatorTest, IsRepeatable) {
    EXPECT_EQ(DocumentMutator(7).mutate(board, 4096), DocumentMutator(7).mutate(board, 4096));
}

TEST(DocumentMutatorTest, LeavesTheRestToOthers) {
    EXPECT_EQ(DocumentMutator(1).mutate("<board", 4096), "");
    EXPECT_EQ(DocumentMutator(1).mutate("", 4096), "");
    EXPECT_EQ(DocumentMutator(1).mutate(board, 10), "");
}

} // namespace
