#pragma once

#include <gtest/gtest.h>

#include <QTest>
#include <QTextEdit>
#include <string>

#include "platform/Application.h"
#include "platform/RichTextBox.h"
#include "platform/Window.h"

namespace larder::test {

inline constexpr char kRecipe[] =
    R"({\rtf1\ansi\deff0{\fonttbl{\f0\froman Times New Roman;}{\f1\fswiss Arial;}})"
    R"(\b\fs30 Baked Cod\b0\fs24\par\par 1 whole cod\par 2 lemons\par\i Bake it.\i0\par})";

inline std::string Lines(int count) {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += "line " + std::to_string(i) + "\r\n";
    return text + "end";
}

class RichTextBoxTest : public testing::Test {
  protected:
    RichTextBoxTest() {
        window_.SetClientSize(9000, 6000);
        box_.Move({0, 0, 4500, 1500});
        box_.OnChange = [this] { ++changes_; };
        box_.OnSelChange = [this] { ++moves_; };
    }
    void Show() {
        window_.Show();
        box_.SetFocus();
        Application::DoEvents();
    }
    QTextEdit& Edit() { return *static_cast<QTextEdit*>(box_.Native()); }
    void Type(const char* text) { QTest::keyClicks(&Edit(), QString::fromLatin1(text)); }
    void Press(Qt::Key key, Qt::KeyboardModifiers with = Qt::NoModifier) {
        QTest::keyClick(&Edit(), key, with);
    }
    std::string OnScreen() {
        Edit().viewport()->repaint();
        return Edit().toPlainText().toStdString();
    }

    Window window_{"frmTest"};
    RichTextBox box_{window_, "rtbSee"};
    RichTextBox other_{window_, "rtbOther"};
    int changes_ = 0;
    int moves_ = 0;
};

}  // namespace larder::test
