#pragma once

#include <functional>
#include <memory>
#include <string>

namespace larder {

// Keeps a folder for one running program. The claim is a lock of the system on the folder itself:
// no file is made in it, it need not be writable, every path to it leads to the same lock, and the
// lock ends with its process, however that ends.
class SingleInstance {
  public:
    // How long another program may take to answer, in milliseconds.
    explicit SingleInstance(int patience = 5000);
    ~SingleInstance();  // gives the folder up
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    // True when the folder is now this program's; so is one that cannot be locked because it does
    // not exist. False when it is another program's, which has heard of this start (its
    // OnSecondStart has run). Failure 70 when that program does not answer.
    bool Claim(const std::string& nativeFolder);

    // Another program wants the folder: the user is to see this one. While it is empty, as when
    // this one is about to end, the other program waits.
    std::function<void()> OnSecondStart;

  private:
    class Held;
    std::unique_ptr<Held> held_;
    int patience_;
};

}  // namespace larder
