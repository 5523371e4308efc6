// A data folder that must not be written: what the editor tells, and what it keeps.

#include <filesystem>

#include "behaviour/support/EditorBook.h"
#include "support/StoredRecipes.h"
#include "support/Unprivileged.h"

namespace larder {
namespace {

using std::filesystem::perms;
using test::EditorBook;

class OnReadOnlyData : public EditorBook {
  protected:
    // A folder with its files, and without the right to write any of them while this lives.
    class Protected {
      public:
        explicit Protected(std::filesystem::path folder) : folder_(std::move(folder)) {
            Set(perms::owner_write | perms::group_write | perms::others_write,
                std::filesystem::perm_options::remove);
        }
        ~Protected() { Set(perms::owner_write, std::filesystem::perm_options::add); }
        Protected(const Protected&) = delete;
        Protected& operator=(const Protected&) = delete;

      private:
        void Set(perms rights, std::filesystem::perm_options how) {
            for (const auto& entry : std::filesystem::recursive_directory_iterator(folder_))
                std::filesystem::permissions(entry, rights, how);
            std::filesystem::permissions(folder_, rights, how);
        }
        std::filesystem::path folder_;
    };
    std::filesystem::path Data() const { return Folder.Native("Data"); }
};

TEST_F(OnReadOnlyData, AnAddIsToldAndTheRecipeWaitsInTheEditor) {
    OpenNew();
    TypeAnew(Editor().rtbTitle, "Grilled Ling");
    TypeAnew(Editor().rtbRecipe, "Grill it.");
    const auto before = test::BytesOf(Data());
    {
        const Protected data(Data());
        const test::Unprivileged user;
        ClickOn(Editor().ibAdd);
    }
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Boxes.Shown[0].Text.substr(0, 21), "Error adding recipe.\n");
    EXPECT_EQ(test::BytesOf(Data()), before);
    EXPECT_TRUE(EditorShown());
    EXPECT_EQ(Editor().rtbTitle.Text(), "Grilled Ling");
    EXPECT_EQ(Editor().rtbRecipe.Text(), "Grill it.");
    ClickOn(Editor().ibAdd);
    EXPECT_FALSE(EditorShown());
    EXPECT_EQ(Main().store.GetRecipeTitle(7), "Grilled Ling");
}

TEST_F(OnReadOnlyData, AnUpdateIsToldAndTheRecipeWaitsInTheEditor) {
    for (const std::string longer : {"", "And now a much longer title than it had: "}) {
        OpenOn(4);
        Type(longer + "Very ");
        const std::string typed = Editor().rtbRecipe.Text();
        const auto before = test::BytesOf(Data());
        Boxes.Shown.clear();
        {
            const Protected data(Data());
            const test::Unprivileged user;
            ClickOn(Editor().ibAdd);
        }
        ASSERT_EQ(Boxes.Shown.size(), 1U) << longer;
        EXPECT_EQ(Boxes.Shown[0].Text.substr(0, 22), "Error updating recipe\n");
        EXPECT_EQ(test::BytesOf(Data()), before);
        EXPECT_TRUE(EditorShown());
        EXPECT_EQ(Editor().rtbRecipe.Text(), typed);
        ClickOn(Editor().ibAdd);
        EXPECT_FALSE(EditorShown());
        EXPECT_EQ(Main().store.GetRecipeTitle(4).substr(0, longer.size() + 5), longer + "Very ");
    }
}

TEST_F(OnReadOnlyData, APictureThatHasNoPlaceIsToldAndTheRecipeIsStored) {
    const std::string path = MakePicture("lunch.jpg");
    OpenOn(4);
    Type("Very ");
    Boxes.ThenFile(path);
    ClickOn(Editor().ibAssignPicture);
    {
        const Protected photos(Data() / "Food Photos");
        // The files of recipes are anybody's to write, the photos nobody's.
        for (const auto& entry : std::filesystem::directory_iterator(Data())) {
            if (entry.is_regular_file()) std::filesystem::permissions(entry, perms(0666));
        }
        std::filesystem::permissions(Data(), perms(0777));
        const test::Unprivileged user;
        ClickOn(Editor().ibAdd);
    }
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Boxes.Shown[0].Text, "Could not copy the picture.");
    EXPECT_FALSE(EditorShown());
    EXPECT_EQ(Main().store.GetRecipeTitle(4), "Very Own Hake");
    EXPECT_FALSE(Folder.Exists(Photo("4.jpg")));
}

}  // namespace
}  // namespace larder
