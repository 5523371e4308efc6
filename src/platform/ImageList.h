#pragma once

#include <string>
#include <vector>

#include "platform/Picture.h"

namespace larder {

// Pictures by key and by index from 1; index and key of an entry are the same thing to a list.
class ImageList {
  public:
    void Add(const std::string& key, const std::string& art);
    // Empty for an unknown key or index.
    Picture Item(const std::string& key) const;
    Picture Item(int index) const;
    int IndexOf(const std::string& key) const;  // 0 for an unknown key
    int Count() const { return static_cast<int>(entries_.size()); }

  private:
    struct Entry {
        std::string Key;
        std::string Art;
        mutable Picture Loaded;  // at the first use, so that a start loads what it shows
    };
    std::vector<Entry> entries_;
};

}  // namespace larder
