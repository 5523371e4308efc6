#pragma once

namespace larder {

class frmMain;

// Connects the events of the main window's controls, but for the two lists, to what they do, and
// acts on the window's keys.
class MainEvents {
  public:
    explicit MainEvents(frmMain& hub) : main(hub) {}
    void Connect();

  private:
    void ConnectWindow();
    void ConnectButtons();
    void ConnectPictures();
    void ConnectMenu();
    void ConnectViewer();
    // The window sees each key before its controls; one that it acts on is consumed.
    void KeyDown(int& KeyCode, int Shift);
    bool Act(int KeyCode, int Shift);

    frmMain& main;
};

}  // namespace larder
