#include "edit/RecipeEditor.h"

#include "app/frmMain.h"

namespace larder {

RecipeEditor::RecipeEditor(frmMain& hub) : main(hub) {}

RecipeEditor::~RecipeEditor() = default;

void RecipeEditor::ShowNew() {}

void RecipeEditor::LoadRecipeToUpdate(std::int32_t) {}

std::string RecipeEditor::Title() const {
    return {};
}

std::string RecipeEditor::RecipeRTF() const {
    return {};
}

void RecipeEditor::SetMousePointer(int) {}

void RecipeEditor::Unload() {}

void RecipeEditor::SetInPlaceEdit(bool open) {
    booInPlaceEdit_ = open;
    main.ui.rtbSee.SetLocked(!open);
    main.viewer.Modified = false;
}

void RecipeEditor::EditRecipe_InPlace() {}

void RecipeEditor::SaveInPlaceEdit() {}

}  // namespace larder
