#include <array>
#include <string>
#include <vector>

#include "behaviour/support/EditorBook.h"

namespace larder {
namespace {

class TheEditorsLayout : public test::EditorBook {};

// What the drawn line around the sheet leaves free, in the sheet's own pixels.
QRect InsideTheLine(const QImage& sheet) {
    const auto isLine = [&](int x, int y) {
        const QColor color = sheet.pixelColor(x, y);
        return color.red() - color.blue() > 60 && color.lightness() < 200;
    };
    const auto first = [](int from, int step, int count, const auto& is) {
        for (int i = 0; i < count; ++i) {
            if (is(from + i * step))
                return from + (i + 2) * step;  // the line is two pixels at most
        }
        return -1;
    };
    const int x = sheet.width() / 2;
    const int y = sheet.height() / 2;
    const auto across = [&](int at) { return isLine(at, y); };
    const auto down = [&](int at) { return isLine(x, at); };
    return {
        QPoint(first(5, 1, x, across), first(5, 1, y, down)),
        QPoint(first(sheet.width() - 8, -1, x, across), first(sheet.height() - 8, -1, y, down))};
}

const std::array<QSize, 6> WindowSizes{QSize(640, 460),  QSize(880, 644),  QSize(1024, 740),
                                       QSize(1800, 460), QSize(700, 1000), QSize(1920, 1050)};

TEST_F(TheEditorsLayout, WhatIsWrittenStaysInsideTheLineAroundTheSheet) {
    OpenNew();
    const frmAddRecipe& form = Editor();
    for (const QSize size : WindowSizes) {
        SCOPED_TRACE(std::to_string(size.width()) + " x " + std::to_string(size.height()));
        form.window.Native()->resize(size);
        QApplication::processEvents();
        const QWidget& sheet = *form.imgSheet.Native();
        const QRect free = InsideTheLine(form.imgSheet.Native()->grab().toImage());
        EXPECT_NEAR(free.left(), 13, 2) << "as it was drawn";
        EXPECT_NEAR(free.top(), 14, 2);
        EXPECT_NEAR(sheet.width() - free.right(), 17, 2);
        EXPECT_NEAR(sheet.height() - free.bottom(), 18, 2);
        // The corners reach eight pixels further in.
        const QRect inner = free.adjusted(8, 8, -8, -8).translated(sheet.pos());
        const std::array<const Control*, 4> written{&form.rtbTitle, &form.rtbRecipe,
                                                    &form.imgTitleRule, &form.imgTitleHide};
        for (const Control* control : written)
            EXPECT_TRUE(inner.contains(control->Native()->geometry())) << control->Name();
    }
}

TEST_F(TheEditorsLayout, TheFishUnderTheTitleKeepsItsShapeInAnyWindow) {
    OpenNew();
    const auto middle = [&](const Image& image, int width) {
        const QWidget& all = *image.Native();
        return image.Native()
            ->grab(QRect((all.width() - width) / 2, 0, width, all.height()))
            .toImage();
    };
    std::vector<QImage> rules;
    std::vector<QImage> hides;
    for (const QSize size :
         {QSize(640, 460), QSize(880, 644), QSize(1800, 460), QSize(1920, 1050)}) {
        Editor().window.Native()->resize(size);
        QApplication::processEvents();
        rules.push_back(middle(Editor().imgTitleRule, 44));
        hides.push_back(middle(Editor().imgTitleHide, 120));
        EXPECT_EQ(rules.back(), rules.front()) << size.width();
        EXPECT_EQ(hides.back(), hides.front()) << size.width();
    }
}

TEST_F(TheEditorsLayout, NothingOverlapsOrLeavesTheWindowAtAnySize) {
    MakePicture(Photo("4.jpg"));
    OpenOn(4);  // both buttons of its picture are there
    Editor().rtbTitle.SetVisible(true);
    for (const QSize size : WindowSizes) {
        Editor().window.Native()->resize(size);
        QApplication::processEvents();
        const QRect client(QPoint(0, 0), Editor().window.Native()->size());
        std::vector<const Control*> solid;
        for (const Control* control : Editor().window.Controls()) {
            const bool picture = control->Name().rfind("img", 0) == 0;
            if (!control->Visible() || (picture && control != &Editor().imgFrame)) continue;
            const QRect place = control->Native()->geometry();
            EXPECT_TRUE(client.contains(place)) << control->Name();
            for (const Control* other : solid) {
                EXPECT_FALSE(place.intersects(other->Native()->geometry()))
                    << control->Name() << " on " << other->Name() << " at " << size.width();
            }
            solid.push_back(control);
        }
    }
}

TEST_F(TheEditorsLayout, FitsOnTheScreenInItsOwnProportion) {
    OpenNew();
    const Rectangle screen = Main().ui.window.WorkArea();
    const Window& window = Editor().window;
    ASSERT_LT(screen.Width, frmAddRecipe::shpOrig.Width) << "or this would show nothing";
    EXPECT_NEAR(window.ClientWidth(), 0.99F * screen.Width, TwipsPerPixel);
    const float withFrame = window.ClientHeight() + 40 * TwipsPerPixel;
    EXPECT_NEAR(window.ClientWidth() / withFrame,
                frmAddRecipe::shpOrig.Width / frmAddRecipe::shpOrig.Height, 0.01F);
    const Rectangle place = window.Place();
    EXPECT_NEAR(place.Left - screen.Left, (screen.Width - place.Width) / 2, 20 * TwipsPerPixel);
    EXPECT_NEAR(place.Top - screen.Top, (screen.Height - place.Height) / 2, 20 * TwipsPerPixel);
}

TEST_F(TheEditorsLayout, KeepsItsProportionOnAScreenThatIsTooLowTooNarrowOrBoth) {
    struct Case {
        float ScreenWidth, ScreenHeight;  // in pixels, as all here
        float Width, Height;
    };
    const float proportion = frmAddRecipe::shpOrig.Width / frmAddRecipe::shpOrig.Height;
    for (const Case& each :
         {Case{1920, 1080, 880, 684}, Case{880, 684, 880, 684},
          Case{1600, 600, 594 * proportion, 594}, Case{700, 1000, 693, 693 / proportion},
          Case{600, 500, 594, 594 / proportion}}) {
        SCOPED_TRACE(std::to_string(each.ScreenWidth) + " x " + std::to_string(each.ScreenHeight));
        const Rectangle size = frmAddRecipe::SizeWithin(
            {0, 0, each.ScreenWidth * TwipsPerPixel, each.ScreenHeight * TwipsPerPixel});
        EXPECT_NEAR(size.Width / TwipsPerPixel, each.Width, 0.1F);
        EXPECT_NEAR(size.Height / TwipsPerPixel, each.Height, 0.1F);
    }
}

TEST_F(TheEditorsLayout, TheSheetShowsThroughBothBoxes) {
    OpenNew();
    for (RichTextBox* box : {static_cast<RichTextBox*>(&Editor().rtbTitle), &Editor().rtbRecipe}) {
        box->SetText("");
        Editor().ibCancel.SetFocus();  // and no caret is in the text
        const QRect place = box->Native()->geometry();
        const auto seen = [&] { return Editor().window.Native()->grab(place).toImage(); };
        const QImage with = seen();
        box->SetVisible(false);
        EXPECT_EQ(with, seen()) << box->Name();
        box->SetVisible(true);
    }
}

}  // namespace
}  // namespace larder
