#include "chips/ChipKind.hpp"

#include <algorithm>

#include "chips/ChipCatalogue.hpp"
#include "chips/NumberText.hpp"
#include "chips/ToolError.hpp"

namespace chips {

bool ChipKind::isReachedOver(Transport transport) const {
    auto const& known = _facts.transports;
    return std::find(known.begin(), known.end(), transport) != known.end();
}

bool ChipKind::answers(ChipCatalogue const& catalogue, RegisterTransport& transport) const {
    std::uint32_t const word = transport.read(catalogue.at(_facts.identifierUnit, 0, _facts.identifier));
    return _facts.product.get(word) == _facts.productNumber;
}

std::unique_ptr<CounterReader> ChipKind::makeCounterReader(ChipCatalogue const& catalogue,
                                                           RegisterTransport& transport) const {
    return std::make_unique<CounterReader>(*this, catalogue, transport);
}

void ChipKind::requireChip(ChipCatalogue const& catalogue, RegisterTransport& transport) const {
    RegisterLocation const location = catalogue.at(_facts.identifierUnit, 0, _facts.identifier);
    std::uint32_t const word = transport.read(location);
    if (_facts.product.get(word) != _facts.productNumber) {
        throw ToolError(ExitStatus::registerFailed, "no " + _facts.name + " answers: " + location.getText() +
                                                        " reads " +
                                                        NumberText::hexadecimal(word, location.getDigits()));
    }
}

} // namespace chips
