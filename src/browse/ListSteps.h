#pragma once

#include <cstdint>

namespace larder {

class frmMain;

// Stepping and paging in the two lists: where the selection bar and the window go. All steps stay
// within the list and end silently at its ends.
class ListSteps {
  public:
    explicit ListSteps(frmMain& hub) : main(hub) {}

    // The bar goes one line down (up); at the edge of the window, the window moves by one.
    void SelectNext(std::int16_t Index);
    void SelectPrevious(std::int16_t Index);
    // The window moves by one line; the bar stays on its entry.
    void ScrollListUp(std::int16_t Index);
    void ScrollListDown(std::int16_t Index);
    // The window moves by a page. From the keyboard the bar keeps its row of the screen, except at
    // the ends of the list, where it goes to the last (first) line.
    void FlipUp(std::int16_t Index, bool Keyboard);
    void FlipDown(std::int16_t Index, bool Keyboard);
    // The Home and End keys: to the first (last) entry.
    void GoHome(std::int16_t Index);
    void GoEnd(std::int16_t Index);

  private:
    // Moves the window by one line until another recipe stands on the line at its edge: in a list
    // without items the neighbour of a deleted recipe comes up again. The window that does not move
    // is at the end of the list.
    template <typename Scroll, typename EdgeKey>
    void ScrollToAnother(std::int16_t Index, Scroll scroll, EdgeKey edgeKey);
    // No line is remembered: the fill that follows shows no bar.
    void ForgetSelection(std::int16_t Index);
    void SelectAndFocus(std::int16_t Index, int line);
    void JumpTo(std::int16_t Index, std::int32_t start, bool toLastLine);

    frmMain& main;
};

}  // namespace larder
