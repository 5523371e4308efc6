#pragma once

#include "platform/CheckBox.h"
#include "platform/Image.h"
#include "platform/ImageButton.h"
#include "platform/Label.h"
#include "platform/RichTextBox.h"
#include "platform/Window.h"

namespace larder {

class frmMain;

// The dialog "Find Recipes": by words or by number. It stays open, beside the main window, across
// finds; closed, it is hidden and keeps what was typed.
class frmSearch {
  public:
    explicit frmSearch(frmMain& hub);

    // Shows the dialog in front of the main window, which stays usable.
    void Show();
    // Hides it, and cancels a search that is reading recipes.
    void CloseDialog();

    // The find action of the mode that is shown. Does nothing for an empty box.
    void cmdFind_ClickX();
    void WordMode();
    void NumberMode();
    // Beside the category list's upper left corner, with no part off the screen.
    void CenterIt();

    void SetMousePointer(int pointer) { window.SetMousePointer(pointer); }

    Window window;
    Image imgGround{window, "imgSearchGround"};
    Image Line1{window, "Line1"};
    Image Line2{window, "Line2"};
    Image linOnly{window, "linOnly"};
    Label lblPrompt1{window, "lblPrompt", 1};
    Label lblPrompt2{window, "lblPrompt", 2};
    ImageButton ibByWord{window, "ibByWord"};  // Tab goes in the order of this list
    ImageButton ibByNum{window, "ibByNum"};
    RichTextBox rtbSearch1{window, "rtbSearch", 1};
    RichTextBox rtbSearch2{window, "rtbSearch", 2};
    CheckBox chkOnly{window, "chkOnly"};
    Label lblChkBox{window, "lblChkBox"};
    ImageButton ibFind{window, "ibFind"};
    ImageButton ibCancel{window, "ibCancel"};

  private:
    void PlaceControls();
    void DressControls();
    void Connect();
    void KeyDown(int& KeyCode, int Shift);
    // Each acts on a key that is the dialog's own; false for any other.
    bool Act(int KeyCode, int Shift);
    bool ActWithAlt(int KeyCode);
    bool LeaveBox(bool backward);
    void ShowMode(bool words);
    void FocusBox();
    void ToggleOnly();
    void FindWords();
    void FindNumber();
    // Takes all formats off a box, so that what was pasted looks as what is typed.
    static void StripFormats(RichTextBox& box, RichTextBox::Alignment alignment);

    frmMain& main;
};

}  // namespace larder
