// Who reaches whom as a picture, and what can be read of it.

#include "switchctl/draw/PathMatrix.hpp"

#include <gmock/gmock.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <sstream>

#include "board/ModelBringUp.hpp"
#include "board/paths/PathWording.hpp"
#include "reference_host/XmlDocument.hpp"
#include "switchctl/draw/DrawCommand.hpp"
#include "tests/support/CommandRun.hpp"
#include "tests/support/TemporaryFile.hpp"

using chips::ExitStatus;
using reference_host::XmlDocument;
using switchctl::draw::DrawCommand;
using switchctl::draw::PathMatrix;
using test_support::CommandRun;
using test_support::TemporaryFile;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

std::string pathOf(std::string const& example) {
    return EXAMPLES_FOLDER "/" + example + ".xml";
}

CommandRun drawAs(std::string const& arguments) {
    std::istringstream words("draw --paths " + arguments);
    return CommandRun::of<DrawCommand>({std::istream_iterator<std::string>(words), {}});
}

/// What is in a picture.
class Picture {
public:
    explicit Picture(std::string const& text) : _xml(XmlDocument::fromText(text, "picture")) {}

    int count(std::string const& query) const {
        auto const found = _xml->find(query.c_str());
        return found->nodeNr;
    }
    int countCells(std::string const& kind) const {
        return count("//*[local-name()='g'][@class='" + kind + "']/*[local-name()='title']");
    }

private:
    std::unique_ptr<XmlDocument> _xml;
};

/// An example's document, comparison and cells.
struct Matrix {
    explicit Matrix(std::string const& example)
        : document(XmlDocument::fromFile(pathOf(example))), bringUp(*document, example) {}

    std::unique_ptr<XmlDocument> document;
    board::ModelBringUp bringUp;
    board::IntendedBoard intended{*document};
    board::Intent intent{intended};
    board::RegisterPaths registers{board::RegisterPaths::chipsOf(bringUp.getBoard())};
    board::AskedFrames frames{intended, bringUp.getDocument()};
    PathMatrix matrix{board::PathComparison(intent, registers, frames)};
};

} // namespace

TEST(PathMatrixTest, ACellHasTheVlansOfItsFramesAndWhetherTheyHaveTags) {
    Matrix const point("trap-access-point");
    auto const& cells = point.matrix.getCells();
    PathMatrix::Cell const& uplink = cells.at({0, 0, 8});
    EXPECT_EQ(uplink.colours, (std::set<PathMatrix::Colour>{{4, true}}));
    EXPECT_FALSE(uplink.isWrong || uplink.isMissing);
    EXPECT_THAT(uplink.texts, ElementsAre("VLAN 4 (0x4): untagged, tagged 0, leave tagged 4",
                                          "VLAN 4 (0x4): tagged 4, leave tagged 4"));
    EXPECT_EQ(cells.at({0, 8, 0}).colours, (std::set<PathMatrix::Colour>{{4, false}}));
    EXPECT_EQ(cells.at({0, 8, 10}).colours, (std::set<PathMatrix::Colour>{{2, true}, {3, true}, {4, true}}));
    EXPECT_TRUE(cells.at({0, 2, 8}).isWrong);
    EXPECT_EQ(cells.count({0, 3, 8}), 0U);
    EXPECT_EQ(cells.count({0, 0, 0}), 0U);
}

TEST(PathMatrixTest, APathThatIsMissingIsInItsCell) {
    Matrix const switches("trap-three-switches");
    PathMatrix::Cell const& missing = switches.matrix.getCells().at({0, 1, 0});
    EXPECT_TRUE(missing.isMissing);
    EXPECT_FALSE(missing.isWrong);
    EXPECT_THAT(missing.colours, testing::IsEmpty());
    EXPECT_THAT(missing.texts, ElementsAre("missing: untagged: a port-based VLAN has both"));
    // What the document says two things of is not wrong.
    PathMatrix::Cell const& ambiguous = switches.matrix.getCells().at({0, 0, 8});
    EXPECT_FALSE(ambiguous.isWrong);
    EXPECT_THAT(ambiguous.texts.front(), StartsWith("ambiguous: tagged 2: "));
}

// Each pair of ports that a frame gets from and to has a cell, and no other has one.
TEST(PathMatrixTest, CellsAreThePairsThatReachOneAnother) {
    for (char const* const name : {"trap-access-point", "trap-video-switch", "trap-mixed"}) {
        Matrix const example(name);
        std::size_t cells = 0;
        for (auto const& [id, chip] : example.registers.getChips()) {
            for (unsigned from = 0; from < chip->getNumberOfPorts(); ++from) {
                board::PortSet reached = 0;
                for (std::size_t tags = 0; tags < example.frames.getTags().size(); ++tags) {
                    for (std::size_t to = 0; to < example.frames.getDestinations().size(); ++to) {
                        reached |=
                            chip->decide(from,
                                         board::RegisterPaths::frameOf(example.frames.getFrame(tags, to)))
                                .getPorts();
                    }
                }
                for (unsigned const to : board::numbersOf(reached)) {
                    EXPECT_EQ(example.matrix.getCells().count({id, from, to}), 1U)
                        << name << ' ' << id << '.' << from << " to " << to;
                    ++cells;
                }
            }
        }
        std::size_t missing = 0;
        for (auto const& [place, cell] : example.matrix.getCells()) {
            missing += cell.colours.empty() ? 1 : 0;
            EXPECT_TRUE(cell.isMissing || !cell.colours.empty());
        }
        EXPECT_GT(cells, 0U);
        EXPECT_EQ(example.matrix.getCells().size(), cells + missing) << name;
    }
}

TEST(PathMatrixTest, APictureHasATitleForEachCell) {
    CommandRun const drawn = drawAs(pathOf("trap-access-point") + " -o -");
    EXPECT_EQ(drawn.status, ExitStatus::success) << drawn.errors;
    Picture const picture(drawn.out);
    EXPECT_EQ(picture.count("/*[local-name()='svg']/*[local-name()='title']"), 1);
    EXPECT_EQ(picture.count("//*[@class='switch']"), 1);
    Matrix const point("trap-access-point");
    auto const& cells = point.matrix.getCells();
    auto const wrong =
        std::count_if(cells.begin(), cells.end(), [](auto const& c) { return c.second.isWrong; });
    EXPECT_EQ(picture.countCells("wrong"), wrong);
    EXPECT_EQ(picture.countCells("path"), static_cast<int>(cells.size()) - wrong);
    EXPECT_EQ(wrong, 14);
    EXPECT_THAT(drawn.out,
                HasSubstr("<title>0.0 to 0.8: VLAN 4 (0x4): untagged, tagged 0, leave tagged 4; VLAN "
                          "4 (0x4): tagged 4, leave tagged 4</title>"));
    EXPECT_THAT(drawn.out, HasSubstr(">0.2  learning</text>"));
}

TEST(PathMatrixTest, WhatIsMissingIsHatched) {
    CommandRun const drawn = drawAs(pathOf("trap-three-switches") + " -o -");
    EXPECT_EQ(Picture(drawn.out).countCells("missing"), 1);
    EXPECT_EQ(Picture(drawn.out).count("//*[@class='missing']/*[@fill='url(#missing)']"), 1);
    EXPECT_EQ(Picture(drawn.out).count("//*[@class='switch']"), 3);
}

TEST(PathMatrixTest, OnlyAPictureInSvgHasPaths) {
    for (char const* const other : {" -o /tmp/x.png", " --format dot", " --json", " -o x.json"}) {
        CommandRun const refused = drawAs(pathOf("trap-minimal") + other);
        EXPECT_EQ(refused.status, ExitStatus::usage) << other;
        EXPECT_THAT(refused.errors, StartsWith("switchctl: --paths: can only be drawn as svg; "));
    }
    EXPECT_EQ(drawAs(pathOf("trap-minimal")).status, ExitStatus::usage);
}

TEST(PathMatrixTest, ADocumentThatDoesNotComeUpHasNoPaths) {
    TemporaryFile const document("<board><switches><switch id='0' switchModel='none'/>"
                                 "<switch id='1' switchModel='88e6096'/></switches></board>");
    EXPECT_EQ(drawAs(document.path() + " -o -").status, ExitStatus::startUpFailed);
}
