#include "app/frmMain.h"
#include "lists/CategoryList.h"
#include "platform/Text.h"
#include "search/SearchText.h"
#include "store/FileNumbers.h"

namespace larder {

namespace {

constexpr std::int32_t TopEntryColor = 0x714B28;  // slate blue
constexpr int ColoredEntries = 5;
constexpr int FixedEntries = 6;

}  // namespace

void CategoryList::LoadCategories() {
    main.store.OpenYDB_IND_Normal();
    main.store.RecalculateTotalRecipes();
    NamingFile(main.paths.strCategoriesFile, [this] { ReadEntries(); });
    MarkTopEntries();
    // While it was read, a long list has announced itself as one of recipes that grows.
    main.recipes.DecorateWait(false, "");
    main.lists.ShowListItems(1, 1, true);
    main.pictures.TakeFromCategories();
}

void CategoryList::ReadEntries() {
    NumberedFiles& files = main.files;
    files.Close(filenumber::Categories);
    files.Open(filenumber::Categories, main.paths.strCategoriesFile, FileMode::Input);
    // The count is there for older readers; the program counts for itself.
    files.ReadNumber(filenumber::Categories);
    main.ui.lvwX1.Clear();
    main.VList[0].ClearAll();
    std::string indentation;
    while (!files.AtEnd(filenumber::Categories)) {
        const std::string name = files.ReadLine(filenumber::Categories);
        const std::string numbers = files.ReadLine(filenumber::Categories);
        main.VList[0].Add(indentation + name, numbers, 0, name);
        if (name == "ALL RECIPES") indentation = "     ";
    }
    files.Close(filenumber::Categories);
    if (main.VList[0].PeekKey("ALL RECIPES WITH PICTURES") == nullptr) {
        throw Failure(failure::ElementNotFound, "LoadCategories",
                      "The category ALL RECIPES WITH PICTURES is missing.");
    }
}

void CategoryList::MarkTopEntries() {
    VirtualList& list = main.VList[0];
    const std::int32_t count = list.Count();
    for (std::int32_t i = 1; i <= MinOf(count, FixedEntries); ++i) {
        VirtualListItem& entry = *list.Peek(i);
        if (i <= ColoredEntries) entry.ForeColor = TopEntryColor;
        entry.Bold = true;
    }
}

void CategoryList::UpdateCategoryFile() {
    try {
        WriteEntries();
    } catch (const Failure& f) {
        main.files.Close(filenumber::Categories);
        main.dialogs.MessageBox("Error updating Favorites\n" + f.Description, Dialogs::Buttons::Ok,
                                Dialogs::Icon::Critical, "Tidewell Larder");
        return;
    }
    // Showing the list takes the focus out of it; the user has done nothing to that end.
    const bool focused = main.ui.lvwX1.HasFocus();
    main.lists.ShowListItems(1, 0, true);
    if (focused) main.lists.RestoreLvwFocus(1);
}

void CategoryList::WriteEntries() {
    // The old file stays whole until the new one is on the disk.
    NumberedFiles& files = main.files;
    const std::string fresh = main.paths.strCategoriesFile + ".new";
    files.Close(filenumber::Categories);
    files.Open(filenumber::Categories, fresh, FileMode::Output);
    files.WriteNumberLine(filenumber::Categories, main.store.TotalRecipes());
    const std::int32_t count = main.VList[0].Count();
    for (std::int32_t i = 1; i <= count; ++i) {
        const VirtualListItem* entry = main.VList[0].Peek(i);
        files.WriteLine(filenumber::Categories, TrimBlanks(entry->Text));
        files.WriteLine(filenumber::Categories, entry->Tag);
    }
    files.Flush(filenumber::Categories);
    files.Close(filenumber::Categories);
    files.Replace(fresh, main.paths.strCategoriesFile);
}

}  // namespace larder
