#include "lists/VirtualList.h"

#include <array>
#include <charconv>
#include <utility>

#include "lists/NumberSearch.h"
#include "lists/NumsClass.h"
#include "lists/YStrings.h"
#include "platform/Failure.h"
#include "platform/Text.h"

namespace larder {

namespace {

constexpr std::int32_t reportEvery = 200;

// The number with a blank behind it.
void AppendNumber(std::string& text, std::int32_t number) {
    std::array<char, 12> digits;
    char* const end = std::to_chars(digits.data(), digits.data() + digits.size() - 1, number).ptr;
    *end = ' ';
    text.append(digits.data(), end + 1);
}

}  // namespace

VirtualList::VirtualList(GrowingListObserver& observer, ListTicket& ticket)
    : observer_(observer), ticket_(ticket) {}

void VirtualList::Add(const std::string& text, const std::string& tag, std::int32_t num,
                      const std::string& key, std::int16_t icon, bool bold,
                      const std::string& /*before*/, const std::string& /*after*/) {
    auto item = std::make_unique<VirtualListItem>();
    item->Num = num;
    item->Text = text;
    item->Tag = tag;
    item->Icon = icon;
    item->Bold = bold;
    item->Key = key;
    if (item->Key.empty()) item->Key = "k" + std::to_string(num != 0 ? num : Count());
    Append(std::move(item));
}

void VirtualList::Append(std::unique_ptr<VirtualListItem> item) {
    if (!byKey_.Insert(*item)) return;
    item->Index = Length() + 1;
    AppendNumber(strAllNums_, item->Num);
    colList_.push_back(std::move(item));
    Ignoring([&] { ReportGrowth(); });
}

void VirtualList::ReportGrowth() {
    // A screen that has shrunk while a fill was below its first screenful is full at once.
    const std::int32_t lines = observer_.LinesOnScreen();
    if (Count() == lines || (booSearching && !screenfulShown_ && Count() > lines)) {
        screenfulShown_ = true;
        observer_.ShowSame();
        observer_.DecorateWait(true, "...");
    }
    if (Count() % reportEvery == 0) {
        observer_.UpdateScroll();
        observer_.ReportRecipesFound("...");
    }
}

bool VirtualList::AddRecipe(std::int32_t num, bool butMissing) {
    auto item = std::make_unique<VirtualListItem>();
    item->Tag = std::to_string(num);
    item->Bold = observer_.HasPicture(item->Tag);
    item->Text = observer_.GetRecipeTitle(num);
    if (item->Text.empty() && (butMissing ? observer_.IsGone(num) : observer_.IsBlank(num))) {
        return false;
    }
    item->Icon = item->Bold ? 2 : 0;
    item->Num = num;
    item->Key = "k" + item->Tag;
    Append(std::move(item));
    return true;
}

// The item at a place that may come from a text, and so have a fraction.
VirtualListItem& VirtualList::Place(double index) {
    if (!(index >= 1 && index <= Length())) {
        throw Failure(failure::TypeMismatch, "VListClass.Item");
    }
    CurrentIndex = RoundToLong(index);
    return *colList_[static_cast<std::size_t>(CurrentIndex - 1)];
}

VirtualListItem* VirtualList::Item(std::int32_t index) {
    return colList_.empty() ? nullptr : &Place(index);
}

VirtualListItem* VirtualList::Item(const std::string& indexOrKey) {
    if (colList_.empty()) return nullptr;
    if (IsNumeric(indexOrKey)) return &Place(Val(indexOrKey));
    return byKey_.Find(indexOrKey);
}

const VirtualListItem* VirtualList::Peek(std::int32_t index) const {
    if (index < 1 || index > Length()) return nullptr;
    return colList_[static_cast<std::size_t>(index - 1)].get();
}

const VirtualListItem* VirtualList::PeekKey(const std::string& key) const {
    return byKey_.Find(key);
}

VirtualListItem* VirtualList::Peek(std::int32_t index) {
    return const_cast<VirtualListItem*>(std::as_const(*this).Peek(index));
}

VirtualListItem* VirtualList::PeekKey(const std::string& key) {
    return const_cast<VirtualListItem*>(std::as_const(*this).PeekKey(key));
}

void VirtualList::SetItem(std::int32_t index, const VirtualListItem& newValue) {
    if (index < 1 || index > Length()) throw Failure(failure::TypeMismatch, "VListClass.Item");
    VirtualListItem& item = *colList_[static_cast<std::size_t>(index - 1)];
    const VirtualListItem* same = byKey_.Find(newValue.Key);
    if (same != nullptr && same != &item) {
        throw Failure(failure::KeyNotUnique, "VListClass.Item");
    }
    byKey_.Erase(item);
    item = newValue;
    byKey_.Insert(item);
    item.Index = index;
    CurrentIndex = index;
}

std::int32_t VirtualList::Count() const {
    return VirtualMode ? VirtualCount_ : Length();
}

void VirtualList::SetCount(std::int32_t newValue) {
    VirtualMode = true;
    VirtualCount_ = newValue;
    observer_.DecorateWait(false, "");
}

std::string VirtualList::NumsToString() const {
    if (colList_.empty()) return {};
    std::string nums = " ";
    for (const auto& item : colList_)
        AppendNumber(nums, item->Num);
    return nums;
}

bool VirtualList::StringToNums(const std::string& strNums) {
    // A copy, because the text may be the Tag of an item that an event removes meanwhile.
    const std::string nums = strNums;
    ClearAll();
    const std::int16_t intMyTicket = ticket_.Value();
    const std::uint32_t own = generation_;  // a cancelled ticket may come to the same value again
    booSearching = true;
    Ignoring([&] { observer_.DecorateWait(true, ""); });
    std::int32_t start = 1;
    std::string token = YStrings::TokenFrom(nums, start, " ");
    while (!token.empty()) {
        Ignoring([&] { AddRecipe(ToLong(token)); });
        token = YStrings::TokenFrom(nums, start, " ");
        Ignoring([&] { observer_.LetEventsRun(); });
        if (ticket_.Value() != intMyTicket || generation_ != own) return false;
    }
    booSearching = false;
    Ignoring([&] { observer_.DecorateWait(false, ""); });
    return true;
}

void VirtualList::ClearAll() {
    ticket_.Next();
    ++generation_;
    booSearching = false;
    screenfulShown_ = false;
    CurrentIndex = 0;
    byKey_.Clear();
    colList_.clear();
    VirtualMode = false;
    strAllNums_ = " ";
}

VirtualListItem* VirtualList::GetNext() {
    VirtualListItem* next = nullptr;
    Ignoring([&] { next = Item(CurrentIndex + 1); });
    return next;
}

bool VirtualList::IsIn(std::int32_t num) {
    return Place(BinarySearch(num, 1, Count())).Num == num;
}

std::int32_t VirtualList::NumAt(std::int32_t index) const {
    const VirtualListItem* item = Peek(index);
    if (!item) throw Failure(failure::OutOfRange, "VListClass.BinarySearch");
    return item->Num;
}

std::int32_t VirtualList::BinarySearch(std::int32_t num, std::int32_t L, std::int32_t U) const {
    return SearchSorted(num, L, U, [this](std::int32_t place) { return NumAt(place); });
}

std::int32_t VirtualList::NextCustomRecipeNum(bool Reset) {
    if (Reset || NextPos_ == 0) {
        const std::int32_t original = observer_.OriginalNumRecords();
        NextPos_ = FirstPlaceAbove(BinarySearch(original, 1, Count()), Count());
    }
    const VirtualListItem* item = Peek(NextPos_);
    if (!item) return -1;
    ++NextPos_;
    return item->Num;
}

std::int32_t VirtualList::Find(std::int32_t num, bool Sorted) const {
    if (Sorted) return BinarySearch(num, 1, Count());
    for (const auto& item : colList_) {
        if (item->Num == num) return item->Index;
    }
    return 0;
}

void VirtualList::RemoveNum(std::int32_t num, bool Sorted) {
    if (VirtualMode) {
        SetCount(Count() - 1);
    } else {
        const std::int32_t place = Find(num, Sorted);
        if (place > 0) {
            const auto item = colList_.begin() + (place - 1);
            byKey_.Erase(**item);
            colList_.erase(item);
            RebuildIndex();
            CurrentIndex = place;
        }
    }
    if (CurrentIndex > Count()) CurrentIndex = Count();
}

void VirtualList::RebuildIndex() {
    strAllNums_ = " ";
    std::int32_t place = 0;
    for (const auto& item : colList_) {
        item->Index = ++place;
        AppendNumber(strAllNums_, item->Num);
    }
}

void VirtualList::TestIt() {
    NumsClass(observer_, ticket_).TestIt();
}

}  // namespace larder
