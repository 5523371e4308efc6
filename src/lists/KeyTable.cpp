#include "lists/KeyTable.h"

#include <algorithm>
#include <utility>

#include "platform/Text.h"

namespace larder {

namespace {

constexpr std::size_t firstSize = 16;

// Of the key without what comparison disregards (and of accented letters only that they are some).
std::uint32_t HashOf(std::string_view key) {
    constexpr unsigned char firstAccented = 0x80;
    constexpr unsigned char caseBit = 0x20;
    std::uint64_t hash = 14695981039346656037U;
    for (const char c : TrimBlanks(key)) {
        const auto byte = static_cast<unsigned char>(c);
        hash ^= byte < firstAccented ? byte | caseBit : firstAccented;
        hash *= 1099511628211U;
    }
    return static_cast<std::uint32_t>(hash ^ (hash >> 32));
}

}  // namespace

// Where the key stands, or the free place where it would.
std::size_t KeyTable::PlaceOf(std::string_view key, std::uint32_t hash) const {
    std::size_t place = FirstPlace(hash);
    for (; entries_[place].Item != nullptr; place = Next(place)) {
        const Entry& entry = entries_[place];
        if (entry.Hash == hash && EqualNoCase(TrimBlanks(entry.Item->Key), TrimBlanks(key))) break;
    }
    return place;
}

bool KeyTable::Insert(VirtualListItem& item) {
    if (2 * (count_ + 1) > entries_.size()) Grow();
    const std::uint32_t hash = HashOf(item.Key);
    Entry& entry = entries_[PlaceOf(item.Key, hash)];
    if (entry.Item != nullptr) return false;
    entry = {&item, hash};
    ++count_;
    return true;
}

VirtualListItem* KeyTable::Find(std::string_view key) const {
    return count_ == 0 ? nullptr : entries_[PlaceOf(key, HashOf(key))].Item;
}

// What stands behind moves up as far as its hash allows, so that no search ends too early.
void KeyTable::Erase(const VirtualListItem& item) {
    if (Find(item.Key) != &item) return;
    std::size_t free = PlaceOf(item.Key, HashOf(item.Key));
    const std::size_t mask = entries_.size() - 1;
    for (std::size_t place = Next(free); entries_[place].Item != nullptr; place = Next(place)) {
        const std::size_t first = FirstPlace(entries_[place].Hash);
        if (((place - first) & mask) < ((place - free) & mask)) continue;
        entries_[free] = entries_[place];
        free = place;
    }
    entries_[free] = {};
    --count_;
}

void KeyTable::Clear() {
    entries_.clear();
    count_ = 0;
}

void KeyTable::Grow() {
    std::vector<Entry> old(std::max(firstSize, 2 * entries_.size()));
    std::swap(old, entries_);
    for (const Entry& entry : old) {
        if (entry.Item == nullptr) continue;
        std::size_t place = FirstPlace(entry.Hash);
        while (entries_[place].Item != nullptr)
            place = Next(place);
        entries_[place] = entry;
    }
}

}  // namespace larder
