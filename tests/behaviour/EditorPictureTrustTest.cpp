// The picture of a recipe while the program is killed, or the disk fails, as it is changed.

#include <algorithm>
#include <array>
#include <iostream>
#include <set>
#include <string>
#include <vector>

#include "behaviour/support/EditorBook.h"
#include "edit/frmAddRecipe.h"
#include "support/Killer.h"
#include "support/PowerCut.h"
#include "support/StoreSession.h"
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

// Kills, power cuts and faults.
struct Change {
    enum class Kind { OfPicture, OfNewRecipe, Deletion };

    std::string Name;
    int Number;
    std::string Chosen;  // the file; empty for none
    bool HasOld;         // the recipe has <number>.jpg before
    Kind What = Kind::OfPicture;
};

class PictureCrash : public PictureTrust {
  protected:
    void SetUp() override {
        PictureTrust::SetUp();
        MakePicture("new.jpg", 90, 70);
        MakePicture("new.gif", 90, 70);
        MakePicture("old.jpg");
        old_ = Folder.Read("old.jpg");
        start_ = test::BytesOf(Data());
    }
    std::filesystem::path Data() const { return Folder.Native("Data"); }

    // The window and the folder as they are right before the change.
    void Prepare(const Change& change) {
        test::PutBytes(Data(), start_);
        const std::string number = std::to_string(change.Number);
        if (change.HasOld) {
            Folder.MakeFolder("Data/Food Photos");
            Folder.Write(Photo(number + ".jpg"), old_);
        }
        ASSERT_TRUE(Restart());
        if (change.HasOld) Main().pictures.AddToAllWithPicture(change.Number);
        Boxes = {};
        if (change.What == Change::Kind::OfNewRecipe) {
            OpenNew();
        } else if (change.What == Change::Kind::OfPicture) {
            OpenOn(change.Number);
        }
        if (!change.Chosen.empty()) Choose(change.Chosen);
        if (change.Chosen.empty() && change.What == Change::Kind::OfPicture) Remove();
        before_ = test::BytesOf(Data());
        Main().files.CloseAll();
    }
    void Do(const Change& change) {
        if (change.What == Change::Kind::Deletion)
            return Main().ownRecipes.DeleteRecipe(change.Number, true, true);
        if (change.What == Change::Kind::OfNewRecipe)
            Main().ownRecipes.StoreNewRecipe("New", "{\\rtf1 New}");
        Editor().picture.Store(change.Number, change.What == Change::Kind::OfNewRecipe);
    }
    // Does it once to know what comes of it; returns how many accesses that takes.
    int Rehearse(const Change& change) {
        int count = 0;
        Prepare(change);
        Main().files.Watch([&](const NumberedFiles::Access& access) {
            if (test::Changes(access)) ++count;
        });
        Do(change);
        Main().files.Watch(nullptr);
        after_ = test::BytesOf(Data());
        return count;
    }

    // The window starts on what was left: the recipes are as before or after the change; the one
    // whose picture it is has the old picture whole, or the new one whole, or none where that is
    // the old or the new state. With `done`, it is the new state.
    void CheckStart(const Change& change, const FolderBytes& left, bool done) {
        test::PutBytes(Data(), left);
        Boxes = {};
        ASSERT_TRUE(Restart());
        EXPECT_TRUE(WaitUntil([&] { return !HasUnfinishedCopy(); }));
        EXPECT_TRUE(Boxes.Shown.empty());
        CheckRecipes(done);
        CheckPicture(change, done);
    }
    bool HasUnfinishedCopy() {
        return std::ranges::any_of(test::BytesOf(Data()), [](const auto& file) {
            return file.first.starts_with("Food Photos/") && file.first.ends_with(".new");
        });
    }
    void CheckRecipes(bool done) {
        const auto now = test::RecipesIn(test::BytesOf(Data()));
        EXPECT_TRUE(now == test::RecipesIn(after_) || (!done && now == test::RecipesIn(before_)));
    }
    // Tells what the recipe's picture is now.
    enum class Now { None, Old, New };
    Now CheckWhole(const Change& change) {
        const std::string path = Main().pictures.CheckForAPicture(std::to_string(change.Number));
        const std::string bytes =
            path.empty() ? "" : Folder.Read(Photo(path.substr(path.rfind('\\') + 1)));
        const bool isOld = change.HasOld && bytes == old_;
        const bool isNew = !change.Chosen.empty() && bytes == Folder.Read(change.Chosen);
        if (path.empty()) {
            EXPECT_TRUE(!change.HasOld || change.Chosen.empty()) << "lost";
            return Now::None;
        }
        EXPECT_TRUE(isOld || isNew) << "torn";
        return isOld ? Now::Old : Now::New;
    }
    // The file chosen is the recipe's own.
    bool HasChosen(const Change& change) {
        const std::string ending = change.Chosen.substr(change.Chosen.rfind('.'));
        const std::string file = Photo(std::to_string(change.Number) + ending);
        return Folder.Exists(file) && Folder.Read(file) == Folder.Read(change.Chosen);
    }
    bool IsToldNotCopied() const {
        return std::ranges::any_of(
            Boxes.Shown, [](const auto& box) { return box.Text == "Could not copy the picture."; });
    }
    void CheckPicture(const Change& change, bool done) {
        const Now now = CheckWhole(change);
        if (done) {
            EXPECT_EQ(now, change.Chosen.empty() ? Now::None : Now::New) << "undone";
        }
        // A number that the book does not have yet will be another recipe's.
        const bool hasRecipe = !Main().store.GetRecipeTitle(change.Number).empty();
        if (change.What == Change::Kind::OfNewRecipe && !hasRecipe) {
            EXPECT_EQ(now, Now::None);
        }
        if (change.What == Change::Kind::Deletion && hasRecipe) {
            EXPECT_EQ(now, Now::Old);
        }
        // The set is on the disk behind the file that it tells of, and behind its deletion.
        const bool inSet = Main().pictures.HasPicture(std::to_string(change.Number));
        const bool none = now == Now::None;
        EXPECT_TRUE(change.Chosen.empty() ? inSet || none : !inSet || !none);
        if (now == Now::Old) ++olds_;
        if (now == Now::New) ++news_;
    }

    const std::vector<Change> changes_ = {
        {"copy", 4, "new.jpg", false},
        {"replace", 4, "new.jpg", true},
        {"replace by kind", 4, "new.gif", true},
        {"remove", 4, "", true},
        {"delete the recipe", 4, "", true, Change::Kind::Deletion},
        {"a new recipe", 7, "new.jpg", false, Change::Kind::OfNewRecipe},
    };
    FolderBytes start_;
    FolderBytes before_;
    FolderBytes after_;
    std::string old_;
    int olds_ = 0;
    int news_ = 0;
    std::size_t points_ = 0;
};

TEST_F(PictureCrash, AKillAtAnyAccessLeavesTheOldOrTheNewPictureWhole) {
    int kills = 0;
    for (const Change& change : changes_) {
        SCOPED_TRACE(change.Name);
        const int last = Rehearse(change);
        ASSERT_GT(last, 1);
        std::set<FolderBytes> all;
        Prepare(change);
        for (int at = 1; at <= last; ++at) {
            test::PutBytes(Data(), before_);
            // Painting is divided among threads, of which a child has none.
            const bool killed = test::KilledInAProcess([&] {
                Main().ui.window.Native()->setUpdatesEnabled(false);
                Editor().window.Native()->setUpdatesEnabled(false);
                test::Killer killer(Data(), at, false);
                Main().files.Watch([&](const NumberedFiles::Access& it) { killer(it); });
                Do(change);
            });
            ASSERT_TRUE(killed) << "access " << at;
            all.insert(test::BytesOf(Data()));
            ++kills;
        }
        for (const FolderBytes& left : all) {
            CheckStart(change, left, false);
            ASSERT_FALSE(HasFailure());
        }
    }
    std::cout << kills << " kills, no picture lost" << std::endl;
    EXPECT_GT(kills, 50);
    EXPECT_GT(olds_, 0);
    EXPECT_GT(news_, 0);
}

TEST_F(PictureCrash, APowerCutAtAnyAccessLeavesTheOldOrTheNewPictureWhole) {
    for (const Change& change : changes_) {
        SCOPED_TRACE(change.Name);
        Rehearse(change);
        Prepare(change);
        test::PowerCut power(Data());
        std::set<FolderBytes> possible;
        Main().files.Watch([&](const NumberedFiles::Access& access) {
            power.Follow(access);
            if (test::Changes(access)) possible.merge(power.Possible());
        });
        Do(change);
        power.Finish();
        Main().files.Watch(nullptr);
        const std::set<FolderBytes> last = power.Possible();
        points_ += possible.size() + last.size();
        for (const bool done : {false, true}) {
            for (const FolderBytes& left :
                 test::AfterAStart(done ? last : possible, Folder.Native("Scratch"))) {
                CheckStart(change, left, done);
                ASSERT_FALSE(HasFailure()) << (done ? "done" : "on the way");
            }
        }
    }
    std::cout << points_ << " power cuts, no picture lost" << std::endl;
    EXPECT_GT(points_, 100U);
    EXPECT_GT(olds_, 0);
    EXPECT_GT(news_, 0);
}

constexpr std::array Numbers{failure::DiskFull, failure::DeviceError, failure::PathAccess};

TEST_F(PictureCrash, AFailureAtAnyAccessLeavesTheOldOrTheNewPictureWhole) {
    int told = 0;
    for (const Change& change : changes_) {
        if (change.What == Change::Kind::OfNewRecipe) continue;  // its picture is not stored then
        const int last = Rehearse(change);
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
            EXPECT_FALSE(HasUnfinishedCopy());
            CheckWhole(change);
            if (!change.Chosen.empty() && !HasChosen(change)) {
                EXPECT_TRUE(IsToldNotCopied());
                ++told;
            }
            ++points_;
            ASSERT_FALSE(HasFailure());
        }
    }
    std::cout << points_ << " faults, " << told << " told, no picture lost" << std::endl;
    EXPECT_GT(points_, 60U);
    EXPECT_GT(told, 5);
}

}  // namespace
}  // namespace larder
