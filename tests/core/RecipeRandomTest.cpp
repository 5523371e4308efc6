#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "support/DataFolder.h"
#include "support/Seed.h"
#include "support/StoreSession.h"
#include "support/StoredRecipes.h"
#include "support/TempFolder.h"

namespace larder::test {
namespace {

constexpr std::size_t mostRecipes = 60;

// What the user's files must hold, byte by byte, kept as the bytes of each record.
struct Model {
    std::vector<std::string> Records;  // each up to where the next one begins
    std::vector<StoredRecipe> Logical;

    void Add(const std::string& title, const std::string& rtf) {
        Records.push_back(title + "\r\n" + rtf + "\r\n");
        Logical.push_back({title, rtf});
    }
    // True when it was written over, false when the file was rewritten.
    bool Update(std::size_t i, const std::string& title, const std::string& rtf) {
        Logical[i] = {title, rtf};
        const bool last = i + 1 == Records.size();
        const std::size_t room = Records[i].size() - (last ? 1 : 0);
        const std::size_t needed = title.size() + rtf.size() + 4;
        if (needed <= room) {
            const std::string oldEnd = Records[i].substr(room);
            Records[i] = title + "\r\n" + rtf + std::string(room - needed, ' ') + "\r\n" + oldEnd;
            return true;
        }
        if (i > 0) CloseLine(Records[i - 1]);
        Records[i] = title + "\r\n" + rtf + "\r\n";
        if (!last) CloseLine(Records.back());
        return false;
    }
    static void CloseLine(std::string& record) { record.replace(record.size() - 2, 2, "\r\n"); }

    std::string Text() const {
        std::string text;
        for (const std::string& record : Records)
            text += record;
        return text;
    }
    std::string Index() const {
        std::vector<std::int32_t> positions;
        std::int32_t position = 1;
        for (const std::string& record : Records) {
            positions.push_back(position);
            position += static_cast<std::int32_t>(record.size());
        }
        return IndexBytes(positions);
    }
};

class RecipeRandomTest : public testing::Test {
  protected:
    RecipeRandomTest() { StartAnew(); }

    int Pick(int from, int to) { return std::uniform_int_distribution(from, to)(random_); }
    std::string Title() {
        std::string title(static_cast<std::size_t>(Pick(1, 20)), ' ');
        for (char& c : title)
            c = static_cast<char>(Pick(33, 255));
        return title;
    }
    // Of this many bytes, with line ends of its own.
    std::string Rtf(std::size_t bytes) {
        std::string rtf = "{\\rtf1";
        while (rtf.size() + 1 < bytes)
            rtf += Pick(0, 9) == 0 && rtf.size() + 3 < bytes ? "\r\n" : "x";
        return rtf + "}";
    }

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
        const std::string title = Title();
        const std::string rtf = Rtf(static_cast<std::size_t>(Pick(10, 200)));
        EXPECT_TRUE(session_->Add(title, rtf));
        model_.Add(title, rtf);
        ++total_;
    }
    // `longer`: by how many bytes the record is to be longer than its room.
    void Update(std::size_t i, std::int64_t longer) {
        const bool last = i + 1 == model_.Records.size();
        const auto room = static_cast<std::int64_t>(model_.Records[i].size()) - (last ? 1 : 0);
        const std::string title = Title();
        const auto rest = room + longer - static_cast<std::int64_t>(title.size()) - 4;
        const std::string rtf = Rtf(static_cast<std::size_t>(std::max<std::int64_t>(rest, 8)));
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
        const int kind = model_.Records.empty() ? 0 : Pick(0, 9);
        const auto i = static_cast<std::size_t>(
            model_.Records.empty() ? 0 : Pick(0, static_cast<int>(model_.Records.size()) - 1));
        if (kind <= 1) return ++done_["add"], Add();
        if (kind <= 3) return ++done_["update, smaller"], Update(i, -Pick(1, 40));
        if (kind == 4) return ++done_["update, same size"], Update(i, 0);
        if (kind == 5) return ++done_["update, one longer"], Update(i, 1);
        if (kind <= 7) return ++done_["update, longer"], Update(i, Pick(2, 60));
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
    std::mt19937 random_{Seed()};
    std::unique_ptr<StoreSession> session_;
    Model model_;
    int total_ = 0;  // recipes of the user's that are not deleted
    std::map<std::string, int> done_;
};

TEST_F(RecipeRandomTest, TwentyThousandOperationsLeaveTheBytesThatTheArithmeticTells) {
    constexpr int operations = 20'000;
    for (int i = 0; i < operations; ++i) {
        Step();
        Check();
        if (i % 50 == 0) CheckCount();
        ASSERT_FALSE(HasFailure()) << "operation " << i + 1;
    }
    for (const auto& [name, count] : done_)
        std::cout << name << ": " << count << std::endl;
}

}  // namespace
}  // namespace larder::test
