#pragma once

#include <optional>
#include <string>

namespace larder {

class Window;

// Message boxes and the question for a file. They are the outside world to the program: a test
// answers them by a script.
class Dialogs {
  public:
    virtual ~Dialogs() = default;

    enum class Icon { None, Critical, Question, Exclamation, Information };
    // Enter presses the first button, or No where No is meant to be the choice of who does not
    // look.
    enum class Buttons { Ok, OkCancel, YesNo, YesNoPreferNo };
    enum class Answer { Ok, Cancel, Yes, No };

    // Closing the box without a choice is Cancel (or No; Ok where that is the only button). The
    // text may hold CR or LF as line breaks.
    virtual Answer MessageBox(const std::string& text, Buttons buttons, Icon icon,
                              const std::string& title) = 0;

    // What a file is looked for by: patterns by name, as in "Pictures (*.bmp;*.jpg)|*.bmp;*.jpg",
    // several such pairs divided by '|'; and where to begin, a native path of a folder or a file.
    // Without one, or when that folder is not there, the question begins where the user was at the
    // end of the one before, and the first with his pictures.
    struct FileQuestion {
        std::string Filter;
        std::string StartAt;
    };
    // The native path of a file that exists; nothing when the user cancels.
    virtual std::optional<std::string> OpenFile(const FileQuestion& question) = 0;
};

// The real ones, over the active window.
class SystemDialogs : public Dialogs {
  public:
    Answer MessageBox(const std::string& text, Buttons buttons, Icon icon,
                      const std::string& title) override;
    std::optional<std::string> OpenFile(const FileQuestion& question) override;

  private:
    std::string lastFolder_;  // native; where the user was when a file was last asked for
};

}  // namespace larder
