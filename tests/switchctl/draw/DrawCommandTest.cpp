#include "switchctl/draw/DrawCommand.hpp"

#include <gmock/gmock.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <sstream>

#include "reference_host/XmlDocument.hpp"
#include "tests/support/CommandRun.hpp"
#include "tests/support/TemporaryFile.hpp"

using chips::ExitStatus;
using reference_host::XmlDocument;
using switchctl::draw::DrawCommand;
using test_support::CommandRun;
using test_support::TemporaryFile;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

std::string contentOf(std::string const& path) {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

class DrawCommandTest : public testing::Test {
protected:
    chips::ExitStatus run(std::string const& arguments) {
        std::istringstream words("draw " + arguments);
        CommandRun const run = CommandRun::of<DrawCommand>({std::istream_iterator<std::string>(words), {}});
        out.str(run.out);
        errors.str(run.errors);
        return run.status;
    }

    std::string const mixed = EXAMPLES_FOLDER "/trap-mixed.xml";
    std::ostringstream out;
    std::ostringstream errors;
};

TEST_F(DrawCommandTest, EveryExampleBecomesAPicture) {
    for (std::string const name : {"home-gateway", "video-rooms", "trap-minimal", "trap-access-point",
                                   "trap-three-switches", "trap-video-switch", "trap-mixed"}) {
        TemporaryFile const picture;
        EXPECT_EQ(run(EXAMPLES_FOLDER "/" + name + ".xml --graphviz " DOT_PROGRAM " -o " + picture.path()),
                  chips::ExitStatus::success)
            << errors.str();
        auto const drawn = XmlDocument::fromFile(picture.path());
        auto const board = XmlDocument::fromFile(EXAMPLES_FOLDER "/" + name + ".xml");
        EXPECT_GE(drawn->find("//*[local-name()='g'][@class='edge']")->nodeNr,
                  board->find("//vlan[@id < 10]/port")->nodeNr)
            << name;
    }
}

TEST_F(DrawCommandTest, DotGoesToTheStandardOutputOrAFile) {
    EXPECT_EQ(run(mixed + " --format dot"), chips::ExitStatus::success);
    EXPECT_THAT(out.str(), StartsWith("graph board {\n  graph [label=<<B>trap-mixed.xml</B>>"));
    std::string const text = out.str();
    TemporaryFile const file;
    EXPECT_EQ(run(mixed + " --format dot -o " + file.path()), chips::ExitStatus::success);
    EXPECT_EQ(file.content(), text);
    EXPECT_EQ(out.str(), "");
}

TEST_F(DrawCommandTest, APictureNeedsAFile) {
    EXPECT_EQ(run(mixed), chips::ExitStatus::usage);
    EXPECT_THAT(errors.str(), StartsWith("switchctl: --output is required\n"));
    EXPECT_EQ(run(mixed + " --format jpg -o x"), chips::ExitStatus::usage);
    EXPECT_THAT(errors.str(), HasSubstr("--format: jpg not in {svg,png,dot,json}\n"));
}

TEST_F(DrawCommandTest, APictureIsWhatItsNameSays) {
    TemporaryFile const taken;
    for (auto const& [suffix, start] : {std::pair(".png", "\x89PNG"),
                                        {".svg", "<?xml"},
                                        {".dot", "graph"},
                                        {".json", "{\n  \"version\""}}) {
        std::string const path = taken.path() + suffix;
        EXPECT_EQ(run(mixed + " --graphviz " DOT_PROGRAM " -o " + path), ExitStatus::success) << errors.str();
        EXPECT_THAT(contentOf(path), StartsWith(start));
        std::remove(path.c_str());
    }
}

TEST_F(DrawCommandTest, ANameOfSomethingElseIsRefused) {
    TemporaryFile const taken;
    for (std::string const name : {".jpg", ".v2", ".svg.gz", ".png --format svg", ".svg --format dot"}) {
        EXPECT_EQ(run(mixed + " -o " + taken.path() + name), ExitStatus::usage) << name;
        EXPECT_THAT(errors.str(), HasSubstr("--output: " + taken.path() + name.substr(0, name.find(' ')) +
                                            ": not a name of a ."))
            << name;
    }
}

TEST_F(DrawCommandTest, APictureMayGoToTheStandardOutput) {
    EXPECT_EQ(run(mixed + " --graphviz " DOT_PROGRAM " -o - --format png"), ExitStatus::success);
    EXPECT_THAT(out.str(), StartsWith("\x89PNG"));
    EXPECT_EQ(run(mixed + " --graphviz " DOT_PROGRAM " -o -"), ExitStatus::success);
    EXPECT_THAT(out.str(), StartsWith("<?xml"));
}

TEST_F(DrawCommandTest, FailuresHaveReasons) {
    EXPECT_EQ(run("/nonexistent/board.xml --format dot"), chips::ExitStatus::badDocument);
    EXPECT_EQ(errors.str(), "switchctl: /nonexistent/board.xml:0: No such file or directory\n");
    TemporaryFile const empty("<board/>");
    EXPECT_EQ(run(empty.path() + " --format dot"), chips::ExitStatus::badDocument);
    EXPECT_THAT(errors.str(), HasSubstr("no switch to draw"));
    EXPECT_EQ(run(mixed + " --format dot -o /nonexistent/x"), chips::ExitStatus::noPicture);
    EXPECT_EQ(errors.str(), "switchctl: /nonexistent/x: No such file or directory\n");
    EXPECT_EQ(run(mixed + " --graphviz /nonexistent/dot -o /tmp/x.svg"), chips::ExitStatus::noPicture);
    EXPECT_THAT(errors.str(), StartsWith("switchctl: /nonexistent/dot: "));
}

} // namespace
