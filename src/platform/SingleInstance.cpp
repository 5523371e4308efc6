#include "platform/SingleInstance.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <cstring>
#include <thread>
#include <utility>

#include "platform/Failure.h"
#include "platform/Handlers.h"

namespace larder {

namespace {

using Clock = std::chrono::steady_clock;

// A descriptor of the system, closed when it goes; below 0 it is none.
class Descriptor {
  public:
    explicit Descriptor(int number = -1) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0) close(number_);
    }
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    int Number() const { return number_; }
    bool IsOpen() const { return number_ >= 0; }

  private:
    int number_;
};

enum class Lock { Ours, Anothers, Impossible };

Lock LockFolder(const Descriptor& folder) {
    if (!folder.IsOpen()) return Lock::Impossible;
    if (flock(folder.Number(), LOCK_EX | LOCK_NB) == 0) return Lock::Ours;
    return errno == EWOULDBLOCK || errno == EINTR ? Lock::Anothers : Lock::Impossible;
}

// The address at which the holder of a folder hears of second starts: a name in the system's
// memory, without a file, made of what tells one folder from all others. Each user has his own:
// a window on the screen of another user is nothing to bring to the front.
struct Address {
    explicit Address(const struct stat& folder) {
        const std::string text = "tidewell-larder-" + std::to_string(geteuid()) + "-" +
                                 std::to_string(folder.st_dev) + "-" +
                                 std::to_string(folder.st_ino);
        Name.sun_family = AF_UNIX;
        const std::size_t count = std::min(text.size(), sizeof(Name.sun_path) - 1);
        std::memcpy(Name.sun_path + 1, text.data(), count);  // the zero before it says "no file"
        Length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + count);
    }
    const sockaddr* Bytes() const { return reinterpret_cast<const sockaddr*>(&Name); }

    sockaddr_un Name{};
    socklen_t Length = 0;
};

Descriptor MakeSocket() {
    return Descriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
}

bool IsOfThisUser(int connection) {
    ucred peer{};
    socklen_t size = sizeof peer;
    return getsockopt(connection, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 &&
           peer.uid == geteuid();
}

constexpr char answer = '!';

bool WaitForAnswer(const Descriptor& connection, Clock::time_point end) {
    for (;;) {
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
        pollfd waiting{connection.Number(), POLLIN, 0};
        const int ready = poll(&waiting, 1, static_cast<int>(std::max<std::int64_t>(left, 0)));
        if (ready < 0 && errno == EINTR) continue;
        char heard = 0;
        return ready > 0 && recv(connection.Number(), &heard, 1, 0) == 1 && heard == answer;
    }
}

// Tells the holder of the folder of this start. False when nobody answers before the end.
bool TellHolder(const Address& address, Clock::time_point end) {
    const Descriptor connection = MakeSocket();
    return connection.IsOpen() &&
           connect(connection.Number(), address.Bytes(), address.Length) == 0 &&
           IsOfThisUser(connection.Number()) && WaitForAnswer(connection, end);
}

}  // namespace

// What the holder of a folder has open.
class SingleInstance::Held {
  public:
    Held(SingleInstance& owner, Descriptor folder, Descriptor listening)
        : owner_(owner), folder_(std::move(folder)), listening_(std::move(listening)) {
        if (!listening_.IsOpen()) return;
        notifier_ = std::make_unique<QSocketNotifier>(listening_.Number(), QSocketNotifier::Read);
        QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                         [this] { Answer(); });
    }

  private:
    void Answer() {
        const Descriptor connection(accept4(listening_.Number(), nullptr, nullptr, SOCK_CLOEXEC));
        if (!connection.IsOpen() || !IsOfThisUser(connection.Number()) || !owner_.OnSecondStart) {
            return;
        }
        Fire(owner_.OnSecondStart);
        send(connection.Number(), &answer, 1, MSG_NOSIGNAL);
    }

    SingleInstance& owner_;
    Descriptor folder_;
    Descriptor listening_;
    std::unique_ptr<QSocketNotifier> notifier_;
};

SingleInstance::SingleInstance(int patience) : patience_(patience) {}

SingleInstance::~SingleInstance() = default;

bool SingleInstance::Claim(const std::string& nativeFolder) {
    struct stat status {};
    if (stat(nativeFolder.c_str(), &status) != 0) return true;
    const Address address(status);
    const Clock::time_point end = Clock::now() + std::chrono::milliseconds(patience_);
    Descriptor folder(open(nativeFolder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));

    // The holder may be between two states: claiming, with the lock and no address yet, or ending.
    // Both pass.
    do {
        const Lock lock = LockFolder(folder);
        if (lock != Lock::Anothers) {
            Descriptor listening = MakeSocket();
            const bool named = bind(listening.Number(), address.Bytes(), address.Length) == 0 &&
                               listen(listening.Number(), SOMAXCONN) == 0;
            const bool taken = !named && errno == EADDRINUSE;
            if (!named) listening = Descriptor();
            // Where the system has no locks for folders, the address is the lock.
            if (named || !taken) {
                held_ = std::make_unique<Held>(*this, std::move(folder), std::move(listening));
                return true;
            }
        }
        if (TellHolder(address, end)) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    } while (Clock::now() < end);
    throw Failure(failure::PermissionDenied, "SingleInstance.Claim",
                  "These recipes are open in another Tidewell Larder, which does not answer.\n"
                  "Close that one and start again.");
}

}  // namespace larder
