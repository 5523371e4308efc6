#include "edit/frmAddChoice.h"

#include <array>
#include <cctype>
#include <utility>

#include "app/frmMain.h"
#include "layout/Util.h"
#include "platform/Keys.h"
#include "platform/Pixels.h"

namespace larder {

namespace {

constexpr std::int32_t Paper = 0xE4F4FB;  // #FBF4E4

constexpr Rectangle Ground = Pixels(0, 0, 460, 330);

// The key of the letter behind the '&' of a caption; none for a caption without one.
int AccessKey(const std::string& caption) {
    const std::size_t mark = caption.find('&');
    if (mark == std::string::npos || mark + 1 >= caption.size()) return key::None;
    return std::toupper(static_cast<unsigned char>(caption[mark + 1]));
}

}  // namespace

frmAddChoice::frmAddChoice(frmMain& hub) : window("frmAddChoice", &hub.ui.window), main(hub) {
    window.SetCaption("Tidewell Larder");
    window.SetClientSize(Ground.Width, Ground.Height);
    window.SetFixedSize();
    PlaceControls();
    DressControls();
    Connect();
    SetUp();  // the first paint may come before the dialog is active
    ibAddNewRecipe.SetFocus();
    CenterIt();
}

void frmAddChoice::PlaceControls() {
    imgGround.Move(Ground);
    linCancel.Move(Pixels(64, 253, 366, 2));
    ibAddNewRecipe.Move(Pixels(30, 28, 400, 46));
    ibAddToFavorites.Move(Pixels(30, 82, 400, 46));
    ibEdit.Move(Pixels(30, 136, 400, 46));
    ibDelete.Move(Pixels(30, 190, 400, 46));
    CancelButton.Move(Pixels(330, 268, 100, 40));
}

void frmAddChoice::DressControls() {
    imgGround.SetPicture(Picture::FromArt("choice-dialog"));
    linCancel.SetPicture(Picture::FromArt("rule"));
    const auto dress = [this](ImageButton& button, const std::string& art,
                              const std::string& caption) {
        ImageButton::Design design;
        design.Image = Picture::FromArt("buttons/" + art);
        design.ImagePressed = Picture::FromArt("buttons/" + art + "-pressed");
        if (&button != &CancelButton) {
            design.ImageDisabled = Picture::FromArt("buttons/" + art + "-disabled");
        }
        design.Caption = caption;
        design.CaptionFont = {Font::Family::Sans, 11.25F, true, false};
        design.ForColor = Paper;
        button.SetDesign(design);
    };
    dress(ibAddNewRecipe, "choice-new", "Create New Recipe");
    // The last three name the current recipe when there is one to name.
    dress(ibAddToFavorites, "choice-favorites", "Add Recipe To Favorites");
    dress(ibEdit, "choice-edit", "Edit Recipe");
    dress(ibDelete, "choice-delete", "Delete Recipe");
    dress(CancelButton, "choice-cancel", "Cancel");
}

void frmAddChoice::Connect() {
    window.OnActivate = [this] { SetUp(); };
    window.OnKeyDown = [this](int& KeyCode, int Shift) { KeyDown(KeyCode, Shift); };
    frmMain& hub = main;
    ibAddNewRecipe.OnClick = [this, &hub] {
        Choose(ibAddNewRecipe, [&hub] { hub.editor.ShowNew(); });
    };
    ibAddToFavorites.OnClick = [this, &hub] {
        Choose(ibAddToFavorites, [&hub, adds = booAddToFavorites] {
            const std::int32_t number = hub.viewer.CurrentRecipe();
            if (adds) {
                hub.favorites.AddToFavorites(number);
            } else {
                hub.favorites.RemoveFromFavorites(number);
            }
        });
    };
    ibEdit.OnClick = [this, &hub] {
        Choose(ibEdit, [&hub] {
            const std::int32_t number = hub.viewer.CurrentRecipe();
            if (number >= 1) hub.ownRecipes.EditRecipe(number);
        });
    };
    ibDelete.OnClick = [this, &hub] {
        Choose(ibDelete,
               [&hub] { hub.ownRecipes.DeleteRecipe(hub.viewer.CurrentRecipe(), true, false); });
    };
    CancelButton.OnClick = [this] { Choose(CancelButton, nullptr); };
}

void frmAddChoice::Choose(const ImageButton& button, std::function<void()> action) {
    if (button.ButtonState() == ImageButton::Disabled) return;
    main.SoundClick();
    chosen_ = std::move(action);
    window.Close();
}

std::function<void()> frmAddChoice::Ask() {
    window.ShowModal();
    return std::move(chosen_);
}

void frmAddChoice::CenterIt() {
    CenterInWorkArea(window);
}

void frmAddChoice::SetUp() {
    const std::int32_t number = main.viewer.CurrentRecipe();
    SetUpFavorites(number >= 1);
    SetUpWriting(number > main.store.OriginalNumRecords || main.booEditMode);
}

void frmAddChoice::SetUpFavorites(bool any) {
    ibAddToFavorites.SetButtonState(any ? ImageButton::Up : ImageButton::Disabled);
    if (!any) return;
    const std::int32_t number = main.viewer.CurrentRecipe();
    booAddToFavorites = !main.favorites.IsInFavorites(number);
    const std::string text = std::to_string(number);
    ibAddToFavorites.SetCaption(booAddToFavorites ? "&Add Recipe #" + text + " To Favorites"
                                                  : "&Remove Recipe #" + text + " From Favorites");
}

void frmAddChoice::SetUpWriting(bool open) {
    for (ImageButton* button : {&ibDelete, &ibEdit})
        button->SetButtonState(open ? ImageButton::Up : ImageButton::Disabled);
    if (!open) return;
    const std::string text = std::to_string(main.viewer.CurrentRecipe());
    ibDelete.SetCaption("&Delete Recipe #" + text);
    ibEdit.SetCaption("&Edit Recipe #" + text);
}

void frmAddChoice::KeyDown(int& KeyCode, int Shift) {
    if (KeyCode == key::Escape) {
        KeyCode = key::None;
        CancelButton.OnClick();
        return;
    }
    if ((Shift & shift::Alt) == 0) return;
    for (ImageButton* button : {&ibAddToFavorites, &ibEdit, &ibDelete}) {
        if (AccessKey(button->Caption()) != KeyCode) continue;
        KeyCode = key::None;
        button->OnClick();
        return;
    }
}

}  // namespace larder
