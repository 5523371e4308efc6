#pragma once

#include <functional>
#include <memory>
#include <string>

namespace larder {

// Plays a short sound file without waiting for its end. A sound that cannot be played is no
// failure. The sound device is opened at the first sound.
class Sound {
  public:
    Sound();
    ~Sound();
    void Play(const std::string& nativePath);

    // Told of every sound before it is played, whether or not it can be heard. A failure that it
    // raises leaves Play. Empty in a normal run.
    std::function<void(const std::string& nativePath)> OnPlay;

  private:
    class Player;
    std::unique_ptr<Player> player_;
};

}  // namespace larder
