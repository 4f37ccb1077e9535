#include "switchctl/draw/Graphviz.hpp"

#include <gmock/gmock.h>

#include <filesystem>

#include "reference_host/XmlDocument.hpp"
#include "tests/support/TemporaryFile.hpp"

using reference_host::XmlDocument;
using switchctl::draw::Graphviz;
using test_support::TemporaryFile;
using testing::HasSubstr;

namespace {

std::string failureOf(Graphviz const& graphviz, std::string const& graph, std::string const& path) {
    try {
        graphviz.render(graph, "svg", path);
    } catch (Graphviz::Error const& error) {
        return error.what();
    }
    return "";
}

TEST(GraphvizTest, DrawsAPictureThatIsXml) {
    TemporaryFile const picture;
    Graphviz(DOT_PROGRAM).render("graph g { first -- second }", "svg", picture.path());
    auto const document = XmlDocument::fromFile(picture.path());
    EXPECT_EQ(document->find("//*[local-name()='g'][@class='node']")->nodeNr, 2);
    EXPECT_EQ(document->find("//*[local-name()='g'][@class='edge']")->nodeNr, 1);
}

TEST(GraphvizTest, TellsWhatIsMissing) {
    TemporaryFile const picture("as it was");
    EXPECT_THAT(failureOf(Graphviz("/nonexistent/dot"), "graph g {}", picture.path()),
                testing::StartsWith("/nonexistent/dot: No such file or directory (install Graphviz"));
    EXPECT_EQ(picture.content(), "as it was");
}

TEST(GraphvizTest, AGraphThatIsNoneLeavesTheFileAlone) {
    TemporaryFile const picture("as it was");
    EXPECT_EQ(failureOf(Graphviz(DOT_PROGRAM), "no graph", picture.path()),
              std::string(DOT_PROGRAM) + " could not draw " + picture.path());
    EXPECT_EQ(picture.content(), "as it was");
    EXPECT_FALSE(std::filesystem::exists(picture.path() + ".part"));
}

TEST(GraphvizTest, AFolderThatIsNotThereIsAnError) {
    EXPECT_EQ(failureOf(Graphviz(DOT_PROGRAM), "graph g {}", "/nonexistent/picture.svg"),
              std::string(DOT_PROGRAM) + " could not draw /nonexistent/picture.svg");
}

} // namespace
