#include <gtest/gtest.h>

#include <QtGui/QImage>

#include "tests/tools/ToolFixture.h"
#include "tools/store/demo/Demo.h"

namespace tavoline::tool {
namespace {

using Pictures = ToolTest;

TEST_F(Pictures, EveryArticleOfTheDemoHasItsOwn) {
  const DemoReport report = createDemo(file());
  ASSERT_TRUE(report.pictures) << report.withoutPictures;
  sqlite::Connection store = test::sideDoor(file());
  EXPECT_EQ(store.integer("SELECT count(*) - count(DISTINCT image) FROM article"), 0);
  int decoded = 0;
  for (sqlite::Statement row = store.prepare("SELECT image, designation_article FROM article"); row.step();
       ++decoded) {
    const std::string png = row.text(0);
    QImage picture;
    ASSERT_TRUE(
        picture.loadFromData(reinterpret_cast<const uchar*>(png.data()), static_cast<int>(png.size()), "PNG"))
        << row.text(1);
    EXPECT_EQ(picture.size(), QSize(128, 96));
    // An emoji that the font lacks leaves an empty card, which is pale all over.
    int drawn = 0;
    for (int y = 0; y < picture.height(); ++y)
      for (int x = 0; x < picture.width(); ++x)
        if (const QColor colour = picture.pixelColor(x, y);
            colour.alpha() > 200 && (colour.saturation() > 110 || colour.value() < 180))
          ++drawn;
    EXPECT_GT(drawn, 100) << row.text(1);
  }
  EXPECT_GT(decoded, 0);
}

}  // namespace
}  // namespace tavoline::tool
