#include "platform/Picture.h"

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <QBuffer>
#include <QImageWriter>
#include <QPainter>
#include <QPixmap>
#include <cerrno>
#include <filesystem>

#include "ShownWindow.h"
#include "platform/Failure.h"
#include "platform/ImageList.h"
#include "platform/Painting.h"
#include "support/TempFolder.h"

namespace larder {
namespace {

class APicture : public testing::Test {
  protected:
    std::string Save(const char* name, const QImage& image) {
        const std::string path = folder.Native(name);
        EXPECT_TRUE(image.save(QString::fromStdString(path)));
        return path;
    }
    std::string Save(const char* name, const std::string& bytes) {
        folder.Write(name, bytes);
        return folder.Native(name);
    }
    static QImage Red(int width, int height) {
        QImage image(width, height, QImage::Format_RGB32);
        image.fill(Qt::red);
        return image;
    }
    static int FailureOf(const std::string& path) {
        return Ignoring([&] { Picture::FromFile(path); });
    }
    static QImage Shown(const Picture& picture, int width, int height) {
        return PixmapOf(picture, QSize(width, height)).toImage();
    }
    test::TempFolder folder;
};

constexpr char Circle[] =
    "<svg xmlns='http://www.w3.org/2000/svg' width='40' height='20' viewBox='0 0 40 20'>"
    "<rect width='20' height='20' fill='#ff0000'/><rect x='20' width='20' height='20' "
    "fill='#0000ff'/></svg>";

TEST_F(APicture, IsEmptyUntilItIsGivenContent) {
    const Picture none;
    EXPECT_TRUE(none.IsEmpty());
    EXPECT_EQ(none.PixelWidth(), 0);
    EXPECT_EQ(none.PixelHeight(), 0);
    EXPECT_TRUE(PixmapOf(none, QSize(10, 10)).isNull());
}

TEST_F(APicture, EveryKindOfFileIsKnownByItsContentWhateverItsName) {
    for (const char* format : {"jpg", "png", "bmp"}) {
        QBuffer bytes;
        bytes.open(QIODevice::WriteOnly);
        ASSERT_TRUE(Red(30, 20).save(&bytes, format));
        const Picture picture = Picture::FromFile(Save("picture.dat", bytes.data().toStdString()));
        EXPECT_EQ(picture.PixelWidth(), 30) << format;
        EXPECT_EQ(picture.PixelHeight(), 20) << format;
    }
    const std::string gif(
        "GIF89a\x02\0\x01\0\x80\0\0\xff\0\0\0\0\xff,\0\0\0\0\x02\0\x01\0\0\x02\x02L\x01\0;", 35);
    EXPECT_EQ(Picture::FromFile(Save("picture.jpg", gif)).PixelWidth(), 2);
    EXPECT_EQ(Picture::FromFile(Save("drawing.bmp", Circle)).PixelWidth(), 40);
}

TEST_F(APicture, AFileThatAnErrorOfTheDeviceKeepsFromBeingOpenedOrReadIsOnADriveNotReady) {
    // The far end of a terminal that its owner has not unlocked cannot be opened.
    const int terminal = ::posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_GE(terminal, 0);
    EXPECT_EQ(::open(::ptsname(terminal), O_RDONLY), -1);
    ASSERT_EQ(errno, EIO) << "or this would show nothing";
    EXPECT_EQ(FailureOf(::ptsname(terminal)), failure::DriveNotReady);
    ::close(terminal);
    // Memory that there is not can be opened and not be read.
    EXPECT_EQ(FailureOf("/proc/self/mem"), failure::DriveNotReady);
}

TEST_F(APicture, ADrawingIsSharpAtAnySize) {
    const Picture drawing = Picture::FromFile(Save("two.svg", Circle));
    for (const int scale : {1, 3, 20}) {
        const QImage shown = Shown(drawing, 40 * scale, 20 * scale);
        // No pixel between the two halves is a mixture.
        EXPECT_EQ(shown.pixelColor(20 * scale - 1, 5), QColor(Qt::red));
        EXPECT_EQ(shown.pixelColor(20 * scale, 5), QColor(Qt::blue));
    }
}

TEST_F(APicture, ADrawingIsRenderedAtThePixelsOfTheDevice) {
    const Picture drawing = Picture::FromFile(Save("two.svg", Circle));
    QPixmap device(82, 42);
    device.setDevicePixelRatio(2);
    device.fill(Qt::white);
    {
        QPainter painter(&device);
        PaintPicture(painter, drawing, QRect(0, 0, 41, 21));
    }
    const QImage shown = device.toImage();
    EXPECT_EQ(shown.pixelColor(40, 20), QColor(Qt::red));
    EXPECT_EQ(shown.pixelColor(41, 20), QColor(Qt::blue));
    EXPECT_EQ(shown.pixelColor(81, 41), QColor(Qt::blue));
}

TEST_F(APicture, ARenderingIsKeptForTheNextTime) {
    const Picture drawing = Picture::FromFile(Save("two.svg", Circle));
    const Picture photograph = Picture::FromFile(Save("red.png", Red(300, 200)));
    for (const Picture& picture : {drawing, photograph}) {
        const auto first = PixmapOf(picture, QSize(50, 25)).cacheKey();
        EXPECT_NE(PixmapOf(picture, QSize(51, 25)).cacheKey(), first);
        EXPECT_EQ(PixmapOf(picture, QSize(50, 25)).cacheKey(), first);
    }
}

TEST_F(APicture, CopiesShareTheirContent) {
    const Picture picture = Picture::FromFile(Save("red.png", Red(10, 10)));
    const Picture copy = picture;
    EXPECT_EQ(copy.Shared(), picture.Shared());
}

TEST_F(APicture, APhotographIsScaledSmoothly) {
    QImage stripes(400, 10, QImage::Format_RGB32);
    for (int x = 0; x < 400; ++x) {
        for (int y = 0; y < 10; ++y)
            stripes.setPixelColor(x, y, x % 2 == 0 ? Qt::black : Qt::white);
    }
    const Picture picture = Picture::FromFile(Save("stripes.png", stripes));
    const int grey = qGray(Shown(picture, 100, 10).pixel(50, 5));
    EXPECT_GT(grey, 64);
    EXPECT_LT(grey, 192);
}

TEST_F(APicture, TheTurnOfTheCameraIsHonoured) {
    const std::string path = folder.Native("turned.jpg");
    {
        QImage image = Red(60, 20);
        QPainter(&image).fillRect(0, 0, 20, 20, Qt::blue);
        QImageWriter writer(QString::fromStdString(path));
        writer.setTransformation(QImageIOHandler::TransformationRotate90);
        ASSERT_TRUE(writer.write(image));
    }
    const Picture picture = Picture::FromFile(path);
    EXPECT_EQ(picture.PixelWidth(), 20);
    EXPECT_EQ(picture.PixelHeight(), 60);
    const QImage shown = Shown(picture, 20, 60);
    EXPECT_GT(shown.pixelColor(10, 5).blue(), 200);
    EXPECT_GT(shown.pixelColor(10, 50).red(), 200);
}

TEST_F(APicture, ALargePhotographTellsItsOwnSizeAndIsKeptSmaller) {
    const Picture picture = Picture::FromFile(Save("wide.png", Red(9000, 1000)));
    EXPECT_EQ(picture.PixelWidth(), 9000);
    EXPECT_EQ(picture.PixelHeight(), 1000);
    EXPECT_EQ(Shown(picture, 90, 10).pixelColor(45, 5), QColor(Qt::red));
}

// The header of a picture of that many pixels, without the pixels.
std::string PngHeader(unsigned width, unsigned height) {
    QByteArray header("\x89PNG\r\n\x1a\n\0\0\0\x0dIHDR", 16);
    for (const unsigned side : {width, height}) {
        for (const int shift : {24, 16, 8, 0})
            header += static_cast<char>(side >> shift);
    }
    header += QByteArray("\x08\x02\0\0\0", 5);
    quint32 crc = 0xFFFFFFFF;
    for (const char c : header.mid(12)) {
        crc ^= static_cast<unsigned char>(c);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ (crc & 1 ? 0xEDB88320 : 0);
    }
    crc ^= 0xFFFFFFFF;
    for (const int shift : {24, 16, 8, 0})
        header += static_cast<char>(crc >> shift);
    return header.toStdString();
}

TEST_F(APicture, MoreThanAHundredMegapixelsAreFailure481) {
    EXPECT_EQ(FailureOf(Save("huge.png", PngHeader(10001, 10000))), failure::InvalidPicture);
    EXPECT_EQ(FailureOf(Save("huge2.png", PngHeader(60000, 60000))), failure::InvalidPicture);
}

TEST_F(APicture, AFileThatIsNoPictureIsFailure481) {
    EXPECT_EQ(FailureOf(Save("text.jpg", std::string("Not a picture at all"))),
              failure::InvalidPicture);
    EXPECT_EQ(FailureOf(Save("empty.jpg", std::string())), failure::InvalidPicture);
    EXPECT_EQ(FailureOf(Save("page.svg", std::string("<html><body>no</body></html>"))),
              failure::InvalidPicture);
    EXPECT_EQ(FailureOf(Save("cut.svg", std::string("<svg width='10'"))), failure::InvalidPicture);
    EXPECT_EQ(FailureOf(Save("head.png", PngHeader(100, 100))), failure::InvalidPicture);
}

TEST_F(APicture, AFileCutAnywhereIsAPictureOrFailure481) {
    for (const char* format : {"jpg", "png", "bmp"}) {
        QBuffer bytes;
        bytes.open(QIODevice::WriteOnly);
        ASSERT_TRUE(Red(16, 16).save(&bytes, format));
        const std::string whole = bytes.data().toStdString();
        for (std::size_t length = 0; length < whole.size(); length += 7) {
            const int number = FailureOf(Save("cut.dat", whole.substr(0, length)));
            ASSERT_TRUE(number == 0 || number == failure::InvalidPicture) << format << length;
        }
    }
}

TEST_F(APicture, AMissingFileIsFailure53AndAFolderFailure75) {
    EXPECT_EQ(FailureOf(folder.Native("missing.jpg")), failure::FileNotFound);
    EXPECT_EQ(FailureOf(""), failure::FileNotFound);
    folder.MakeFolder("folder.jpg");
    EXPECT_EQ(FailureOf(folder.Native("folder.jpg")), failure::PathAccess);
}

TEST_F(APicture, ANameThatUtf8CannotSpellIsOpenedAllTheSame) {
    const std::string path = Save("caf\xE9.png", std::string());
    std::filesystem::copy_file(Save("red.png", Red(3, 3)), path,
                               std::filesystem::copy_options::overwrite_existing);
    EXPECT_EQ(Picture::FromFile(path).PixelWidth(), 3);
}

TEST_F(APicture, ArtIsFoundByItsNameAndSharedByIt) {
    const Picture find = Picture::FromArt("buttons/find");
    EXPECT_GT(find.PixelWidth(), 0);
    EXPECT_EQ(Picture::FromArt("buttons/find").Shared(), find.Shared());
    EXPECT_EQ(Ignoring([] { Picture::FromArt("buttons/no such art"); }), failure::FileNotFound);
}

TEST_F(APicture, EveryPieceOfArtIsADrawing) {
    int pieces = 0;
    const std::filesystem::path art(ART_FOLDER);
    for (const auto& entry : std::filesystem::recursive_directory_iterator(art)) {
        if (entry.path().extension() != ".svg") continue;
        ++pieces;
        const std::string name =
            std::filesystem::relative(entry.path(), art).replace_extension().string();
        const Picture picture = Picture::FromArt(name);
        EXPECT_GT(picture.PixelWidth() * picture.PixelHeight(), 0) << name;
        const QImage shown = Shown(picture, 64, 64).convertToFormat(QImage::Format_ARGB32);
        bool drawn = false;
        for (int i = 0; i < 64 * 64 && !drawn; ++i)
            drawn = qAlpha(shown.pixel(i % 64, i / 64)) != 0;
        EXPECT_TRUE(drawn) << name;
    }
    EXPECT_GT(pieces, 10);
}

TEST(TheImageList, FindsPicturesByKeyAndByIndexFromOne) {
    ImageList list;
    list.Add("Book", "icons/book");
    list.Add("Camera", "icons/camera");
    EXPECT_EQ(list.Count(), 2);
    EXPECT_EQ(list.IndexOf("camera"), 2);
    EXPECT_EQ(list.Item("Camera").Shared(), list.Item(2).Shared());
    EXPECT_FALSE(list.Item(1).IsEmpty());
}

TEST(TheImageList, AnUnknownKeyOrIndexIsNoPicture) {
    ImageList list;
    list.Add("Camera", "icons/camera");
    EXPECT_EQ(list.IndexOf("Camcoder"), 0);
    EXPECT_TRUE(list.Item("Camcoder").IsEmpty());
    EXPECT_TRUE(list.Item(0).IsEmpty());
    EXPECT_TRUE(list.Item(2).IsEmpty());
}

}  // namespace
}  // namespace larder
