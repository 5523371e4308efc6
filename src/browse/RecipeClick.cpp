#include "app/frmMain.h"
#include "browse/RecipeViewer.h"
#include "platform/Text.h"

namespace larder {

void RecipeViewer::RecipeItemClick(ListItem& Item, bool /*Keyboard*/) {
    Ignoring([&] {
        const std::string tag = Item.Tag;
        Item.SetSelected();
        main.lists.RememberSelectedKey(2);
        if (main.listInput.booRightClick) {
            main.listInput.booRightClick = false;
            main.categories.SimulateChoiceClick(tag);
            if (main.recipes.booRecipeColumns) PopUpMenuFor(ToLong(tag));
            return;
        }
        OpenLine(Item);
        strLastClickedTag = tag;
    });
}

void RecipeViewer::OpenLine(const ListItem& Item) {
    const std::int32_t number = ToLong(Item.Tag);
    main.ui.lblCategory.SetCaption(main.strLastRecipeCategory);
    ++linesOpened_;
    if (lngCurrentRecipe == number) {
        FlipMode();
    } else {
        SetCurrentRecipe(number);
        main.pictureView.ShowCurRecipePicture();
    }
}

void RecipeViewer::PopUpMenuFor(std::int32_t number) {
    SetMenuEntries(number);
    // A save would wait for the end of the menu.
    if (!main.editor.Busy()) main.ui.mnuPopUp.Popup(main.ui.window);
    main.lists.RefreshLvwX(2);
}

void RecipeViewer::SetMenuEntries(std::int32_t number) {
    MainControls& ui = main.ui;
    ui.mnuPopUpSeparator1.Visible = true;
    if (main.ui.lblCategory.Caption() == "MY FAVORITES") {
        ui.mnuPopUpRemoveFromFavorites.Visible = true;
        ui.mnuPopUpAddToFavorites.Visible = false;
    } else if (!main.favorites.IsInFavorites(number)) {
        ui.mnuPopUpAddToFavorites.Visible = true;
        ui.mnuPopUpRemoveFromFavorites.Visible = false;
    } else {
        ui.mnuPopUpSeparator1.Visible = false;
        ui.mnuPopUpAddToFavorites.Visible = false;
        ui.mnuPopUpDelete.Visible = true;
        ui.mnuPopUpRemoveFromFavorites.Visible = true;
    }
    const bool own = number > main.store.OriginalNumRecords || main.booEditMode;
    ui.mnuPopUpEdit.Visible = own;
    ui.mnuPopUpDelete.Visible = own;
    if (!own) ui.mnuPopUpSeparator1.Visible = false;
}

void RecipeViewer::Next() {
    StepAndClick(true);
}

void RecipeViewer::Back() {
    StepAndClick(false);
}

void RecipeViewer::StepAndClick(bool forward) {
    // A list whose bar was scrolled away still is the one that the user is in.
    main.lists.ReturnFocus();
    const std::int16_t k = main.ui.lvwX1.HasFocus() ? 1 : 2;
    ListView& list = main.ui.lvwX(k);
    // While the list is off the screen its lines are still those of the list before.
    if (!list.Visible()) return;
    // The focus brings the selected line back into the window, if it was scrolled out of it.
    Ignoring([&] { list.SetFocus(); });
    const ListItem* before = list.SelectedItem();
    const std::string keyBefore = before == nullptr ? std::string() : before->Key();
    if (forward) {
        main.steps.SelectNext(k);
    } else {
        main.steps.SelectPrevious(k);
    }
    ListItem* line = list.SelectedItem();
    // At the end of the list the bar stays where it is, and the recipe must not flip.
    if (line != nullptr && line->Key() != keyBefore) {
        if (k == 1) {
            main.categories.CategoryItemClick(*line, true);
        } else {
            RecipeItemClick(*line, true);
        }
    }
    if (!list.HideSelection()) main.lists.RememberSelectedKey(k);
    Ignoring([&] { list.SetFocus(); });
}

}  // namespace larder
