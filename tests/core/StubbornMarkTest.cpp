// Files whose mark of write protection cannot be taken off, although the system says that it was:
// some file systems of other makers keep such marks by rules of their own.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <vector>

#include "support/DataFolder.h"
#include "support/StoreSession.h"
#include "support/StoredRecipes.h"
#include "support/TempFolder.h"
#include "support/Unprivileged.h"

namespace {

// A program that tries again and again would never come to its end without one.
constexpr int patience = 20;
bool marksStay = false;
int changesOfMode = 0;

}  // namespace

// In the place of the C library's, for all of this program.
extern "C" int chmod(const char* path, mode_t mode) noexcept {
    if (marksStay && ++changesOfMode <= patience) return 0;
    return fchmodat(AT_FDCWD, path, mode, 0);
}

namespace larder::test {
namespace {

class StubbornMark : public testing::Test {
  protected:
    StubbornMark() {
        Database stock;
        stock.AddRecipe("Stock", "{\\rtf1 Stock}");
        Database own;
        own.AddRecipe("Eel", "{\\rtf1 Smoke the eel.}");
        own.AddRecipe("Cod", "{\\rtf1 Bake the cod.}");
        folder_.Write("Data/Recipes.ydb", stock.Text);
        folder_.Write("Data/Recipes Index.ind", stock.Index());
        folder_.Write("Data/Custom Recipes.ydb", own.Text);
        folder_.Write("Data/Custom Recipes Index.ind", own.Index());
        // For a user who is not the superuser, whom no mark binds.
        std::filesystem::permissions(Data(), std::filesystem::perms::all);
        changesOfMode = 0;
    }
    ~StubbornMark() override { marksStay = false; }

    std::filesystem::path Data() const { return folder_.Native("Data"); }
    void Protect(const std::string& name) const {
        ASSERT_EQ(chmod((Data() / name).c_str(), 0444), 0);
        marksStay = true;
    }

    TempFolder folder_{TempFolder::InMemory()};
};

TEST_F(StubbornMark, IsNotSaidToBeOff) {
    Protect("Custom Recipes.ydb");
    StoreSession session(Data());
    EXPECT_FALSE(session.Files.ClearReadOnly(session.Paths.strCustomRecipesFile));
    EXPECT_EQ(changesOfMode, 1);
}

TEST_F(StubbornMark, EndsAnUpdateWithTheMessageAndTheOldBytes) {
    const FolderBytes before = BytesOf(Data());
    StoreSession session(Data());
    session.Start();
    Protect("Custom Recipes.ydb");
    const Unprivileged user;
    EXPECT_FALSE(session.Update(2, "Ox", "{\\rtf1}"));
    EXPECT_LE(changesOfMode, 2);
    EXPECT_FALSE(session.Update(2, "Oxtail", "{\\rtf1 Much longer than the eel was.}"));
    EXPECT_LE(changesOfMode, 4);
    EXPECT_EQ(session.Messages,
              std::vector<std::string>(2, "Error updating recipe\nPath/File access error"));
    EXPECT_EQ(BytesOf(Data()), before);
    EXPECT_EQ(session.Store.GetRecipeTitle(2), "Eel");
}

TEST_F(StubbornMark, OfTheIndexEndsAnAddWithTheMessageAndTheOldBytes) {
    const FolderBytes before = BytesOf(Data());
    StoreSession session(Data());
    session.Start();
    ASSERT_EQ(chmod((Data() / "Custom Recipes.ydb").c_str(), 0666), 0);
    changesOfMode = 0;
    Protect("Custom Recipes Index.ind");
    const Unprivileged user;
    EXPECT_FALSE(session.Add("Ox", "{\\rtf1}"));
    EXPECT_EQ(session.Messages,
              std::vector<std::string>{"Error adding recipe.\nPath/File access error"});
    EXPECT_LE(changesOfMode, 2);
    EXPECT_EQ(session.Store.TotalNumRecords, 3);
    session.Files.CloseAll();
    StoreSession(Data()).Start();
    EXPECT_EQ(BytesOf(Data()), before);
}

}  // namespace
}  // namespace larder::test
