#include "switchctl/draw/Graphviz.hpp"

#include <gmock/gmock.h>

#include "reference_host/XmlDocument.hpp"

using reference_host::XmlDocument;
using switchctl::draw::Graphviz;

namespace {

std::string failureOf(Graphviz const& graphviz, std::string const& graph) {
    try {
        graphviz.render(graph, "svg");
    } catch (Graphviz::Error const& error) {
        return error.what();
    }
    return "";
}

TEST(GraphvizTest, DrawsAPictureThatIsXml) {
    auto const document =
        XmlDocument::fromText(Graphviz(DOT_PROGRAM).render("graph g { first -- second }", "svg"), "picture");
    EXPECT_EQ(document->find("//*[local-name()='g'][@class='node']")->nodeNr, 2);
    EXPECT_EQ(document->find("//*[local-name()='g'][@class='edge']")->nodeNr, 1);
}

TEST(GraphvizTest, DrawsAPictureOfAnotherFormat) {
    EXPECT_THAT(Graphviz(DOT_PROGRAM).render("graph g { first -- second }", "png"),
                testing::StartsWith("\x89PNG\r\n"));
}

TEST(GraphvizTest, TellsWhatIsMissing) {
    EXPECT_THAT(failureOf(Graphviz("/nonexistent/dot"), "graph g {}"),
                testing::StartsWith("/nonexistent/dot: No such file or directory (install Graphviz"));
}

TEST(GraphvizTest, AGraphThatIsNoneIsAnError) {
    EXPECT_EQ(failureOf(Graphviz(DOT_PROGRAM), "no graph"),
              std::string(DOT_PROGRAM) + " could not draw the graph");
}

} // namespace
