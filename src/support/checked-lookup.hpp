// Map lookup that fails with the text that hosts know.
//
// The standard library words its own failure otherwise. Used wherever a missing key is an error of
// the caller's tables. Not installed. Tested by tests/engine/warm-start-test.cpp.
#pragma once

#include <stdexcept>

namespace VX::Dialog::detail {

/// The value under `key`. Throws std::out_of_range ("map::at:  key not found", with two blanks).
template <typename Map>
const typename Map::mapped_type& checked_lookup(const Map& map, const typename Map::key_type& key) {
  const auto entry = map.find(key);
  if (entry == map.end()) {
    throw std::out_of_range("map::at:  key not found");
  }
  return entry->second;
}

}  // namespace VX::Dialog::detail
