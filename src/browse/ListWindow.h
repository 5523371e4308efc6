#pragma once

#include <cstdint>
#include <string>

namespace larder {

class frmMain;
class ListItem;

// The window on a list: a list control holds only as many lines as fit on the screen, and showing
// another part of the list rewrites those lines. What both lists share of this stands here. List
// numbers are 1 (categories) and 2 (recipes, chapters, headings).
class ListWindow {
  public:
    explicit ListWindow(frmMain& hub) : main(hub) {}

    // Shows list `Index` from a position: 0 is where it stands. Any other index does nothing.
    void ShowListItems(std::int16_t Index, std::int32_t startPos, bool ForceReload);
    // Shows list `Index` anew from where it stands, for lines of another number or size. A list
    // that is off the screen stays off.
    void Refill(std::int16_t Index);
    // The end of a fill: the list is on the screen again, but for what Refill keeps off it.
    void ShowList(std::int16_t Index);
    // The last position from which the window is still full; at least 1.
    std::int32_t LastStart(std::int16_t Index) const;

    // Gives the control as many lines as fit and the list has, all without keys: the fill is about
    // to write keys in line order, and a key may stand on one line only.
    void EnsureLinesAvailable(std::int16_t Index);
    // Puts the selection bar on the line of strSelectedKey; with `ForceScroll`, brings that line
    // into the window first. Without a line for it no bar is shown.
    void HighlightSelected(std::int16_t lvw_Index, bool ForceScroll);
    // Draws a line again after its selection was changed by program; 0 is the selected line.
    void RefreshListItem(std::int16_t lvw_Index, std::int16_t ListItemIndex);
    // Draws the picture behind a list again.
    void RefreshLvwX(std::int16_t Index);

    // Moves the focus out of sight, so that the list shows no bar while its selected line is
    // outside the window.
    void DivertFocusFrom(std::int16_t Index);
    // The list whose focus is out of sight; 0 when there is none.
    std::int16_t FocusDivertedFrom() const;
    // Gives it back, and brings the selected line into the window. Nothing without such a list.
    void ReturnFocus();
    void ForgetDiversion() { divertedFrom_ = 0; }
    void RestoreLvwFocus(std::int16_t Index);

    // Selects a line that exists, and remembers its key. Failure 35600 for another.
    void SelectLine(std::int16_t Index, int line);
    void RememberSelectedKey(std::int16_t Index);
    // The line with a key, compared without indentation and without regard to case; null when no
    // line of the window has it.
    ListItem* LineWithKey(std::int16_t Index, const std::string& key) const;
    // 0 when no line is selected.
    int SelectedLine(std::int16_t Index) const;

  private:
    // Place in the list of the entry with a key, 0 when there is none.
    std::int32_t PositionOfKey(std::int16_t Index, const std::string& key) const;

    frmMain& main;
    std::int16_t divertedFrom_ = 0;
    std::int16_t keptOff_ = 0;  // the list that Refill keeps off the screen
};

}  // namespace larder
