#include "tools/StockIndexer.h"

#include <stdexcept>

#include "platform/Paths.h"
#include "platform/rtf/Rtf.h"
#include "search/CategoryMaker.h"
#include "search/WordIndexBuilder.h"

namespace larder {

namespace {

// The surroundings of a search without a window: the whole book, and stock recipes alone.
class Workbench final : public GrowingListObserver, public FindSurroundings, public DiscQuestion {
  public:
    explicit Workbench(const std::filesystem::path& dataFolder) {
        const std::string root =
            system_.Alias(std::filesystem::absolute(dataFolder).string()) + "\\";
        paths_.Assign(root, root);
        store_.OpenYDB_IND_Normal();
        store_.RecalculateTotalRecipes();
    }

    // The number of words in the new index.
    std::size_t BuildWordIndex(const std::filesystem::path& dataFolder) {
        WordIndexBuilder builder;
        for (std::int32_t number = 1; number <= store_.OriginalNumRecords; ++number) {
            std::string text = store_.GetRecipeTitle(number) + "\r\n";
            if (const auto document = ReadRtf(store_.GetRecipeRTF(number))) {
                text += document->Text();
            }
            builder.Add(number, std::move(text));
        }
        try {
            builder.Write(dataFolder / "Search.ydb", dataFolder / "Search.ind");
        } catch (const std::length_error& e) {
            throw std::length_error(std::string("MakeSearchIndex: ") + e.what());
        } catch (const std::runtime_error& e) {
            throw std::runtime_error(std::string("MakeSearchIndex: ") + e.what());
        }
        return builder.WordCount();
    }

    void BuildCategories() { MakeCategoriesFile(files_, paths_, store_, finder_, list_); }

  private:
    std::int16_t LinesOnScreen() const override { return 0; }
    std::int32_t OriginalNumRecords() const override { return store_.OriginalNumRecords; }
    bool HasPicture(const std::string&) const override { return false; }
    std::string GetRecipeTitle(std::int32_t number) override {
        return store_.GetRecipeTitle(number);
    }
    bool IsGone(std::int32_t number) override {
        return store_.LookUpTitle(number).Is == TitleIs::Gone;
    }
    bool IsBlank(std::int32_t number) override { return store_.IsBlank(number); }
    void ShowSame() override {}
    void DecorateWait(bool, const std::string&) override {}
    void UpdateScroll() override {}
    void ReportRecipesFound(const std::string&) override {}
    void LetEventsRun() override {}

    bool OnlyInList() const override { return false; }
    bool ListIsFavorites() const override { return false; }
    void HideGuideArt() override {}
    void TakeText(const std::string&) override {}
    bool HoldsWord(const std::string&) override { return false; }
    void ShowResult(bool, bool) override {}
    void ShowCancelled() override {}

    bool AskOkCancel(const std::string&) override { return false; }

    Paths system_;
    NumberedFiles files_{system_};
    DataPaths paths_;
    RecipeStore store_{files_, paths_, *this};
    ListTicket ticket_;
    VirtualList list_{*this, ticket_};
    WordIndex index_{files_, paths_};
    RecipeFinder finder_{store_, index_, list_, ticket_, *this};
};

}  // namespace

void IndexStock(const std::filesystem::path& dataFolder,
                const std::function<void(const std::string&)>& report) {
    Workbench workbench(dataFolder);
    report("Making New Search Index");
    report("Totoal Words Count: " + std::to_string(workbench.BuildWordIndex(dataFolder)));
    workbench.BuildCategories();
}

}  // namespace larder
