#pragma once

#include <functional>
#include <memory>
#include <string>

#include "board/BoardReading.hpp"
#include "board/BoardSession.hpp"
#include "reference_host/XmlDocument.hpp"

namespace board {

/// The board of a document, built of chip models in this process and brought up by the library.
///
/// Belongs to the thread that constructs it, like a BoardSession; of several, the last made goes first.
class ModelBringUp {
public:
    /// What happens to the chips before the library meets them.
    using Past = std::function<void(simulation::SimulatedBoard& board)>;

    /// Throws XmlError when the document cannot be read, ToolError (startUpFailed) when start-up gives up or
    /// a switch of the document does not come up.
    /// \param path of the document.
    explicit ModelBringUp(std::string const& path);

    /// As above, of a document that was read before, which must outlive the object.
    /// \param past the log is that of the bring-up alone.
    ModelBringUp(Xml& document, std::string const& path, Past const& past = {});
    ModelBringUp(ModelBringUp const&) = delete;
    ModelBringUp& operator=(ModelBringUp const&) = delete;

    std::string const& getPath() const { return _path; }
    BoardReading const& getDocument() const { return *_document; }
    simulation::SimulatedBoard& getBoard();
    BoardSession::Effort const& getEffort() const;

    /// The text of the document's switchModel attribute; empty when it has no such switch.
    std::string getModel(unsigned switchId) const;

private:
    void bringUp(Xml& document, Past const& past = {});

    std::string _path;
    std::unique_ptr<reference_host::XmlDocument> _xml;
    std::unique_ptr<BoardReading> _document;
    std::unique_ptr<BoardSession> _session;
};

} // namespace board
