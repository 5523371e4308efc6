#pragma once

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

  private:
    class Player;
    std::unique_ptr<Player> player_;
};

}  // namespace larder
