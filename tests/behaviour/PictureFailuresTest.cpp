#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QImage>
#include <QImageWriter>
#include <QPainter>
#include <QString>
#include <QWidget>
#include <algorithm>
#include <filesystem>

#include "app/frmMain.h"
#include "behaviour/support/MainWindowFixture.h"
#include "platform/Failure.h"
#include "support/Unprivileged.h"

namespace larder::test {
namespace {

// Three recipes; the second's photograph is what a test makes of it, the third's is a good one.
class FailingPictures : public MainWindowFixture {
  protected:
    void SetUp() override {
        Book.AddStock("Cod");
        Book.AddStock("Salmon");
        Book.AddStock("Trout");
        Book.Numbers("ALL RECIPES WITH PICTURES") = " 2 3 ";
        Book.Numbers("WHITE") = " 1 2 3 ";
        Folder.MakeFolder("Data/Food Photos");
        Save("3.jpg", Photo(80, 60));
        ASSERT_TRUE(Start());
        Main().categories.SimulateCategoryClick("WHITE");
    }
    static QImage Photo(int width, int height) {
        QImage photo(width, height, QImage::Format_RGB32);
        photo.fill(Qt::blue);
        return photo;
    }
    std::string PathOf(const std::string& name) {
        return Folder.Native("Data/Food Photos/" + name);
    }
    void Save(const std::string& name, const QImage& image) {
        ASSERT_TRUE(image.save(QString::fromStdString(PathOf(name))));
    }
    void Write(const std::string& name, const std::string& bytes) {
        Folder.Write("Data/Food Photos/" + name, bytes);
    }
    std::string Read(const std::string& name) { return Folder.Read("Data/Food Photos/" + name); }

    std::string OnView() {
        const MainControls& ui = Main().ui;
        if (ui.frPic.Visible() && !ui.rtbSee.Visible()) return "picture";
        return ui.rtbSee.Visible() && !ui.frPic.Visible() ? "text" : "nothing";
    }
    // The size of the picture on view, in pixels.
    QSize Shown() {
        const Rectangle& frame = Main().ui.frPic.Place();
        return {static_cast<int>(frame.Width / TwipsPerPixel),
                static_cast<int>(frame.Height / TwipsPerPixel)};
    }
    // The picture of the second recipe cannot be shown: the number is told, the text comes, and the
    // next picture is shown as ever.
    void ExpectTold(int failureNumber, const std::string& what) {
        Boxes.Shown.clear();
        PressLine(2, 1);
        PressLine(2, 2);
        ASSERT_EQ(Boxes.Shown.size(), 1U) << what;
        EXPECT_EQ(Boxes.Shown[0].Text,
                  std::to_string(failureNumber) + "\n" + FailureText(failureNumber))
            << what;
        EXPECT_EQ(Boxes.Shown[0].Buttons, Dialogs::Buttons::Ok);
        ExpectTextOfSalmon(what);
        PressLine(2, 3);
        EXPECT_EQ(OnView(), "picture") << what;
    }
    void ExpectTextOfSalmon(const std::string& what) {
        EXPECT_EQ(OnView(), "text") << what;
        EXPECT_TRUE(Main().ui.rtbSee.Text().starts_with("Salmon")) << what;
        EXPECT_TRUE(Main().ui.imgPicture.Shown().IsEmpty()) << what;
    }
};

std::string LittleEndian(std::uint32_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i)
        text += static_cast<char>(value >> (8 * i));
    return text;
}

// The head of a black and white bitmap of that many pixels.
std::string BmpHead(std::uint32_t width, std::uint32_t height) {
    const std::uint32_t line = (width + 31) / 32 * 4;
    return "BM" + LittleEndian(62 + line * height, 4) + LittleEndian(0, 4) + LittleEndian(62, 4) +
           LittleEndian(40, 4) + LittleEndian(width, 4) + LittleEndian(height, 4) +
           LittleEndian(1, 2) + LittleEndian(1, 2) + LittleEndian(0, 4) +
           LittleEndian(line * height, 4) + LittleEndian(2835, 4) + LittleEndian(2835, 4) +
           LittleEndian(2, 4) + LittleEndian(0, 4) + LittleEndian(0, 4) + LittleEndian(0xFFFFFF, 4);
}

const std::string Gif(
    "GIF89a\x02\0\x01\0\x80\0\0\xff\0\0\0\0\xff,\0\0\0\0\x02\0\x01\0\0\x02\x02L\x01\0;", 35);

// What is shown.

TEST_F(FailingPictures, PhotographsOfEachKindAreShown) {
    Save("2.jpg", Photo(40, 30));
    PressLine(2, 2);
    EXPECT_EQ(Shown(), QSize(40, 30));
    Folder.Delete("Data/Food Photos/2.jpg");
    Save("2.bmp", Photo(50, 20));
    PressLine(2, 3);
    PressLine(2, 2);
    EXPECT_EQ(Shown(), QSize(50, 20));
    Folder.Delete("Data/Food Photos/2.bmp");
    Write("2.gif", Gif);
    PressLine(2, 3);
    PressLine(2, 2);
    EXPECT_EQ(Shown(), QSize(2, 1));
    EXPECT_EQ(OnView(), "picture");
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(FailingPictures, APhotographTakenUprightStandsUpright) {
    {
        QImageWriter writer(QString::fromStdString(PathOf("2.jpg")));
        writer.setTransformation(QImageIOHandler::TransformationRotate90);
        QImage photo = Photo(60, 20);
        QPainter(&photo).fillRect(0, 0, 20, 20, Qt::red);
        ASSERT_TRUE(writer.write(photo));
    }
    PressLine(2, 2);
    EXPECT_EQ(Shown(), QSize(20, 60));
    const QImage seen = Widget("frPic")->grab().toImage();
    EXPECT_GT(seen.pixelColor(10, 5).red(), 200);
    EXPECT_GT(seen.pixelColor(10, 50).blue(), 200);
}

TEST_F(FailingPictures, AFileIsDecodedOnceHoweverOftenTheWindowIsLaidOut) {
    Save("2.jpg", Photo(400, 300));
    PressLine(2, 2);
    const auto content = Main().ui.imgPicture.Shown().Shared();
    for (int i = 0; i < 3; ++i)
        Main().layout.ResizeIt();
    EXPECT_EQ(Main().ui.imgPicture.Shown().Shared(), content);
}

// Files that are no good.

TEST_F(FailingPictures, WhatIsNoPictureIsToldAndTheTextIsShown) {
    Write("2.jpg", "Not a picture at all, though it is called one.");
    ExpectTold(failure::InvalidPicture, "a text");
    Write("2.jpg", "");
    ExpectTold(failure::InvalidPicture, "an empty file");
    Write("2.jpg", std::string(100'000, '\xFF'));
    ExpectTold(failure::InvalidPicture, "noise");
    Write("2.jpg", BmpHead(40, 30).substr(0, 30));
    ExpectTold(failure::InvalidPicture, "half a head");
    Write("2.jpg", BmpHead(0, 0));
    ExpectTold(failure::InvalidPicture, "no pixels");
}

TEST_F(FailingPictures, AFileCutAnywhereIsShownOrTold) {
    Save("2.jpg", Photo(64, 64));
    const std::string whole = Read("2.jpg");
    int shown = 0;
    int told = 0;
    for (std::size_t length = 0; length < whole.size(); length += 40) {
        Write("2.jpg", whole.substr(0, length));
        Boxes.Shown.clear();
        PressLine(2, 1);
        PressLine(2, 2);
        if (Boxes.Shown.empty()) {
            ASSERT_EQ(OnView(), "picture") << length;
            ++shown;
        } else {
            ASSERT_EQ(Boxes.Shown.size(), 1U) << length;
            ExpectTextOfSalmon(std::to_string(length));
            ++told;
        }
    }
    EXPECT_GT(told, 0);
    EXPECT_GT(shown + told, 10);
}

long LargestMemoryKilobytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

TEST_F(FailingPictures, NineHundredMegapixelsAreToldAndNotDecoded) {
    // A whole bitmap, of which the disk keeps only the head.
    Write("2.bmp", BmpHead(30'000, 30'000));
    std::filesystem::resize_file(PathOf("2.bmp"), 62 + 3752ULL * 30'000);
    const long before = LargestMemoryKilobytes();
    ExpectTold(failure::InvalidPicture, "a bitmap");
    Folder.Delete("Data/Food Photos/2.bmp");

    std::string gif = Gif;
    gif.replace(6, 4, "\x30\x75\x30\x75");  // 30,000 twice
    Write("2.gif", gif);
    ExpectTold(failure::InvalidPicture, "a moving picture");
    Folder.Delete("Data/Food Photos/2.gif");

    Save("2.jpg", Photo(16, 16));
    std::string jpg = Read("2.jpg");
    const std::size_t frame = jpg.find("\xFF\xC0");
    ASSERT_NE(frame, std::string::npos);
    jpg.replace(frame + 5, 4, "\x75\x30\x75\x30");
    Write("2.jpg", jpg);
    ExpectTold(failure::InvalidPicture, "a photograph");
    EXPECT_LT(LargestMemoryKilobytes() - before, 50'000);
}

TEST_F(FailingPictures, APictureThatCannotBeReadIsToldAndTheTextIsShown) {
    Save("2.jpg", Photo(40, 30));
    std::filesystem::permissions(PathOf("2.jpg"), std::filesystem::perms::none);
    {
        const Unprivileged rights;
        ExpectTold(failure::PathAccess, "no right to read");
    }
}

// Files that go.

TEST_F(FailingPictures, APictureThatVanishesBetweenTheTestAndTheLoadClearsTheImage) {
    PressLine(2, 3);
    Save("2.jpg", Photo(40, 30));
    ASSERT_NE(Main().pictures.CheckForAPicture("2"), "");
    Folder.Delete("Data/Food Photos/2.jpg");
    EXPECT_FALSE(Main().pictureView.UpdatePicture(0, false));
    EXPECT_EQ(Main().pictures.strPictureFileName, "");
    EXPECT_TRUE(Main().ui.imgPicture.Shown().IsEmpty());
    EXPECT_TRUE(Main().ui.frPic.Visible()) << "as it was";
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(FailingPictures, APictureWhoseFolderVanishesCountsAsMissingToo) {
    Save("2.jpg", Photo(40, 30));
    ASSERT_NE(Main().pictures.CheckForAPicture("2"), "");
    Folder.Delete("Data/Food Photos");
    EXPECT_FALSE(Main().pictureView.UpdatePicture(0, false));
    EXPECT_EQ(Main().pictures.strPictureFileName, "");
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(FailingPictures, ARecipeWhosePictureHasGoneShowsItsText) {
    PressLine(2, 3);
    ASSERT_EQ(OnView(), "picture");
    PressLine(2, 2);
    EXPECT_EQ(OnView(), "text");
    EXPECT_TRUE(Main().ui.rtbSee.Text().starts_with("Salmon"));
    EXPECT_TRUE(Boxes.Shown.empty());
}

// A disc that is gone. The system answers an attempt to open a socket as it does for a drive
// without a medium.
class GoneDisc : public FailingPictures {
  protected:
    void SetUp() override {
        FailingPictures::SetUp();
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const std::string path = PathOf("2.jpg");
        ASSERT_LT(path.size(), sizeof address.sun_path);
        std::ranges::copy(path, std::begin(address.sun_path));
        socket_ = ::socket(AF_UNIX, SOCK_STREAM, 0);
        ASSERT_EQ(::bind(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        Main().pictures.strPictureFileName = Main().objFSO.Alias(path);
    }
    void TearDown() override { ::close(socket_); }
    void PutDiscIn() {
        std::filesystem::remove(PathOf("2.jpg"));
        Save("2.jpg", Photo(40, 30));
    }

  private:
    int socket_ = -1;
};

TEST_F(GoneDisc, IsAskedForAndTriedAgainAfterOk) {
    Boxes.Then(Dialogs::Answer::Ok);
    Boxes.Then(Dialogs::Answer::Ok, [this] { PutDiscIn(); });
    EXPECT_TRUE(Main().pictureView.UpdatePicture(0, false));
    ASSERT_EQ(Boxes.Shown.size(), 2U);
    EXPECT_EQ(Boxes.Shown[0].Text,
              "Can't get the picture.\nPlease, make sure the CD is in the drive.");
    EXPECT_EQ(Boxes.Shown[0].Buttons, Dialogs::Buttons::OkCancel);
    EXPECT_EQ(Shown(), QSize(40, 30));
}

TEST_F(GoneDisc, IsGivenUpByCancelWhichClearsTheImage) {
    PressLine(2, 3);
    ASSERT_EQ(OnView(), "picture");
    Main().pictures.strPictureFileName = Main().objFSO.Alias(PathOf("2.jpg"));
    Boxes.Then(Dialogs::Answer::Cancel);
    EXPECT_FALSE(Main().pictureView.UpdatePicture(0, false));
    EXPECT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_TRUE(Main().ui.imgPicture.Shown().IsEmpty());
    EXPECT_FALSE(Main().ui.frPic.Visible()) << "the routine has ended there";
}

TEST_F(GoneDisc, IsNotLookedAtWhenThePictureIsOnlyPlacedAnew) {
    Main().layout.ResizeIt();
    EXPECT_TRUE(Boxes.Shown.empty());
}

// A disc that goes while its picture is read: the file can be opened and no byte of it be read. The
// system answers so for the memory of a process where it has none.
class DiscGoneWhileReading : public FailingPictures {
  protected:
    void SetUp() override {
        FailingPictures::SetUp();
        std::filesystem::create_symlink("/proc/self/mem", PathOf("2.jpg"));
    }
    void PutDiscIn() {
        std::filesystem::remove(PathOf("2.jpg"));
        Save("2.jpg", Photo(40, 30));
    }
    void ExpectAsked(std::size_t times) {
        ASSERT_EQ(Boxes.Shown.size(), times);
        EXPECT_EQ(Boxes.Shown.back().Text,
                  "Can't get the picture.\nPlease, make sure the CD is in the drive.");
    }
};

TEST_F(DiscGoneWhileReading, IsAskedForAndItsPictureShownAfterOk) {
    Boxes.Then(Dialogs::Answer::Ok);
    Boxes.Then(Dialogs::Answer::Ok, [this] { PutDiscIn(); });
    PressLine(2, 2);
    ExpectAsked(2);
    EXPECT_EQ(OnView(), "picture");
    EXPECT_EQ(Shown(), QSize(40, 30));
}

TEST_F(DiscGoneWhileReading, GivenUpByCancelShowsTheTextOfTheRecipe) {
    PressLine(2, 3);
    ASSERT_EQ(OnView(), "picture");
    Boxes.Then(Dialogs::Answer::Cancel);
    PressLine(2, 2);
    ExpectAsked(1);
    ExpectTextOfSalmon("after Cancel");
    EXPECT_EQ(Main().ui.ibPhotoButton.ButtonState(), ImageButton::Up) << "to try again";
}

}  // namespace
}  // namespace larder::test
