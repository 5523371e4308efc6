#include <gtest/gtest.h>

#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "support/DataFolder.h"
#include "support/RandomRecipe.h"
#include "support/RecordModel.h"
#include "support/Rounds.h"
#include "support/Seed.h"
#include "support/StoreSession.h"
#include "support/StoredRecipes.h"
#include "support/TempFolder.h"

namespace larder::test {
namespace {

constexpr std::size_t mostRecipes = 60;

class RecipeRandomTest : public testing::Test {
  protected:
    RecipeRandomTest() { StartAnew(); }

    void StartAnew() {
        session_.reset();
        model_ = {};
        PutBytes(Data(), {});
        Database stock;
        stock.AddRecipe("Stock A", "{\\rtf1 A}");
        stock.AddRecipe("Stock B", "{\\rtf1 B}");
        folder_.Write("Data/Recipes.ydb", stock.Text);
        folder_.Write("Data/Recipes Index.ind", stock.Index());
        Reopen();
    }
    void Reopen() {
        session_ = std::make_unique<StoreSession>(Data());
        session_->Start();
    }

    void Add() {
        const std::string title = random_.Title();
        const std::string rtf = random_.Rtf(static_cast<std::size_t>(random_.Pick(10, 200)));
        EXPECT_TRUE(session_->Add(title, rtf));
        model_.Add(title, rtf);
        ++total_;
    }
    // `longer`: by how many bytes the record is to be longer than its room.
    void Update(std::size_t i, std::int64_t longer) {
        const std::string title = random_.Title();
        const std::string rtf = random_.Rtf(model_.RtfBytes(i, title, longer));
        const bool wasThere = !model_.Logical[i].Title.empty();
        EXPECT_TRUE(session_->Update(Number(i), title, rtf));
        ++done_[model_.Update(i, title, rtf) ? "short way" : "long way"];
        if (!wasThere) ++total_;  // the test writes into deleted records too
    }
    void Delete(std::size_t i) {
        if (model_.Logical[i].Title.empty()) return;
        EXPECT_TRUE(session_->Update(Number(i), "", ""));
        EXPECT_TRUE(model_.Update(i, "", "") || i + 1 == model_.Records.size());
        --total_;
    }
    static std::int32_t Number(std::size_t i) { return static_cast<std::int32_t>(i) + 3; }

    void Step() {
        if (model_.Records.size() >= mostRecipes) {
            StartAnew();
            total_ = 0;
            ++done_["new folder"];
        }
        const int kind = model_.Records.empty() ? 0 : random_.Pick(0, 9);
        const std::size_t i = model_.Records.empty() ? 0 : random_.PickOf(model_.Records.size());
        if (kind <= 1) return ++done_["add"], Add();
        if (kind <= 3) return ++done_["update, smaller"], Update(i, -random_.Pick(1, 40));
        if (kind == 4) return ++done_["update, same size"], Update(i, 0);
        if (kind == 5) return ++done_["update, one longer"], Update(i, 1);
        if (kind <= 7) return ++done_["update, longer"], Update(i, random_.Pick(2, 60));
        if (kind == 8) return ++done_["delete"], Delete(i);
        ++done_["reopen"];
        Reopen();
    }

    void Check() {
        const FolderBytes files = BytesOf(Data());
        ASSERT_EQ(FileIn(files, "Custom Recipes.ydb"), model_.Text());
        ASSERT_EQ(FileIn(files, "Custom Recipes Index.ind"), model_.Index());
        ASSERT_FALSE(HasTemporaries(files));
        const auto own = OwnIn(files);
        ASSERT_EQ(own.size(), model_.Logical.size());
        for (std::size_t i = 0; i < own.size(); ++i) {
            ASSERT_EQ(own[i].Title, model_.Logical[i].Title);
            ASSERT_TRUE(own[i].Body.starts_with(model_.Logical[i].Body));
            ASSERT_EQ(own[i].Body.find_first_not_of(" \r\n", model_.Logical[i].Body.size()),
                      std::string::npos);
        }
        ASSERT_EQ(StockIn(files).size(), 2U);
        ASSERT_EQ(session_->Store.TotalNumRecords, Number(own.size()) - 1);
        ASSERT_TRUE(session_->Messages.empty());
    }
    void CheckCount() {
        session_->Store.OpenYDB_IND_Normal();
        session_->Store.RecalculateTotalRecipes();
        ASSERT_EQ(session_->Store.TotalRecipes(), 2 + total_);
    }

    std::filesystem::path Data() const { return folder_.Native("Data"); }

    TempFolder folder_{TempFolder::InMemory()};
    RandomRecipe random_{Seed()};
    std::unique_ptr<StoreSession> session_;
    RecordModel model_;
    int total_ = 0;  // recipes of the user's that are not deleted
    std::map<std::string, int> done_;
};

TEST_F(RecipeRandomTest, AnyOperationsLeaveTheBytesThatTheArithmeticTells) {
    constexpr int operations = Rounds(5000);
    for (int i = 0; i < operations; ++i) {
        Step();
        Check();
        if (i % 50 == 0) CheckCount();
        ASSERT_FALSE(HasFailure()) << "operation " << i + 1;
    }
    for (const auto& [name, count] : done_)
        std::cout << name << ": " << count << std::endl;
    for (const char* name :
         {"add", "short way", "long way", "update, one longer", "delete", "reopen"})
        EXPECT_GT(done_[name], 0) << name;
}

}  // namespace
}  // namespace larder::test
