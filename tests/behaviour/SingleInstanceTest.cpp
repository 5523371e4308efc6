#include "platform/SingleInstance.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QTest>
#include <array>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "app/frmMain.h"
#include "behaviour/support/MainWindowFixture.h"
#include "platform/Failure.h"
#include "support/TempFolder.h"
#include "support/Unprivileged.h"

namespace larder::test {
namespace {

constexpr int Short = 300;   // milliseconds, where the answer is known not to come
constexpr int Long = 20000;  // where it is known to come

// What a claim comes to, in a letter that a pipe can carry.
constexpr char Held = 'h';
constexpr char Told = 't';
constexpr char Silent = 's';

char ClaimBy(SingleInstance& instance, const std::string& folder) {
    try {
        return instance.Claim(folder) ? Held : Told;
    } catch (const Failure& failure) {
        return failure.Number == failure::PermissionDenied ? Silent : '?';
    }
}

// Another process that claims the folder and then stays as it is, answering nobody, until it is
// killed.
class OtherProcess {
  public:
    // With a gate, it waits until nobody has the gate's writing end open any more.
    OtherProcess(const std::string& folder, int patience, const int* gate = nullptr) {
        std::array<int, 2> ends{};
        if (pipe(ends.data()) != 0) ADD_FAILURE() << "no pipe";
        process_ = fork();
        if (process_ == 0) {
            if (gate != nullptr) WaitFor(gate);
            SingleInstance instance(patience);
            const char outcome = ClaimBy(instance, folder);
            if (write(ends[1], &outcome, 1) != 1) _exit(1);
            for (;;)
                pause();
        }
        close(ends[1]);
        outcome_ = ends[0];
    }
    ~OtherProcess() {
        Kill();
        close(outcome_);
    }
    OtherProcess(const OtherProcess&) = delete;
    OtherProcess& operator=(const OtherProcess&) = delete;

    // Waits for it.
    char Outcome() const {
        char outcome = 0;
        return read(outcome_, &outcome, 1) == 1 ? outcome : '?';
    }
    // The same, while this process handles its events.
    char OutcomeAmongEvents() const {
        pollfd waiting{outcome_, POLLIN, 0};
        EXPECT_TRUE(QTest::qWaitFor([&] { return poll(&waiting, 1, 0) == 1; }, Long));
        return Outcome();
    }
    void Kill() {
        if (process_ <= 0) return;
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
        process_ = -1;
    }

  private:
    static void WaitFor(const int* gate) {
        close(gate[1]);
        char nothing = 0;
        if (read(gate[0], &nothing, 1) != 0) _exit(1);
    }

    pid_t process_ = -1;
    int outcome_ = -1;
};

class AClaimedFolder : public testing::Test {
  protected:
    AClaimedFolder() { temp_.MakeFolder("Data"); }
    std::string Data() const { return temp_.Native("Data"); }

    TempFolder temp_;
    SingleInstance mine_{Short};
};

TEST_F(AClaimedFolder, IsTheFirstOnes) {
    EXPECT_EQ(ClaimBy(mine_, Data()), Held);
}

TEST_F(AClaimedFolder, AFolderThatIsNotThereIsNobodys) {
    EXPECT_EQ(ClaimBy(mine_, temp_.Native("nowhere")), Held);
    OtherProcess other(temp_.Native("nowhere"), Short);
    EXPECT_EQ(other.Outcome(), Held);
}

TEST_F(AClaimedFolder, ASecondProcessMakesTheFirstShowItselfAndDoesNotGetIt) {
    int shown = 0;
    mine_.OnSecondStart = [&] { ++shown; };
    ASSERT_EQ(ClaimBy(mine_, Data()), Held);
    for (int starts = 1; starts <= 3; ++starts) {
        const OtherProcess other(Data(), Long);
        EXPECT_EQ(other.OutcomeAmongEvents(), Told);
        EXPECT_EQ(shown, starts);
    }
}

TEST_F(AClaimedFolder, AHolderThatDoesNotAnswerIsAFailure) {
    const OtherProcess holder(Data(), Short);
    ASSERT_EQ(holder.Outcome(), Held);
    EXPECT_EQ(ClaimBy(mine_, Data()), Silent);
}

TEST_F(AClaimedFolder, AHolderWithNothingToShowLetsTheSecondWait) {
    ASSERT_EQ(ClaimBy(mine_, Data()), Held);
    const OtherProcess other(Data(), Short);
    EXPECT_EQ(other.OutcomeAmongEvents(), Silent);
}

TEST_F(AClaimedFolder, IsFreeWhenItsHolderIsKilled) {
    OtherProcess holder(Data(), Short);
    ASSERT_EQ(holder.Outcome(), Held);
    holder.Kill();
    EXPECT_EQ(ClaimBy(mine_, Data()), Held);
}

TEST_F(AClaimedFolder, IsFreeWhenItsHolderHasGone) {
    {
        SingleInstance before(Short);
        ASSERT_EQ(ClaimBy(before, Data()), Held);
    }
    EXPECT_EQ(ClaimBy(mine_, Data()), Held);
}

TEST_F(AClaimedFolder, GoesToTheSecondWhenTheFirstEndsInsteadOfAnswering) {
    OtherProcess holder(Data(), Short);
    ASSERT_EQ(holder.Outcome(), Held);
    const OtherProcess second(Data(), Long);
    holder.Kill();
    EXPECT_EQ(second.Outcome(), Held);
}

TEST_F(AClaimedFolder, IsOnePrograms) {
    for (int round = 0; round < 10; ++round) {
        std::array<int, 2> gate{};
        ASSERT_EQ(pipe(gate.data()), 0);
        std::vector<std::unique_ptr<OtherProcess>> starts;
        for (int i = 0; i < 8; ++i) {
            starts.push_back(std::make_unique<OtherProcess>(Data(), Short / 3, gate.data()));
        }
        close(gate[0]);
        close(gate[1]);
        int holders = 0;
        for (const auto& start : starts) {
            const char outcome = start->Outcome();
            EXPECT_TRUE(outcome == Held || outcome == Silent) << outcome;
            if (outcome == Held) ++holders;
        }
        EXPECT_EQ(holders, 1);
    }
}

TEST_F(AClaimedFolder, IsTheSameByEveryPath) {
    const OtherProcess holder(Data(), Short);
    ASSERT_EQ(holder.Outcome(), Held);
    std::filesystem::create_directory_symlink(Data(), temp_.Native("link"));
    temp_.MakeFolder("other");
    for (const std::string path : {"link", "other/../Data", "Data/", "Data/."}) {
        EXPECT_EQ(ClaimBy(mine_, temp_.Native(path)), Silent) << path;
    }
}

TEST_F(AClaimedFolder, DoesNotKeepAnotherFromBeingClaimed) {
    temp_.MakeFolder("other");
    const OtherProcess holder(Data(), Short);
    ASSERT_EQ(holder.Outcome(), Held);
    EXPECT_EQ(ClaimBy(mine_, temp_.Native("other")), Held);
}

TEST_F(AClaimedFolder, HasNoFileOfOurs) {
    ASSERT_EQ(ClaimBy(mine_, Data()), Held);
    EXPECT_TRUE(std::filesystem::is_empty(Data()));
}

TEST_F(AClaimedFolder, NeedNotBeWritableNorReadable) {
    for (const auto rights : {std::filesystem::perms(0555), std::filesystem::perms(0111)}) {
        std::filesystem::permissions(Data(), rights);
        const Unprivileged unprivileged;
        OtherProcess holder(Data(), Short);
        EXPECT_EQ(holder.Outcome(), Held);
        EXPECT_EQ(ClaimBy(mine_, Data()), Silent);
        holder.Kill();
        SingleInstance next(Short);
        EXPECT_EQ(ClaimBy(next, Data()), Held);
    }
}

class SecondStart : public MainWindowFixture {
  protected:
    SecondStart() { Book.AddManyStock(2); }
};

TEST_F(SecondStart, BringsTheMinimisedWindowBack) {
    ASSERT_TRUE(Start());
    Main().ui.window.SetWindowState(Window::Minimized);
    ASSERT_EQ(Main().ui.window.WindowState(), Window::Minimized);
    const OtherProcess other(Folder.Native("Data"), Long);
    EXPECT_EQ(other.OutcomeAmongEvents(), Told);
    EXPECT_EQ(Main().ui.window.WindowState(), Window::Maximized);
    EXPECT_TRUE(WaitUntil([&] { return Main().ui.window.Native()->isActiveWindow(); }));
}

TEST_F(SecondStart, WithoutAnAnswerSaysSoAndOpensNoFile) {
    ASSERT_TRUE(Start());
    Close();
    Folder.Rename("Data", "DATA");  // the name on the disk may differ by case
    const OtherProcess holder(Folder.Native("DATA"), Short);
    ASSERT_EQ(holder.Outcome(), Held);
    EXPECT_FALSE(Restart());
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Boxes.Shown[0].Text,
              "Tidewell Larder can't start.\n"
              "These recipes are open in another Tidewell Larder, which does not answer.\n"
              "Close that one and start again.");
    EXPECT_EQ(Main().ExitStatus(), 1);
    for (const int number : {1, 2, 3, 4, 8, 21, 22})
        EXPECT_FALSE(Main().files.IsOpen(number)) << number;
}

TEST_F(SecondStart, AfterTheWindowHasClosedTheNextStartIsTheFirst) {
    ASSERT_TRUE(Start());
    Main().ui.window.Close();
    ASSERT_TRUE(Restart());
    EXPECT_TRUE(Boxes.Shown.empty());
}

}  // namespace
}  // namespace larder::test
