#include "lists/PictureSet.h"

#include "app/frmMain.h"

namespace larder {

bool PictureSet::HasPicture(const std::string& strRecipeNum) const {
    return strAllWithPicture.find(" " + strRecipeNum + " ") != std::string::npos;
}

void PictureSet::TakeFromCategories() {
    const VirtualListItem* entry = main.VList[0].PeekKey("ALL RECIPES WITH PICTURES");
    if (entry != nullptr) strAllWithPicture = entry->Tag;
}

}  // namespace larder
