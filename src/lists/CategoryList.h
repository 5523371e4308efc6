#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace larder {

class frmMain;
class ListItem;

// The categories: loading and writing "Categories.ctg", the lines of `lvwX(1)`, and what a click
// on a category does. VList(0) is the list behind them. The top entries, up to "ALL RECIPES",
// stand flush left and the others are indented by five blanks, on the screen only; so the key of
// an entry is its bare name, and the key of its line is the name as shown.
class CategoryList {
  public:
    explicit CategoryList(frmMain& hub) : main(hub) {}

    // Reads the file anew and shows the first lines. A file that cannot be read, ends in the
    // middle of an entry, or lacks "ALL RECIPES WITH PICTURES" is a failure that names it, and
    // leaves the categories as they were. A name that comes again is no category of its own, but
    // its lines are kept for the next writing of the file.
    void LoadCategories();
    // Writes the line of the count, then name and number string of each category; the file is
    // replaced as a whole. The lines on the screen are those of memory afterwards. A failure is
    // told in a message; what is in memory stays then, and so do the lines on the screen. A file
    // that must not be written is one, though its folder may be.
    void UpdateCategoryFile();

    // Shows the list from an entry; 0 is where it stands. Nothing happens when nothing changed.
    void ShowItemsInLvw1(std::int32_t startPos, bool ForceReload);

    // As a click on the category with this key, in whatever case; empty is the selected line.
    void SimulateCategoryClick(std::string strKey);
    // As a click on a recipe line, by recipe number; empty is the selected line.
    void SimulateChoiceClick(const std::string& strKey);
    // The click on a line of lvwX(1). May be entered again while an earlier click is still filling
    // the recipe list; the earlier one then stops.
    void CategoryItemClick(ListItem& Item, bool Keyboard);

  private:
    struct Entry {
        std::string Name;
        std::string Numbers;
    };
    struct RefusedEntry {
        std::int32_t Place;  // of the category in VList(0) that it follows in the file
        Entry Lines;
    };

    std::vector<Entry> ReadEntries();
    void TakeEntries(const std::vector<Entry>& entries);
    void MarkTopEntries();
    void ReplaceFile();
    void WriteEntries();
    void WriteEntry(const std::string& name, const std::string& numbers);
    void ShowLinesAnew();
    void ShowRecipesOf(const std::string& text);
    void TakeFirstRecipe(const std::string& text);
    void SetCurrentFromSelection();

    frmMain& main;
    std::vector<RefusedEntry> refused_;  // ascending by place
    std::string strLastCategoryText;
    std::int32_t lastStart_ = 0;  // first entry and number of lines of the last fill
    std::int16_t lastLines_ = 0;
    std::uint32_t clicks_ = 0;
};

}  // namespace larder
