#pragma once

#include <functional>
#include <memory>

namespace larder {

// Ticks at a fixed interval for as long as it is enabled, on the one thread, while events run.
// Enabling it again while it is enabled changes nothing. No tick comes while the handler of the
// last one still runs.
class Timer {
  public:
    explicit Timer(int intervalMilliseconds);
    ~Timer();
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

    bool Enabled() const;
    void SetEnabled(bool enabled);
    int Interval() const { return interval_; }

    std::function<void()> OnTimer;

  private:
    class Native;
    int interval_;
    std::unique_ptr<Native> native_;
};

}  // namespace larder
