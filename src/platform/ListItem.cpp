#include "platform/Failure.h"
#include "platform/ListView.h"
#include "platform/Text.h"

namespace larder {

void ListItem::SetKey(const std::string& key) {
    if (!key.empty()) {
        const ListItem* owner = list_.FindKey(key);
        if (owner != nullptr && owner != this) {
            throw Failure(failure::KeyNotUnique, "ListItem.Key");
        }
    }
    key_ = key;
}

void ListItem::SetText(const std::string& text) {
    cells_[0].Text = text;
    Changed();
}

const std::string& ListItem::SubItems(int i) const {
    static const std::string empty;
    if (i < 1) throw Failure(failure::OutOfRange, "ListItem.SubItems");
    const auto column = static_cast<std::size_t>(i);
    return column < cells_.size() ? cells_[column].Text : empty;
}

void ListItem::SetSubItems(int i, const std::string& text) {
    SubCell(i).Text = text;
    Changed();
}

void ListItem::SetForeColor(std::int32_t color) {
    cells_[0].ForeColor = color;
    Changed();
}

std::int32_t ListItem::SubForeColor(int i) const {
    if (i < 1) throw Failure(failure::OutOfRange, "ListItem.ListSubItems");
    const auto column = static_cast<std::size_t>(i);
    return column < cells_.size() ? cells_[column].ForeColor : ownColor_;
}

void ListItem::SetSubForeColor(int i, std::int32_t color) {
    SubCell(i).ForeColor = color;
    Changed();
}

void ListItem::SetBold(bool bold) {
    bold_ = bold;
    Changed();
}

void ListItem::SetSmallIcon(int index) {
    smallIcon_ = index;
    Changed();
}

bool ListItem::Selected() const {
    return list_.SelectedItem() == this;
}

void ListItem::SetSelected() {
    list_.Select(this);
}

int ListItem::Index() const {
    return list_.PlaceOf(*this);
}

float ListItem::Height() const {
    return list_.RowHeight();
}

ListItem::Cell& ListItem::SubCell(int i) {
    if (i < 1) throw Failure(failure::OutOfRange, "ListItem.SubItems");
    const auto column = static_cast<std::size_t>(i);
    while (cells_.size() <= column)
        cells_.push_back({"", ownColor_});
    return cells_[column];
}

void ListItem::Changed() {
    list_.Changed();
}

}  // namespace larder
