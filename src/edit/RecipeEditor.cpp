#include "edit/RecipeEditor.h"

#include "app/frmMain.h"
#include "edit/frmAddRecipe.h"
#include "platform/Failure.h"

namespace larder {

RecipeEditor::RecipeEditor(frmMain& hub) : main(hub), saving_(hub) {
    main.ui.window.OnQueryUnload = [this] { return MayClose(); };
}

RecipeEditor::~RecipeEditor() = default;

frmAddRecipe& RecipeEditor::Form() {
    if (form_ == nullptr) form_ = std::make_unique<frmAddRecipe>(main);
    return *form_;
}

void RecipeEditor::ShowNew() {
    frmAddRecipe& form = Form();
    if (form.window.Visible()) {
        form.window.BringToFront();
        return;
    }
    form.Load();
    form.Show();
}

void RecipeEditor::LoadRecipeToUpdate(std::int32_t RecipeNum) {
    if (RecipeNum < 1 || RecipeNum > main.store.TotalNumRecords || Busy()) return;
    if (RecipeNum <= main.store.OriginalNumRecords && !main.booEditMode) return;
    if (!SaveInPlaceEdit()) return;
    const TitleIs title = main.store.LookUpTitle(RecipeNum).Is;
    if (title == TitleIs::Gone) return;  // deleted: it cannot come back
    frmAddRecipe& form = Form();
    const bool shown = form.window.Visible();
    if (shown && form.lngRecipeNum == RecipeNum && !form.booNewRecipe)
        return form.window.BringToFront();
    // Without its title a recipe is not read: the disc would be asked for again.
    const std::string strRTF =
        title == TitleIs::There ? main.store.GetRecipeRTF(RecipeNum) : std::string();
    if (!IsReadable(title, strRTF)) {
        main.dialogs.MessageBox("Couldn't read recipe #" + std::to_string(RecipeNum),
                                Dialogs::Buttons::Ok, Dialogs::Icon::Critical, "Tidewell Larder");
        return;
    }
    if (shown && !MayDropWork()) return;
    form.Empty();
    form.Load();
    SetInPlaceEdit(false);
    try {
        form.TakeRecipe(RecipeNum, strRTF);
    } catch (const Failure&) {
        form.Discard();  // half a recipe must not pass for a new one at the next opening
        throw;
    }
    form.Show();
}

// Every recipe that was stored has a text. One that comes without was not read, and whatever stood
// in its place would replace it when it is saved.
bool RecipeEditor::IsReadable(TitleIs title, const std::string& strRTF) {
    return title == TitleIs::There && !strRTF.empty();
}

bool RecipeEditor::MayDropWork() {
    if (form_ == nullptr || !form_->HoldsWork()) return true;
    form_->window.BringToFront();
    return main.dialogs.MessageBox(
               "The recipe in the editor has not been saved.\nDo you want to drop the changes?",
               Dialogs::Buttons::YesNoPreferNo, Dialogs::Icon::Question,
               "Tidewell Larder") == Dialogs::Answer::Yes;
}

bool RecipeEditor::MayClose() {
    return !Busy() && MayDropWork();
}

std::string RecipeEditor::Title() const {
    return form_ == nullptr ? std::string() : form_->Title();
}

std::string RecipeEditor::RecipeRTF() const {
    return form_ == nullptr ? std::string() : form_->RecipeRTF();
}

void RecipeEditor::SetMousePointer(int pointer) {
    if (form_ != nullptr) form_->window.SetMousePointer(pointer);
}

void RecipeEditor::Unload() {
    if (form_ != nullptr) form_->Discard();
}

void RecipeEditor::ClickAdd() {
    saving_.ibAdd_Click(Form());
}

void RecipeEditor::SetInPlaceEdit(bool open) {
    booInPlaceEdit_ = open;
    main.ui.rtbSee.SetLocked(!open);
    main.viewer.Modified = false;
}

void RecipeEditor::EditRecipe_InPlace() {
    if (Busy()) return;  // what the save shows at its end would replace what is typed
    if (!main.viewer.ShowRecipe(-1) || main.viewer.RecipeInBox == 0) return;
    SetInPlaceEdit(true);
    Ignoring([this] { main.ui.rtbSee.SetFocus(); });
}

bool RecipeEditor::SaveInPlaceEdit() {
    return saving_.SaveInPlaceEdit();
}

}  // namespace larder
