#pragma once

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QImage>
#include <QTest>
#include <QWidget>
#include <string>
#include <vector>

#include "app/frmMain.h"
#include "behaviour/support/MainWindowFixture.h"
#include "edit/frmAddRecipe.h"

namespace larder::test {

// A cook-book of three stock recipes and the own ones 4, 5 and 6 (deleted), and the editor worked
// with mouse and keys.
class EditorBook : public MainWindowFixture {
  protected:
    void SetUp() override {
        Book.AddStock("Cod", "Bake the cod.");
        Book.AddStock("Eel", "Smoke the eel.");
        Book.AddStock("Ling", "Salt the ling.");
        Book.AddOwn("Own Hake", "Fry it.\nServe with lemon.");
        Book.AddOwn("Own Roe", "Toast the bread.");
        Book.AddOwn("");
        Book.Numbers("ALL RECIPES WITH PICTURES") = " 1 ";
        Book.Numbers("MY FAVORITES") = " 4 5 ";
        Folder.MakeFolder("Data/Food Photos");
        ASSERT_TRUE(Start(CommandLine()));
    }
    virtual std::string CommandLine() const { return ""; }

    frmAddRecipe& Editor() { return Main().editor.Form(); }
    bool EditorShown() { return Editor().window.Visible(); }
    bool WaitForEditor() {
        return WaitUntil([&] { return Editor().window.Native()->isActiveWindow(); });
    }
    void OpenNew() {
        Main().editor.ShowNew();
        ASSERT_TRUE(WaitForEditor());
    }
    void OpenOn(int number) {
        Main().editor.LoadRecipeToUpdate(number);
        ASSERT_TRUE(EditorShown());
        ASSERT_TRUE(WaitForEditor());
    }

    // Keys go where the editor has the focus.
    QWidget* Focused() {
        QWidget* window = Editor().window.Native();
        QWidget* focus = window->focusWidget();
        return focus != nullptr ? focus : window;
    }
    std::string EditorFocus() { return Focused()->objectName().toStdString(); }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(Focused(), key, modifiers);
    }
    void Type(const std::string& text) {
        QTest::keyClicks(Focused(), QString::fromStdString(text));
    }
    void Ctrl(Qt::Key key) { Press(key, Qt::ControlModifier); }
    // Instead of what the box holds.
    void TypeAnew(RichTextBox& box, const std::string& text) {
        box.SetFocus();
        Ctrl(Qt::Key_A);
        Press(Qt::Key_Delete);
        Type(text);
    }
    void ClickOn(const Control& control) { QTest::mouseClick(control.Native(), Qt::LeftButton); }
    QAction* MenuEntry(const std::string& name) {
        return Editor().window.Native()->findChild<QAction*>(QString::fromStdString(name));
    }

    // A picture file of this size in pixels, in the test's folder; returns its native path.
    std::string MakePicture(const std::string& name, int width = 60, int height = 40) {
        const std::string path = Folder.Native(name);
        QImage image(width, height, QImage::Format_RGB32);
        image.fill(Qt::darkCyan);
        const char* format = name.ends_with(".bmp")   ? "BMP"
                             : name.ends_with(".gif") ? "PNG"
                                                      : "JPG";
        EXPECT_TRUE(image.save(QString::fromStdString(path), format)) << path;
        return path;
    }
    std::string Photo(const std::string& name) const { return "Data/Food Photos/" + name; }
    std::string PathOfPhoto(const std::string& name) {
        return Main().paths.strPath + "Food Photos\\" + name;
    }
    // What the program does to files from now on, as "write", "delete"; reads left out.
    void WatchFiles() {
        Main().files.Watch([this](const NumberedFiles::Access& access) {
            if (access.Kind != "read" && access.Kind != "open" && access.Kind != "close") {
                Changes.emplace_back(access.Kind);
            }
        });
    }
    std::vector<std::string> Changes;
};

}  // namespace larder::test
