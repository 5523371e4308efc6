#include "store/OwnRecipes.h"

#include <string_view>

#include "app/frmMain.h"
#include "platform/FolderNames.h"
#include "store/FileNumbers.h"

namespace larder {

namespace {

constexpr const char* lineEnds = "\r\n";
constexpr int hourglass = 11;

std::string UpToLineEnd(const std::string& text, std::size_t from = 0) {
    return text.substr(from, text.find_first_of(lineEnds, from) - from);
}

// Empty when the text has nothing but line ends.
std::string FirstFilledLine(const std::string& text) {
    const std::size_t start = text.find_first_not_of(lineEnds);
    return start == std::string::npos ? std::string() : UpToLineEnd(text, start);
}

// "12.jpg.new": what CopyFile writes beside the picture of a recipe.
bool IsUnfinishedCopy(const std::string& name) {
    const std::size_t digits = name.find_first_not_of("0123456789");
    if (digits == 0 || digits == std::string::npos) return false;
    const std::string_view ending = std::string_view(name).substr(digits);
    return ending == ".jpg.new" || ending == ".bmp.new" || ending == ".gif.new";
}

}  // namespace

OwnRecipes::OwnRecipes(frmMain& hub)
    : main(hub),
      writer_(hub.files, hub.paths, hub.store,
              [this](const std::string& text) { ShowError(text); }),
      updater_(hub.files, hub.paths, hub.store, writer_, *this) {}

void OwnRecipes::SettleLastRun() {
    try {
        writer_.Journal.SettleLastRun();
    } catch (const Failure& f) {
        ShowError("The last change of a recipe can't be finished.\n" + f.Description);
    }
}

void OwnRecipes::DeleteUnfinishedCopies() {
    for (const std::string& name : NamesIn(main.objFSO.Native(main.paths.strPhotosPath))) {
        if (!IsUnfinishedCopy(name)) continue;
        Ignoring([&] { main.files.Delete(main.paths.strPhotosPath + name); });
    }
}

bool OwnRecipes::AddRecipe() {
    return StoreNewRecipe(main.editor.Title(), main.editor.RecipeRTF());
}

bool OwnRecipes::StoreNewRecipe(const std::string& strTitleTXT, const std::string& strRTF) {
    NumberAdded = 0;
    const std::string title = FirstFilledLine(strTitleTXT);
    if (title.empty()) return false;
    if (!writer_.AddRecipeTo_YDB_IND(title, strRTF, filenumber::CustomRecipes,
                                     filenumber::CustomRecipesIndex)) {
        return false;
    }
    const std::int32_t number = NumberAdded = main.store.TotalNumRecords;
    main.store.SetTotalRecipes(main.store.TotalRecipes() + 1);
    main.ui.lblCategory.SetCaption("MY FAVORITES");
    main.favorites.AddToFavorites(number);
    main.categories.SimulateCategoryClick("MY FAVORITES");
    main.categories.SimulateChoiceClick(std::to_string(number));
    return true;
}

void OwnRecipes::EditRecipe(std::int32_t RecipeNum) {
    main.editor.LoadRecipeToUpdate(RecipeNum);
}

bool OwnRecipes::UpdateRecipe(std::int32_t RecipeNum, const std::string& strRTF,
                              const std::string& strTitleTXT) {
    return updater_.UpdateRecipe(RecipeNum, strRTF, UpToLineEnd(strTitleTXT));
}

void OwnRecipes::DeleteRecipe(std::int32_t RecipeNum, bool OnlyCustom, bool Silent) {
    if (!MayDelete(RecipeNum, OnlyCustom, Silent)) return;
    if (!UpdateRecipe(RecipeNum, "", "")) return;
    const std::int32_t current = main.viewer.CurrentRecipe();
    main.pictures.DeleteFiles(RecipeNum, {});
    main.store.SetTotalRecipes(main.store.TotalRecipes() - 1);
    main.favorites.RemoveFromFavorites(RecipeNum);
    main.pictures.RemoveFromAllWithPicture(RecipeNum);
    if (!Silent) main.recipes.RemoveFrom_lvwX2(RecipeNum);
    // A neighbour in the list may be on view by now.
    const std::int32_t now = main.viewer.CurrentRecipe();
    const bool noneLeft = now < 1 && current >= 1;
    if (now != RecipeNum && !noneLeft) return;
    main.viewer.SetCurrentRecipe(-1);
    main.ui.frPic.SetVisible(false);
    main.ui.rtbSee.SetText("");
    // What is typed into the empty viewer would be stored nowhere.
    main.viewer.RecipeInBox = 0;
    main.editor.SetInPlaceEdit(false);
}

bool OwnRecipes::MayDelete(std::int32_t RecipeNum, bool OnlyCustom, bool Silent) {
    const bool stock = RecipeNum <= main.store.OriginalNumRecords;
    if (stock && OnlyCustom && !main.booEditMode) return false;
    if (main.store.LookUpTitle(RecipeNum).Is == TitleIs::Gone) return false;  // deleted already
    if (Silent) return true;
    const auto answer = main.dialogs.MessageBox(
        "Permanently delete recipe #" + std::to_string(RecipeNum) + "?", Dialogs::Buttons::OkCancel,
        Dialogs::Icon::Question, "Tidewell Larder");
    return answer == Dialogs::Answer::Ok;
}

bool OwnRecipes::EditMode() const {
    return main.booEditMode;
}

void OwnRecipes::ShowError(const std::string& text) {
    main.dialogs.MessageBox(text, Dialogs::Buttons::Ok, Dialogs::Icon::Critical, "Tidewell Larder");
}

void OwnRecipes::TellMaintainer(const std::string& text) {
    main.dialogs.MessageBox(text, Dialogs::Buttons::Ok, Dialogs::Icon::Information,
                            "Tidewell Larder");
}

void OwnRecipes::SetHourglass(bool on) {
    main.ui.window.SetMousePointer(on ? hourglass : 0);
}

// The list behind the lines has the title too, so that it is right when the lines are written anew.
void OwnRecipes::ShowNewTitle(std::int32_t RecipeNum, const std::string& strTitleTXT) {
    const std::string number = std::to_string(RecipeNum);
    VirtualListItem* entry = main.VList[1].PeekKey("k" + number);
    if (entry != nullptr && entry->Num == RecipeNum) entry->Text = strTitleTXT;
    ListView& lines = main.ui.lvwX2;
    for (int i = 1; i <= lines.Count(); ++i) {
        if (lines.Item(i).Tag == number) lines.Item(i).SetSubItems(2, strTitleTXT);
    }
}

}  // namespace larder
