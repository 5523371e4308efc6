#pragma once

#include <cstdint>
#include <map>

namespace larder {

class frmMain;
class RichTextBox;
class Label;

// Text grows and shrinks with the main window.
class FontSizing {
  public:
    explicit FontSizing(frmMain& hub) : main(hub) {}

    // `ratio` is the window's height by its design height.
    void DoFontSizes(float ratio);
    // One size, in points, for the whole text of a box; below 8 it becomes 8, for the caller too.
    // The box's Tag holds the size from then on.
    void SetRtbFontSize(RichTextBox& rtb, std::int16_t& intFontSize);

  private:
    void AdjustAllFontSizes(float ratio);

    frmMain& main;
};

}  // namespace larder
