#include "lists/Favorites.h"

#include <string>

#include "app/frmMain.h"
#include "lists/NumberString.h"

namespace larder {

bool Favorites::IsInFavorites(std::int32_t RecipeNum) {
    VirtualListItem& entry = Entry();
    if (entry.Tag.empty() || entry.Tag.front() != ' ') entry.Tag.insert(0, " ");
    return entry.Tag.find(Blanked(RecipeNum)) != std::string::npos;
}

void Favorites::AddToFavorites(std::int32_t RecipeNum) {
    if (RecipeNum < 1 || RecipeNum > main.store.TotalNumRecords) return;
    VirtualListItem& entry = Entry();
    if (entry.Tag.find(Blanked(RecipeNum)) != std::string::npos) return;
    if (entry.Tag.empty()) entry.Tag = " ";
    entry.Tag += std::to_string(RecipeNum) + " ";
    main.categories.UpdateCategoryFile();
}

void Favorites::RemoveFromFavorites(std::int32_t RecipeNum) {
    VirtualListItem& entry = Entry();
    if (entry.Tag.find(Blanked(RecipeNum)) != std::string::npos) {
        main.YS.ReplaceStr(entry.Tag, Blanked(RecipeNum), " ");
        main.categories.UpdateCategoryFile();
    }
    if (main.ui.lblCategory.Caption() == "MY FAVORITES") {
        main.recipes.RemoveFrom_lvwX2(RecipeNum);
    }
}

VirtualListItem& Favorites::Entry() {
    VirtualListItem* entry = main.VList[0].PeekKey("MY FAVORITES");
    if (entry == nullptr) throw Failure(failure::ElementNotFound, "Favorites");
    return *entry;
}

}  // namespace larder
