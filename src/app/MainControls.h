#pragma once

#include <string>

#include "platform/CheckBox.h"
#include "platform/Image.h"
#include "platform/ImageButton.h"
#include "platform/ImageList.h"
#include "platform/Label.h"
#include "platform/ListView.h"
#include "platform/Menu.h"
#include "platform/RichTextBox.h"
#include "platform/Timer.h"
#include "platform/Window.h"

namespace larder {

// The main window and every named control on it. How each looks and where it stands at design size
// is told by the tables in MainControls.cpp; what it does, by the classes that connect its events.
//
// The order of the members is the order of the layers on the screen, from the back to the front.
class MainControls {
  public:
    MainControls();

    Window window{"frmMain"};

    ImageList ImageList1;  // looks of the flat image controls
    ImageList imlIcons;    // icons of list lines: 2 "Camera", 4 "Camcoder"

    Image imgBackGroundMain{window, "imgBackGroundMain"};
    Image imgWaterMark1{window, "imgWaterMark", 1};
    Image imgWaterMark2{window, "imgWaterMark", 2};
    Image imgWaterMark3{window, "imgWaterMark", 3};

    CheckBox chkFocusCatcher{window, "chkFocusCatcher"};

    Label lblCategory{window, "lblCategory"};
    Label lblFound{window, "lblFound"};
    Label lblTotal{window, "lblTotal"};
    Label lblRecipeNum{window, "lblRecipeNum"};
    CheckBox chkJustWithPictures{window, "chkJustWithPictures"};
    Label lblJustWithPics{window, "lblJustWithPics"};

    ListView lvwX1{window, "lvwX", 1};
    Image imgSortByNum{window, "imgSortByNum"};
    Image imgSortByName{window, "imgSortByName"};
    ListView lvwX2{window, "lvwX", 2};

    ImageButton ibRecipeButton{window, "ibRecipeButton"};
    ImageButton ibPhotoButton{window, "ibPhotoButton"};
    Image imgAddToFavorites{window, "imgAddToFavorites"};
    ImageButton ibBack{window, "ibBack"};
    ImageButton ibNext{window, "ibNext"};

    Frame frPic{window, "frPic"};
    Image imgPicture{frPic, "imgPicture"};
    RichTextBox rtbSee{window, "rtbSee"};
    RichTextBox rtbT{window, "rtbT"};  // work box, never on the screen
    ImageButton ibELeft{window, "ibELeft"};
    ImageButton ibERight{window, "ibERight"};
    Label lblFamily{window, "lblFamily"};

    // The drawn scroll bars' thumbs and tracks. Their tags tell whether one is being dragged.
    Label lblScroll1{window, "lblScroll", 1};
    Label lblScroll2{window, "lblScroll", 2};
    Label lblScroll3{window, "lblScroll", 3};
    Image imgGarlic1{window, "imgGarlic", 1};
    Image imgGarlic2{window, "imgGarlic", 2};
    Image imgGarlic3{window, "imgGarlic", 3};

    ImageButton ibReset{window, "ibReset"};
    ImageButton ibAdd{window, "ibAdd"};
    ImageButton ibSearch{window, "ibSearch"};
    ImageButton ibHelp{window, "ibHelp"};
    ImageButton ibPrint{window, "ibPrint"};
    ImageButton ibExit{window, "ibExit"};

    MenuItem mnuPopUpAddToFavorites{"mnuPopUpAddToFavorites", "&Add to Favorites"};
    MenuItem mnuPopUpRemoveFromFavorites{"mnuPopUpRemoveFromFavorites", "&Remove from Favorites"};
    MenuItem mnuPopUpSeparator1 = MenuItem::Separator("mnuPopUpSeparator1");
    MenuItem mnuPopUpEdit{"mnuPopUpEdit", "&Edit"};
    MenuItem mnuPopUpDelete{"mnuPopUpDelete", "&Delete"};
    PopupMenu mnuPopUp{"mnuPopUp"};

    Timer tmrResize{100};
    Timer tmrScrolls{300};

    // The control arrays, by their index from 1.
    ListView& lvwX(int index) { return index == 1 ? lvwX1 : lvwX2; }
    Image& imgWaterMark(int index);
    Image& imgGarlic(int index);
    Label& lblScroll(int index);

    // Places of the shapes that mark areas of the window at design size.
    static const Rectangle Shape1;        // the text of a recipe
    static const Rectangle Shape2;        // the text of a description
    static const Rectangle Shape3;        // the picture of a description without text
    static const Rectangle ShapeBrowser;  // a guide page

  private:
    void BuildImageLists();
    void PlaceControls();
    void DressButtons();
    void DressLabels();
    void DressLists();
};

}  // namespace larder
