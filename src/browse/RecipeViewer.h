#pragma once

#include <cstdint>
#include <string>

namespace larder {

class frmMain;
class ListItem;
class RichTextBox;

// The one recipe that is current, its text in `rtbSee`, and the ways from recipe to recipe: a
// click on a line of the recipe list, Next and Back.
class RecipeViewer {
  public:
    explicit RecipeViewer(frmMain& hub) : main(hub) {}

    bool booRecipeHasPicture = false;
    bool Modified = false;  // rtbSee was typed in since it was filled
    // The recipe whose text stands in rtbSee, 0 for any other text. It is not always the current
    // one: a recipe becomes current before it is shown, or shows its picture.
    std::int32_t RecipeInBox = 0;

    std::int32_t CurrentRecipe() const { return lngCurrentRecipe; }
    // Sets the number, its label and the view buttons; shows nothing. -1 is none, 0 is allowed.
    // Failure 63, "Bad Recipe Number", outside -1 to TotalNumRecords; 75 when what was typed in the
    // viewer could not be saved: the recipe that it belongs to stays current.
    void SetCurrentRecipe(std::int32_t vNewValue);

    // Shows the text of a recipe; -1 is the current one. Ends quietly on a failure and then
    // returns false: there is no such recipe to show.
    bool ShowRecipe(std::int32_t RecipeNum);
    // Between the recipe's text and its picture.
    void FlipMode();
    // The title line: larger, and in the title colour.
    void FormatFirstLine(RichTextBox& rtb);

    // How many recipes were opened from the list.
    std::uint32_t LinesOpened() const { return linesOpened_; }
    // The click on a line of lvwX(2).
    void RecipeItemClick(ListItem& Item, bool Keyboard);
    // The next or previous line of the list that has the focus. Nothing at the list's end.
    void Next();
    void Back();

  private:
    void LeaveTypedText();
    void FillText(RichTextBox& rtb);
    void ColorSearchWords(RichTextBox& rtb);
    void LeaveOtherModes();
    void OfferBothViews();
    void PopUpMenuFor(std::int32_t number);
    void SetMenuEntries(std::int32_t number);
    void OpenLine(const ListItem& Item);
    void StepAndClick(bool forward);

    frmMain& main;
    std::int32_t lngCurrentRecipe = 0;
    std::uint32_t linesOpened_ = 0;
    std::string strLastClickedTag;
};

}  // namespace larder
