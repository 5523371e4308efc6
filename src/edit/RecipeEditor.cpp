#include "edit/RecipeEditor.h"

#include "app/frmMain.h"
#include "edit/frmAddRecipe.h"

namespace larder {

RecipeEditor::RecipeEditor(frmMain& hub) : main(hub), saving_(hub) {}

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
    if (main.store.GetRecipeTitle(RecipeNum).empty()) return;  // deleted: it cannot come back
    frmAddRecipe& form = Form();
    if (form.window.Visible()) {
        if (form.lngRecipeNum == RecipeNum) return form.window.BringToFront();
        if (!MayLeaveOpenEditor()) return form.window.BringToFront();
        form.Empty();
    }
    form.Load();
    SetInPlaceEdit(false);
    form.TakeRecipe(RecipeNum);
    form.Show();
}

bool RecipeEditor::MayLeaveOpenEditor() {
    if (!form_->HoldsWork()) return true;
    return main.dialogs.MessageBox(
               "The recipe in the editor has not been saved.\nDo you want to drop the changes?",
               Dialogs::Buttons::YesNo, Dialogs::Icon::Question,
               "Tidewell Larder") == Dialogs::Answer::Yes;
}

std::string RecipeEditor::Title() const {
    return form_ == nullptr ? std::string() : form_->Title();
}

std::string RecipeEditor::RecipeRTF() const {
    return form_ == nullptr ? std::string() : form_->rtbRecipe.TextRTF();
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
    if (!main.viewer.ShowRecipe(-1)) return;
    SetInPlaceEdit(true);
    Ignoring([this] { main.ui.rtbSee.SetFocus(); });
}

bool RecipeEditor::SaveInPlaceEdit() {
    return saving_.SaveInPlaceEdit();
}

}  // namespace larder
