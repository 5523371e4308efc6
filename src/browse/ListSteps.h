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
    // For the list of all recipes: a window that ends with the last recipe before a place, or at
    // the beginning of the list when there is none.
    void ShowWindowBefore(std::int32_t place);

  private:
    // Moves the window to a start, as far as the list goes; downwards never to a place from which
    // there is nothing to be seen.
    void ScrollUpTo(std::int16_t Index, std::int32_t start);
    void ScrollDownTo(std::int16_t Index, std::int32_t start);
    // Moves the window just so far that one more entry stands at its edge. In a list without items
    // a move by one line may show the neighbour of a deleted recipe again, so there it goes on to
    // the next recipe, however many places are blank; without one it stays where it is.
    void ScrollToNext(std::int16_t Index);
    void ScrollToPrevious(std::int16_t Index);
    // The lowest and the highest number of the recipes in the lines; 0 when there are none.
    struct WindowEnds {
        std::int32_t First = 0;
        std::int32_t Last = 0;
    };
    WindowEnds EndsOfWindow() const;
    // The last recipe before a place of the list of all; 0 when there is none.
    std::int32_t RecipeBefore(std::int32_t place) const;
    // No line is remembered: the fill that follows shows no bar.
    void ForgetSelection(std::int16_t Index);
    void SelectAndFocus(std::int16_t Index, int line);
    void JumpTo(std::int16_t Index, std::int32_t start, bool toLastLine);

    frmMain& main;
};

}  // namespace larder
