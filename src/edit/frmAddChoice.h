#pragma once

#include <functional>

#include "platform/Image.h"
#include "platform/ImageButton.h"
#include "platform/Window.h"

namespace larder {

class frmMain;

// The modal dialog behind the button "Add": a new recipe; the current one into the favourites or
// out of them; editing or deleting it. What is open depends on the current recipe alone, and it is
// the only gate before these actions.
class frmAddChoice {
  public:
    explicit frmAddChoice(frmMain& hub);

    // Shows the dialog until it is closed. Returns what the user has chosen, to be done when the
    // dialog is gone; empty when he has chosen nothing.
    std::function<void()> Ask();
    void CenterIt();

    Window window;
    Image imgGround{window, "imgChoiceGround"};
    Image linCancel{window, "linCancel"};
    ImageButton ibAddNewRecipe{window, "ibAddNewRecipe"};  // Tab goes in the order of this list
    ImageButton ibAddToFavorites{window, "ibAddToFavorites"};
    ImageButton ibEdit{window, "ibEdit"};
    ImageButton ibDelete{window, "ibDelete"};
    ImageButton CancelButton{window, "CancelButton"};

  private:
    void PlaceControls();
    void DressControls();
    void Connect();
    // Captions and states by the current recipe.
    void SetUp();
    void SetUpFavorites(bool any);
    void SetUpWriting(bool open);
    void KeyDown(int& KeyCode, int Shift);
    // Closes the dialog with this choice. A button in state 2 does nothing.
    void Choose(const ImageButton& button, std::function<void()> action);

    frmMain& main;
    std::function<void()> chosen_;
    bool booAddToFavorites = false;
};

}  // namespace larder
