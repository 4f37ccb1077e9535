#pragma once

#include <memory>
#include <string>
#include <utility>

#include "board/ModelBringUp.hpp"
#include "board/intent/Intent.hpp"
#include "board/paths/PathComparison.hpp"
#include "reference_host/XmlDocument.hpp"

namespace board_test {

/// A document, its intent, and chips that it was brought up on.
struct ComparedBoard {
    explicit ComparedBoard(std::string const& path)
        : ComparedBoard(reference_host::XmlDocument::fromFile(path), path) {}

    ComparedBoard(std::unique_ptr<reference_host::XmlDocument> read, std::string const& name)
        : document(std::move(read)), bringUp(*document, name) {}

    static std::string example(std::string const& name) {
        return std::string(EXAMPLES_FOLDER) + "/" + name + ".xml";
    }

    std::unique_ptr<reference_host::XmlDocument> document;
    board::ModelBringUp bringUp;
    board::IntendedBoard intended{*document};
    board::Intent intent{intended};
    board::RegisterPaths registers{board::RegisterPaths::chipsOf(bringUp.getBoard())};
    board::AskedFrames frames{intended, bringUp.getDocument()};
};

} // namespace board_test
