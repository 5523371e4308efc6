#include "platform/ListView.h"

#include <QAbstractItemModel>
#include <QTreeView>
#include <QWheelEvent>
#include <QWindow>

#include "ShownWindow.h"
#include "platform/CheckBox.h"
#include "platform/Failure.h"
#include "platform/Keys.h"

namespace larder {
namespace {

class AList : public test::ShownWindow {
  protected:
    AList() {
        list_.Move({0, 0, 4500, 6000});
        list_.SetColumns({281, 1000, 3000});
        other_.Move({0, 6300, 1500, 300});
        window.SetClientSize(4500, 7500);
    }

    ListItem& Add(const std::string& key, const std::string& number, const std::string& title) {
        ListItem& item = list_.Add();
        item.SetKey(key);
        item.SetSubItems(1, number);
        item.SetSubItems(2, title);
        return item;
    }
    void AddLines(int count) {
        for (int i = 1; i <= count; ++i) {
            Add("k" + std::to_string(i), std::to_string(i), "Title " + std::to_string(i));
        }
    }

    std::string Titles() const {
        std::string titles;
        for (int i = 1; i <= list_.Count(); ++i)
            titles += list_.Item(i).SubItems(2) + " ";
        return titles;
    }

    QTreeView* View() { return static_cast<QTreeView*>(list_.Native()); }
    QWidget* Viewport() { return View()->viewport(); }
    QPoint OnLine(int line) {
        const int height = static_cast<int>(list_.RowHeight() / TwipsPerPixel);
        return QPoint(60, (line - 1) * height + height / 2);
    }
    QColor BarColour(int line) { return Look(list_).pixelColor(295, OnLine(line).y()); }
    void Wheel(QPoint pixels, QPoint angle, Qt::ScrollPhase phase) {
        const QPointF place(10, 10);
        QWheelEvent event(place, Viewport()->mapToGlobal(place), pixels, angle, Qt::NoButton,
                          Qt::NoModifier, phase, false);
        QApplication::sendEvent(Viewport(), &event);
    }

    ListView list_{window, "lvwX", 2};
    CheckBox other_{window, "other"};
};

TEST_F(AList, HasPlacesFromOneAndFailsBeyond) {
    AddLines(3);
    EXPECT_EQ(list_.Count(), 3);
    EXPECT_EQ(list_.Item(1).Key(), "k1");
    EXPECT_EQ(list_.Item(3).Index(), 3);
    EXPECT_EQ(Ignoring([&] { list_.Item(0); }), failure::IndexOutOfBounds);
    EXPECT_EQ(Ignoring([&] { list_.Item(4); }), failure::IndexOutOfBounds);
    EXPECT_EQ(Ignoring([&] { list_.Remove(4); }), failure::IndexOutOfBounds);
}

TEST_F(AList, FindsKeysWithoutRegardToCase) {
    Add("MY Favorites", "", "");
    EXPECT_EQ(list_.Item("my fAVORITES").Index(), 1);
    EXPECT_EQ(list_.FindKey("other"), nullptr);
    EXPECT_EQ(Ignoring([&] { list_.Item("other"); }), failure::ElementNotFound);
}

TEST_F(AList, AKeyIsUniqueAndMayBeTakenAway) {
    AddLines(2);
    EXPECT_EQ(Ignoring([&] { list_.Item(2).SetKey("K1"); }), failure::KeyNotUnique);
    EXPECT_EQ(list_.Item(2).Key(), "k2");
    EXPECT_EQ(Ignoring([&] { list_.Item(1).SetKey("K1"); }), 0);
    list_.Item(1).SetKey("");
    list_.Item(2).SetKey("");
    EXPECT_EQ(list_.FindKey(""), nullptr);
    EXPECT_EQ(Ignoring([&] { list_.Item(2).SetKey("k1"); }), 0);
}

TEST_F(AList, ASubItemThatWasNeverSetIsEmptyAndBelowOneAFailure) {
    ListItem& item = list_.Add();
    EXPECT_EQ(item.SubItems(2), "");
    EXPECT_EQ(Ignoring([&] { (void)item.SubItems(0); }), failure::OutOfRange);
    EXPECT_EQ(Ignoring([&] { item.SetSubItems(0, "x"); }), failure::OutOfRange);
    item.SetSubItems(5, "beyond the columns");
    EXPECT_EQ(item.SubItems(5), "beyond the columns");
}

TEST_F(AList, NewLinesHaveTheForeColourOfTheList) {
    list_.SetForeColor(0x123456);
    ListItem& item = list_.Add();
    EXPECT_EQ(item.ForeColor(), 0x123456);
    EXPECT_EQ(item.SubForeColor(2), 0x123456);
    item.SetSubForeColor(2, 0xFF0000);
    EXPECT_EQ(item.SubForeColor(2), 0xFF0000);
    EXPECT_EQ(item.SubForeColor(1), 0x123456);
}

TEST_F(AList, OneLineAtMostIsSelected) {
    AddLines(3);
    EXPECT_EQ(list_.SelectedItem(), nullptr);
    list_.Item(2).SetSelected();
    list_.Item(3).SetSelected();
    EXPECT_FALSE(list_.Item(2).Selected());
    EXPECT_EQ(list_.SelectedItem(), &list_.Item(3));
    list_.ClearSelection();
    EXPECT_EQ(list_.SelectedItem(), nullptr);
}

TEST_F(AList, RemovingTheSelectedLineSelectsNone) {
    AddLines(3);
    list_.Item(2).SetSelected();
    list_.Remove(2);
    EXPECT_EQ(list_.SelectedItem(), nullptr);
    EXPECT_FALSE(View()->currentIndex().isValid());
    EXPECT_EQ(list_.Item(2).Key(), "k3");
}

TEST_F(AList, RemovingAnotherLineKeepsTheSelection) {
    AddLines(3);
    list_.Item(3).SetSelected();
    list_.Remove(1);
    EXPECT_EQ(list_.SelectedItem()->Index(), 2);
    EXPECT_EQ(View()->currentIndex().row(), 1);
    list_.Clear();
    EXPECT_EQ(list_.SelectedItem(), nullptr);
    EXPECT_EQ(list_.Count(), 0);
}

TEST_F(AList, SortsNumbersAsNumbers) {
    for (const char* number : {"10", "9", "100", "-3", "2.5"})
        Add("", number, number);
    list_.SortKey = 1;
    list_.SetSorted(true);
    list_.SetSorted(false);
    EXPECT_EQ(Titles(), "-3 2.5 9 10 100 ");
    list_.SortOrder = 1;
    list_.SetSorted(true);
    EXPECT_EQ(Titles(), "100 10 9 2.5 -3 ");
}

TEST_F(AList, SortsTextsWithoutRegardToCaseBehindNumbers) {
    for (const char* title : {"cod", "Bass", "anchovy", "12", "COD"})
        Add("", "", title);
    list_.SortKey = 2;
    list_.SetSorted(true);
    EXPECT_EQ(Titles(), "12 anchovy Bass cod COD ");
}

TEST_F(AList, TheSelectionFollowsItsLineThroughASort) {
    for (const char* title : {"c", "b", "a"})
        Add(title, "", title);
    list_.Item("c").SetSelected();
    list_.SortKey = 2;
    list_.SetSorted(true);
    EXPECT_EQ(list_.SelectedItem()->Key(), "c");
    EXPECT_EQ(list_.SelectedItem()->Index(), 3);
    EXPECT_EQ(View()->currentIndex().row(), 2);
    EXPECT_EQ(View()->visualRect(View()->currentIndex()).top(),
              2 * static_cast<int>(list_.RowHeight() / TwipsPerPixel));
}

TEST_F(AList, AddingAfterASortStandsAtTheEnd) {
    Add("", "", "b");
    list_.SortKey = 2;
    list_.SetSorted(true);
    Add("", "", "a");
    EXPECT_EQ(Titles(), "b a ");
}

TEST_F(AList, TheHeightOfALineIsWholePixelsKnownWithoutLinesAndGrowsWithTheFont) {
    const float small = list_.RowHeight();
    EXPECT_EQ(std::fmod(small, TwipsPerPixel), 0.0F);
    EXPECT_GT(small, 0);
    list_.SetFont({Font::Family::Sans, 24});
    EXPECT_GT(list_.RowHeight(), small);
    EXPECT_EQ(list_.Add().Height(), list_.RowHeight());
    list_.Add();
    Show();
    EXPECT_EQ(View()->visualRect(View()->model()->index(1, 0)).top() * TwipsPerPixel,
              list_.RowHeight());
}

TEST_F(AList, APressIsToldInTwipsAndChangesNoSelectionByItself) {
    AddLines(5);
    Show();
    int button = 0;
    int line = 0;
    list_.OnMouseDown = [&](int pressed, int, float, float y) {
        button = pressed;
        line = static_cast<int>(y) / static_cast<int>(list_.Item(1).Height()) + 1;
    };
    QTest::mouseClick(Viewport(), Qt::LeftButton, {}, OnLine(3));
    EXPECT_EQ(button, mouse::LeftButton);
    EXPECT_EQ(line, 3);
    QTest::mouseClick(Viewport(), Qt::RightButton, {}, OnLine(5));
    EXPECT_EQ(button, mouse::RightButton);
    EXPECT_EQ(line, 5);
    EXPECT_EQ(list_.SelectedItem(), nullptr);
    EXPECT_TRUE(View()->selectionModel()->selectedRows().isEmpty());
}

TEST_F(AList, TheFirstPixelOfALineBelongsToIt) {
    AddLines(3);
    Show();
    const int height = static_cast<int>(list_.RowHeight() / TwipsPerPixel);
    std::vector<int> lines;
    list_.OnMouseDown = [&](int, int, float, float y) {
        lines.push_back(static_cast<int>(y) / static_cast<int>(list_.RowHeight()) + 1);
    };
    for (const int y : {0, height - 1, height, 2 * height - 1, 2 * height}) {
        QTest::mouseClick(Viewport(), Qt::LeftButton, {}, QPoint(5, y));
    }
    EXPECT_EQ(lines, (std::vector<int>{1, 1, 2, 2, 3}));
}

TEST_F(AList, APressBringsTheFocusAndTellsItBehindThePress) {
    AddLines(3);
    Show();
    other_.SetFocus();
    std::string told;
    list_.OnMouseDown = [&](int, int, float, float) {
        told += list_.HasFocus() ? "down+" : "down-";
    };
    list_.OnGotFocus = [&] { told += "got"; };
    QTest::mouseClick(window.Native()->windowHandle(), Qt::LeftButton, {}, OnLine(2));
    EXPECT_EQ(told, "down+got");
}

TEST_F(AList, AHandlerOfAPressMayTurnTheFocusElsewhere) {
    AddLines(3);
    Show();
    std::string told;
    list_.OnMouseDown = [&](int, int, float, float) { other_.SetFocus(); };
    list_.OnGotFocus = [&] { told += "got"; };
    QTest::mouseClick(window.Native()->windowHandle(), Qt::LeftButton, {}, OnLine(2));
    EXPECT_EQ(told, "");
    EXPECT_TRUE(other_.HasFocus());
}

TEST_F(AList, TheSecondPressOfADoubleClickOnTheSameLineIsNoPress) {
    AddLines(3);
    Show();
    int presses = 0;
    list_.OnMouseDown = [&](int, int, float, float) { ++presses; };
    QTest::mouseClick(Viewport(), Qt::LeftButton, {}, OnLine(2));
    QTest::mouseDClick(Viewport(), Qt::LeftButton, {}, OnLine(2));
    EXPECT_EQ(presses, 1);
    QTest::mouseDClick(Viewport(), Qt::LeftButton, {}, OnLine(3));
    EXPECT_EQ(presses, 2);
    QTest::mouseClick(Viewport(), Qt::LeftButton, {}, OnLine(2));
    EXPECT_EQ(presses, 3);
}

TEST_F(AList, MovesOfTheMouseAreToldWithoutAButton) {
    AddLines(3);
    Show();
    float y = -1;
    list_.OnMouseMove = [&](int button, int, float, float atY) {
        if (button == 0) y = atY;
    };
    QTest::mouseMove(Viewport(), QPoint(20, 33));
    EXPECT_TRUE(QTest::qWaitFor([&] { return y >= 0; }, 1000));
    EXPECT_EQ(y, 33 * TwipsPerPixel);
}

TEST_F(AList, KeysGoToTheHandlerAndMoveNothing) {
    AddLines(5);
    Show();
    list_.SetFocus();
    list_.Item(2).SetSelected();
    std::vector<int> keys;
    list_.OnKeyDown = [&](int& code, int) {
        keys.push_back(code);
        code = key::None;
    };
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_PageDown, Qt::Key_End, Qt::Key_T}) {
        QTest::keyClick(View(), key);
    }
    EXPECT_EQ(keys, (std::vector<int>{key::Down, key::PageDown, key::End, 'T'}));
    EXPECT_EQ(list_.SelectedItem()->Index(), 2);
    EXPECT_EQ(View()->currentIndex().row(), 1);
}

TEST_F(AList, AHeldKeyIsReleasedOnceAtItsEnd) {
    AddLines(5);
    Show();
    list_.SetFocus();
    std::string told;
    list_.OnKeyDown = [&](int&, int) { told += "d"; };
    list_.OnKeyUp = [&](int, int) { told += "u"; };
    const auto send = [&](QEvent::Type type, bool repeat) {
        QKeyEvent event(type, Qt::Key_Down, Qt::NoModifier, QString(), repeat);
        QApplication::sendEvent(View(), &event);
    };
    send(QEvent::KeyPress, false);
    for (int i = 0; i < 3; ++i) {
        send(QEvent::KeyRelease, true);
        send(QEvent::KeyPress, true);
    }
    send(QEvent::KeyRelease, false);
    EXPECT_EQ(told, "ddddu");
}

TEST_F(AList, TabLeavesIt) {
    AddLines(2);
    Show();
    list_.SetFocus();
    QTest::keyClick(View(), Qt::Key_Tab);
    EXPECT_TRUE(other_.HasFocus());
}

TEST_F(AList, ANotchOfTheWheelIsThreeLinesAndTheViewStays) {
    AddLines(60);
    Show();
    std::vector<int> lines;
    list_.OnWheel = [&](int count) { lines.push_back(count); };
    Wheel({}, {0, -120}, Qt::NoScrollPhase);
    Wheel({}, {0, 240}, Qt::NoScrollPhase);
    EXPECT_EQ(lines, (std::vector<int>{3, -6}));
    EXPECT_EQ(View()->visualRect(View()->model()->index(0, 0)).top(), 0);
}

TEST_F(AList, SmallTurnsOfTheWheelAddUpToWholeLines) {
    AddLines(5);
    Show();
    std::vector<int> lines;
    list_.OnWheel = [&](int count) { lines.push_back(count); };
    for (int i = 0; i < 8; ++i)
        Wheel({}, {0, -15}, Qt::NoScrollPhase);
    EXPECT_EQ(lines, (std::vector<int>{1, 1, 1}));
    Wheel({}, {0, -15}, Qt::NoScrollPhase);
    Wheel({}, {0, 15}, Qt::NoScrollPhase);  // a turn back starts anew
    Wheel({}, {0, 15}, Qt::NoScrollPhase);
    EXPECT_EQ(lines.size(), 3U);
    Wheel({}, {0, 15}, Qt::NoScrollPhase);
    EXPECT_EQ(lines.back(), -1);
}

TEST_F(AList, PixelsOfATouchpadAddUpToTheHeightOfALine) {
    AddLines(5);
    Show();
    int total = 0;
    list_.OnWheel = [&](int count) { total += count; };
    const int height = static_cast<int>(list_.RowHeight() / TwipsPerPixel);
    for (int i = 0; i < 4 * height; ++i)
        Wheel({0, -1}, {0, -8}, Qt::ScrollUpdate);
    EXPECT_NEAR(total, 4, 1);
    EXPECT_GE(total, 3);
}

TEST_F(AList, AnIconUnderTheBarIsAsLightAsItsText) {
    ImageList icons;
    icons.Add("Camera", "icons/camera");
    list_.SetSmallIcons(&icons);
    AddLines(2);
    for (int i = 1; i <= 2; ++i)
        list_.Item(i).SetSmallIcon(icons.IndexOf("Camera"));
    list_.Item(1).SetSelected();
    Show();
    list_.SetFocus();
    const auto darkestOfIcon = [&](int line) {
        const QImage look = Look(list_);
        int darkest = 255;
        for (int x = 2; x < 17; ++x) {
            darkest = std::min(darkest, look.pixelColor(x, OnLine(line).y()).lightness());
        }
        return darkest;
    };
    const int bar = BarColour(1).lightness();
    EXPECT_GE(darkestOfIcon(1), bar);
    EXPECT_LT(darkestOfIcon(2), bar + 20);
    list_.SetSmallIcons(nullptr);
}

TEST_F(AList, TheBarIsSlateBlueWithTheFocusPalerWithoutAndGoneWhenHidden) {
    AddLines(3);
    Show();
    list_.Item(2).SetSelected();
    list_.SetFocus();
    EXPECT_EQ(BarColour(2), QColor(0x28, 0x4B, 0x71));
    const QColor ground = BarColour(1);
    other_.SetFocus();
    EXPECT_NE(BarColour(2), ground);
    EXPECT_NE(BarColour(2), QColor(0x28, 0x4B, 0x71));
    list_.SetHideSelection(true);
    EXPECT_EQ(BarColour(2), ground);
    list_.SetFocus();
    EXPECT_EQ(BarColour(2), QColor(0x28, 0x4B, 0x71));
}

TEST_F(AList, ItsGroundIsTransparent) {
    Show();
    EXPECT_EQ(window.Native()->grab().toImage().pixelColor(100, 100), QColor(0xFB, 0xF4, 0xE4));
    QPalette red = window.Native()->palette();
    red.setColor(QPalette::Window, Qt::red);
    window.Native()->setPalette(red);
    EXPECT_EQ(window.Native()->grab().toImage().pixelColor(100, 100), QColor(Qt::red));
}

TEST_F(AList, CellsHaveTheirOwnColours) {
    ListItem& item = Add("", "888", "888");
    item.SetSubForeColor(1, 0x0000FF);  // red
    item.SetSubForeColor(2, 0xFF0000);  // blue
    list_.SetFont({Font::Family::Sans, 20, true});
    Show();
    const QImage look = Look(list_);
    const auto has = [&](int left, int right, QColor color) {
        for (int x = left; x < right; ++x) {
            for (int y = 0; y < 40; ++y) {
                if (look.pixelColor(x, y) == color) return true;
            }
        }
        return false;
    };
    EXPECT_TRUE(has(19, 85, Qt::red));
    EXPECT_FALSE(has(19, 85, Qt::blue));
    EXPECT_TRUE(has(86, 280, Qt::blue));
}

TEST_F(AList, ItHasNoScrollBarsHeadingsOrFrame) {
    AddLines(100);
    list_.SetColumns({9000, 9000});
    Show();
    EXPECT_EQ(Viewport()->size(), View()->size());
    EXPECT_EQ(View()->visualRect(View()->model()->index(0, 0)).topLeft(), QPoint(0, 0));
}

TEST_F(AList, ColumnsKeepTheirWidthsAndFailBeyond) {
    list_.SetColumns({281, 700});
    list_.SetColumnWidth(2, 900);
    EXPECT_EQ(list_.ColumnWidth(2), 900);
    EXPECT_EQ(list_.ColumnCount(), 2);
    EXPECT_EQ(Ignoring([&] { list_.SetColumnWidth(3, 1); }), failure::IndexOutOfBounds);
    EXPECT_EQ(Ignoring([&] { (void)list_.ColumnWidth(0); }), failure::IndexOutOfBounds);
}

TEST_F(AList, AssistiveTechnologyReadsWholeLinesAndTheSelection) {
    Add("k1", "12", "Baked cod");
    Add("k2", "13", "Bass");
    list_.SetAccessibleName("Recipes");
    Show();
    QAccessibleInterface* accessible = Accessible(list_);
    EXPECT_EQ(AccessibleName(list_), QStringLiteral("Recipes"));
    ASSERT_NE(accessible->tableInterface(), nullptr);
    EXPECT_EQ(accessible->tableInterface()->rowCount(), 2);
    EXPECT_EQ(accessible->tableInterface()->cellAt(0, 0)->text(QAccessible::Name),
              QStringLiteral("12 Baked cod"));
    EXPECT_EQ(accessible->tableInterface()->cellAt(1, 2)->text(QAccessible::Name),
              QStringLiteral("Bass"));
    list_.Item(2).SetSelected();
    EXPECT_TRUE(accessible->tableInterface()->cellAt(1, 0)->state().selected);
    EXPECT_FALSE(accessible->tableInterface()->cellAt(0, 0)->state().selected);
}

TEST_F(AList, FocusDoesNotSelectALine) {
    AddLines(3);
    Show();
    list_.SetFocus();
    EXPECT_EQ(list_.SelectedItem(), nullptr);
    EXPECT_FALSE(View()->currentIndex().isValid());
}

TEST_F(AList, ItsToolTipIsItsOwn) {
    AddLines(1);
    list_.SetToolTipText("Baked cod");
    EXPECT_EQ(View()->toolTip(), QStringLiteral("Baked cod"));
}

}  // namespace
}  // namespace larder
