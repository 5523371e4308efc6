#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "lists/GrowingListObserver.h"
#include "lists/ListTicket.h"

namespace larder {

// The interface of VirtualList over plain numbers: the same states and the same results, without
// texts and keys. Places count from 1.
class NumsClass {
  public:
    // The observer and the ticket outlive the list; the ticket is shared by all lists.
    NumsClass(GrowingListObserver& observer, ListTicket& ticket);

    bool VirtualMode = false;       // no numbers in sight, only a length
    bool booSearching = false;      // a StringToNums is running
    std::int32_t CurrentIndex = 0;  // place last visited

    // The number at the last place; failure 9 when there is none.
    std::int32_t LastNumber() const;
    // Puts a number at the end, which becomes CurrentIndex. Numbers may repeat.
    void Add(std::int32_t num);

    // Access to NumsAr(): the place becomes CurrentIndex. Failure 13 outside 1 to Count.
    std::int32_t Item(std::int32_t index);
    void SetItem(std::int32_t index, std::int32_t newValue);

    std::int32_t Count() const;
    // Switches to virtual mode with this length; the wait look ends.
    void SetCount(std::int32_t newValue);

    // " 4 5 6 ", or an empty string for an empty list.
    std::string NumsToString() const;
    // Moves the ticket and fills the list from a number string, letting events run after each
    // number; leaves at once when the ticket has moved meanwhile. A text that is no number is
    // left out.
    void StringToNums(const std::string& strNums);
    // Back to an empty real list. Leaves the ticket alone.
    void ClearAll();

    // The number behind CurrentIndex, which moves there; 0 at the end.
    std::int32_t GetNext();

    // On a list sorted ascending: as VirtualList has them.
    bool IsIn(std::int32_t num);
    std::int32_t BinarySearch(std::int32_t num, std::int32_t L, std::int32_t U) const;
    std::int32_t NextCustomRecipeNum(bool Reset);
    std::int32_t Find(std::int32_t num, bool Sorted) const;
    // Takes a number out; CurrentIndex becomes its place.
    void RemoveNum(std::int32_t num, bool Sorted);

    // A developer's aid: fills a list and removes from it; the result is not looked at.
    void TestIt();

  private:
    std::int32_t NumAt(std::int32_t index) const;
    std::int32_t& Place(std::int32_t index);
    void ReportGrowth(std::int32_t numbersRead);

    GrowingListObserver& observer_;
    ListTicket& ticket_;
    std::vector<std::int32_t> NumsAr_;  // with room for more than are in use
    std::int32_t Count_ = 0;            // in use
    std::int32_t VirtualCount_ = 0;
    std::int32_t NextPos_ = 0;
};

}  // namespace larder
