#include "chips/ChipImage.hpp"

#include <algorithm>
#include <utility>

namespace chips {

void ChipImage::addRegister(std::string const& unit, std::string const& name, std::vector<Field> fields,
                            bool isAfterReset) {
    _index.emplace(std::make_pair(unit, name), _items.size());
    _items.push_back({unit, name, std::move(fields), false, isAfterReset});
}

void ChipImage::addEntry(std::string const& table, std::string const& name, std::vector<Field> fields) {
    _index.emplace(std::make_pair(table, name), _items.size());
    _items.push_back({table, name, std::move(fields), true, false});
}

void ChipImage::addUnread(std::string const& unit, std::string const& reason) {
    _unread.push_back({unit, reason});
}

ChipImage::Item const* ChipImage::find(std::string const& unit, std::string const& name) const {
    auto const found = _index.find({unit, name});
    return found == _index.end() ? nullptr : &_items[found->second];
}

bool ChipImage::isUnread(std::string const& unit) const {
    return std::any_of(_unread.begin(), _unread.end(),
                       [&](Unread const& unread) { return unread.unit == unit; });
}

bool ChipImage::covers(Item const& item) const {
    return !isUnread(wholeChip) && !isUnread(item.unit) && !(item.isEntry && isUnread(tables));
}

std::string ChipImage::getUnread() const {
    std::string line;
    for (Unread const& unread : _unread) {
        line += (line.empty() ? "" : "; ") + unread.reason;
    }
    return line;
}

} // namespace chips
