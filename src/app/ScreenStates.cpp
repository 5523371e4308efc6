#include "app/ScreenStates.h"

#include "app/frmMain.h"
#include "platform/Text.h"

namespace larder {

void ScreenStates::SetEncyclopediaMode(bool on) {
    booEncyclopediaMode = on;
    if (!on && main.ui.lvwX2.Count() >= 1) {
        main.ui.imgPicture.SetToolTipText("Click to see recipe.");
    }
}

void ScreenStates::ShowCategoryPage() {
    SetEncyclopediaMode(true);
    main.ui.rtbSee.SetVisible(false);
    main.ui.frPic.SetVisible(false);
}

void ScreenStates::DimPhotoButton() {
    main.ui.ibPhotoButton.SetButtonState(ImageButton::Disabled);
    main.ui.ibPhotoButton.SetToolTipText("");
}

void ScreenStates::NormPhotoButton() {
    main.ui.ibPhotoButton.SetButtonState(ImageButton::Up);
    main.ui.ibPhotoButton.SetToolTipText("Click to see recipe picture");
}

void ScreenStates::DimRecipeButton() {
    main.ui.ibRecipeButton.SetButtonState(ImageButton::Disabled);
    main.ui.ibRecipeButton.SetToolTipText("");
}

void ScreenStates::NormRecipeButton() {
    main.ui.ibRecipeButton.SetButtonState(ImageButton::Up);
    main.ui.ibRecipeButton.SetToolTipText("Click to see recipe");
}

void ScreenStates::ShowFamilyControls(bool booShow) {
    MainControls& ui = main.ui;
    const int p = intFamilyFirst - intFamilyIndex;
    const bool shown = booShow && intFamilyCount > 1;
    if (shown) {
        ui.lblFamily.SetCaption(std::to_string(p) + " of " + std::to_string(intFamilyCount));
    }
    ui.lblFamily.SetVisible(shown);
    ui.ibELeft.SetVisible(shown && p != 1);
    ui.ibERight.SetVisible(shown && p != intFamilyCount);
}

void ScreenStates::HideAll(bool booHide) {
    if (!booHide) {
        for (Control* control : controlsHidden)
            control->SetVisible(true);
        return;
    }
    if (!main.ui.imgBackGroundMain.Visible()) return;
    controlsHidden.clear();
    for (Control* control : main.ui.window.Controls()) {
        if (!control->Visible()) continue;
        controlsHidden.push_back(control);
        control->SetVisible(false);
    }
}

void ScreenStates::DoButton(Image& imgButton, const std::string& strKey) {
    if (LowerCase(strKey).find("pressed") == std::string::npos) main.SoundClick();
    imgButton.SetPicture(main.ui.ImageList1.Item(strKey));
}

void ScreenStates::ClickRecipeButton() {
    main.SoundClick();
    main.viewer.ShowRecipe(-1);
}

void ScreenStates::ClickPhotoButton() {
    main.SoundClick();
    if (!main.pictures.HasPicture(std::to_string(main.viewer.CurrentRecipe()))) return;
    DimPhotoButton();
    NormRecipeButton();
    main.pictureView.ShowCurRecipePicture();
}

void ScreenStates::ClickReset() {
    main.SoundClick();
    main.lists.ShowListItems(1, 1, true);
    main.categories.SimulateCategoryClick("MY FAVORITES");
}

void ScreenStates::ClickHelp() {
    main.SoundClick();
    main.ui.lblCategory.SetCaption("Help");
}

void ScreenStates::ClickPicture() {
    main.SoundClick();
    if (main.ui.lvwX2.Count() == 0) return;
    if (booEncyclopediaMode) {
        main.pictureView.ShowCurRecipePicture();
    } else {
        main.viewer.ShowRecipe(-1);
    }
}

void ScreenStates::ClickJustWithPics() {
    main.ui.chkJustWithPictures.SetValue(main.ui.chkJustWithPictures.Value() == 0 ? 1 : 0);
}

}  // namespace larder
