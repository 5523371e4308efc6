#include "store/OwnRecipes.h"

#include "app/frmMain.h"

namespace larder {

bool OwnRecipes::AddRecipe() {
    return false;
}

void OwnRecipes::EditRecipe(std::int32_t RecipeNum) {
    main.editor.LoadRecipeToUpdate(RecipeNum);
}

bool OwnRecipes::UpdateRecipe(std::int32_t, const std::string&, const std::string&) {
    return false;
}

void OwnRecipes::DeleteRecipe(std::int32_t, bool, bool) {}

}  // namespace larder
