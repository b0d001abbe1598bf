#include "data/value/Errors.h"
#include "toolkit/ToolkitFixture.h"
#include "toolkit/controls/DBImage.h"
#include "toolkit/controls/Pictures.h"

#include <QtCore/QBuffer>
#include <QtCore/QFile>
#include <set>

namespace tavoline {
namespace {

class PictureTest : public ToolkitTest {
 protected:
  PictureTest() {
    image = screen->add<DBImage>("DBImage1", "DataSourceArticle", "image");
    open();
  }

  // A drawing that no encoder can make trivially small.
  static QByteArray encoded(QSize size, const char* format) {
    QImage drawing(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
      for (int x = 0; x < size.width(); ++x)
        drawing.setPixel(x, y, qRgb(x * 7 % 256, y * 5 % 256, (x + y) % 256));
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    EXPECT_TRUE(drawing.save(&buffer, format));
    return bytes;
  }
  static std::string file(const char* name, const QByteArray& bytes) {
    QFile out(QString::fromUtf8(name));
    EXPECT_TRUE(out.open(QIODevice::WriteOnly) && out.write(bytes) == bytes.size());
    return name;
  }
  static QByteArray field() {
    const SharedBytes bytes = DM->Article["image"].get().toBytes();
    return bytes ? QByteArray(reinterpret_cast<const char*>(bytes->data()), qsizetype(bytes->size()))
                 : QByteArray();
  }

  DBImage* image;
};

// A few kilobytes that would take the screen seconds to decode.
TEST_F(PictureTest, APictureOfFarTooManyPointsIsRefusedByItsHead) {
  QImage huge(7000, 7000, QImage::Format_Mono);
  huge.fill(0);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  ASSERT_TRUE(huge.save(&buffer, "PNG"));
  const QByteArray before = field();
  EXPECT_THROW(image->LoadFromFile(file("huge.png", bytes)), Error);
  EXPECT_EQ(field(), before);
  EXPECT_TRUE(decodedPicture(std::make_shared<const Bytes>(bytes.begin(), bytes.end())).isNull());
}

TEST_F(PictureTest, ALargePictureTellsHowFarItIsAndCanBeGivenUpOnTheWay) {
  for (const char* format : {"PNG", "JPEG", "BMP"}) {
    SCOPED_TRACE(format);
    const std::string path = file("grande", encoded({2000, 1500}, format));
    std::set<std::size_t> told;
    const SharedBytes whole = pictureFromFile(path, [&](std::size_t done, std::size_t total) {
      told.insert(done * 10 / total);
      return true;
    });
    EXPECT_TRUE(whole);
    EXPECT_GE(told.size(), 4U) << "tenths of the way";
    EXPECT_FALSE(
        pictureFromFile(path, [](std::size_t done, std::size_t total) { return done * 4 < total * 3; }));
  }
}

TEST_F(PictureTest, PicturesGoIntoTheFieldNoLargerThanNeeded) {
  const struct {
    const char* name;
    const char* format;
    QSize size, stored;
  } cases[] = {
      {"petite.png", "PNG", {64, 40}, {64, 40}},     {"petite.jpg", "JPEG", {512, 300}, {512, 300}},
      {"dessin.bmp", "BMP", {64, 40}, {64, 40}},     {"photo.jpg", "JPEG", {3000, 1500}, {512, 256}},
      {"haute.png", "PNG", {600, 1200}, {256, 512}}, {"grande.bmp", "BMP", {1024, 1024}, {512, 512}},
      {"menteuse.bmp", "PNG", {20, 20}, {20, 20}},  // what it holds counts, not its name
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.name);
    const QByteArray original = encoded(each.size, each.format);
    image->LoadFromFile(file(each.name, original));
    EXPECT_EQ(DM->Article.State(), DatasetState::Edit);
    const QByteArray stored = field();
    EXPECT_EQ(QImage::fromData(stored).size(), each.stored);
    EXPECT_FALSE(stored.startsWith("BM"));
    if (each.size == each.stored && QByteArray(each.format) != "BMP") {
      EXPECT_EQ(stored, original);
    }
    EXPECT_FALSE(image->Empty());
    DM->Article.Cancel();
    EXPECT_TRUE(image->Empty());
  }
}

TEST_F(PictureTest, WhatIsNoWholePictureIsRefusedAndChangesNothing) {
  image->LoadFromFile(file("bonne.png", encoded({64, 40}, "PNG")));
  DM->Article.Post();
  const QByteArray before = field();
  const QByteArray png = encoded({300, 300}, "PNG"), jpeg = encoded({300, 300}, "JPEG");
  const std::string files[] = {
      file("texte.png", "ceci n'est pas une image"),
      file("vide.jpg", ""),
      file("coupee.png", png.left(png.size() / 2)),
      file("coupee.jpg", jpeg.left(jpeg.size() / 2)),
      file("dessin.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>"),
      "absente.png",
  };
  for (const std::string& each : files) {
    try {
      image->LoadFromFile(each);
      ADD_FAILURE() << each << " was taken";
    } catch (const Error& error) {
      EXPECT_THAT(error.what(), testing::HasSubstr("« " + each + " »"));
    }
    EXPECT_EQ(DM->Article.State(), DatasetState::Browse);
    EXPECT_EQ(field(), before);
    EXPECT_FALSE(image->Empty());
  }
}

TEST_F(PictureTest, AContentIsDecodedOnce) {
  const QByteArray bytes = encoded({64, 40}, "PNG");
  const auto copy = [&] { return std::make_shared<const Bytes>(bytes.begin(), bytes.end()); };
  const QPixmap first = decodedPicture(copy());
  EXPECT_EQ(first.size(), QSize(64, 40));
  EXPECT_EQ(decodedPicture(copy()).cacheKey(), first.cacheKey());
  EXPECT_TRUE(decodedPicture(nullptr).isNull());
  EXPECT_TRUE(decodedPicture(std::make_shared<const Bytes>(Bytes{1, 2, 3})).isNull());
}

}  // namespace
}  // namespace tavoline
