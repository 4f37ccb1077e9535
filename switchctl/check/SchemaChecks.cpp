#include "switchctl/check/CheckTable.hpp"

#include <map>
#include <utility>

#include "board/BoardReading.hpp"
#include "board/Element.hpp"
#include "board/Wording.hpp"
#include "switchctl/check/BoardSchema.hpp"

namespace switchctl::check {

namespace {

std::string nameOf(xmlNode const* element) {
    bool const isElement = element != nullptr && element->type == XML_ELEMENT_NODE;
    return isElement ? reinterpret_cast<char const*>(element->name) : ""; // NOLINT: UTF-8 text
}

/// The schema's definition of element `name` in element `parent`; empty when it has none.
std::string definitionOf(std::string const& name, std::string const& parent) {
    static std::map<std::pair<std::string, std::string>, std::string> const definitions{
        {{"switch", "switches"}, "switch"}, {{"port", "switch"}, "switchPort"},
        {{"trunk", "switch"}, "trunk"},     {{"port", "trunk"}, "trunkPort"},
        {{"port", "vlan"}, "vlanPort"},     {{"forwardedMulticastGroup", "port"}, "group"},
    };
    if (name == "switches" || name == "vlan") {
        return name;
    }
    auto const found = definitions.find({name, parent});
    return found == definitions.end() ? "" : found->second;
}

/// Whether the element is of the document's vocabulary wherever it stands, or stands in one that is.
bool isLibrarys(xmlNodePtr element) {
    return element->ns == nullptr &&
           (!definitionOf(nameOf(element), nameOf(element->parent)).empty() ||
            board::isNamed(element, "switch") || board::isNamed(element, "trunk") ||
            board::isNamed(element, "forwardedMulticastGroup") ||
            !definitionOf(nameOf(element->parent), nameOf(element->parent->parent)).empty());
}

std::string seeOthers() {
    return " Other findings about this element say what the library makes of it, if anything.";
}

/// \return whether there is anything to report.
bool reportElement(BoardSchema const& schema, xmlNodePtr element, Report const& report) {
    std::string const definition = definitionOf(nameOf(element), nameOf(element->parent));
    if (definition.empty()) {
        report(element, "The schema does not expect <" + nameOf(element) + "> here." + seeOthers(),
               "Correct the name or the place, or give elements of other programs a namespace.");
        return true;
    }
    std::vector<std::string> const faults = schema.validate(element, definition);
    if (!faults.empty()) {
        report(element, "By the schema: " + board::listed(faults) + "." + seeOthers(),
               "Write what the schema allows (switchctl check --schema).");
    }
    return !faults.empty();
}

void validate(board::BoardReading const& board, Report const& report) {
    xmlNodePtr const root = board.find("/*").front();
    BoardSchema const schema;
    std::vector<std::string> const messages = schema.validate(root->doc);
    if (messages.empty()) {
        return;
    }
    // The validator stops at the outermost element that it cannot accept and says no more.
    bool reported = false;
    for (xmlNodePtr const element : board.find("//*")) {
        if (isLibrarys(element)) {
            reported = reportElement(schema, element, report) || reported;
        }
    }
    if (!reported) {
        report(root, "The schema does not allow the document: " + messages.front() + ".",
               "Have an XML editor validate it against the schema (switchctl check --schema).");
    }
}

} // namespace

std::vector<Check> schemaChecks() {
    return {{"schema", Severity::warning, "not valid by the RELAX NG schema", validate}};
}

} // namespace switchctl::check
