#pragma once

#include <cstdint>
#include <string>

namespace larder {

class frmMain;
struct VirtualListItem;

// The list of recipes, `lvwX(2)`: what it holds and which part of it the lines show. VList(1) is
// the list behind it. The control's Tag tells its content: "*" for all recipes (virtual mode), one
// blank while a fill is under way, else the number string of the list.
class RecipeList {
  public:
    explicit RecipeList(frmMain& hub) : main(hub) {}

    bool booRecipeColumns = false;   // the control has recipe columns
    std::int16_t intLinesShown = 0;  // LinesInList(1) at the last fill

    // Fills the list. `strNumbers` is a number string, "*" for all recipes, "same" for the list
    // that is held already, or "VIDEO", "KNOTS", "TIPS" for a list built by others and only to be
    // shown. `startPos`: 0 is the current start, -2 leaves the start alone, another value below 1
    // is the first line. The third argument is read by nobody. Failures leave single lines
    // unwritten, and in whatever way the fill ends, the list is on the screen again. Lets events
    // run while a number string is read, and they may end the fill: a newer one, which then owns
    // the list, or a cancellation, after which the list stays with the recipes that it has, in step
    // with the lines. False then: the caller has nothing more to do with the list.
    bool ShowRecipesIn_lvwX2(std::string strNumbers, std::int32_t startPos, bool Reserved,
                             bool ForceReload);

    // Takes a recipe out of the list on show, if it holds it, and goes to its neighbour: the one
    // behind it, or the one before it where the window would not be full otherwise.
    void RemoveFrom_lvwX2(std::int32_t RecipeToRemove);
    // Writes the count of recipes; `strAppend` is "..." while it is not final.
    void ReportRecipesFound(const std::string& strAppend);
    // The busy look around a fill. With "..." the lines stay on show and the count is reported as
    // not final: the list grows under the user's eyes.
    void DecorateWait(bool booStart, const std::string& strWhat);
    void SetColumnsForRecipes_X2();
    // Of the title in an entry's line, which tells whether the recipe has a picture.
    std::int32_t TitleColor(const VirtualListItem& entry) const;
    // A list that has just been made and is empty, though only pictures were asked for: offers to
    // take the tick away.
    void AskAboutPictures();
    // Sorts the lines of the window by a column (2 number, 3 title), not the list: the next fill
    // writes them in list order again. Order 0 sorts ascending, or reverses at the second time.
    void SortListBy(std::int16_t Column, std::int16_t Order);

  private:
    struct Fill;
    class Curtain;
    void NormaliseStart(Fill& fill);
    void RecogniseSame(Fill& fill);
    bool NothingToDo(const Fill& fill) const;
    void Prepare(Fill& fill);
    void FillVirtual(Fill& fill);
    bool FillFromNumbers(Fill& fill);  // false: it was ended by an event
    bool ReadNumbers(Fill& fill);      // the same
    void StopGrowing();
    void Finish(const Fill& fill);
    // Puts the bar on a recipe of the list, which is brought into the window for it. The line where
    // it stands, or would stand: among all recipes a deleted one has none any more.
    int BringBarTo(std::int32_t number);
    // That line; 0 when there is none.
    int BringBarToLastLine();
    void WriteLine(int line, std::int32_t number, const std::string& title, int icon,
                   std::int32_t titleColor, const std::string& key, const std::string& tag);

    frmMain& main;
    std::string strLastNumbers;
    std::string strLastSelectedKey;
    std::int16_t intLastLines = 0;
    std::uint32_t lastGeneration_ = ~0U;  // of VList(1), when strLastNumbers was shown
    std::int16_t lastSortColumn_ = 0;
};

}  // namespace larder
