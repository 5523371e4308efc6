#include "lists/PictureSet.h"

#include <algorithm>

#include "app/frmMain.h"
#include "lists/NumberString.h"
#include "platform/Text.h"

namespace larder {

namespace {

constexpr const char* Extensions[] = {".jpg", ".bmp", ".gif"};

}  // namespace

bool PictureSet::HasPicture(const std::string& strRecipeNum) const {
    return strAllWithPicture.Holds(strRecipeNum);
}

bool PictureSet::ShowsPicture(std::int32_t RecipeNum) const {
    if (!HasPicture(std::to_string(RecipeNum))) return false;
    return RecipeNum <= main.store.OriginalNumRecords || !main.store.IsBlank(RecipeNum);
}

std::string PictureSet::CheckForAPicture(std::string strRecipeNum) {
    strPictureFileName.clear();
    if (strRecipeNum == "....") strRecipeNum = std::to_string(main.viewer.CurrentRecipe());
    std::string folder = main.paths.strPhotosPathCD;
    if (IsNumeric(strRecipeNum)) {
        std::int32_t number = 0;
        const int failed = Ignoring([&] { number = ToLong(strRecipeNum); });
        if (failed != 0) return {};  // too long for any recipe
        if (number > main.store.OriginalNumRecords) {
            folder = main.paths.strPhotosPath;
        } else if (!WaitForPhotoFolder()) {
            return {};
        }
    }
    strPictureFileName = FirstFile(folder + strRecipeNum);
    if (strPictureFileName.empty()) {
        // Once more among the stock photos, for a number with blanks around it.
        strPictureFileName =
            FirstFile(main.paths.strPhotosPathCD + main.YS.TrimSpaces(strRecipeNum));
    }
    return strPictureFileName;
}

std::string PictureSet::FirstFile(const std::string& base) const {
    for (const char* extension : Extensions) {
        if (main.objFSO.FileExists(base + extension)) return base + extension;
    }
    return {};
}

void PictureSet::DeleteFiles(std::int32_t RecipeNum, const std::vector<std::string>& kept) {
    for (const std::string& folder : {main.paths.strPhotosPath, main.paths.strPhotosPathCD}) {
        const std::string base = folder + std::to_string(RecipeNum);
        bool deleted = false;
        for (const char* extension : Extensions) {
            const std::string file = base + extension;
            if (!main.objFSO.FileExists(file)) continue;
            const bool stays = std::ranges::any_of(
                kept, [&](const std::string& other) { return main.objFSO.SameFile(file, other); });
            if (stays) continue;
            deleted |= Ignoring([&] { main.files.Delete(file); }) == 0;
        }
        // A picture that has gone must not come back with the power.
        if (deleted) Ignoring([&] { main.files.FlushAll({}, base); });
    }
}

bool PictureSet::WaitForPhotoFolder() {
    while (!main.objFSO.FolderExists(main.paths.strPhotosPathCD)) {
        if (!main.AskOkCancel(
                "Can't find picture folder.\rPlease, make sure the CD is in the drive.")) {
            return false;
        }
    }
    return true;
}

void PictureSet::AddToAllWithPicture(std::int32_t RecipeNum) {
    VirtualListItem* entry = main.VList[0].PeekKey("ALL RECIPES WITH PICTURES");
    if (entry == nullptr) return;
    if (entry->Tag.find(Blanked(RecipeNum)) != std::string::npos) return;
    entry->Tag += std::to_string(RecipeNum) + " ";
    strAllWithPicture.Assign(entry->Tag);
    main.categories.UpdateCategoryFile();
}

void PictureSet::RemoveFromAllWithPicture(std::int32_t RecipeNum) {
    VirtualListItem* entry = main.VList[0].PeekKey("ALL RECIPES WITH PICTURES");
    if (entry == nullptr) return;
    if (entry->Tag.find(Blanked(RecipeNum)) == std::string::npos) return;
    main.YS.ReplaceStr(entry->Tag, Blanked(RecipeNum), " ");
    strAllWithPicture.Assign(entry->Tag);
    main.categories.UpdateCategoryFile();
}

void PictureSet::TakeFromCategories() {
    const VirtualListItem* entry = main.VList[0].PeekKey("ALL RECIPES WITH PICTURES");
    if (entry != nullptr) strAllWithPicture.Assign(entry->Tag);
}

void PictureSet::QueryPicturesOnly() {
    ListView& lines = main.ui.lvwX2;
    const int last = lines.Count() + 1;
    for (int i = 1; i <= last; ++i) {
        Ignoring([&] {
            if (!lines.Item(i).Bold()) lines.Remove(i);
        });
    }
}

}  // namespace larder
