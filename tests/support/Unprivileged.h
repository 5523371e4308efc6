#pragma once

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <iostream>

namespace larder::test {

// Whether a test can have files of somebody else. Where not, it says that it has tested nothing.
inline bool CanHaveFilesOfOthers() {
    if (geteuid() == 0) return true;
    std::cout << "not tested: only the superuser can have files of somebody else" << std::endl;
    return false;
}

// File permissions do not bind the superuser, as whom tests may run: gives his rights up for a
// while. No effect for anybody else.
class Unprivileged {
  public:
    Unprivileged() {
        if (user_ == 0) Become(nobody);
    }
    ~Unprivileged() {
        if (user_ == 0) Become(user_);
    }
    Unprivileged(const Unprivileged&) = delete;
    Unprivileged& operator=(const Unprivileged&) = delete;

  private:
    static constexpr uid_t nobody = 65534;
    static void Become(uid_t user) {
        if (seteuid(user) == 0) return;
        std::cerr << "the system refused to go on as user " << user << ": " << std::strerror(errno)
                  << std::endl;
        _exit(99);
    }
    uid_t user_ = geteuid();
};

}  // namespace larder::test
