#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "platform/Failure.h"
#include "support/DataFolder.h"
#include "support/StoreSession.h"
#include "support/StoredRecipes.h"
#include "support/TempFolder.h"

namespace larder::test {

// What is read while a change can neither be finished nor taken back. Stock recipes 1 and 2, and
// the user's 3 to 5, the last of them plain text.
class UnsettledReads : public testing::Test {
  protected:
    UnsettledReads() {
        stock.AddRecipe("Stock A", "{\\rtf1 A}");
        stock.AddRecipe("Stock B", "{\\rtf1 B}");
        own.AddRecipe("Eel", "{\\rtf1 Eel}");
        own.AddRecipe("Cod", "{\\rtf1 Cod}");
        own.AddRecipe("Ray", "Fry the ray.");
        folder.Write("Data/Recipes.ydb", stock.Text);
        folder.Write("Data/Recipes Index.ind", stock.Index());
        folder.Write("Data/Custom Recipes.ydb", own.Text);
        folder.Write("Data/Custom Recipes Index.ind", own.Index());
        session.Start();
    }

    // From now on no file can be renamed to this name.
    void RefuseRenameTo(StoreSession& run, const std::string& name) {
        run.Files.Watch([this, name](const NumberedFiles::Access& access) {
            if (broken && access.Kind == "rename" && access.Path.ends_with(name)) {
                throw Failure(failure::DeviceError, "disk");
            }
        });
    }
    // From now on the disk takes no more: a write to a number of the user's files puts `bytes` into
    // the text, from a position on, and fails; and so does all that would take it back.
    void FailWriting(StoreSession& run, int number, std::size_t position,
                     const std::string& bytes) {
        run.Files.Watch([=, this](const NumberedFiles::Access& access) {
            if (!broken || access.Kind == "open" || access.Kind == "read" ||
                access.Kind == "close" || access.Number == filenumber::RecipesTemp) {
                return;
            }
            if (access.Number == number && access.Kind == "write" && !torn)
                Overwrite(position, bytes);
            torn = torn || access.Number == number;
            if (torn) throw Failure(failure::DeviceError, "disk");
        });
    }
    void Overwrite(std::size_t position, const std::string& bytes) const {
        std::fstream file(folder.Native("Data/Custom Recipes.ydb"),
                          std::ios::in | std::ios::out | std::ios::binary);
        file.seekp(static_cast<std::streamoff>(position) - 1);
        file << bytes;
    }
    // A start of the program on the folder as it is.
    static void StartAsFarAsItGoes(StoreSession& run) {
        EXPECT_THROW(run.Writer.Journal.SettleLastRun(), Failure);
        run.Store.OpenYDB_IND_Normal();
        run.Store.RecalculateTotalRecipes();
    }

    // As a run leaves it that was killed while it added a recipe.
    void LeaveHalfOfANewOne() const {
        RecordChange change;
        change.Adds = true;
        change.TextLength = static_cast<std::int64_t>(own.Text.size());
        change.IndexLength = 12;
        change.Position = static_cast<std::int32_t>(own.Text.size()) + 1;
        change.SetNew("New\r\nWhole\r\n");
        folder.Write("Data/Recipes Temp.ydb", JournalOf(change));
        folder.Write("Data/Custom Recipes.ydb", own.Text + "New\r\nWh");
        folder.Write("Data/Custom Recipes Index.ind", own.Index() + IndexBytes({change.Position}));
    }

    using Recipes = std::vector<StoredRecipe>;
    static Recipes ReadIn(StoreSession& run) {
        Recipes recipes;
        for (std::int32_t i = 1; i <= run.Store.TotalNumRecords; ++i)
            recipes.push_back({run.Store.GetRecipeTitle(i), run.Store.GetRecipeRTF(i)});
        EXPECT_TRUE(run.Disc.Asked.empty());
        return recipes;
    }
    std::string Own() const { return folder.Read("Data/Custom Recipes.ydb"); }

    const Recipes before{{"Stock A", "{\\rtf1 A}"},
                         {"Stock B", "{\\rtf1 B}"},
                         {"Eel", "{\\rtf1 Eel}"},
                         {"Cod", "{\\rtf1 Cod}"},
                         {"Ray", "Fry the ray."}};
    Database stock;
    Database own;
    TempFolder folder;
    bool broken = true;
    bool torn = false;
    StoreSession session{folder.Native("Data")};
};

}  // namespace larder::test
