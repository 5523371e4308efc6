#include "app/MainControls.h"

#include <array>

#include "platform/PictureButton.h"
#include "platform/Pixels.h"

namespace larder {

namespace {

constexpr std::int32_t SlateBlue = 0x714B28;  // #284B71
constexpr std::int32_t Ink = 0x20232B;        // #2B2320

struct Placed {
    Control& control;
    Rectangle place;             // at the design size of 1024 × 720 pixels
    const char* accessibleName;  // empty for ornaments, and for labels whose text tells enough
    const char* toolTip;
    bool visible;
};

struct ButtonLook {
    ImageButton& button;
    const char* art;  // below art/buttons, with -pressed and, for some, -disabled beside it
    bool hasDisabled;
};

struct LabelLook {
    Label& label;
    Font font;
    std::int32_t color;
    Label::Alignment alignment;
};

}  // namespace

const Rectangle MainControls::Shape1 = Pixels(582, 74, 402, 536);
const Rectangle MainControls::Shape2 = Pixels(582, 300, 402, 310);
const Rectangle MainControls::Shape3 = Pixels(582, 74, 402, 536);
const Rectangle MainControls::ShapeBrowser = Pixels(574, 64, 430, 554);

MainControls::MainControls() {
    window.SetCaption("Tidewell Larder");
    BuildImageLists();
    PlaceControls();
    DressButtons();
    DressLabels();
    DressLists();
    for (MenuItem* item : {&mnuPopUpAddToFavorites, &mnuPopUpRemoveFromFavorites,
                           &mnuPopUpSeparator1, &mnuPopUpEdit, &mnuPopUpDelete}) {
        mnuPopUp.Add(*item);
    }
}

Image& MainControls::imgWaterMark(int index) {
    return index == 1 ? imgWaterMark1 : index == 2 ? imgWaterMark2 : imgWaterMark3;
}

Image& MainControls::imgGarlic(int index) {
    return index == 1 ? imgGarlic1 : index == 2 ? imgGarlic2 : imgGarlic3;
}

Label& MainControls::lblScroll(int index) {
    return index == 1 ? lblScroll1 : index == 2 ? lblScroll2 : lblScroll3;
}

void MainControls::BuildImageLists() {
    ImageList1.Add("ByName", "buttons/sort-by-name");
    ImageList1.Add("ByNamePressed", "buttons/sort-by-name-pressed");
    ImageList1.Add("ByNum", "buttons/sort-by-num");
    ImageList1.Add("ByNumPressed", "buttons/sort-by-num-pressed");
    ImageList1.Add("Star", "buttons/star");
    ImageList1.Add("StarPressed", "buttons/star-pressed");
    imlIcons.Add("Fish", "icons/fish");
    imlIcons.Add("Camera", "icons/camera");
    imlIcons.Add("Book", "icons/book");
    imlIcons.Add("Camcoder", "icons/camcorder");
}

void MainControls::PlaceControls() {
    const std::array<Placed, 38> table{{
        {imgBackGroundMain, Pixels(0, 0, 1024, 720), "", "", true},
        {imgWaterMark1, Pixels(14, 112, 212, 512), "", "", true},
        {imgWaterMark2, Pixels(260, 112, 270, 512), "", "", true},
        {imgWaterMark3, Pixels(578, 68, 408, 546), "", "", true},
        {chkFocusCatcher, Pixels(0, 0, 1, 1), "Selected line out of view", "", true},
        {lblCategory, Pixels(26, 64, 384, 30), "", "", true},
        {lblFound, Pixels(414, 68, 126, 24), "", "", true},
        {lblTotal, Pixels(458, 16, 66, 22), "", "", true},
        {lblRecipeNum, Pixels(572, 14, 70, 34), "", "", true},
        {chkJustWithPictures, Pixels(322, 42, 18, 18), "Only recipes with pictures", "", false},
        {lblJustWithPics, Pixels(344, 42, 198, 18), "", "Show only recipes with pictures.", false},
        {lvwX1, Pixels(20, 118, 202, 500), "Categories", "", true},
        {imgSortByNum, Pixels(456, 39, 41, 20), "Sort by number", "Sort by number", true},
        {imgSortByName, Pixels(499, 39, 41, 20), "Sort by name", "Sort by name", true},
        {lvwX2, Pixels(264, 118, 266, 500), "Recipes", "", true},
        {ibRecipeButton, Pixels(644, 12, 92, 38), "Recipe", "", true},
        {ibPhotoButton, Pixels(738, 12, 92, 38), "Photo", "", true},
        {imgAddToFavorites, Pixels(837, 12, 38, 38), "Add to favorites",
         "Click to add current recipe to Favorites", true},
        {ibBack, Pixels(882, 12, 62, 38), "Back", "Previous recipe (Alt+B)", true},
        {ibNext, Pixels(946, 12, 62, 38), "Next", "Next recipe (Alt+N)", true},
        {frPic, Pixels(582, 74, 402, 536), "", "", false},
        {imgPicture, Pixels(0, 0, 402, 536), "Picture", "Click to see recipe", true},
        {rtbSee, Shape1, "Recipe text", "", false},
        {rtbT, Pixels(0, 0, 100, 100), "", "", false},
        {ibELeft, Pixels(706, 62, 40, 32), "Previous", "Previous ", false},
        {ibERight, Pixels(816, 62, 40, 32), "Next of the family", "Next", false},
        {lblFamily, Pixels(748, 66, 66, 24), "", "", false},
        {lblScroll1, Pixels(228, 134, 16, 468), "", "", false},
        {lblScroll2, Pixels(534, 134, 16, 468), "", "", false},
        {lblScroll3, Pixels(988, 92, 16, 502), "", "", false},
        {imgGarlic1, Pixels(227, 134, 18, 24), "", "", false},
        {imgGarlic2, Pixels(533, 134, 18, 24), "", "", false},
        {imgGarlic3, Pixels(987, 92, 18, 24), "", "", false},
        {ibReset, Pixels(12, 638, 150, 72), "Favorites", "Return To Favorites", true},
        {ibAdd, Pixels(182, 638, 150, 72), "Add", "Add/Remove Recipes", true},
        {ibSearch, Pixels(352, 638, 150, 72), "Find", "Find Recipes", true},
        {ibHelp, Pixels(522, 638, 150, 72), "Help", "Get Help", true},
        {ibPrint, Pixels(692, 638, 150, 72), "Print", "Print the recipe", true},
    }};
    for (const Placed& row : table) {
        row.control.Move(row.place);
        row.control.SetAccessibleName(row.accessibleName);
        row.control.SetToolTipText(row.toolTip);
        row.control.SetVisible(row.visible);
    }
    ibExit.Move(Pixels(862, 638, 150, 72));
    ibExit.SetAccessibleName("Exit");
    ibExit.SetToolTipText("Quit the Program");
    chkFocusCatcher.MakeFocusCatcher();
}

void MainControls::DressButtons() {
    const std::array<ButtonLook, 12> table{{
        {ibRecipeButton, "recipe-tab", true},
        {ibPhotoButton, "photo-tab", true},
        {ibBack, "back", false},
        {ibNext, "next", false},
        {ibELeft, "arrow-left", false},
        {ibERight, "arrow-right", false},
        {ibReset, "favorites", false},
        {ibAdd, "add", false},
        {ibSearch, "find", false},
        {ibHelp, "help", false},
        {ibPrint, "print", false},
        {ibExit, "exit", false},
    }};
    for (const ButtonLook& row : table) {
        const std::string art = std::string("buttons/") + row.art;
        ImageButton::Design design;
        design.Image = Picture::FromArt(art);
        design.ImagePressed = Picture::FromArt(art + "-pressed");
        if (row.hasDisabled) design.ImageDisabled = Picture::FromArt(art + "-disabled");
        row.button.SetDesign(design);
    }
    // Next and Back walk the list that has the focus, so a press must leave the focus there.
    ibNext.SetFocusOnClick(false);
    ibBack.SetFocusOnClick(false);
    imgSortByName.SetPicture(ImageList1.Item("ByName"));
    imgSortByNum.SetPicture(ImageList1.Item("ByNum"));
    imgAddToFavorites.SetPicture(ImageList1.Item("Star"));
    for (Image* image : {&imgSortByName, &imgSortByNum, &imgAddToFavorites})
        MakeButton(*image);
}

void MainControls::DressLabels() {
    using Align = Label::Alignment;
    const Font heading{Font::Family::Serif, 16.0F, true, false};
    const Font small{Font::Family::Sans, 10.0F, false, false};
    const std::array<LabelLook, 6> table{{
        {lblCategory, heading, SlateBlue, Align::Left},
        {lblFound, {Font::Family::Sans, 10.0F, false, true}, Ink, Align::Right},
        {lblTotal, {Font::Family::Serif, 13.0F, false, true}, SlateBlue, Align::Right},
        {lblRecipeNum, {Font::Family::Serif, 15.0F, true, false}, SlateBlue, Align::Center},
        {lblJustWithPics, small, Ink, Align::Left},
        {lblFamily, small, Ink, Align::Center},
    }};
    for (const LabelLook& row : table) {
        row.label.SetFont(row.font);
        row.label.SetForeColor(row.color);
        row.label.SetAlignment(row.alignment);
    }
    lblJustWithPics.SetCaption("Show only recipes with pictures.");
}

void MainControls::DressLists() {
    for (ListView* list : {&lvwX1, &lvwX2}) {
        list->SetFont({Font::Family::Sans, 13.2F, false, false});
        list->SetForeColor(Ink);
    }
    lvwX2.SetSmallIcons(&imlIcons);
    lvwX1.SetColumns({lvwX1.Width()});
    lvwX2.SetColumns({0, 0, 0});
}

}  // namespace larder
