#include "platform/ImageList.h"

#include "platform/Text.h"

namespace larder {

void ImageList::Add(const std::string& key, const std::string& art) {
    entries_.push_back({key, art, {}});
}

Picture ImageList::Item(const std::string& key) const {
    return Item(IndexOf(key));
}

Picture ImageList::Item(int index) const {
    if (index < 1 || index > Count()) return {};
    const Entry& entry = entries_[static_cast<std::size_t>(index) - 1];
    if (entry.Loaded.IsEmpty()) entry.Loaded = Picture::FromArt(entry.Art);
    return entry.Loaded;
}

int ImageList::IndexOf(const std::string& key) const {
    for (int i = 0; i < Count(); ++i) {
        if (EqualNoCase(entries_[static_cast<std::size_t>(i)].Key, key)) return i + 1;
    }
    return 0;
}

}  // namespace larder
