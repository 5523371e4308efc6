#pragma once

#include <sys/resource.h>

#include <csignal>

namespace larder::test {

// A full disk: no file of this process grows beyond a number of bytes while this lives.
class DiskLimit {
  public:
    explicit DiskLimit(rlim_t bytes) {
        getrlimit(RLIMIT_FSIZE, &before_);
        rlimit limit = before_;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
        handler_ = std::signal(SIGXFSZ, SIG_IGN);
    }
    ~DiskLimit() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }
    DiskLimit(const DiskLimit&) = delete;
    DiskLimit& operator=(const DiskLimit&) = delete;

  private:
    rlimit before_{};
    void (*handler_)(int) = nullptr;
};

}  // namespace larder::test
