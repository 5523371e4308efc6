#include "platform/Window.h"

#include <QTextEdit>
#include <QTimer>
#include <QWindow>

#include "ShownWindow.h"
#include "platform/Application.h"
#include "platform/CheckBox.h"
#include "platform/Failure.h"
#include "platform/ImageButton.h"
#include "platform/Keys.h"
#include "platform/ListView.h"

namespace larder {
namespace {

struct KeyPress {
    int Code;
    int Shift;
    bool operator==(const KeyPress&) const = default;
};

void PrintTo(const KeyPress& press, std::ostream* out) {
    *out << press.Code << "/" << press.Shift;
}

class AWindow : public test::ShownWindow {
  protected:
    void NoteKeys() {
        window.OnKeyDown = [this](int& code, int shift) {
            const bool shiftKeyItself = code >= 16 && code <= 18;
            if (!shiftKeyItself) keys.push_back({code, shift});
        };
    }
    std::vector<KeyPress> keys;
};

TEST_F(AWindow, SeesEachKeyBeforeItsControlsAndOnce) {
    CheckBox box(window, "box");
    Show();
    box.SetFocus();
    NoteKeys();
    QTest::keyClick(box.Native(), Qt::Key_Space);
    EXPECT_EQ(keys, (std::vector<KeyPress>{{key::Space, 0}}));
    EXPECT_EQ(box.Value(), 1);
}

TEST_F(AWindow, AConsumedKeyReachesNoControl) {
    CheckBox box(window, "box");
    Show();
    box.SetFocus();
    window.OnKeyDown = [](int& code, int) { code = key::None; };
    QTest::keyClick(box.Native(), Qt::Key_Space);
    EXPECT_EQ(box.Value(), 0);
}

TEST_F(AWindow, EnterThatIsConsumedPressesNoButton) {
    ImageButton button(window, "ibNext");
    int clicks = 0;
    button.OnClick = [&] { ++clicks; };
    Show();
    button.SetFocus();
    QTest::keyClick(button.Native(), Qt::Key_Return);
    EXPECT_EQ(clicks, 1);
    window.OnKeyDown = [](int& code, int) {
        if (code == key::Enter) code = key::None;
    };
    QTest::keyClick(button.Native(), Qt::Key_Return);
    EXPECT_EQ(clicks, 1);
}

TEST_F(AWindow, SeesKeysWhenNoControlHasTheFocus) {
    Show();
    NoteKeys();
    QTest::keyClick(window.Native()->windowHandle(), Qt::Key_F1);
    EXPECT_EQ(keys, (std::vector<KeyPress>{{key::F1, 0}}));
}

TEST_F(AWindow, LettersAreTheirCapitalsWithTheMaskOfShiftKeys) {
    Show();
    NoteKeys();
    QTest::keyClick(window.Native(), Qt::Key_N, Qt::AltModifier);
    QTest::keyClick(window.Native(), Qt::Key_F, Qt::ControlModifier);
    QTest::keyClick(window.Native(), 'e');
    QTest::keyClick(window.Native(), Qt::Key_B, Qt::ShiftModifier | Qt::ControlModifier);
    EXPECT_EQ(keys, (std::vector<KeyPress>{{key::N, shift::Alt},
                                           {key::F, shift::Ctrl},
                                           {key::E, 0},
                                           {key::B, shift::Shift | shift::Ctrl}}));
}

TEST_F(AWindow, ALetterOfAnotherScriptIsTheLetterAtItsPlaceOnAnEnglishKeyboard) {
    Show();
    NoteKeys();
    constexpr int CyrillicTe = 0x422;  // on the key of N, which X11 numbers 57
    QKeyEvent press(QEvent::KeyPress, CyrillicTe, Qt::AltModifier, 57, 0, 0);
    QApplication::sendEvent(window.Native(), &press);
    EXPECT_EQ(keys, (std::vector<KeyPress>{{key::N, shift::Alt}}));
}

TEST_F(AWindow, NamedKeysHaveTheirCodes) {
    Show();
    NoteKeys();
    const std::vector<std::pair<Qt::Key, int>> named = {
        {Qt::Key_PageUp, key::PageUp}, {Qt::Key_PageDown, key::PageDown},
        {Qt::Key_End, key::End},       {Qt::Key_Home, key::Home},
        {Qt::Key_Left, key::Left},     {Qt::Key_Up, key::Up},
        {Qt::Key_Right, key::Right},   {Qt::Key_Down, key::Down},
        {Qt::Key_Enter, key::Enter},   {Qt::Key_Escape, key::Escape},
        {Qt::Key_Delete, key::Delete}};
    for (const auto& [native, code] : named) {
        keys.clear();
        QTest::keyClick(window.Native(), native);
        EXPECT_EQ(keys, (std::vector<KeyPress>{{code, 0}}));
    }
}

TEST_F(AWindow, AKeyWithoutACodeIsNotTakenForAConsumedOne) {
    QTextEdit editor(window.Native());
    Show();
    editor.setFocus();
    NoteKeys();
    QTest::keyClick(&editor, Qt::Key_Semicolon);
    EXPECT_TRUE(keys.empty());
    EXPECT_EQ(editor.toPlainText(), QStringLiteral(";"));
}

TEST_F(AWindow, CtrlFComesFromWithinAnEditorToo) {
    QTextEdit editor(window.Native());
    editor.show();
    Show();
    editor.setFocus();
    NoteKeys();
    QTest::keyClick(window.Native()->windowHandle(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(keys, (std::vector<KeyPress>{{key::F, shift::Ctrl}}));
}

TEST_F(AWindow, AHeldKeyComesAgain) {
    CheckBox box(window, "box");
    Show();
    box.SetFocus();
    NoteKeys();
    for (int i = 0; i < 3; ++i) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier, QString(), i > 0);
        QApplication::sendEvent(box.Native(), &press);
    }
    EXPECT_EQ(keys.size(), 3U);
}

TEST_F(AWindow, KeysOfAnotherWindowAreNotItsOwn) {
    Show();
    NoteKeys();
    Window dialog("frmSearch", &window);
    CheckBox box(dialog, "box");
    ShowAndActivate(dialog);
    box.SetFocus();
    QTest::keyClick(box.Native(), Qt::Key_A);
    EXPECT_TRUE(keys.empty());
}

TEST_F(AWindow, AFailureInAHandlerEndsThere) {
    Show();
    window.OnKeyDown = [](int&, int) { throw Failure(failure::FileNotFound, "test"); };
    testing::internal::CaptureStderr();
    QTest::keyClick(window.Native(), Qt::Key_A);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("failure 53"), std::string::npos);
}

TEST_F(AWindow, ResizeComesWhenItIsFirstShownAndWithEachNewSize) {
    std::vector<float> widths;
    window.OnResize = [&] { widths.push_back(window.ClientWidth()); };
    window.SetClientSize(4500, 3000);
    EXPECT_TRUE(widths.empty());
    Show();
    EXPECT_EQ(widths, std::vector<float>{4500});
    window.SetClientSize(6000, 3000);
    Application::DoEvents();
    EXPECT_EQ(widths, (std::vector<float>{4500, 6000}));
    EXPECT_EQ(window.ClientHeight(), 3000);
}

TEST_F(AWindow, TheFirstPaintIsToldOnceAndBehindThePaint) {
    int paints = 0;
    window.OnFirstPaint = [&] { ++paints; };
    EXPECT_EQ(paints, 0);
    Show();
    EXPECT_TRUE(QTest::qWaitFor([&] { return paints > 0; }, 2000));
    window.Native()->repaint();
    Application::DoEvents();
    EXPECT_EQ(paints, 1);
}

TEST_F(AWindow, MaximisedItFillsTheWorkAreaAndGetsItsSizeBack) {
    window.SetClientSize(4500, 3000);
    window.SetWindowState(Window::Maximized);
    Show();
    EXPECT_EQ(window.WindowState(), Window::Maximized);
    EXPECT_EQ(window.Place().Width, window.WorkArea().Width);
    EXPECT_EQ(window.Place().Height, window.WorkArea().Height);
    window.SetWindowState(Window::Normal);
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.ClientWidth() == 4500; }, 2000));
    EXPECT_EQ(window.WindowState(), Window::Normal);
}

TEST_F(AWindow, TheSmallestSizeHolds) {
    window.SetMinimumClientSize(3000, 1500);
    window.SetClientSize(150, 150);
    EXPECT_EQ(window.ClientWidth(), 3000);
    EXPECT_EQ(window.ClientHeight(), 1500);
}

TEST_F(AWindow, ClosedByTheWindowManagerItUnloads) {
    int unloads = 0;
    window.OnUnload = [&] { ++unloads; };
    Show();
    QTest::qWait(1);
    window.Native()->windowHandle()->close();
    Application::DoEvents();
    EXPECT_EQ(unloads, 1);
    EXPECT_FALSE(window.Visible());
}

TEST_F(AWindow, AQueryThatIsRefusedKeepsItOpen) {
    int unloads = 0;
    bool closes = false;
    window.OnQueryUnload = [&] { return closes; };
    window.OnUnload = [&] { ++unloads; };
    Show();
    window.Close();
    EXPECT_TRUE(window.Visible());
    EXPECT_EQ(unloads, 0);
    closes = true;
    window.Close();
    EXPECT_FALSE(window.Visible());
    EXPECT_EQ(unloads, 1);
}

TEST_F(AWindow, ClosingItAgainFromItsUnloadDoesNotUnloadTwice) {
    int unloads = 0;
    window.OnUnload = [&] {
        ++unloads;
        window.Close();
    };
    Show();
    window.Close();
    EXPECT_EQ(unloads, 1);
    EXPECT_FALSE(window.Visible());
}

TEST_F(AWindow, AModalDialogReturnsWhenItIsClosedOrHidden) {
    Show();
    Window dialog("frmAddChoice", &window);
    for (const bool close : {true, false}) {
        bool wasModal = false;
        QTimer::singleShot(0, [&] {
            wasModal = QApplication::activeModalWidget() == dialog.Native();
            close ? dialog.Close() : dialog.Hide();
        });
        dialog.ShowModal();
        EXPECT_TRUE(wasModal);
        EXPECT_FALSE(dialog.Visible());
    }
}

TEST_F(AWindow, AModelessDialogIsOwnedAndStaysItsOwn) {
    auto owner = std::make_unique<Window>("frmOwner");
    Window dialog("frmSearch", owner.get());
    ShowAndActivate(*owner);
    ShowAndActivate(dialog);
    EXPECT_EQ(dialog.Native()->parentWidget(), owner->Native());
    EXPECT_FALSE(dialog.Native()->isModal());
    EXPECT_TRUE(dialog.Native()->isWindow());
    owner.reset();
    dialog.SetCaption("still there");
    EXPECT_EQ(dialog.Native()->windowTitle(), QStringLiteral("still there"));
}

TEST_F(AWindow, BroughtToTheFrontItIsNoLongerMinimised) {
    Show();
    window.SetWindowState(Window::Minimized);
    EXPECT_EQ(window.WindowState(), Window::Minimized);
    window.BringToFront();
    EXPECT_EQ(window.WindowState(), Window::Normal);
}

TEST_F(AWindow, IsActivated) {
    int activations = 0;
    window.OnActivate = [&] { ++activations; };
    Show();
    EXPECT_GE(activations, 1);
}

TEST_F(AWindow, MovesInTwips) {
    Show();
    window.MoveTo(1500, 750);
    Application::DoEvents();
    EXPECT_EQ(window.Place().Left, 1500);
    EXPECT_EQ(window.Place().Top, 750);
}

}  // namespace
}  // namespace larder
