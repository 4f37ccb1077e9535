#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

#include "board/BoardReading.hpp"
#include "board/paths/Cables.hpp"

namespace switchctl::draw {

/// What a drawing shows, for programs that draw it themselves.
class BoardJson {
public:
    /// \param file path of the document.
    static nlohmann::ordered_json of(board::BoardReading const& board, board::Cables const& cables,
                                     std::string const& file);
};

} // namespace switchctl::draw
