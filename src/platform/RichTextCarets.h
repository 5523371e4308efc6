#pragma once

#include <optional>
#include <vector>

namespace larder {

// Where the caret goes when the user takes back or makes again a change that the program made for
// him: to that change. Qt knows it for what is typed, not for a layout, and of what was dragged it
// knows the place to which it went.
//
// Places are positions in the document. Steps are counted as the document counts those that it can
// undo; one of the user's is one or several of them.
class RichTextCarets {
  public:
    // The history is gone.
    void Clear();
    // A part of the user's step under way: where it ends before it is made, and after it where that
    // has to be told. What was told first holds for the place before, and last for the one after.
    void Changes(int before, std::optional<int> after);
    // The user's step is complete, and what he had undone cannot be made again.
    void Done(int steps);
    // He has gone back or forth. Nothing where Qt's place is the right one.
    std::optional<int> WalkedTo(int steps);
    // The count at the end of the last step that was completed or walked to.
    int Steps() const { return steps_; }

  private:
    struct Ends {
        int before = 0;
        std::optional<int> after;
    };
    struct Step {
        int from = 0;  // counts
        int to = 0;
        Ends ends;
    };
    std::vector<Step> made_;  // by their counts
    std::optional<Ends> underWay_;
    int steps_ = 0;
};

}  // namespace larder
