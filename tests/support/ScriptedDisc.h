#pragma once

#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "store/DiscQuestion.h"

namespace larder::test {

// The user in front of the question for the disc: answers from a script, and cancels when the
// script has ended. Remembers what was asked.
class ScriptedDisc : public DiscQuestion {
  public:
    using Answer = std::function<bool()>;

    // What the user does before he presses OK, if anything.
    void ThenOk(std::function<void()> before = [] {}) {
        script_.push_back([before = std::move(before)] {
            before();
            return true;
        });
    }
    void ThenCancel() {
        script_.push_back([] { return false; });
    }

    bool AskOkCancel(const std::string& text) override {
        Asked.push_back(text);
        if (script_.empty()) return false;
        const Answer answer = script_.front();
        script_.pop_front();
        return answer();
    }

    std::vector<std::string> Asked;

  private:
    std::deque<Answer> script_;
};

}  // namespace larder::test
