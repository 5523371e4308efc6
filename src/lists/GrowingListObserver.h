#pragma once

#include <cstdint>
#include <string>

namespace larder {

// What a list of recipes needs of the program around it while it grows: the screen that shows its
// first lines before it is complete, the recipes behind the numbers, and the event queue. The main
// window implements it; tests use a small one of their own.
class GrowingListObserver {
  public:
    virtual ~GrowingListObserver() = default;

    // `LinesInList(1)`: how many lines of the recipe list fit on the screen.
    virtual std::int16_t LinesOnScreen() const = 0;
    // `OriginalNumRecords`: the last number of the stock recipes.
    virtual std::int32_t OriginalNumRecords() const = 0;

    virtual bool HasPicture(const std::string& strRecipeNum) const = 0;
    virtual std::string GetRecipeTitle(std::int32_t recipeNum) = 0;
    // Of a recipe whose title came empty: whether there is none, and it is not only unreadable;
    // and whether there is its record, overwritten when it was deleted.
    virtual bool IsGone(std::int32_t recipeNum) = 0;
    virtual bool IsBlank(std::int32_t recipeNum) = 0;

    // ShowRecipesIn_lvwX2("same", 0, False, True): the first screenful is there.
    virtual void ShowSame() = 0;
    virtual void DecorateWait(bool start, const std::string& what) = 0;
    virtual void UpdateScroll() = 0;
    virtual void ReportRecipesFound(const std::string& append) = 0;

    // Lets pending events run; may re-enter the list.
    virtual void LetEventsRun() = 0;
};

}  // namespace larder
