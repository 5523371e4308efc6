#include "app/frmMain.h"
#include "lists/CategoryList.h"
#include "platform/Text.h"
#include "platform/WholeFile.h"
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
    std::vector<Entry> entries;
    NamingFile(main.paths.strCategoriesFile, [&] { entries = ReadEntries(); });
    TakeEntries(entries);
    MarkTopEntries();
    // While it was filled, a long list has announced itself as one of recipes that grows.
    main.recipes.DecorateWait(false, "");
    main.lists.ShowListItems(1, 1, true);
    main.pictures.TakeFromCategories();
}

std::vector<CategoryList::Entry> CategoryList::ReadEntries() {
    NumberedFiles& files = main.files;
    std::vector<Entry> entries;
    bool withPictures = false;
    files.Close(filenumber::Categories);
    try {
        files.Open(filenumber::Categories, main.paths.strCategoriesFile, FileMode::Input);
        // The count is there for older readers; the program counts for itself.
        files.ReadNumber(filenumber::Categories);
        while (!files.AtEnd(filenumber::Categories)) {
            Entry& entry = entries.emplace_back();
            entry.Name = files.ReadLine(filenumber::Categories);
            entry.Numbers = files.ReadLine(filenumber::Categories);
            withPictures |= EqualNoCase(TrimBlanks(entry.Name), "ALL RECIPES WITH PICTURES");
        }
        files.Close(filenumber::Categories);
    } catch (const Failure&) {
        Ignoring([&] { files.Close(filenumber::Categories); });
        throw;
    }
    if (!withPictures) {
        throw Failure(failure::ElementNotFound, "LoadCategories",
                      "The category ALL RECIPES WITH PICTURES is missing.");
    }
    return entries;
}

void CategoryList::TakeEntries(const std::vector<Entry>& entries) {
    VirtualList& list = main.VList[0];
    main.ui.lvwX1.Clear();
    list.ClearAll();
    refused_.clear();
    std::string indentation;
    for (const Entry& entry : entries) {
        const std::int32_t place = list.Count();
        list.Add(indentation + entry.Name, entry.Numbers, 0, entry.Name);
        if (list.Count() == place) refused_.push_back({place, entry});
        if (entry.Name == "ALL RECIPES") indentation = "     ";
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
        ReplaceFile();
    } catch (const Failure& f) {
        main.dialogs.MessageBox("Error updating Favorites\n" + f.Description, Dialogs::Buttons::Ok,
                                Dialogs::Icon::Critical, "Tidewell Larder");
        return;
    }
    ShowLinesAnew();
}

void CategoryList::ShowLinesAnew() {
    // Showing the list takes the focus out of it; the user has done nothing to that end.
    const bool focused = main.ui.lvwX1.HasFocus();
    main.lists.ShowListItems(1, 0, true);
    if (focused) main.lists.RestoreLvwFocus(1);
}

void CategoryList::ReplaceFile() {
    // The new file takes the place of the old one without asking it.
    const std::string& file = main.paths.strCategoriesFile;
    if (main.files.MustNotBeWritten(file)) throw Failure(failure::PathAccess, file);
    main.files.Close(filenumber::Categories);
    WriteWholeFile(main.files, filenumber::Categories, file, [this] { WriteEntries(); });
}

void CategoryList::WriteEntries() {
    main.files.WriteNumberLine(filenumber::Categories, main.store.TotalRecipes());
    const VirtualList& list = main.VList[0];
    const std::int32_t count = list.Count();
    auto refused = refused_.begin();
    for (std::int32_t i = 1; i <= count; ++i) {
        const VirtualListItem* entry = list.Peek(i);
        WriteEntry(entry->Text, entry->Tag);
        for (; refused != refused_.end() && (refused->Place <= i || i == count); ++refused)
            WriteEntry(refused->Lines.Name, refused->Lines.Numbers);
    }
}

void CategoryList::WriteEntry(const std::string& name, const std::string& numbers) {
    main.files.WriteLine(filenumber::Categories, TrimBlanks(name));
    main.files.WriteLine(filenumber::Categories, numbers);
}

}  // namespace larder
