#include "platform/RichTextPictures.h"

#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QImage>
#include <QImageReader>
#include <QMimeData>
#include <QTextBlock>
#include <QTextLayout>
#include <QtEndian>
#include <memory>
#include <random>

#include "behaviour/support/EditorBook.h"
#include "behaviour/support/RichTextBoxFixture.h"
#include "platform/rtf/Rtf.h"

namespace larder::test {
namespace {

// Of a photograph, the worst to compress: noise.
QImage Noise(int width, int height, QImage::Format format = QImage::Format_RGB32) {
    QImage image(width, height, format);
    std::mt19937 random(1);
    for (int y = 0; y < height; ++y) {
        auto* line = reinterpret_cast<std::uint32_t*>(image.scanLine(y));
        for (int i = 0; i < image.bytesPerLine() / 4; ++i)
            line[i] = static_cast<std::uint32_t>(random());
    }
    return image;
}

QByteArray Encoded(const QImage& image, const char* format) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    EXPECT_TRUE(image.save(&buffer, format));
    return bytes;
}

QByteArray RtfWith(const QImage& image, const char* format, int goalWidth, int goalHeight) {
    return QByteArray("{\\rtf1 a{\\pict\\") + (format[0] == 'J' ? "jpegblip" : "pngblip") +
           "\\picwgoal" + QByteArray::number(goalWidth) + "\\pichgoal" +
           QByteArray::number(goalHeight) + " " + Encoded(image, format).toHex() + "}b}";
}

class APastedPicture : public RichTextBoxTest {
  protected:
    void Paste(const QImage& image) {
        QApplication::clipboard()->setImage(image);
        PasteClipboard();
    }
    void PasteRtf(const QByteArray& rtf) {
        auto* mime = new QMimeData;
        mime->setData("text/rtf", rtf);
        QApplication::clipboard()->setMimeData(mime);
        PasteClipboard();
    }
    RichPicture Stored() {
        const RichText text = *ReadRtf(box_.TextRTF());
        EXPECT_EQ(text.Pictures().size(), 1U);
        return text.Pictures().empty() ? RichPicture() : text.Pictures().front();
    }
    static QSize Goal(const RichPicture& picture) {
        return {picture.goalWidth / 15, picture.goalHeight / 15};
    }

    void PasteClipboard() {
        Show();
        Press(Qt::Key_A, Qt::ControlModifier);
        Press(Qt::Key_V, Qt::ControlModifier);
    }
};

TEST_F(APastedPicture, OfACameraHasThePixelsOfTheBooksPhotographs) {
    Paste(Noise(2560, 1920));
    EXPECT_EQ(ImageOf(Stored()).size(), QSize(1280, 960));
    EXPECT_EQ(Goal(Stored()), QSize(384, 288));
    Paste(Noise(1500, 2000));
    EXPECT_EQ(ImageOf(Stored()).size(), QSize(720, 960));
    EXPECT_EQ(Goal(Stored()), QSize(300, 400));
}

TEST_F(APastedPicture, OfTheFinestColoursMakesNoLongText) {
    Paste(Noise(1600, 1200, QImage::Format_RGBA64));
    EXPECT_LT(box_.TextRTF().size(), 12'000'000U);
    Paste(Noise(1280, 960, QImage::Format_RGBA64));
    EXPECT_LT(box_.TextRTF().size(), 12'000'000U);
}

TEST_F(APastedPicture, ThatIsSmallStaysAsItIs) {
    const QImage image = Noise(300, 200);
    Paste(image);
    EXPECT_EQ(ImageOf(Stored()).convertToFormat(QImage::Format_RGB32), image);
    EXPECT_EQ(Goal(Stored()), QSize(300, 200));
}

TEST_F(APastedPicture, ThatIsAsLargeAsAPhotographOfTheBookKeepsItsPixels) {
    const QImage image = Noise(1280, 960);
    Paste(image);
    EXPECT_EQ(ImageOf(Stored()).convertToFormat(QImage::Format_RGB32), image);
    EXPECT_EQ(Goal(Stored()), QSize(384, 288));
}

TEST_F(APastedPicture, ThatIsALineIsStillThere) {
    Paste(Noise(5000, 1));
    EXPECT_EQ(ImageOf(Stored()).size(), QSize(1280, 1));
    EXPECT_EQ(Stored().goalWidth, 384 * 15);
    EXPECT_EQ(Stored().goalHeight, 15) << "a pixel";
}

TEST_F(APastedPicture, ThatCannotBeReadChangesNothing) {
    box_.SetText("before");
    auto* mime = new QMimeData;
    mime->setImageData(QVariant(QImage()));
    mime->setHtml("<img src='https://example.org/large.jpg'>");
    QApplication::clipboard()->setMimeData(mime);
    PasteClipboard();
    EXPECT_EQ(box_.Text(), "before");
    EXPECT_EQ(box_.SelText(), "before");
}

TEST_F(APastedPicture, ThatComesAsItsAddressAloneChangesNothing) {
    box_.SetText("before");
    auto* mime = new QMimeData;
    mime->setHtml("<img src='https://example.org/large.jpg'>");
    QApplication::clipboard()->setMimeData(mime);
    PasteClipboard();
    EXPECT_EQ(box_.Text(), "before");
}

TEST_F(APastedPicture, IsFollowedByTextThatLooksLikeThatBeforeIt) {
    box_.SetTextRTF(R"({\rtf1{\fonttbl{\f0\froman Georgia;}}\f0\fs30 before})");
    QApplication::clipboard()->setImage(Noise(30, 20));
    Show();
    Press(Qt::Key_End, Qt::ControlModifier);
    Press(Qt::Key_V, Qt::ControlModifier);
    Type("behind");
    box_.Find("behind", 0);
    EXPECT_EQ(box_.SelFontSize(), 15.0F);
    EXPECT_NE(box_.SelRTF().find("Georgia"), std::string::npos);
}

TEST_F(APastedPicture, ThatOnlyMovesWithinTheBookStaysAsItIs) {
    box_.SetTextRTF(RtfWith(Noise(2000, 1500), "JPG", 9000, 6750).toStdString());
    const RichPicture before = Stored();
    Show();
    Press(Qt::Key_A, Qt::ControlModifier);
    Press(Qt::Key_X, Qt::ControlModifier);
    ASSERT_EQ(box_.Text(), "");
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(*Stored().bytes, *before.bytes);
    EXPECT_EQ(Stored().goalWidth, 9000);
    EXPECT_EQ(Stored().goalHeight, 6750);
}

TEST_F(APastedPicture, InRichTextIsLimitedAlike) {
    PasteRtf(RtfWith(Noise(1600, 1200), "JPG", 24000, 18000));
    EXPECT_EQ(box_.Text(), "a b");
    EXPECT_EQ(Stored().kind, PictureKind::Jpeg);
    EXPECT_EQ(ImageOf(Stored()).size(), QSize(1280, 960));
    EXPECT_EQ(Goal(Stored()), QSize(384, 288));
    PasteRtf(RtfWith(Noise(1600, 1200), "PNG", 1500, 1125));
    EXPECT_EQ(ImageOf(Stored()).size(), QSize(1280, 960));
    EXPECT_EQ(Goal(Stored()), QSize(100, 75)) << "shown as small as it came";
    PasteRtf(RtfWith(Noise(100, 100), "PNG", 15000, 7500));
    EXPECT_EQ(ImageOf(Stored()).size(), QSize(100, 100));
    EXPECT_EQ(Goal(Stored()), QSize(384, 192)) << "the proportions of the text";
}

TEST_F(APastedPicture, OfFiftyMegapixelsIsReadWhateverQtAllows) {
    QImage large(8160, 6120, QImage::Format_RGB32);
    large.fill(Qt::red);
    QImageReader::setAllocationLimit(128);
    PasteRtf(RtfWith(large, "JPG", 24000, 18000));
    EXPECT_EQ(ImageOf(Stored()).size(), QSize(1280, 960));
}

TEST_F(APastedPicture, ThatIsABitmapFromTheTopIsRead) {
    QByteArray bmp = Encoded(Noise(40, 30), "BMP");
    const quint32 height = 0U - 30U;
    qToLittleEndian(height, bmp.data() + 22);
    RichPicture picture;
    picture.kind = PictureKind::Dib;
    picture.bytes = std::make_shared<const std::string>(bmp.mid(14).toStdString());
    EXPECT_EQ(ImageOf(picture).size(), QSize(40, 30));
}

TEST_F(APastedPicture, BesideAnEmptyTextIsTaken) {
    auto* mime = new QMimeData;
    mime->setImageData(Noise(30, 20));
    mime->setText("");
    QApplication::clipboard()->setMimeData(mime);
    PasteClipboard();
    EXPECT_EQ(Goal(Stored()), QSize(30, 20));
}

TEST_F(APastedPicture, InRichTextThatIsSmallIsKeptByteForByte) {
    const QImage image = Noise(30, 20);
    PasteRtf(RtfWith(image, "PNG", 0, 0));
    EXPECT_EQ(*Stored().bytes, Encoded(image, "PNG").toStdString());
    EXPECT_EQ(Stored().goalWidth, 0);
    PasteRtf("{\\rtf1 a{\\pict\\pngblip\\picwgoal300\\pichgoal150 89504e47}b}");
    EXPECT_EQ(*Stored().bytes, "\x89PNG") << "one that cannot be read";
    EXPECT_EQ(Stored().goalWidth, 300);
}

// Where the pictures of a text stand on the screen.
class APictureOfAText : public RichTextBoxTest {
  protected:
    double ShownWidth() {
        Edit().viewport()->repaint();
        const QTextLine line = Edit().document()->begin().layout()->lineAt(0);
        return line.naturalTextWidth();
    }
    double Room() { return Edit().viewport()->width() - 2 * 4; }
};

TEST_F(APictureOfAText, WiderThanTheBoxIsShownInItsWidthAndKeptAsItIs) {
    const QByteArray rtf = RtfWith(Noise(20, 10), "PNG", 30000, 15000).replace(" a{", "{");
    box_.SetTextRTF(rtf.toStdString());
    const std::string before = box_.TextRTF();
    Show();
    EXPECT_NEAR(Edit().document()->begin().layout()->lineAt(0).naturalTextWidth(), Room(), 1);
    EXPECT_NEAR(Edit().document()->begin().layout()->lineAt(0).height(), Room() / 2, 12);
    box_.Move({0, 0, 3000, 1500});
    EXPECT_NEAR(ShownWidth(), Room(), 1) << "in a narrower box";
    box_.Move({0, 0, 9000, 1500});
    EXPECT_NEAR(ShownWidth(), Room(), 1) << "in a wider one";
    Press(Qt::Key_End, Qt::ControlModifier);
    Type("x");
    Press(Qt::Key_Backspace);
    EXPECT_EQ(box_.TextRTF(), before);
}

TEST_F(APictureOfAText, IsDrawnInItsColours) {
    QImage image(20, 10, QImage::Format_RGB32);
    for (const Qt::GlobalColor colour : {Qt::red, Qt::blue}) {
        image.fill(colour);
        box_.SetTextRTF(RtfWith(image, "PNG", 600, 300).toStdString());
        Show();
        const QImage screen = Edit().viewport()->grab().toImage();
        const QRect caret = Edit().cursorRect(QTextCursor(Edit().document()->begin()));
        const QPoint place = caret.bottomLeft() + QPoint(20, -12);
        EXPECT_EQ(screen.pixelColor(place), QColor(colour)) << "the second has the first's name";
    }
}

// The windows as large as they are on a screen of 1024 x 768.
class APictureInARecipe : public EditorBook {
  protected:
    static QSize RoomIn(const RichTextBox& box) {
        const auto* edit = qobject_cast<QTextEdit*>(box.Native());
        return edit->viewport()->size() - QSize(2 * 4, 2 * 4);
    }
};

TEST_F(APictureInARecipe, IsSeenWholeOnTheSheetAndOnThePage) {
    Main().ui.window.SetClientSize(1024 * 15, 749 * 15);
    Main().viewer.ShowRecipe(1);
    OpenNew();
    Editor().window.SetClientSize(880 * 15, 644 * 15);
    Application::DoEvents();
    RichTextBox& sheet = Editor().rtbRecipe;
    for (const QSize size : {QSize(1600, 900), QSize(900, 1600)}) {
        QApplication::clipboard()->setImage(Noise(size.width(), size.height()));
        sheet.SetText("");
        sheet.SetFocus();
        Ctrl(Qt::Key_V);
        const RichPicture picture = ReadRtf(sheet.TextRTF())->Pictures().at(0);
        const QSize shown(picture.goalWidth / 15, picture.goalHeight / 15);
        for (const RichTextBox* box : {&sheet, &Main().ui.rtbSee}) {
            const QSize room = RoomIn(*box);
            EXPECT_EQ(shown.boundedTo(room), shown)
                << box->Name() << " " << room.width() << " x " << room.height();
        }
    }
}

}  // namespace
}  // namespace larder::test
