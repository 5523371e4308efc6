// A cook-book in whose window everything is done that changes its files, in an order drawn anew
// each time, beside a model of what those files must hold.

#include <algorithm>
#include <iostream>
#include <map>
#include <string>
#include <vector>

#include "behaviour/support/EditorBook.h"
#include "support/RandomRecipe.h"
#include "support/RecordModel.h"
#include "support/Rounds.h"
#include "support/Seed.h"
#include "support/StoredRecipes.h"

namespace larder::test {
namespace {

constexpr int books = 20;
constexpr int operationsPerBook = 1000;
constexpr int stock = 3;
constexpr std::size_t mostRecipes = 60;

// A set of recipes as it stands in the categories: in the order in which they were added.
struct Numbers : std::vector<int> {
    using std::vector<int>::vector;

    bool Has(int number) const { return std::ranges::count(*this, number) > 0; }
    // Each true when that changed anything.
    bool Add(int number) {
        if (Has(number)) return false;
        push_back(number);
        return true;
    }
    bool Remove(int number) { return std::erase(*this, number) > 0; }
    std::string Text() const {
        std::string text = " ";
        for (const int number : *this)
            text += std::to_string(number) + " ";
        return text;
    }
};

class RandomBook : public EditorBook, public testing::WithParamInterface<int> {
  protected:
    void SetUp() override {
        for (const std::string ending : {".jpg", ".bmp", ".gif"}) {
            for (const int size : {4, 5}) {
                const std::string name = "picture " + std::to_string(size) + ending;
                MakePicture(name, size, size);
                chosen_.push_back({name, ending, Folder.Read(name)});
            }
        }
        StartAnew();
    }

    std::filesystem::path Data() const { return Folder.Native("Data"); }
    OwnRecipes& It() { return Main().ownRecipes; }
    static int Number(std::size_t i) { return static_cast<int>(i) + stock + 1; }
    bool IsThere(std::size_t i) const { return !records_.Logical[i].Title.empty(); }
    bool IsInBook(int number) const {
        return number <= stock || IsThere(static_cast<std::size_t>(number - stock - 1));
    }

    void StartAnew() {
        Close();
        Folder.Delete("Data");
        Folder.MakeFolder("Data/Food Photos");
        Book = CookBook();
        Book.AddManyStock(stock);
        Book.Numbers("MY FAVORITES") = " 2 ";
        Book.Numbers("ALL RECIPES WITH PICTURES") = " 1 ";
        ASSERT_TRUE(Start());
        LeaveUnpainted();
        expected_ = BytesOf(Data());
        records_ = {};
        favorites_ = {2};
        pictured_ = {1};
        total_ = stock;
    }

    // Nobody looks, and painting would take most of the time.
    void LeaveUnpainted() {
        Main().ui.window.Native()->setUpdatesEnabled(false);
        Editor().window.Native()->setUpdatesEnabled(false);
    }

    // Operations

    void Add() {
        const std::string title = random_.Title();
        const std::string rtf = random_.Rtf(static_cast<std::size_t>(random_.Pick(10, 200)));
        EXPECT_TRUE(It().StoreNewRecipe(title, rtf));
        records_.Add(title, rtf);
        ++total_;
        favorites_.Add(Number(records_.Records.size() - 1));
        WriteCategories();
    }
    void Update(std::size_t i, std::int64_t longer) {
        const std::string title = random_.Title();
        const std::string rtf = random_.Rtf(records_.RtfBytes(i, title, longer));
        EXPECT_TRUE(It().UpdateRecipe(Number(i), rtf, title));
        ++done_[records_.Update(i, title, rtf) ? "short way" : "long way"];
    }
    void Delete(std::size_t i) {
        const int number = Number(i);
        Boxes.Then(Dialogs::Answer::Ok);
        questions_ = 1;
        It().DeleteRecipe(number, true, false);
        records_.Update(i, "", "");
        DeletePhotos(number);
        --total_;
        if (favorites_.Remove(number)) WriteCategories();
        if (pictured_.Remove(number)) WriteCategories();
    }
    void AddFavorite(int number) {
        Main().favorites.AddToFavorites(number);
        if (favorites_.Add(number)) WriteCategories();
    }
    void RemoveFavorite(int number) {
        Main().favorites.RemoveFromFavorites(number);
        if (favorites_.Remove(number)) WriteCategories();
    }
    void AssignPicture(std::size_t i) {
        const int number = Number(i);
        const Chosen& chosen = chosen_[random_.PickOf(chosen_.size())];
        Main().editor.LoadRecipeToUpdate(number);
        if (pictured_.Has(number)) {
            Boxes.Then(Dialogs::Answer::Yes);
            questions_ = 1;
        }
        Boxes.ThenFile(Folder.Native(chosen.Name));
        ClickOn(Editor().ibAssignPicture);
        ClickOn(Editor().ibAdd);
        EXPECT_FALSE(EditorShown());
        DeletePhotos(number);
        expected_["Food Photos/" + std::to_string(number) + chosen.Ending] = chosen.Bytes;
        if (pictured_.Add(number)) WriteCategories();
    }
    void RemovePicture(std::size_t i) {
        const int number = Number(i);
        Main().editor.LoadRecipeToUpdate(number);
        Boxes.Then(Dialogs::Answer::Yes);
        questions_ = 1;
        ClickOn(Editor().ibRemovePicture);
        ClickOn(Editor().ibAdd);
        EXPECT_FALSE(EditorShown());
        DeletePhotos(number);
        if (pictured_.Remove(number)) WriteCategories();
    }
    void Reopen() {
        ASSERT_TRUE(Restart());
        LeaveUnpainted();
        std::vector<int> shown(favorites_);
        if (shown.size() > static_cast<std::size_t>(Fit(2)))
            shown.resize(static_cast<std::size_t>(Fit(2)));
        EXPECT_EQ(ShownNumbers(), shown);
    }

    void Step() {
        questions_ = 0;
        Boxes.Shown.clear();
        if (records_.Records.size() >= mostRecipes) {
            ++done_["new book"];
            StartAnew();
        }
        const int kind = records_.Records.empty() ? 0 : random_.Pick(0, 19);
        if (kind <= 2) return ++done_["add"], Add();
        std::size_t i = random_.PickOf(records_.Records.size());
        if (!IsThere(i)) i = random_.PickOf(records_.Records.size());  // more often one that is
        const int any = random_.Pick(1, Number(records_.Records.size()) - 1);
        if (kind <= 4 && IsInBook(any)) return ++done_["favourite added"], AddFavorite(any);
        if (kind <= 5) return ++done_["favourite removed"], RemoveFavorite(any);
        if (kind == 6) return ++done_["reopen"], Reopen();
        if (!IsThere(i)) {
            ++done_["delete again"];
            return It().DeleteRecipe(Number(i), true, false);
        }
        if (kind <= 8) return ++done_["update, smaller"], Update(i, -random_.Pick(1, 40));
        if (kind == 9) return ++done_["update, same size"], Update(i, 0);
        if (kind <= 11) return ++done_["update, one longer"], Update(i, 1);
        if (kind == 12) return ++done_["update, longer"], Update(i, random_.Pick(2, 60));
        if (kind == 13) return ++done_["delete"], Delete(i);
        if (kind == 14 && pictured_.Has(Number(i)))
            return ++done_["picture removed"], RemovePicture(i);
        ++done_[pictured_.Has(Number(i)) ? "picture replaced" : "picture added"];
        AssignPicture(i);
    }

    // The model

    void DeletePhotos(int number) {
        for (const char* ending : {".jpg", ".bmp", ".gif"})
            expected_.erase("Food Photos/" + std::to_string(number) + ending);
    }
    void WriteCategories() {
        Book.Numbers("MY FAVORITES") = favorites_.Text();
        Book.Numbers("ALL RECIPES WITH PICTURES") = pictured_.Text();
        std::string text = " " + std::to_string(total_) + " \r\n";
        for (const auto& [name, numbers] : Book.Categories)
            text += name + "\r\n" + numbers + "\r\n";
        expected_["Categories.ctg"] = text;
    }

    // Every file of the folder, byte by byte, and no other; the recipes as the description of the
    // formats tells to read them; what the window says.
    void Check() {
        if (!records_.Records.empty()) expected_["Custom Recipes.ydb"] = records_.Text();
        expected_["Custom Recipes Index.ind"] = records_.Index();
        const FolderBytes files = BytesOf(Data());
        for (const auto& [name, bytes] : expected_)
            ASSERT_EQ(FileIn(files, name), bytes) << name;
        for (const auto& [name, bytes] : files)
            ASSERT_TRUE(expected_.contains(name)) << name;
        const auto own = OwnIn(files);
        ASSERT_EQ(own.size(), records_.Logical.size());
        for (std::size_t i = 0; i < own.size(); ++i) {
            const StoredRecipe& recipe = records_.Logical[i];
            ASSERT_EQ(own[i].Title, recipe.Title);
            ASSERT_TRUE(own[i].Body.starts_with(recipe.Body));
            ASSERT_EQ(own[i].Body.find_first_not_of(" \r\n", recipe.Body.size()),
                      std::string::npos);
            const int number = Number(i);
            ASSERT_EQ(Main().pictures.HasPicture(std::to_string(number)), pictured_.Has(number));
        }
        ASSERT_EQ(Main().ui.lblTotal.Caption(), std::to_string(total_));
        ASSERT_EQ(Boxes.Shown.size(), questions_)
            << (Boxes.Shown.empty() ? "none" : Boxes.Shown.back().Text);
    }

    struct Chosen {
        std::string Name;
        std::string Ending;
        std::string Bytes;
    };
    std::vector<Chosen> chosen_;
    RandomRecipe random_{Seed() + static_cast<std::uint32_t>(GetParam())};
    FolderBytes expected_;
    RecordModel records_;
    Numbers favorites_;
    Numbers pictured_;
    int total_ = 0;
    std::size_t questions_ = 0;  // asked by the last operation
    std::map<std::string, int> done_;
};

TEST_P(RandomBook, HoldsWhatTheUserHasLeftAfterEveryOperation) {
    for (int i = 0; i < Rounds(operationsPerBook); ++i) {
        Step();
        Check();
        ASSERT_FALSE(HasFailure()) << "operation " << i + 1;
    }
    for (const auto& [name, count] : done_)
        std::cout << name << ": " << count << std::endl;
    if (Rounds(operationsPerBook) < operationsPerBook) return;
    for (const char* name : {"add", "short way", "long way", "update, one longer", "delete",
                             "delete again", "favourite added", "favourite removed",
                             "picture added", "picture replaced", "picture removed", "reopen"}) {
        EXPECT_GT(done_[name], 0) << name;
    }
}

INSTANTIATE_TEST_SUITE_P(TwentyBooks, RandomBook, testing::Range(0, books));

}  // namespace
}  // namespace larder::test
