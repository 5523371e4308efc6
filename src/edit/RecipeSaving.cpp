#include "edit/RecipeSaving.h"

#include <string>

#include "app/frmMain.h"
#include "edit/frmAddRecipe.h"

namespace larder {

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

void RecipeSaving::ibAdd_Click(frmAddRecipe& form) {
    if (busy_) return;
    main.SoundClick();
    if (!form.window.Visible()) return;
    const Working working(*this);
    const std::int32_t number = form.lngRecipeNum;
    const std::string caption = form.window.Caption();
    Outcome outcome = Outcome::Stored;
    if (main.store.TotalNumRecords < number) {
        outcome = AddNew(form);
    } else if (form.booRecipeChanged) {
        outcome = Update(form);
    }
    if (outcome != Outcome::Stored) {
        form.window.SetCaption(caption);
        return;
    }
    if (form.picture.booPictureChanged) form.picture.Store(number);
    main.pictureView.ShowCurRecipePicture();
    form.Unload();
}

RecipeSaving::Outcome RecipeSaving::AddNew(frmAddRecipe& form) {
    RichTextBox& title = form.rtbTitle;
    RichTextBox& recipe = form.rtbRecipe;
    if (form.Title().empty()) {
        form.AskForTitle(title);
        return Outcome::Empty;
    }
    form.window.SetCaption("Adding Recipe. One moment please...");
    recipe.SetTabStop(false);
    const std::string before = recipe.TextRTF();
    // The first line that has something in it: pasted line ends in front of it are no title.
    title.SetSelStart(0);
    title.Span("\r\n\t");
    title.SetSelStart(title.SelStart() + title.SelLength());
    title.Span("\r\n\t", true, true);
    recipe.SetSelStart(0);
    recipe.SetSelRTF(title.SelRTF());
    recipe.SetSelStart(static_cast<std::int32_t>(title.SelText().size()));
    recipe.SetSelText("\r\r");
    const bool stored = main.ownRecipes.AddRecipe();
    recipe.SetTabStop(true);
    if (stored) return Outcome::Stored;
    recipe.SetTextRTF(before);
    return Outcome::Failed;
}

RecipeSaving::Outcome RecipeSaving::Update(frmAddRecipe& form) {
    if (IsDeleted(form.lngRecipeNum)) {
        main.dialogs.MessageBox("Couldn't update recipe #" + std::to_string(form.lngRecipeNum),
                                Dialogs::Buttons::Ok, Dialogs::Icon::Critical, "Tidewell Larder");
        return Outcome::Failed;
    }
    form.window.SetCaption("Updating Recipe. One moment please...");
    const Outcome outcome = StoreText(form.rtbRecipe, form.lngRecipeNum);
    if (outcome == Outcome::Empty) form.AskForTitle(form.rtbRecipe);
    return outcome;
}

// A record that was deleted since it came on the screen does not come back.
bool RecipeSaving::IsDeleted(std::int32_t recipeNum) {
    return main.store.GetRecipeTitle(recipeNum).empty();
}

// The title is the first line behind leading white space. What is not stored stays as it was.
RecipeSaving::Outcome RecipeSaving::StoreText(RichTextBox& box, std::int32_t recipeNum) {
    const std::string before = box.TextRTF();
    box.SetTabStop(false);
    box.SetSelStart(0);
    box.Span(" \r\n\t");
    const bool leadingBlanks = box.SelLength() > 0;
    if (leadingBlanks) box.SetSelRTF("");
    box.Span("\r\n\t", true, true);
    const std::string strTitle = box.SelText();
    box.SetSelStart(0);
    Outcome outcome = Outcome::Empty;
    if (!strTitle.empty()) {
        const bool stored = main.ownRecipes.UpdateRecipe(recipeNum, box.TextRTF(), strTitle);
        outcome = stored ? Outcome::Stored : Outcome::Failed;
    }
    box.SetTabStop(true);
    if (outcome != Outcome::Stored && leadingBlanks) box.SetTextRTF(before);
    return outcome;
}

bool RecipeSaving::SaveInPlaceEdit() {
    const std::int32_t number = main.viewer.RecipeInBox;
    if (busy_ || !main.editor.InPlaceEdit() || !main.viewer.Modified) return true;
    if (number < 1 || number > main.store.TotalNumRecords || IsDeleted(number)) return true;
    main.SoundClick();
    main.editor.SetInPlaceEdit(false);
    const Working working(*this);
    const Outcome outcome = StoreText(main.ui.rtbSee, number);
    if (outcome == Outcome::Failed) main.editor.SetInPlaceEdit(true);
    main.viewer.Modified = outcome == Outcome::Failed;
    return outcome != Outcome::Failed;
}

}  // namespace larder
