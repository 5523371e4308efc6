// The picture of a recipe while the program is killed, or the disk fails, as it is changed.

#include <array>
#include <iostream>

#include "behaviour/support/EditorBook.h"
#include "edit/frmAddRecipe.h"
#include "support/Killer.h"
#include "support/PowerCut.h"
#include "support/StoredRecipes.h"

namespace larder {
namespace {

using test::EditorBook;
using test::FolderBytes;

class PictureTrust : public EditorBook {
  protected:
    bool HasPhoto(const std::string& name) { return Folder.Exists(Photo(name)); }
    void Choose(const std::string& name) {
        Boxes.Then(Dialogs::Answer::Yes);
        Boxes.ThenFile(Folder.Native(name));
        ClickOn(Editor().ibAssignPicture);
    }
    void Remove() {
        Boxes.Then(Dialogs::Answer::Yes);
        ClickOn(Editor().ibRemovePicture);
    }
};

TEST_F(PictureTrust, OfAnotherKindReplacesEveryOlderOne) {
    for (const char* name : {"4.jpg", "4.bmp", "4.gif", "44.jpg"})
        MakePicture(Photo(name));
    MakePicture("lunch.gif", 80, 80);
    OpenOn(4);
    Choose("lunch.gif");
    ClickOn(Editor().ibAdd);
    EXPECT_EQ(Folder.Read(Photo("4.gif")), Folder.Read("lunch.gif"));
    EXPECT_FALSE(HasPhoto("4.jpg"));
    EXPECT_FALSE(HasPhoto("4.bmp"));
    EXPECT_TRUE(HasPhoto("44.jpg"));
}

TEST_F(PictureTrust, ThatIsRemovedDoesNotUncoverAnOlderOne) {
    for (const char* name : {"4.jpg", "4.bmp", "4.gif"})
        MakePicture(Photo(name));
    OpenOn(4);
    Remove();
    ClickOn(Editor().ibAdd);
    for (const char* name : {"4.jpg", "4.bmp", "4.gif"})
        EXPECT_FALSE(HasPhoto(name)) << name;
    EXPECT_EQ(Main().pictures.CheckForAPicture("4"), "");
}

TEST_F(PictureTrust, ThatIsDeletedIsGoneFromTheDiskBeforeItsNumberGoesFromTheSet) {
    for (const bool recipe : {false, true}) {
        MakePicture(Photo("4.jpg"));
        MakePicture(Photo("4.gif"));
        Main().pictures.AddToAllWithPicture(4);
        OpenOn(4);
        Remove();
        std::vector<std::string> order;
        Main().files.Watch([&](const NumberedFiles::Access& access) {
            if (access.Path.find("Food Photos") != std::string_view::npos ||
                access.Path.find("Categories") != std::string_view::npos) {
                if (access.Kind == "delete" || access.Kind == "flush" || access.Kind == "rename")
                    order.emplace_back(access.Kind);
            }
        });
        if (recipe) {
            Main().ownRecipes.DeleteRecipe(4, true, true);
        } else {
            ClickOn(Editor().ibAdd);
        }
        Main().files.Watch(nullptr);
        ASSERT_GE(order.size(), 3U) << recipe;
        order.resize(3);
        EXPECT_EQ(order, (std::vector<std::string>{"delete", "delete", "flush"})) << recipe;
        EXPECT_FALSE(HasPhoto("4.jpg"));
        EXPECT_FALSE(HasPhoto("4.gif"));
    }
}

// Kills and faults: what is done to recipe 4, which has 4.jpg in all but the first.
struct Change {
    std::string Name;
    std::string Chosen;  // the file; empty for none
    bool Deletes;        // the recipe goes
};

class PictureCrash : public PictureTrust {
  protected:
    void SetUp() override {
        PictureTrust::SetUp();
        MakePicture("new.jpg", 90, 70);
        MakePicture("new.gif", 90, 70);
    }
    std::filesystem::path Data() const { return Folder.Native("Data"); }

    void Prepare(const Change& change) {
        test::PutBytes(Data(), start_);
        Folder.Delete("Data/Food Photos");
        Folder.MakeFolder("Data/Food Photos");
        if (change.Name != "copy") MakePicture(Photo("4.jpg"));
        ASSERT_TRUE(Restart());
        if (change.Name != "copy") Main().pictures.AddToAllWithPicture(4);
        Boxes = {};
        if (change.Deletes) return;
        OpenOn(4);
        if (change.Chosen.empty()) {
            Remove();
        } else {
            Choose(change.Chosen);
        }
    }
    void Do(const Change& change) {
        if (change.Deletes) {
            Main().ownRecipes.DeleteRecipe(4, true, true);
        } else {
            Editor().picture.Store(4);
        }
    }
    // The recipe has its old picture whole, or the new one whole, or it has none where that is the
    // old or the new state.
    void ExpectOldOrNew(const Change& change) {
        const std::string file = Main().pictures.CheckForAPicture("4");
        if (file.empty()) {
            EXPECT_TRUE(change.Name == "copy" || change.Chosen.empty()) << "lost";
            return;
        }
        const std::string bytes = Folder.Read(Photo(file.substr(file.rfind('\\') + 1)));
        const bool isOld = change.Name != "copy" && bytes == old_;
        const bool isNew = !change.Chosen.empty() && bytes == Folder.Read(change.Chosen);
        EXPECT_TRUE(isOld || isNew) << "torn";
        if (isOld) ++olds_;
    }
    int CountChanges(const Change& change) {
        int count = 0;
        Prepare(change);
        Main().files.Watch([&](const NumberedFiles::Access& access) {
            if (test::Changes(access)) ++count;
        });
        Do(change);
        Main().files.Watch(nullptr);
        return count;
    }
    void TakeStart() {
        start_ = test::BytesOf(Data());
        MakePicture("old.jpg");
        old_ = Folder.Read("old.jpg");
    }

    const std::vector<Change> changes_ = {
        {"copy", "new.jpg", false},
        {"replace", "new.jpg", false},
        {"replace by kind", "new.gif", false},
        {"remove", "", false},
        {"delete the recipe", "", true},
    };
    FolderBytes start_;
    std::string old_;
    int olds_ = 0;
    std::size_t points_ = 0;
};

TEST_F(PictureCrash, AKillAtAnyAccessLeavesTheOldOrTheNewPictureWhole) {
    TakeStart();
    for (const Change& change : changes_) {
        const int last = CountChanges(change);
        ASSERT_GT(last, 1) << change.Name;
        for (int at = 1; at <= last; ++at) {
            SCOPED_TRACE(change.Name + ", access " + std::to_string(at));
            Prepare(change);
            // Painting is divided among threads, of which a child has none.
            const bool killed = test::KilledInAProcess([&] {
                Main().ui.window.Native()->setUpdatesEnabled(false);
                Editor().window.Native()->setUpdatesEnabled(false);
                test::Killer killer(Data(), at, false);
                Main().files.Watch([&](const NumberedFiles::Access& it) { killer(it); });
                Do(change);
            });
            ASSERT_TRUE(killed);
            ASSERT_TRUE(Restart());
            ExpectOldOrNew(change);
            ++points_;
            ASSERT_FALSE(HasFailure());
        }
    }
    std::cout << points_ << " kills, no picture lost" << std::endl;
    EXPECT_GT(points_, 20U);
    EXPECT_GT(olds_, 0);
}

constexpr std::array Numbers{failure::DiskFull, failure::DeviceError, failure::PathAccess};

TEST_F(PictureCrash, AFailureAtAnyAccessLeavesTheOldOrTheNewPictureWhole) {
    TakeStart();
    for (const Change& change : changes_) {
        const int last = CountChanges(change);
        for (int at = 1; at <= last; ++at) {
            SCOPED_TRACE(change.Name + ", access " + std::to_string(at));
            Prepare(change);
            int counted = 0;
            Main().files.Watch([&](const NumberedFiles::Access& access) {
                if (!test::Changes(access) || ++counted != at) return;
                throw Failure(Numbers[points_ % Numbers.size()], "disk");
            });
            EXPECT_NO_THROW(Do(change));
            Main().files.Watch(nullptr);
            ExpectOldOrNew(change);
            EXPECT_FALSE(Folder.Exists(Photo("4.jpg.new")));
            ++points_;
            ASSERT_FALSE(HasFailure());
        }
    }
    std::cout << points_ << " faults, no picture lost" << std::endl;
    EXPECT_GT(points_, 60U);
}

}  // namespace
}  // namespace larder
