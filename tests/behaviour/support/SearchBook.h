#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <QWidget>
#include <string>

#include "app/frmMain.h"
#include "behaviour/support/MainWindowFixture.h"
#include "search/WordIndexBuilder.h"
#include "search/frmSearch.h"

namespace larder::test {

// A cook-book with its word index, and the find dialog worked with mouse and keys.
//
// Stock recipes 1 to 6: salmon in 1, 2, 4, 6; dill in 2, 3, 4; 5 is deleted and in the index under
// salmon. Own recipes 7 (salmon and dill) and 8.
class SearchBook : public MainWindowFixture {
  protected:
    void AddStock(const std::string& title, const std::string& body) {
        index_.Add(Book.AddStock(title, body), title + " " + body);
    }
    void AddSmallBook() {
        AddStock("Salt Cod", "With salmon roe.");
        AddStock("Salmon Steaks", "Chop the dill. Put the salmon on the dill and bake.");
        AddStock("Dill Sauce", "Chop dill.");
        AddStock("Smoked Trout", "Serve with dill, or with salmon.");
        index_.Add(Book.AddStock(""), "salmon");
        AddStock("Salmon Soup", "Simmer it.");
        Book.AddOwn("My Salmon", "With dill.");
        Book.AddOwn("Own Eel", "With a lemon.");
        Book.Numbers("ALL RECIPES WITH PICTURES") = " 3 ";
        Book.Numbers("SAUCES") = " 3 4 7 ";
        Book.Numbers("EMPTY") = " ";
        Book.Numbers("MY FAVORITES") = " 4 2 ";
    }
    bool StartWithIndex() {
        index_.Write(Folder.Native("Search.ydb"), Folder.Native("Search.ind"));
        Folder.MakeFolder("Data");
        Folder.Rename("Search.ydb", "Data/Search.ydb");
        Folder.Rename("Search.ind", "Data/Search.ind");
        Folder.MakeFolder("Data/Food Photos");
        return Start();
    }

    frmSearch& Dialog() { return Main().search.Dialog(); }
    void OpenDialog() {
        Main().ui.window.BringToFront();
        ASSERT_TRUE(WaitUntil([&] { return Main().ui.window.Native()->isActiveWindow(); }));
        Key(Qt::Key_F, Qt::ControlModifier);
        ASSERT_TRUE(WaitUntil([&] { return Dialog().window.Native()->isActiveWindow(); }));
    }
    bool DialogShown() { return Dialog().window.Visible(); }
    std::string DialogFocus() {
        const QWidget* focus = Dialog().window.Native()->focusWidget();
        return focus == nullptr ? std::string() : focus->objectName().toStdString();
    }
    // Keys go where the dialog has the focus.
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QWidget* window = Dialog().window.Native();
        QWidget* focus = window->focusWidget();
        QTest::keyClick(focus != nullptr ? focus : window, key, modifiers);
    }
    void Type(const std::string& text) {
        QTest::keyClicks(Dialog().window.Native()->focusWidget(), QString::fromStdString(text));
    }
    // Instead of what the box holds.
    void TypeAnew(const std::string& text) {
        RichTextBox& box =
            Dialog().rtbSearch1.Visible() ? Dialog().rtbSearch1 : Dialog().rtbSearch2;
        box.SetText("");
        box.SetFocus();
        Type(text);
    }
    void FindWords(const std::string& words) {
        TypeAnew(words);
        Press(Qt::Key_Return);
    }
    void FindNumber(const std::string& number) {
        Press(Qt::Key_N, Qt::AltModifier);
        TypeAnew(number);
        Press(Qt::Key_Return);
    }
    std::string Found() { return Main().ui.lblFound.Caption(); }

  private:
    WordIndexBuilder index_;
};

}  // namespace larder::test
