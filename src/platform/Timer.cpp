#include "platform/Timer.h"

#include <QTimer>
#include <utility>

#include "platform/Handlers.h"

namespace larder {

class Timer::Native : public QTimer {
  public:
    explicit Native(Timer& timer) {
        setInterval(timer.interval_);
        setTimerType(Qt::PreciseTimer);
        callOnTimeout(this, [this, &timer] {
            if (std::exchange(ticking_, true)) return;
            const auto alive = std::weak_ptr<bool>(alive_);
            Fire(timer.OnTimer);
            if (!alive.expired()) ticking_ = false;
        });
    }

  private:
    bool ticking_ = false;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>();
};

Timer::Timer(int intervalMilliseconds)
    : interval_(intervalMilliseconds), native_(std::make_unique<Native>(*this)) {}

Timer::~Timer() = default;

bool Timer::Enabled() const {
    return native_->isActive();
}

void Timer::SetEnabled(bool enabled) {
    if (enabled == native_->isActive()) return;
    if (enabled) {
        native_->start();
    } else {
        native_->stop();
    }
}

}  // namespace larder
