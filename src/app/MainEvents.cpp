#include "app/MainEvents.h"

#include <functional>

#include "app/frmMain.h"
#include "platform/Keys.h"
#include "platform/Text.h"

namespace larder {

namespace {

// A click that fails ends without a word, as the user can just click again.
template <typename Act>
std::function<void()> Quietly(Act act) {
    return [act] { Ignoring(act); };
}

}  // namespace

void MainEvents::Connect() {
    ConnectWindow();
    ConnectButtons();
    ConnectPictures();
    ConnectMenu();
    ConnectViewer();
}

void MainEvents::ConnectWindow() {
    Window& window = main.ui.window;
    window.OnKeyDown = [this](int& KeyCode, int Shift) { KeyDown(KeyCode, Shift); };
    window.OnResize = [this] {
        if (main.startUp.LayoutBegun()) main.layout.ResizeIt();
    };
    window.OnUnload = [this] { main.Unload(); };
    main.instance.OnSecondStart = [this] { main.ui.window.BringToFront(); };
    // What can wait until the cook sees the window.
    window.OnFirstPaint = [this] {
        main.ui.window.SetIcon("tidewell-larder");  // is drawn in all its sizes
        main.ownRecipes.DeleteUnfinishedCopies();   // looks through a folder of any length
    };
}

void MainEvents::ConnectButtons() {
    MainControls& ui = main.ui;
    ui.ibRecipeButton.OnClick = Quietly([this] { main.screen.ClickRecipeButton(); });
    ui.ibPhotoButton.OnClick = Quietly([this] { main.screen.ClickPhotoButton(); });
    ui.ibReset.OnClick = Quietly([this] { main.screen.ClickReset(); });
    ui.ibHelp.OnClick = Quietly([this] { main.screen.ClickHelp(); });
    ui.ibSearch.OnClick = Quietly([this] {
        main.SoundClick();
        main.search.ShowDialog();
    });
    ui.ibAdd.OnClick = Quietly([this] {
        main.SoundClick();
        main.editDialogs.ShowAddChoice();
    });
    ui.ibPrint.OnClick = Quietly([this] { main.SoundClick(); });
    ui.ibNext.OnClick = Quietly([this] {
        main.SoundClick();
        main.viewer.Next();
    });
    ui.ibBack.OnClick = Quietly([this] {
        main.SoundClick();
        main.viewer.Back();
    });
    ui.ibExit.OnClick = Quietly([this] {
        main.SoundClick();
        main.ui.window.Close();
    });
}

void MainEvents::ConnectPictures() {
    MainControls& ui = main.ui;
    ui.imgPicture.OnClick = Quietly([this] { main.screen.ClickPicture(); });
    ui.lblJustWithPics.OnClick = Quietly([this] { main.screen.ClickJustWithPics(); });
    const auto connectLooks = [this](Image& image, const std::string& key, bool sounds) {
        const auto show = [this, &image, sounds](const std::string& look) {
            Ignoring([&] {
                if (sounds) {
                    main.screen.DoButton(image, look);
                } else {
                    image.SetPicture(main.ui.ImageList1.Item(look));
                }
            });
        };
        image.OnMouseDown = [show, key](int, int, float, float) { show(key + "Pressed"); };
        image.OnMouseUp = [show, key](int, int, float, float) { show(key); };
    };
    connectLooks(ui.imgAddToFavorites, "Star", false);  // its click sounds by itself
    connectLooks(ui.imgSortByName, "ByName", true);
    connectLooks(ui.imgSortByNum, "ByNum", true);
    ui.imgAddToFavorites.OnClick = Quietly([this] {
        main.SoundClick();
        main.favorites.AddToFavorites(main.viewer.CurrentRecipe());
    });
    ui.imgSortByName.OnClick = Quietly([this] { main.recipes.SortListBy(3, 0); });
    ui.imgSortByNum.OnClick = Quietly([this] { main.recipes.SortListBy(2, 0); });
}

void MainEvents::ConnectMenu() {
    const auto selectedNumber = [this] {
        const ListItem* line = main.ui.lvwX2.SelectedItem();
        return line == nullptr ? -1 : ToLong(line->Tag);
    };
    main.ui.mnuPopUpAddToFavorites.OnClick = Quietly([this, selectedNumber] {
        main.SoundClick();
        main.favorites.AddToFavorites(selectedNumber());
    });
    main.ui.mnuPopUpRemoveFromFavorites.OnClick = Quietly([this, selectedNumber] {
        main.SoundClick();
        main.favorites.RemoveFromFavorites(selectedNumber());
    });
    main.ui.mnuPopUpEdit.OnClick = Quietly([this, selectedNumber] {
        main.SoundClick();
        main.ownRecipes.EditRecipe(selectedNumber());
    });
    main.ui.mnuPopUpDelete.OnClick = Quietly([this, selectedNumber] {
        main.SoundClick();
        main.ownRecipes.DeleteRecipe(selectedNumber(), true, false);
    });
}

void MainEvents::ConnectViewer() {
    main.ui.rtbSee.OnChange = [this] { main.viewer.Modified = true; };
}

void MainEvents::KeyDown(int& KeyCode, int Shift) {
    bool acted = false;
    Ignoring([&] { acted = Act(KeyCode, Shift); });
    if (acted) KeyCode = key::None;
}

bool MainEvents::Act(int KeyCode, int Shift) {
    MainControls& ui = main.ui;
    if (main.listInput.TakeDivertedKey(KeyCode)) return true;
    switch (KeyCode) {
        case key::Enter:
            // In a viewer that is open to typing, Enter is text as any letter is.
            if (ui.rtbSee.HasFocus() && !ui.rtbSee.Locked()) return false;
            main.lists.ReturnFocus();
            if (ui.lvwX1.HasFocus()) {
                main.categories.SimulateCategoryClick("");
            } else {
                // Of a bar that was scrolled away the line is brought back: what stands on it by
                // now is another recipe.
                if (ui.lvwX2.Visible()) main.lists.HighlightSelected(2, true);
                main.categories.SimulateChoiceClick("");
            }
            return true;
        case key::E:
            if (!main.booEditMode || !ui.lvwX2.HasFocus()) return false;
            main.editor.EditRecipe_InPlace();
            return true;
        case key::F1:
            ui.ibHelp.OnClick();
            return true;
        case key::F:
            if ((Shift & shift::Ctrl) == 0) return false;
            ui.ibSearch.OnClick();
            return true;
        case key::N:
            if ((Shift & shift::Alt) == 0) return false;
            ui.ibNext.OnClick();
            return true;
        case key::B:
            if ((Shift & shift::Alt) == 0) return false;
            ui.ibBack.OnClick();
            return true;
        default:
            return false;
    }
}

}  // namespace larder
