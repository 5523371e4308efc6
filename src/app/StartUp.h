#pragma once

#include <string>
#include <vector>

namespace larder {

class frmMain;

// What happens between the making of the main window and the first screen: where the data lies,
// the long-lived files, the categories, "MY FAVORITES".
class StartUp {
  public:
    explicit StartUp(frmMain& hub) : main(hub) {}

    // All steps in their order. False when the program is to end: the user gave up looking for the
    // disc (told already), or the recipes are open in another one, which has come to the front.
    // A file that cannot be opened is a failure whose description names the file.
    bool Run();
    // True from the moment that the window may be laid out.
    bool LayoutBegun() const { return layoutBegun_; }

    // Sets strPathCD and strVideoPath: the hard disk, unless the command line asks for the disc
    // or the recipes are not on the hard disk. False when there is neither.
    bool ChoosePaths();
    // Makes the letters of the drives lead to where their discs are mounted now, and those of empty
    // drives nowhere. Gives the letters of the optical drives that hold a disc, in their order.
    std::vector<char> MapDiscs();
    // Letter + ":\Data\" of the last optical drive that holds the recipes; empty when the user
    // gave up.
    std::string FindCD();

  private:
    bool CommandLineHolds(const std::string& text) const;
    void LoadBackground();
    void OpenFiles();

    frmMain& main;
    bool layoutBegun_ = false;
};

}  // namespace larder
