#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "lists/GrowingListObserver.h"
#include "lists/KeyTable.h"
#include "lists/ListTicket.h"
#include "lists/VirtualListItem.h"

namespace larder {

// A keyed, ordered list of display entries. It is in one of three states: real (it has items),
// virtual (it knows only its length, see SetCount) or growing (StringToNums is running). The same
// class holds the categories, the recipes on show, video chapters and guide headings.
//
// Items belong to the list and stay where they are until they are removed. Keys are compared
// without regard to case and to blanks at their ends, so that the indented text of a category
// finds its entry. Places count from 1.
class VirtualList {
  public:
    // The observer and the ticket outlive the list; the ticket is shared by all lists.
    VirtualList(GrowingListObserver& observer, ListTicket& ticket);

    bool VirtualMode = false;   // no items, only a length
    bool booSearching = false;  // a StringToNums is running
    std::int32_t CurrentIndex =
        0;  // place last visited; in the screen lists the first line in view

    // Puts an item at the end. An empty key becomes "k" and the number, or "k" and the count for
    // an item without a number. A duplicate key leaves the list as it was. `before` and `after`
    // are accepted and ignored. Shows the first screenful and reports progress on the way.
    void Add(const std::string& text, const std::string& tag, std::int32_t num,
             const std::string& key, std::int16_t icon = 0, bool bold = false,
             const std::string& before = {}, const std::string& after = {});
    // Add for a recipe: title, picture mark and key come from its number. One that was deleted
    // stays out, and with `butMissing` one that the book does not have; false then.
    bool AddRecipe(std::int32_t num, bool butMissing = false);

    // The item at a place, or null in a list without items. A place outside 1 to Count is failure
    // 13. A place other than 0 becomes CurrentIndex.
    VirtualListItem* Item(std::int32_t index);
    // The item with a key, null for an unknown one. A text that is a number is a place, as above.
    VirtualListItem* Item(const std::string& indexOrKey);
    // The item at a place for display: null outside the list, and CurrentIndex stays.
    const VirtualListItem* Peek(std::int32_t index) const;
    const VirtualListItem* PeekKey(const std::string& key) const;
    // The same for a change of the item's own fields, but for its key.
    VirtualListItem* Peek(std::int32_t index);
    VirtualListItem* PeekKey(const std::string& key);
    // Puts other content into a place, which becomes CurrentIndex; the place keeps its Index.
    // Failure 13 for a place outside the list, 35602 for a key that another item has.
    void SetItem(std::int32_t index, const VirtualListItem& newValue);

    std::int32_t Count() const;
    // Switches to virtual mode with this length; the wait look ends.
    void SetCount(std::int32_t newValue);

    // " 4 5 6 ", or an empty string for a list without items.
    std::string NumsToString() const;
    // `strAllNums`: the number string as it is kept while items are added; one blank when empty.
    const std::string& AllNums() const { return strAllNums_; }
    // Fills the list from a number string, letting events run after each number. False when the
    // ticket has moved meanwhile: it leaves at once, and the list is somebody else's.
    bool StringToNums(const std::string& strNums);
    // Back to an empty real list; a growing one ends. Moves the ticket.
    void ClearAll();
    // How often the list was emptied: who has shown it tells by this whether it is still the same.
    std::uint32_t Generation() const { return generation_; }

    VirtualListItem* GetNext();  // the item behind CurrentIndex; null at the end

    // On a list sorted by number. A number out of range fails with 13, as the place is negative.
    bool IsIn(std::int32_t num);
    // The place of `num` within L to U, or minus the place where it belongs. -1 when U is 0; 0 for
    // other bounds outside the list, and for U - L from 65,535 on: the distance to the middle is
    // counted in 16 bits.
    std::int32_t BinarySearch(std::int32_t num, std::int32_t L, std::int32_t U) const;
    // Walks the numbers above OriginalNumRecords, one a call; -1 ends the walk.
    std::int32_t NextCustomRecipeNum(bool Reset);
    // The place of the first item with `num`: by BinarySearch, so maybe negative, on a sorted
    // list; else by a walk, 0 when there is none.
    std::int32_t Find(std::int32_t num, bool Sorted) const;
    // Takes the item with `num` out; CurrentIndex becomes its place, at most the last one. A list
    // in virtual mode becomes shorter by one whatever `num` is.
    void RemoveNum(std::int32_t num, bool Sorted);
    void RebuildIndex();
    // A developer's aid: runs the self-test of NumsClass.
    void TestIt();

  private:
    std::int32_t Length() const { return static_cast<std::int32_t>(colList_.size()); }
    VirtualListItem& Place(double index);
    std::int32_t NumAt(std::int32_t index) const;
    void Append(std::unique_ptr<VirtualListItem> item);
    void ReportGrowth();

    GrowingListObserver& observer_;
    ListTicket& ticket_;
    std::vector<std::unique_ptr<VirtualListItem>> colList_;
    KeyTable byKey_;
    std::string strAllNums_ = " ";
    std::int32_t VirtualCount_ = 0;
    bool screenfulShown_ = false;  // since the list was emptied
    std::int32_t NextPos_ = 0;
    std::uint32_t generation_ = 0;
};

}  // namespace larder
