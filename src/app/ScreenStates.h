#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace larder {

class Control;
class frmMain;
class Image;

// What the display area shows and what the buttons around it look like. There is no variable for
// the state of the screen: it is what is visible, with the encyclopedia mode beside it, and each
// routine that brings a state up takes the others down first.
class ScreenStates {
  public:
    explicit ScreenStates(frmMain& hub) : main(hub) {}

    bool EncyclopediaMode() const { return booEncyclopediaMode; }
    void SetEncyclopediaMode(bool on);
    // The page as a category opens: without a recipe.
    void ShowCategoryPage();

    void DimPhotoButton();
    void NormPhotoButton();
    void DimRecipeButton();
    void NormRecipeButton();

    // The fish of one family in the description view: which of how many is on show, and the
    // arrows to the others. Hidden for a family of one, and when booShow is false.
    void ShowFamilyControls(bool booShow);
    std::int16_t intFamilyFirst = 0;
    std::int16_t intFamilyCount = 0;
    std::int16_t intFamilyIndex = 0;

    // Takes all controls off the screen, and puts back what was visible. Hiding twice changes
    // nothing.
    void HideAll(bool booHide);
    // The look of a flat image control from ImageList1; the return to a normal look sounds.
    void DoButton(Image& imgButton, const std::string& strKey);

    // The clicks on the window's buttons and pictures.
    void ClickRecipeButton();
    void ClickPhotoButton();
    void ClickReset();
    void ClickHelp();
    void ClickPicture();
    void ClickJustWithPics();

  private:
    frmMain& main;
    bool booEncyclopediaMode = false;
    std::vector<Control*> controlsHidden;
};

}  // namespace larder
