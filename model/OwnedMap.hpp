#pragma once

/// Operations of maps that own the objects in them.
namespace owned_map {

/// Deletes every object. The keys stay, without objects.
template <typename Map> void deleteObjects(Map& map) {
    for (auto& entry : map) {
        delete entry.second; // GCOVR_EXCL_BR_LINE: exists
        entry.second = nullptr;
    }
}

/// Keeps what `make` returns, unless the key is taken: then nothing is made. The place comes first: a
/// member registers itself with its port when it is made, so keeping it must not fail any more.
template <typename Map, typename Make> void makeOnce(Map& map, typename Map::key_type const& key, Make make) {
    auto const [place, isFree] = map.emplace(key, nullptr);
    if (!isFree) {
        return;
    }
    try {
        place->second = make();
    } catch (...) {
        map.erase(place);
        throw;
    }
}

} // namespace owned_map
