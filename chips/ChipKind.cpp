#include "chips/ChipKind.hpp"

#include <algorithm>

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

} // namespace chips
