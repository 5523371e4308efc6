#pragma once

#include <cstdint>
#include <string>

#include "edit/PictureAssignment.h"
#include "edit/TextTools.h"
#include "platform/Image.h"
#include "platform/ImageButton.h"
#include "platform/Menu.h"
#include "platform/RichTextBox.h"
#include "platform/RichTextLine.h"
#include "platform/Window.h"

namespace larder {

class frmMain;

// The window "Add Recipe", in which a new recipe is written or one is changed: a sheet of the
// cook-book with its tools above and its picture beside it. It is loaded as a new recipe, filled,
// shown beside the main window, and unloaded on every way out.
class frmAddRecipe {
  public:
    explicit frmAddRecipe(frmMain& hub);

    // Prepares the window for a new recipe, hidden, unless it is loaded.
    void Load();
    // Fills the loaded window with an existing recipe and its text.
    void TakeRecipe(std::int32_t RecipeNum, const std::string& strRTF);
    void Show();
    // Empties the window, which may then be loaded anew.
    void Empty();
    // Empties it and takes it off the screen; the main window comes to the front.
    void Unload();
    // The same without the main window, which is about to go.
    void Discard();

    // The first line of the title box, white space before it passed over, up to a tab; empty when
    // there is nothing but white space in it.
    std::string Title() const;
    // The whole recipe: of a new one the title with its format, a blank line, and the text.
    std::string RecipeRTF();
    // Says that a title is missing, and puts the caret where it belongs.
    void AskForTitle(RichTextBox& box);
    // Something was typed or chosen that is not in the book yet.
    bool HoldsWork() const;

    // Lays the controls out in the present client area.
    void ResizeIt();
    // In the middle of the screen.
    void CenterIt();
    // The size that the window opens with on a screen of this size, its title bar included.
    static Rectangle SizeWithin(const Rectangle& screen);

    std::int32_t lngRecipeNum = 0;  // 0 none yet; for a new recipe the one that it is to get
    bool booNewRecipe = false;      // and stays one, whatever is counted meanwhile
    bool booRecipeChanged = false;  // the text, since the window was filled

    TextTools tools;
    PictureAssignment picture;

    Window window;
    // The window's own shape, and the frame that the preview stands in.
    static const Rectangle shpOrig;
    Rectangle shpPic;

    Image imgGround{window, "imgGround"};
    Image imgSheet{window, "imgSheet"};
    Image imgTitleRule{window, "imgTitleRule"};
    Image imgFrame{window, "imgFrame"};
    Image imgNoPicture{window, "imgNoPicture"};
    Image imgPicPreview{window, "imgPicPreview"};
    MenuBar mnuBar{window, "mnuBar"};
    RichTextLine rtbTitle{window, "rtbTitle"};  // Tab goes in the order of this list
    RichTextBox rtbRecipe{window, "rtbRecipe"};
    Image imgTitleHide{window, "imgTitleHide"};
    ImageButton ibPaste{window, "ibPaste"};
    ImageButton ibBold{window, "ibBold"};
    ImageButton ibItalic{window, "ibItalic"};
    ImageButton ibUnderline{window, "ibUnderline"};
    ImageButton ibLeft{window, "ibLeft"};
    ImageButton ibCenter{window, "ibCenter"};
    ImageButton ibRight{window, "ibRight"};
    ImageButton ibSpell{window, "ibSpell"};
    ImageButton ibPrint{window, "ibPrint"};
    ImageButton ibAssignPicture{window, "ibAssignPicture"};
    ImageButton ibRemovePicture{window, "ibRemovePicture"};
    ImageButton ibAdd{window, "ibAdd"};
    ImageButton ibCancel{window, "ibCancel"};

    MenuItem mnuAdd{"mnuAdd", "&Add"};
    MenuItem mnuSeparator1 = MenuItem::Separator("mnuSeparator1");
    MenuItem mnuCancel{"mnuCancel", "&Cancel"};
    MenuItem mnuCopy{"mnuCopy", "&Copy"};
    MenuItem mnuCut{"mnuCut", "Cu&t"};
    MenuItem mnuPaste{"mnuPaste", "&Paste"};
    MenuItem mnuSeparator2 = MenuItem::Separator("mnuSeparator2");
    MenuItem mnuBold{"mnuBold", "&Bold"};
    MenuItem mnuUnderline{"mnuUnderline", "&Underline"};
    MenuItem mnuItalic{"mnuItalic", "&Italic"};
    MenuItem mnuSeparator3 = MenuItem::Separator("mnuSeparator3");
    MenuItem mnuSpellCheck{"mnuSpellCheck", "&Spell Check"};

    RichTextBox* rtbActive = &rtbTitle;  // the box that last had the focus

  private:
    std::string TitleRTF();
    void DressControls();
    void DressButtons();
    void BuildMenus();
    void Connect();
    void ConnectKeys();
    void PrepareNew();
    void ShowTitleBox(bool shown);
    void FitToScreen();
    void PlaceSheet(const Rectangle& sheet);
    void PlaceTools(float top);
    void PlaceSide(const Rectangle& side);
    void Cancel();

    frmMain& main;
    bool loaded_ = false;
    bool typed_ = false;  // in either box
};

}  // namespace larder
