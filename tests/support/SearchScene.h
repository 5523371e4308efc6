#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "lists/GrowingListObserver.h"
#include "lists/ListTicket.h"
#include "lists/VirtualList.h"
#include "platform/rtf/Rtf.h"
#include "platform/rtf/TextSearch.h"
#include "search/RecipeFinder.h"
#include "search/WordIndex.h"
#include "store/RecipeStore.h"
#include "support/DataFolder.h"
#include "support/ScriptedDisc.h"

namespace larder::test {

// A search without a window: a data folder, the list that takes the result, and surroundings that
// do what a test says and write down what the search asks of them.
class SearchScene : private GrowingListObserver, private FindSurroundings {
  public:
    using Index = std::vector<std::pair<std::string, std::string>>;  // word, numbers

    DataFolder Data;
    ScriptedDisc Disc;
    RecipeStore Store{Data.Files, Data.Paths, Disc};
    ListTicket Ticket;
    VirtualList List{*this, Ticket};
    WordIndex Words{Data.Files, Data.Paths};
    RecipeFinder Finder{Store, Words, List, Ticket, *this};

    bool Only = false;
    bool Favorites = false;
    std::function<void()> OnEvents = [] {};
    int TextsRead = 0;
    std::vector<std::string> Log;

    // Titles; an empty one makes a deleted recipe. The body is the title and the text.
    void Write(const std::vector<std::string>& stock, const std::vector<std::string>& own = {}) {
        Data.WriteStock(DatabaseOf(stock));
        if (!own.empty()) Data.WriteCustom(DatabaseOf(own));
        Store.OpenYDB_IND_Normal();
        Store.RecalculateTotalRecipes();
    }
    void WriteIndex(const Index& records) const {
        std::string text;
        for (const auto& [word, numbers] : records)
            text += word + "\r\n" + numbers + "\r\n";
        WriteIndexFiles(text, records.size() * 4);
    }
    void WriteIndexFiles(const std::string& ydb, std::size_t indBytes) const {
        Data.Folder.Write("Data/Search.ydb", ydb);
        Data.Folder.Write("Data/Search.ind", std::string(indBytes, '\0'));
    }

    // What a query of these words leaves in the list.
    std::string Find(std::string query) {
        Finder.FindRecipes(query);
        return List.NumsToString();
    }

  private:
    static Database DatabaseOf(const std::vector<std::string>& titles) {
        Database recipes;
        for (const std::string& title : titles) {
            recipes.AddRecipe(title,
                              title.empty() ? std::string(10, ' ') : "{\\rtf1 " + title + "\\par}");
        }
        return recipes;
    }

    std::int16_t LinesOnScreen() const override { return 1000; }
    std::int32_t OriginalNumRecords() const override { return Store.OriginalNumRecords; }
    bool HasPicture(const std::string&) const override { return false; }
    std::string GetRecipeTitle(std::int32_t number) override {
        return Store.GetRecipeTitle(number);
    }
    bool IsGone(std::int32_t number) override {
        return Store.LookUpTitle(number).Is == TitleIs::Gone;
    }
    bool IsBlank(std::int32_t number) override { return Store.IsBlank(number); }
    void ShowSame() override {}
    void DecorateWait(bool, const std::string&) override {}
    void UpdateScroll() override {}
    void ReportRecipesFound(const std::string&) override {}

    bool OnlyInList() const override { return Only; }
    bool ListIsFavorites() const override { return Favorites; }
    void HideGuideArt() override { Log.push_back("hide guide art"); }
    void TakeText(const std::string& rtf) override {
        ++TextsRead;
        const auto document = ReadRtf(rtf);
        text_ = document ? document->Text() : rtf;
    }
    bool HoldsWord(const std::string& word) override {
        return FindInText(text_, word, 0, text_.size(), kFindWholeWord) != -1;
    }
    void LetEventsRun() override { OnEvents(); }
    void ShowResult(bool searched, bool found) override {
        Log.push_back(std::string(searched ? "result" : "nothing to search") +
                      (found ? ", found" : ""));
    }
    void ShowCancelled() override { Log.push_back("cancelled"); }

    std::string text_;
};

}  // namespace larder::test
