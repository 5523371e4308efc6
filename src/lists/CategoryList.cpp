#include "lists/CategoryList.h"

#include "app/frmMain.h"
#include "platform/Text.h"
#include "search/SearchText.h"

namespace larder {

namespace {

// The page of a category, while its list was filled, was given up for a recipe.
bool LeftItsPage(const frmMain& main, const std::string& text) {
    return text != "ALL RECIPES WITH PICTURES" && !main.screen.EncyclopediaMode() &&
           (main.ui.rtbSee.Visible() || main.ui.frPic.Visible());
}

}  // namespace

void CategoryList::ShowItemsInLvw1(std::int32_t startPos, bool ForceReload) {
    VirtualList& list = main.VList[0];
    ListView& lines = main.ui.lvwX1;
    if (list.Count() < 1) return;
    if (startPos == 0) startPos = list.CurrentIndex;
    startPos = MaxOf(MinOf(startPos, main.lists.LastStart(1)), 1);
    if (startPos == lastStart_ && !ForceReload && main.LinesInList[0] == lastLines_) return;
    lastStart_ = startPos;
    lastLines_ = main.LinesInList[0];
    const bool itsFocus = lines.HasFocus();
    main.lists.DivertFocusFrom(1);
    lines.SetVisible(false);
    main.lists.EnsureLinesAvailable(1);
    list.CurrentIndex = startPos;
    for (int i = 1; i <= lines.Count(); ++i) {
        const VirtualListItem* entry = list.Peek(startPos + i - 1);
        if (entry == nullptr) continue;
        ListItem& line = lines.Item(i);
        Ignoring([&] { line.SetKey(entry->Text); });
        line.Tag = entry->Tag;
        line.SetText(entry->Text);
        line.SetForeColor(entry->ForeColor);
    }
    main.lists.HighlightSelected(1, false);
    // It is the track of the recipe list that is looked at beside this list's own thumb.
    if (!main.ui.imgGarlic1.Tag.empty() || !main.ui.lblScroll2.Tag.empty()) {
        main.lists.RefreshLvwX(1);
    }
    main.lists.ShowList(1);
    main.lists.RefreshLvwX(1);
    if (itsFocus) main.lists.RestoreLvwFocus(1);
}

void CategoryList::SimulateCategoryClick(std::string strKey) {
    Ignoring([&] {
        strKey = UpperCase(strKey);
        if (strKey.empty()) {
            const ListItem* selected = main.ui.lvwX1.SelectedItem();
            if (selected == nullptr) return;
            strKey = selected->Key();
        }
        main.strSelectedKey[0] = strKey;
        main.lists.HighlightSelected(1, true);
        ListItem* line = main.lists.LineWithKey(1, strKey);
        if (line != nullptr) CategoryItemClick(*line, true);
    });
}

void CategoryList::SimulateChoiceClick(const std::string& strKey) {
    // While the list is off the screen its lines are still those of the list before.
    if (!main.ui.lvwX2.Visible()) return;
    if (!strKey.empty()) {
        main.strSelectedKey[1] = "k" + strKey;
        Ignoring([this] { main.lists.HighlightSelected(2, true); });
    }
    ListItem* line = main.ui.lvwX2.SelectedItem();
    if (line != nullptr) Ignoring([&] { main.viewer.RecipeItemClick(*line, true); });
}

void CategoryList::CategoryItemClick(ListItem& Item, bool Keyboard) {
    const std::uint32_t click = ++clicks_;
    // The line is reused for another entry when the window moves.
    const std::string text = Item.Text();
    const std::string numbers = Item.Tag;
    main.listInput.booRightClick = false;
    Item.SetSelected();
    if (Keyboard) main.lists.RefreshListItem(1, static_cast<std::int16_t>(Item.Index()));
    main.lists.RememberSelectedKey(1);
    if (text != strLastCategoryText) strLastCategoryText = text;
    main.strLastSearchWords.clear();
    main.ui.lblCategory.SetCaption(text);
    main.strLastRecipeCategory = main.ui.lblCategory.Caption();
    if (text == "BUYING AND PREPARATION TIPS" || text == "VIDEO" || text == "KNOTS") return;
    main.ui.lvwX2.SetVisible(false);
    main.recipes.SetColumnsForRecipes_X2();
    if (text != "ALL RECIPES WITH PICTURES") main.screen.ShowCategoryPage();
    main.strSelectedKey[1] = "1";
    const std::uint32_t before = main.search.RecipesByNumber();
    const std::uint32_t opened = main.viewer.LinesOpened();
    const bool filled = main.recipes.ShowRecipesIn_lvwX2(numbers, 1, false, true);
    if (!filled || click != clicks_) return;
    // Of a list that is held already nothing was reported.
    main.recipes.ReportRecipesFound("");
    // A recipe that was opened or asked for by its number while the list grew stays on view, and
    // the user with it.
    if (main.viewer.LinesOpened() != opened || main.search.RecipesByNumber() != before) return;
    if (!LeftItsPage(main, text)) ShowRecipesOf(text);
}

void CategoryList::ShowRecipesOf(const std::string& text) {
    ListView& lines = main.ui.lvwX2;
    lines.SetHideSelection(false);
    if (lines.Count() >= 1) main.lists.RememberSelectedKey(2);
    TakeFirstRecipe(text);
    lines.SetVisible(true);
    Ignoring([this] { main.ui.lvwX1.SetFocus(); });
}

void CategoryList::TakeFirstRecipe(const std::string& text) {
    if (main.ui.lvwX2.Count() < 1) {
        Ignoring([this] { main.viewer.SetCurrentRecipe(-1); });
        return;
    }
    SetCurrentFromSelection();
    if (text != "ALL RECIPES WITH PICTURES") return;
    SetCurrentFromSelection();
    main.pictureView.ShowCurRecipePicture();
}

void CategoryList::SetCurrentFromSelection() {
    const ListItem* selected = main.ui.lvwX2.SelectedItem();
    if (selected == nullptr) return;
    Ignoring([&] { main.viewer.SetCurrentRecipe(ToLong(selected->Tag)); });
}

}  // namespace larder
