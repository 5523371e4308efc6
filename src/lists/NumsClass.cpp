#include "lists/NumsClass.h"

#include <algorithm>
#include <cstddef>

#include "lists/NumberSearch.h"
#include "lists/YStrings.h"
#include "platform/Failure.h"
#include "platform/Text.h"

namespace larder {

namespace {

constexpr std::size_t firstRoom = 5;
constexpr std::size_t moreRoom = 30;
constexpr std::int32_t reportEvery = 500;

}  // namespace

NumsClass::NumsClass(GrowingListObserver& observer, ListTicket& ticket)
    : observer_(observer), ticket_(ticket), NumsAr_(firstRoom) {}

// Places in use alone, also in virtual mode: a length has no numbers.
std::int32_t NumsClass::NumAt(std::int32_t index) const {
    if (index < 1 || index > Count_) throw Failure(failure::OutOfRange, "NumsClass");
    return NumsAr_[static_cast<std::size_t>(index - 1)];
}

std::int32_t& NumsClass::Place(std::int32_t index) {
    if (index < 1 || index > Count_) throw Failure(failure::TypeMismatch, "NumsClass.Item");
    CurrentIndex = index;
    return NumsAr_[static_cast<std::size_t>(index - 1)];
}

std::int32_t NumsClass::LastNumber() const {
    return NumAt(Count());
}

void NumsClass::Add(std::int32_t num) {
    const auto used = static_cast<std::size_t>(Count_);
    if (used == NumsAr_.size()) NumsAr_.resize(used + moreRoom);
    NumsAr_[used] = num;
    CurrentIndex = ++Count_;
}

std::int32_t NumsClass::Item(std::int32_t index) {
    return Place(index);
}

void NumsClass::SetItem(std::int32_t index, std::int32_t newValue) {
    Place(index) = newValue;
}

std::int32_t NumsClass::Count() const {
    return VirtualMode ? VirtualCount_ : Count_;
}

void NumsClass::SetCount(std::int32_t newValue) {
    VirtualMode = true;
    VirtualCount_ = newValue;
    observer_.DecorateWait(false, "");
}

std::string NumsClass::NumsToString() const {
    if (Count_ == 0) return {};
    std::string nums = " ";
    for (std::int32_t place = 1; place <= Count_; ++place) {
        nums += std::to_string(NumAt(place)) + " ";
    }
    return nums;
}

void NumsClass::StringToNums(const std::string& strNums) {
    const std::string nums = strNums;  // an event may change the caller's text
    ticket_.Next();
    const std::int16_t intMyTicket = ticket_.Value();
    ClearAll();
    booSearching = true;
    Ignoring([&] { observer_.DecorateWait(true, ""); });
    std::int32_t start = 1;
    std::int32_t numbersRead = 0;
    std::string token = YStrings::TokenFrom(nums, start, " ");
    while (!token.empty()) {
        Ignoring([&] { Add(ToLong(token)); });
        ReportGrowth(++numbersRead);
        token = YStrings::TokenFrom(nums, start, " ");
        Ignoring([&] { observer_.LetEventsRun(); });
        if (ticket_.Value() != intMyTicket) return;
    }
    booSearching = false;
    Ignoring([&] { observer_.DecorateWait(false, ""); });
}

void NumsClass::ReportGrowth(std::int32_t numbersRead) {
    if (numbersRead == observer_.LinesOnScreen()) {
        Ignoring([&] { observer_.ShowSame(); });
        Ignoring([&] { observer_.DecorateWait(true, "..."); });
    }
    if (numbersRead % reportEvery == 0) {
        Ignoring([&] { observer_.UpdateScroll(); });
        Ignoring([&] { observer_.ReportRecipesFound("..."); });
    }
}

void NumsClass::ClearAll() {
    CurrentIndex = 0;
    Count_ = 0;
    NumsAr_.assign(firstRoom, 0);
    VirtualMode = false;
}

std::int32_t NumsClass::GetNext() {
    std::int32_t next = 0;
    Ignoring([&] { next = Item(CurrentIndex + 1); });
    return next;
}

bool NumsClass::IsIn(std::int32_t num) {
    return Item(BinarySearch(num, 1, Count())) == num;
}

std::int32_t NumsClass::BinarySearch(std::int32_t num, std::int32_t L, std::int32_t U) const {
    return SearchSorted(num, L, U, [this](std::int32_t place) { return NumAt(place); });
}

std::int32_t NumsClass::NextCustomRecipeNum(bool Reset) {
    if (Reset || NextPos_ == 0) {
        const std::int32_t original = observer_.OriginalNumRecords();
        NextPos_ = FirstPlaceAbove(BinarySearch(original, 1, Count()), Count());
    }
    if (NextPos_ < 1 || NextPos_ > Count_) return -1;
    return NumAt(NextPos_++);
}

std::int32_t NumsClass::Find(std::int32_t num, bool Sorted) const {
    if (Sorted) return BinarySearch(num, 1, Count());
    const auto end = NumsAr_.begin() + Count_;
    const auto found = std::find(NumsAr_.begin(), end, num);
    return found == end ? 0 : static_cast<std::int32_t>(found - NumsAr_.begin()) + 1;
}

void NumsClass::RemoveNum(std::int32_t num, bool Sorted) {
    const std::int32_t place = Find(num, Sorted);
    if (place < 1) return;
    const auto end = NumsAr_.begin() + Count_;
    std::move(NumsAr_.begin() + place, end, NumsAr_.begin() + (place - 1));
    *(end - 1) = 0;
    --Count_;
    CurrentIndex = place;
}

void NumsClass::TestIt() {
    NumsClass nums(observer_, ticket_);
    nums.StringToNums(" 4 5 6 7 9 10 12 ");
    for (const std::int32_t num : {7, 1, 13, 1, 12})
        nums.RemoveNum(num, true);
}

}  // namespace larder
