#include "browse/RecipeList.h"

#include <algorithm>

#include "app/frmMain.h"
#include "lists/NumberString.h"
#include "platform/Text.h"
#include "search/SearchText.h"

namespace larder {

void RecipeList::RemoveFrom_lvwX2(std::int32_t RecipeToRemove) {
    ListView& lines = main.ui.lvwX2;
    const bool held = lines.Tag.find(Blanked(RecipeToRemove)) != std::string::npos;
    if (!held && lines.Tag.find('*') == std::string::npos) return;
    // The favourites stand in the user's order, all other lists in that of the numbers.
    const bool sorted = main.strLastRecipeCategory != "MY FAVORITES";
    VirtualList& list = main.VList[1];
    int i = BringBarTo(RecipeToRemove);
    const std::int32_t stood = list.CurrentIndex;
    list.RemoveNum(RecipeToRemove, sorted);
    // It has made the place the first of the window, which is to stay, so that the recipe behind
    // moves into the line; or the one before it, at the end of a longer list.
    list.CurrentIndex = stood;
    i = std::clamp(i, 1, std::max(1, std::min<int>(list.Count(), main.LinesInList[1])));
    main.strSelectedKey[1] = std::to_string(i);
    ShowRecipesIn_lvwX2("same", 0, false, true);
    if (i > lines.Count()) i = BringBarToLastLine();
    ReportRecipesFound("");
    if (lines.Count() == 0) {
        Ignoring([this] { main.viewer.SetCurrentRecipe(-1); });
        return;
    }
    Ignoring([&] { main.viewer.SetCurrentRecipe(ToLong(lines.Item(i).Tag)); });
    main.categories.SimulateChoiceClick("");
}

int RecipeList::BringBarTo(std::int32_t number) {
    const std::string text = std::to_string(number);
    main.strSelectedKey[1] = "k" + text;
    main.lists.HighlightSelected(2, true);
    int before = 0;
    const ListView& lines = main.ui.lvwX2;
    for (int line = 1; line <= lines.Count(); ++line) {
        const std::string& tag = lines.Item(line).Tag;
        if (tag == text) return line;
        if (Val(tag) < number) ++before;
    }
    return before + 1;
}

// Blank stock records count among all recipes but have no lines: fewer stand in the window than
// fit, or none at all.
int RecipeList::BringBarToLastLine() {
    const ListView& lines = main.ui.lvwX2;
    const VirtualList& list = main.VList[1];
    if (lines.Count() == 0 && list.VirtualMode) main.steps.ShowWindowBefore(list.CurrentIndex);
    if (lines.Count() == 0) return 0;
    main.strSelectedKey[1] = std::to_string(lines.Count());
    main.lists.HighlightSelected(2, false);
    main.lists.ReturnFocus();
    return lines.Count();
}

void RecipeList::ReportRecipesFound(const std::string& strAppend) {
    Label& found = main.ui.lblFound;
    found.SetVisible(true);
    std::string caption;
    if (main.ui.lvwX2.Tag == "*") {
        caption = std::to_string(main.store.TotalRecipes()) + " recipes found";
    } else {
        const std::int32_t c = main.VList[1].Count();
        caption = std::to_string(c) + (c == 1 ? " recipe found" : " recipes found");
        found.SetToolTipText(caption + " in this category or search.");
        Image& picture = main.ui.imgPicture;
        picture.SetMousePointer(c == 0 ? 0 : 99);
        if (c == 0) {
            picture.SetToolTipText(
                main.ui.lblCategory.Caption() == "MY FAVORITES"
                    ? "To add recipes to the Favorites category, find the recipe you like and then "
                      "press the Add button."
                    : "");
        }
    }
    found.SetCaption(caption + " " + strAppend);
}

void RecipeList::DecorateWait(bool booStart, const std::string& strWhat) {
    if (!booStart) {
        main.ui.window.SetMousePointer(0);
        main.search.SetMousePointer(0);
        main.ui.lvwX2.SetVisible(true);
        ReportRecipesFound("");
        return;
    }
    main.ui.window.SetMousePointer(11);
    main.search.SetMousePointer(11);
    if (strWhat == "...") {
        ReportRecipesFound(strWhat);
        return;
    }
    main.ui.lvwX2.SetVisible(false);
    main.ui.lblFound.SetCaption("");
    main.ui.lblFound.Refresh();
}

void RecipeList::SetColumnsForRecipes_X2() {
    ListView& lines = main.ui.lvwX2;
    lines.SetColumnWidth(1, 281);
    lines.SetColumnWidth(2, MaxOf(700.0F, lines.Width() * 0.25F));
    lines.SetColumnWidth(3, lines.Width() * 0.8F);
    booRecipeColumns = true;
}

void RecipeList::SortListBy(std::int16_t Column, std::int16_t Order) {
    ListView& lines = main.ui.lvwX2;
    lines.SortKey = Column - 1;
    if (Order != 0) {
        lines.SortOrder = Order;
    } else {
        lines.SortOrder = Column == lastSortColumn_ ? 1 - lines.SortOrder : 0;
    }
    lines.SetSorted(true);
    lines.SetSorted(false);
    lastSortColumn_ = Column;
}

}  // namespace larder
