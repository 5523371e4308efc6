#include "edit/RecipeSaving.h"

#include <string>

#include "app/frmMain.h"
#include "edit/TitleLine.h"
#include "edit/frmAddRecipe.h"
#include "platform/Failure.h"

namespace larder {

namespace {

// Tab passes a box by whose text is being stored.
class WithoutTabStop {
  public:
    explicit WithoutTabStop(RichTextBox& box) : box_(box) { box_.SetTabStop(false); }
    ~WithoutTabStop() { box_.SetTabStop(true); }
    WithoutTabStop(const WithoutTabStop&) = delete;
    WithoutTabStop& operator=(const WithoutTabStop&) = delete;

  private:
    RichTextBox& box_;
};

// Runs a save; a failure that it lets through is told, and what was to be saved stays.
template <typename Save>
void Telling(frmMain& main, Save&& save) {
    try {
        save();
    } catch (const Failure& failure) {
        main.dialogs.MessageBox(failure.Description, Dialogs::Buttons::Ok, Dialogs::Icon::Critical,
                                "Tidewell Larder");
    }
}

}  // namespace

// The look of work under way, on every window, until it ends in whatever way.
class RecipeSaving::Working {
  public:
    explicit Working(RecipeSaving& saving) : saving_(saving) {
        saving_.busy_ = true;
        Point(11);
    }
    ~Working() {
        saving_.busy_ = false;
        Point(0);
    }
    Working(const Working&) = delete;
    Working& operator=(const Working&) = delete;

  private:
    void Point(int pointer) {
        saving_.main.editor.SetMousePointer(pointer);
        saving_.main.ui.window.SetMousePointer(pointer);
    }
    RecipeSaving& saving_;
};

// The viewer takes no typing while the editor's text is stored. Afterwards it is as it was, or open
// to the recipe that was shown meanwhile, as with "/E" every one is.
class RecipeSaving::ViewerLocked {
  public:
    ViewerLocked(RecipeSaving& saving, bool wasOpen) : saving_(saving), wasOpen_(wasOpen) {
        saving_.shown_ = false;
        if (wasOpen_) saving_.main.editor.SetInPlaceEdit(false);
    }
    ~ViewerLocked() {
        frmMain& main = saving_.main;
        const bool opens = saving_.shown_ ? main.viewer.RecipeInBox > 0 : wasOpen_;
        if (opens && !main.editor.InPlaceEdit()) main.editor.SetInPlaceEdit(true);
    }
    ViewerLocked(const ViewerLocked&) = delete;
    ViewerLocked& operator=(const ViewerLocked&) = delete;

  private:
    RecipeSaving& saving_;
    bool wasOpen_;
};

void RecipeSaving::ibAdd_Click(frmAddRecipe& form) {
    if (busy_) return;
    main.SoundClick();
    if (!form.window.Visible()) return;
    const bool inPlace = main.editor.InPlaceEdit();
    // What follows fills the viewer, and by then it is too late to store what was typed there.
    if (!SaveInPlaceEdit()) return;
    const ViewerLocked locked(*this, inPlace);
    const Working working(*this);
    const std::string caption = form.window.Caption();
    if (Store(form) != Outcome::Stored) {
        form.window.SetCaption(caption);
        return;
    }
    if (form.picture.booPictureChanged) {
        form.picture.Store(form.lngRecipeNum, form.booNewRecipe);
    }
    main.pictureView.ShowCurRecipePicture();
    form.Unload();
}

RecipeSaving::Outcome RecipeSaving::Store(frmAddRecipe& form) {
    Outcome outcome = Outcome::Failed;
    main.ownRecipes.NumberAdded = 0;
    Telling(main, [&] { outcome = form.booNewRecipe ? AddNew(form) : Update(form); });
    if (main.ownRecipes.NumberAdded == 0) return outcome;
    // A recipe that is in the book must not be added once more, and its number may be another one
    // than was foreseen: the half of another recipe, which was counted until then, has made way.
    form.lngRecipeNum = main.ownRecipes.NumberAdded;
    return Outcome::Stored;
}

RecipeSaving::Outcome RecipeSaving::AddNew(frmAddRecipe& form) {
    if (form.Title().empty()) {
        form.AskForTitle(form.rtbTitle);
        return Outcome::Empty;
    }
    form.window.SetCaption("Adding Recipe. One moment please...");
    const WithoutTabStop passed(form.rtbRecipe);
    return main.ownRecipes.AddRecipe() ? Outcome::Stored : Outcome::Failed;
}

RecipeSaving::Outcome RecipeSaving::Update(frmAddRecipe& form) {
    if (!form.booRecipeChanged && !form.picture.booPictureChanged) return Outcome::Stored;
    if (IsDeleted(form.lngRecipeNum)) {
        main.dialogs.MessageBox("Couldn't update recipe #" + std::to_string(form.lngRecipeNum),
                                Dialogs::Buttons::Ok, Dialogs::Icon::Critical, "Tidewell Larder");
        return Outcome::Failed;
    }
    if (!form.booRecipeChanged) return Outcome::Stored;
    form.window.SetCaption("Updating Recipe. One moment please...");
    const Outcome outcome = StoreText(form.rtbRecipe, form.lngRecipeNum);
    if (outcome == Outcome::Empty) form.AskForTitle(form.rtbRecipe);
    return outcome;
}

// A record that was deleted since it came on the screen does not come back.
bool RecipeSaving::IsDeleted(std::int32_t recipeNum) {
    return main.store.LookUpTitle(recipeNum).Is == TitleIs::Gone;
}

// The title is the first line behind leading white space, which is not stored. The box is only
// read: what the user typed, and can undo, is his whatever comes of the save.
RecipeSaving::Outcome RecipeSaving::StoreText(RichTextBox& box, std::int32_t recipeNum) {
    const WithoutTabStop passed(box);
    const std::string text = box.Text();
    const TitleLine title = TitleLineOf(text);
    if (title.Length == 0) return Outcome::Empty;
    const std::string strTitle = text.substr(title.From, title.Length);
    std::string strRTF = box.TextRTF();
    if (title.From > 0) strRTF = WithoutLeading(strRTF, title.From);
    const bool stored = main.ownRecipes.UpdateRecipe(recipeNum, strRTF, strTitle);
    return stored ? Outcome::Stored : Outcome::Failed;
}

std::string RecipeSaving::WithoutLeading(const std::string& strRTF, std::size_t count) {
    RichTextBox& work = main.ui.rtbT;
    work.SetTextRTF(strRTF);
    work.SetSelStart(0);
    work.SetSelLength(static_cast<std::int32_t>(count));
    work.SetSelRTF("");
    std::string rtf = work.TextRTF();
    work.SetTextRTF("");  // a long text would be sized with the window again and again
    return rtf;
}

bool RecipeSaving::SaveInPlaceEdit() {
    const std::int32_t number = main.viewer.RecipeInBox;
    if (busy_ || !main.editor.InPlaceEdit() || !main.viewer.Modified) return true;
    if (number < 1 || number > main.store.TotalNumRecords) return true;
    if (main.store.IsBlank(number)) return true;  // deleted; one that is only missing is told
    main.SoundClick();
    main.editor.SetInPlaceEdit(false);
    const Working working(*this);
    Outcome outcome = Outcome::Failed;
    Telling(main, [&] { outcome = StoreText(main.ui.rtbSee, number); });
    if (outcome == Outcome::Failed) main.editor.SetInPlaceEdit(true);
    main.viewer.Modified = outcome == Outcome::Failed;
    return outcome != Outcome::Failed;
}

}  // namespace larder
