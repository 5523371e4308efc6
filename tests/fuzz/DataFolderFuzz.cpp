// A whole data folder of any content: every reader of the core runs over it.
//
// The input is cut at each "§§" (two bytes A7) into the files of the folder, in the order of
// FileNames below; those behind the last cut are missing. Whatever stands in them, a read ends,
// costs no more memory than the files are long, and fails by number if it fails.

#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "lists/GrowingListObserver.h"
#include "lists/NumsClass.h"
#include "lists/VirtualList.h"
#include "platform/Failure.h"
#include "platform/NumberedFiles.h"
#include "platform/Paths.h"
#include "platform/rtf/Rtf.h"
#include "platform/rtf/TextSearch.h"
#include "search/RecipeFinder.h"
#include "search/WordIndex.h"
#include "store/DataPaths.h"
#include "store/FileNumbers.h"
#include "store/RecipeStore.h"
#include "store/RecipeWriter.h"

namespace {

namespace fs = std::filesystem;
using namespace larder;

constexpr std::array FileNames = {
    "Recipes Index.ind",  "Recipes.ydb",       "Custom Recipes Index.ind",
    "Custom Recipes.ydb", "CategyD Index.ind", "CategyD.ydb",
    "Categories.ctg",     "Search.ydb",        "Search.ind"};
constexpr std::string_view Cut = "\xA7\xA7";

// How many records of a folder are read, from the front: the cost of a run stays small.
constexpr std::int32_t MostRecords = 40;

void Require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}

// One folder for the whole run, in memory where the system has such a place. A run may end without
// clearing it away: the next has a new one.
class Folder {
  public:
    Folder() {
        const fs::path shared = "/dev/shm";
        std::error_code ignored;
        const fs::path base =
            access(shared.c_str(), W_OK) == 0 ? shared : fs::temp_directory_path(ignored);
        std::string name = (base / "larder-fuzz-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) std::abort();
        root_ = name;
        fs::create_directories(root_ / "Data");
    }
    ~Folder() {
        std::error_code ignored;
        fs::remove_all(root_, ignored);
    }
    std::string Root() const { return root_.string(); }

    void Fill(std::string_view input) const {
        for (const char* name : FileNames)
            fs::remove(root_ / "Data" / name);
        for (const char* name : FileNames) {
            const std::size_t end = input.find(Cut);
            std::ofstream(root_ / "Data" / name, std::ios::binary) << input.substr(0, end);
            if (end == std::string_view::npos) return;
            input.remove_prefix(end + Cut.size());
        }
    }

  private:
    fs::path root_;
};

// The user gives the disc up at once: the question would come back for ever otherwise.
struct NoDisc : DiscQuestion {
    bool AskOkCancel(const std::string&) override { return false; }
};

// The program around a list, without a screen.
struct Program : GrowingListObserver {
    explicit Program(RecipeStore& theStore) : store(theStore) {}
    std::int16_t LinesOnScreen() const override { return 5; }
    std::int32_t OriginalNumRecords() const override { return store.OriginalNumRecords; }
    bool HasPicture(const std::string&) const override { return false; }
    std::string GetRecipeTitle(std::int32_t recipeNum) override {
        return store.GetRecipeTitle(recipeNum);
    }
    bool IsGone(std::int32_t recipeNum) override {
        return store.LookUpTitle(recipeNum).Is == TitleIs::Gone;
    }
    bool IsBlank(std::int32_t recipeNum) override { return store.IsBlank(recipeNum); }
    void ShowSame() override {}
    void DecorateWait(bool, const std::string&) override {}
    void UpdateScroll() override {}
    void ReportRecipesFound(const std::string&) override {}
    void LetEventsRun() override {}

    RecipeStore& store;
};

// A search without a screen. `cancelAt` ends it at that look at the events, as a click would.
struct Search : FindSurroundings {
    explicit Search(ListTicket& theTicket) : ticket(theTicket) {}
    bool OnlyInList() const override { return onlyInList; }
    bool ListIsFavorites() const override { return favorites; }
    void HideGuideArt() override {}
    void TakeText(const std::string& rtf) override {
        const auto document = ReadRtf(rtf);
        text = document ? document->Text() : rtf;
    }
    bool HoldsWord(const std::string& word) override {
        return FindInText(text, word, 0, text.size(), kFindWholeWord) != -1;
    }
    void LetEventsRun() override {
        if (--cancelAt == 0) ticket.Cancel();
    }
    void ShowResult(bool, bool) override {}
    void ShowCancelled() override {}

    ListTicket& ticket;
    bool onlyInList = false;
    bool favorites = false;
    int cancelAt = 0;
    std::string text;
};

class Readers {
  public:
    Readers(const std::string& root, std::size_t inputBytes) : bytes_(inputBytes) {
        const std::string data = system_.Alias(root) + "\\Data\\";
        paths_.Assign(data, data);
    }

    void Run() {
        store_.OpenYDB_IND_Normal();
        Ignoring([&] { store_.OpenCategoryDescriptions(); });
        Ignoring([&] { store_.RecalculateTotalRecipes(); });
        ReadRecipes();
        ReadDescriptions();
        ReadCategories();
        FindWords();
        for (const std::int16_t number : {filenumber::Recipes, filenumber::CatD}) {
            WalkRecords(number);
        }
    }

  private:
    void ReadRecipes() {
        const std::int32_t total = store_.TotalNumRecords;
        Require(store_.OriginalNumRecords >= 0 && total >= store_.OriginalNumRecords, "counts");
        Require(store_.TotalRecipes() <= total, "count of recipes");
        for (std::int32_t number = -2; number <= total + 2 && number < MostRecords; ++number) {
            ReadRecipe(number);
        }
        ReadRecipe(total);
        ReadRecipe(total + 1);
    }

    void ReadRecipe(std::int32_t number) {
        const std::string title = store_.GetRecipeTitle(number);
        Require(title.size() <= bytes_ + 20, "a title is longer than its file");
        Ignoring([&] {
            const std::string body = store_.GetRecipeRTF(number);
            Require(body.size() <= bytes_, "a body is longer than its file");
            ReadRtf(body);
        });
        Ignoring([&] { store_.GetRecipeTXT(number); });
    }

    void ReadDescriptions() {
        std::int64_t count = 0;
        Ignoring([&] { count = files_.Length(filenumber::CatDIndex) / 4; });
        for (std::int32_t number = -1; number <= count + 1 && number < MostRecords; ++number) {
            store_.GetCatTitle(number);
            Ignoring([&] {
                Require(store_.GetCatRTF(number).size() <= bytes_,
                        "a description is longer than its file");
            });
        }
    }

    void ReadCategories() {
        Ignoring([&] {
            files_.Open(filenumber::Categories, paths_.strCategoriesFile, FileMode::Input);
            files_.ReadNumber(filenumber::Categories);
            while (!files_.AtEnd(filenumber::Categories)) {
                const std::string name = files_.ReadLine(filenumber::Categories);
                const std::string numbers = files_.ReadLine(filenumber::Categories);
                categories_.Add("     " + name, numbers, 0, name);
                FillList(numbers);
            }
        });
        files_.Close(filenumber::Categories);
    }

    void FillList(const std::string& numbers) {
        Ignoring([&] { recipes_.StringToNums(numbers); });
        const std::string held = recipes_.NumsToString();
        const std::int32_t count = recipes_.Count();
        for (std::int32_t i = 1; i <= count && i < MostRecords; ++i) {
            const std::int32_t number = recipes_.Peek(i)->Num;
            const std::int32_t found = recipes_.Find(number, false);
            Require(found >= 1 && found <= i && recipes_.Peek(found)->Num == number,
                    "a number of the list is not found");
            Ignoring([&] { recipes_.Find(number, true); });
        }
        NumsClass nums(program_, ticket_);
        Ignoring([&] { nums.StringToNums(numbers); });
        Ignoring([&] {
            recipes_.StringToNums(held);
            Require(recipes_.NumsToString() == held, "a list changes when it is read again");
        });
        if (recipes_.Count() > 0) {
            Ignoring([&] { recipes_.RemoveNum(recipes_.Peek(1)->Num, false); });
        }
    }

    // Words that the index holds, as far as it can be read, and one that it does not.
    std::vector<std::string> SomeWords() {
        std::vector<std::string> words{"salmon", "and dill"};
        Ignoring([&] {
            const int number = files_.FreeNumber();
            files_.Open(number, paths_.strSearchYDBFileName, FileMode::Input);
            Ignoring([&] {
                for (int i = 0; i < 4; ++i)
                    words.push_back(files_.ReadLine(number).substr(0, 100));
            });
            files_.Close(number);
        });
        return words;
    }

    void FindWords() {
        for (const std::string& word : SomeWords()) {
            std::string sought = word;
            Ignoring([&] {
                Require(index_.LookUpWord(sought).size() <= bytes_,
                        "a line is longer than its file");
            });
            // A failure leaves the index open, and every later search without words.
            files_.Close(filenumber::SearchYDB);
            files_.Close(filenumber::SearchIND);
            for (const int variant : {0, 1, 2, 3}) {
                search_.onlyInList = (variant & 1) != 0;
                search_.favorites = (variant & 2) != 0;
                search_.cancelAt = variant == 2 ? 3 : 0;
                std::string query = word + " " + sought;
                finder_.FindRecipes(query);
                Require(query.size() == word.size() + 1 + sought.size(),
                        "a query changes its length");
                files_.Close(filenumber::SearchYDB);
                files_.Close(filenumber::SearchIND);
            }
        }
    }

    // As a rebuild of an index walks over a text.
    void WalkRecords(std::int16_t number) {
        Ignoring([&] {
            files_.Seek(number, 1);
            while (!files_.AtEnd(number)) {
                std::int32_t position = 0;
                const std::int64_t before = files_.Position(number);
                writer_.GetNextRecipieFromDisk(number, position);
                Require(position == before || position == -1, "a record begins elsewhere");
                Require(files_.Position(number) > before, "a walk does not come forward");
            }
        });
    }

    std::size_t bytes_;
    Paths system_;
    DataPaths paths_;
    NumberedFiles files_{system_};
    NoDisc disc_;
    RecipeStore store_{files_, paths_, disc_};
    RecipeWriter writer_{files_, paths_, store_, [](const std::string&) {}};
    Program program_{store_};
    ListTicket ticket_;
    VirtualList categories_{program_, ticket_};
    VirtualList recipes_{program_, ticket_};
    WordIndex index_{files_, paths_};
    Search search_{ticket_};
    RecipeFinder finder_{store_, index_, recipes_, ticket_, search_};
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Folder folder;
    folder.Fill({reinterpret_cast<const char*>(data), size});
    Readers(folder.Root(), size).Run();
    return 0;
}
