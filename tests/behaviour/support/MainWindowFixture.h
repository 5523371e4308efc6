#pragma once

#include <gtest/gtest.h>

#include <QObject>
#include <QPoint>
#include <Qt>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "behaviour/support/CookBook.h"
#include "behaviour/support/ScriptedDialogs.h"
#include "support/TempFolder.h"

class QMenu;
class QWidget;

namespace larder {
class Application;
class ListItem;
class ListView;
class frmMain;
}  // namespace larder

namespace larder::test {

// The real main window on a data folder of the test's own, worked with mouse and keys like by a
// user. Lists are 1 (categories) and 2 (recipes), lines count from 1.
//
// A test fills Book, calls Start, acts, and looks. The window goes when the test ends.
class MainWindowFixture : public testing::Test {
  public:
    static Application* application;  // the one of the process; set by main

  protected:
    MainWindowFixture();
    ~MainWindowFixture() override;

    // Writes Book to Folder and makes the window. False when it said that the program is to end.
    // Start writes anew what the test has deleted from Folder since; Restart leaves Folder as is.
    bool Start(const std::string& commandLine = "");
    bool Restart(const std::string& commandLine = "");
    void Close();  // destroys the window

    frmMain& Main() { return *main_; }
    ListView& List(int index);
    // Lines that fit into a list.
    int Fit(int index);

    // Widgets by object name: "rtbSee", "lvwX_2". The test fails when there is none.
    QWidget* Widget(const std::string& name);
    // Where the mouse meets a line of a list, in the coordinates of Pressed(list).
    QPoint PointOnLine(int list, int line);
    QWidget* Pressed(int list);

    // Real events, each handled when the call returns.
    void PressLine(int list, int line, Qt::MouseButton button = Qt::LeftButton);
    void Click(const std::string& name, Qt::MouseButton button = Qt::LeftButton);
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);  // down and up
    void KeyDown(Qt::Key key, bool repeat = false);
    void KeyUp(Qt::Key key);
    void Wheel(int list, int notches);  // positive is towards the end
    void Focus(int list);               // by program, as Tab does
    std::string FocusedName();          // object name of the control with the focus

    // Does `act` when the next pop-up menu is on the screen, and closes it then.
    void WhenMenuPopsUp(std::function<void(QMenu&)> act);
    // The captions of its entries without '&', separators as "-".
    static std::vector<std::string> Captions(const QMenu& menu);
    static void Choose(QMenu& menu, const std::string& objectName);

    // Runs events until the condition holds; false after five seconds.
    static bool WaitUntil(const std::function<bool()>& condition);
    // Runs a function from the event queue, as an event that comes while others are handled.
    void Later(std::function<void()> act);

    // What the user sees of the lines of a list: text (list 1) or title (list 2), in order.
    std::vector<std::string> Shown(int list);
    // The numbers of the recipes in the lines.
    std::vector<int> ShownNumbers();
    int SelectedLine(int list);
    // By the category's bare name, at the mouse; scrolls to it by wheel first when it must.
    void ClickCategory(const std::string& name);

    CookBook Book;
    TempFolder Folder{TempFolder::InMemory()};
    ScriptedDialogs Boxes;
    ScriptedDrives Machine;

  private:
    std::unique_ptr<frmMain> main_;
    std::unique_ptr<QObject> events_;  // receiver of what is to run later; ends it with the test
};

// first, first + 1, ... last.
std::vector<int> Range(int first, int last);

}  // namespace larder::test
