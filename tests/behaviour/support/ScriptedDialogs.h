#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/Dialogs.h"
#include "platform/Drives.h"

namespace larder::test {

// The user in front of the message boxes: answers from a script, and closes a box without a choice
// when the script has ended. Remembers what was shown. Questions for a file have a script of their
// own.
class ScriptedDialogs : public Dialogs {
  public:
    struct Box {
        std::string Text;
        Dialogs::Buttons Buttons;
        Dialogs::Icon Icon;
        std::string Title;
    };
    std::vector<Box> Shown;

    // The answer to the next box, and what the user does before he gives it.
    void Then(
        Answer answer, std::function<void()> before = [] {}) {
        script_.emplace_back(answer, std::move(before));
    }

    Answer MessageBox(const std::string& text, Buttons buttons, Icon icon,
                      const std::string& title) override {
        Shown.push_back({text, buttons, icon, title});
        if (script_.empty()) return WithoutChoice(buttons);
        const auto [answer, before] = script_.front();
        script_.pop_front();
        before();
        return answer;
    }

    // The native path that the user chooses in the next question for a file; nothing cancels it, as
    // the end of the script does.
    std::vector<FileQuestion> FilesAsked;
    void ThenFile(std::optional<std::string> nativePath) {
        files_.push_back(std::move(nativePath));
    }

    std::optional<std::string> OpenFile(const FileQuestion& question) override {
        FilesAsked.push_back(question);
        if (files_.empty()) return std::nullopt;
        auto chosen = std::move(files_.front());
        files_.pop_front();
        return chosen;
    }

  private:
    static Answer WithoutChoice(Buttons buttons) {
        switch (buttons) {
            case Buttons::Ok:
                return Answer::Ok;
            case Buttons::YesNo:
            case Buttons::YesNoPreferNo:
                return Answer::No;
            default:
                return Answer::Cancel;
        }
    }
    std::deque<std::pair<Answer, std::function<void()>>> script_;
    std::deque<std::optional<std::string>> files_;
};

// The drives of a machine that the test makes up.
class ScriptedDrives : public Drives {
  public:
    std::vector<Drive> Now{{'C', Drive::Fixed, "/"}};
    int Asked = 0;

    std::vector<Drive> List() override {
        ++Asked;
        return Now;
    }
};

}  // namespace larder::test
