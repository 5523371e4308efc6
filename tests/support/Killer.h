#pragma once

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <string>

#include "platform/NumberedFiles.h"
#include "support/FileBytes.h"
#include "support/PowerCut.h"
#include "support/StoredRecipes.h"

namespace larder::test {

// Ends this process at one of its accesses that change a file; with `torn`, at one of its writes,
// half of which is done.
class Killer {
  public:
    Killer(std::filesystem::path folder, int at, bool torn)
        : folder_(std::move(folder)), at_(at), torn_(torn) {}

    void operator()(const NumberedFiles::Access& access) {
        if (torn_ && counted_ == at_) {
            Tear();
            Die();
        }
        if (torn_ ? access.Kind != "write" : !Changes(access)) return;
        if (++counted_ != at_) return;
        if (!torn_) Die();
        before_ = BytesOf(folder_);
    }

  private:
    [[noreturn]] static void Die() {
        kill(getpid(), SIGKILL);
        for (;;)
            pause();
    }
    // The write is over; half of it is taken back.
    void Tear() const {
        for (const auto& [name, now] : BytesOf(folder_)) {
            const std::string old = FileIn(before_, name);
            if (old == now) continue;
            const auto first = std::ranges::mismatch(old, now).in1 - old.begin();
            const std::size_t middle = (static_cast<std::size_t>(first) + now.size()) / 2;
            const std::string rest = middle < old.size() ? old.substr(middle) : "";
            PutFile(folder_ / name, now.substr(0, middle) + rest);
        }
    }

    std::filesystem::path folder_;
    int at_;
    bool torn_;
    int counted_ = 0;
    FolderBytes before_;
};

// Runs `act` in a process of its own; true when that was killed at its point, false when it came to
// its end. Any other end fails the test.
template <typename Act>
bool KilledInAProcess(Act&& act) {
    std::cout.flush();
    const pid_t child = fork();
    if (child == 0) {
        alarm(60);  // whatever it waits for
        act();
        _exit(testing::Test::HasFailure() ? 1 : 0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    if (WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) return true;
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "ended with status " << status;
    return false;
}

}  // namespace larder::test
