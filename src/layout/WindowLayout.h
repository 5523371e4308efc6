#pragma once

#include <string>
#include <vector>

#include "lists/PossitionItem.h"
#include "platform/Control.h"
#include "platform/Timer.h"

namespace larder {

class frmMain;
class RichTextBox;

// Keeps the window's proportions: every control's place at design size is recorded once, and each
// resize works all places out anew from those records.
class WindowLayout {
  public:
    explicit WindowLayout(frmMain& hub);

    // Records every control's design place. To be called once, before anything is moved.
    void InitResize();
    // Lays the window out for its present client area: places, fonts, and both lists filled for
    // the lines that now fit. While a question for the disc is up, the lists wait for RefillPutOff.
    void ResizeIt();
    // Fills the lists that ResizeIt has left as they were, as soon as events run.
    void RefillPutOff();

    // Puts the text box on the place of a recipe.
    void PlaceRtbRes();
    // Parks a box beyond the screen's edge: out of sight, while it counts as visible.
    void HideRTB(RichTextBox& rtb);

    // Places of the shapes at the window's present size.
    Rectangle Scaled(const Rectangle& design) const;

    float sngDesignClientWidth = 0;
    float sngDesignClientHeight = 0;
    float sngAspect = 0;

  private:
    void MoveControls();
    void CountLines();
    void RefillLists();

    frmMain& main;
    std::vector<PossitionItem> colDesignRects;
    float xRatio_ = 1;  // design width by present width
    float yRatio_ = 1;
    bool booRefillPutOff_ = false;
    Timer tmrRefill_{0};
};

}  // namespace larder
