#pragma once

#include <string>

namespace larder {

class Window;

// Message boxes. They are the outside world to the program: a test answers them by a script.
class Dialogs {
  public:
    virtual ~Dialogs() = default;

    enum class Icon { None, Critical, Question, Exclamation, Information };
    enum class Buttons { Ok, OkCancel, YesNo };
    enum class Answer { Ok, Cancel, Yes, No };

    // Closing the box without a choice is Cancel (or No; Ok where that is the only button). The
    // text may hold CR or LF as line breaks.
    virtual Answer MessageBox(const std::string& text, Buttons buttons, Icon icon,
                              const std::string& title) = 0;
};

// The real ones, over the active window.
class SystemDialogs : public Dialogs {
  public:
    Answer MessageBox(const std::string& text, Buttons buttons, Icon icon,
                      const std::string& title) override;
};

}  // namespace larder
