#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "lists/VirtualListItem.h"

namespace larder {

// The items of a list by their keys, which are compared without regard to case and to blanks at
// their ends. It owns no item; each lives, and keeps its key, until it is erased.
//
// A list of thousands of recipes is filled and emptied at every search, so there is no memory for
// each entry: they stand in one row, at the place that the key's hash gives or behind it.
class KeyTable {
  public:
    // False when an item with this key is there.
    bool Insert(VirtualListItem& item);
    // Null for an unknown key.
    VirtualListItem* Find(std::string_view key) const;
    void Erase(const VirtualListItem& item);
    void Clear();

  private:
    struct Entry {
        VirtualListItem* Item = nullptr;
        std::uint32_t Hash = 0;
    };
    std::size_t Next(std::size_t place) const { return (place + 1) & (entries_.size() - 1); }
    std::size_t FirstPlace(std::uint32_t hash) const { return hash & (entries_.size() - 1); }
    std::size_t PlaceOf(std::string_view key, std::uint32_t hash) const;
    void Grow();

    std::vector<Entry> entries_;  // as many as a power of two, less than half of them taken
    std::size_t count_ = 0;
};

}  // namespace larder
