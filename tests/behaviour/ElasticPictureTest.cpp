#include <QImage>
#include <QTransform>
#include <utility>
#include <vector>

#include "ShownWindow.h"
#include "platform/Image.h"
#include "support/TempFolder.h"

namespace larder {
namespace {

constexpr QRgb Red = 0xFFFF0000;
constexpr QRgb Green = 0xFF00FF00;
constexpr QRgb Blue = 0xFF0000FF;

// A drawing of 60 by 40 pixels: red, with a green border of 10 and a blue square of 20 in the
// middle.
class AnElasticPicture : public test::ShownWindow {
  protected:
    AnElasticPicture() {
        folder_.Write("a.svg",
                      "<svg xmlns='http://www.w3.org/2000/svg' width='60' height='40'>"
                      "<rect width='60' height='40' fill='#00FF00'/>"
                      "<rect x='10' y='10' width='40' height='20' fill='#FF0000'/>"
                      "<rect x='20' y='10' width='20' height='20' fill='#0000FF'/></svg>");
        image_.SetPicture(Picture::FromFile(folder_.Native("a.svg")));
    }
    QImage At(int width, int height) {
        image_.Move({0, 0, static_cast<float>(width) * TwipsPerPixel,
                     static_cast<float>(height) * TwipsPerPixel});
        return Look(image_);
    }
    // The lengths of the colours along a row.
    static std::vector<std::pair<QRgb, int>> Row(const QImage& look, int y) {
        std::vector<std::pair<QRgb, int>> runs;
        for (int x = 0; x < look.width(); ++x) {
            if (runs.empty() || runs.back().first != look.pixel(x, y))
                runs.emplace_back(look.pixel(x, y), 0);
            ++runs.back().second;
        }
        return runs;
    }
    static std::vector<std::pair<QRgb, int>> Column(const QImage& look, int x) {
        return Row(look.transformed(QTransform().rotate(90)), x);
    }

    test::TempFolder folder_;
    Image image_{window, "imgTest"};
};

using Runs = std::vector<std::pair<QRgb, int>>;

TEST_F(AnElasticPicture, KeepsTheWidthOfItsBorderAtAnySize) {
    image_.SetElastic({{{10, 50}}, {{10, 30}}});
    for (const QSize size : {QSize(60, 40), QSize(300, 40), QSize(61, 333), QSize(640, 480)}) {
        const QImage look = At(size.width(), size.height());
        const Runs row = Row(look, size.height() / 2);
        EXPECT_EQ(row.front(), std::pair(Green, 10)) << size.width();
        EXPECT_EQ(row.back(), std::pair(Green, 10)) << size.width();
        const Runs column = Column(look, size.width() / 2);
        EXPECT_EQ(column.front(), std::pair(Green, 10)) << size.height();
        EXPECT_EQ(column.back(), std::pair(Green, 10)) << size.height();
    }
}

TEST_F(AnElasticPicture, KeepsWhatStandsBetweenTwoSpans) {
    image_.SetElastic({{{10, 20}, {40, 50}}, {}});
    for (const int more : {0, 2, 100, 1000}) {
        const QImage look = At(60 + more, 40);
        EXPECT_EQ(
            Row(look, 20),
            (Runs{
                {Green, 10}, {Red, 10 + more / 2}, {Blue, 20}, {Red, 10 + more / 2}, {Green, 10}}))
            << more;
    }
}

TEST_F(AnElasticPicture, GivesWayToASmallerSizeTooAndShrinksAsAWholeBelowThat) {
    image_.SetElastic({{{10, 20}, {40, 50}}, {}});
    EXPECT_EQ(Row(At(50, 40), 20),
              (Runs{{Green, 10}, {Red, 5}, {Blue, 20}, {Red, 5}, {Green, 10}}));
    EXPECT_EQ(Row(At(41, 40), 20).size(), 4U) << "there is one pixel for both spans";
    EXPECT_EQ(Row(At(30, 40), 20), (Runs{{Green, 5}, {Red, 5}, {Blue, 10}, {Red, 5}, {Green, 5}}));
}

TEST_F(AnElasticPicture, ShowsANewPictureAndNoneAtTheSamePlace) {
    image_.SetElastic({{{10, 50}}, {{10, 30}}});
    EXPECT_EQ(At(100, 100).pixel(2, 2), Green);
    folder_.Write("b.svg",
                  "<svg xmlns='http://www.w3.org/2000/svg' width='60' height='40'>"
                  "<rect width='60' height='40' fill='#0000FF'/></svg>");
    image_.SetPicture(Picture::FromFile(folder_.Native("b.svg")));
    EXPECT_EQ(Look(image_).pixel(2, 2), Blue);
    image_.SetPicture({});
    EXPECT_NE(Look(image_).pixel(2, 2), Blue);
}

}  // namespace
}  // namespace larder
