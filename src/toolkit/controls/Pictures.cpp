#include "toolkit/controls/Pictures.h"

#include <QtCore/QBuffer>
#include <QtCore/QCache>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtGui/QImageReader>
#include <algorithm>

#include "data/value/Errors.h"

namespace tavoline {

namespace {

constexpr int cacheKilobytes = 64 * 1024;
constexpr int largestDecodedMegabytes = 512;  // a photograph of 130 megapixels
// Points that are decoded in well under a second. A photograph is scaled while it is read.
constexpr qint64 mostPoints = 40'000'000, mostPointsOfPhotograph = 130'000'000;

/// By the head of the file, before anything is decoded.
bool decodesSoon(QImageReader& reader) {
  const QSize size = reader.size();
  const qint64 points = qint64{size.width()} * size.height();
  return points <= (reader.format() == "jpeg" ? mostPointsOfPhotograph : mostPoints);
}

struct Decoded {
  SharedBytes bytes;
  QPixmap picture;
};

QByteArray view(const Bytes& bytes) {
  return QByteArray::fromRawData(reinterpret_cast<const char*>(bytes.data()), qsizetype(bytes.size()));
}

QPixmap decode(const Bytes& bytes) {
  QByteArray data = view(bytes);
  QBuffer buffer(&data);
  QImageReader reader(&buffer);
  reader.setAutoTransform(true);
  if (!decodesSoon(reader)) return {};
  return QPixmap::fromImage(reader.read());
}

}  // namespace

QPixmap decodedPicture(const SharedBytes& bytes) {
  static QCache<size_t, Decoded> cache(cacheKilobytes);
  if (!bytes || bytes->empty()) return {};
  const size_t key = qHashBits(bytes->data(), bytes->size());
  if (const Decoded* known = cache.object(key); known && (known->bytes == bytes || *known->bytes == *bytes)) {
    return known->picture;
  }
  QPixmap picture = decode(*bytes);
  const int kilobytes = 1 + picture.width() * picture.height() / 256 + int(bytes->size() / 1024);
  cache.insert(key, new Decoded{bytes, picture}, kilobytes);
  return picture;
}

namespace {

[[noreturn]] void refuse(const std::string& path) {
  const std::string name = QFileInfo(QString::fromStdString(path)).fileName().toStdString();
  throw Error("Le fichier « " + name +
              " » n'est pas une image lisible (PNG, JPEG ou BMP). L'image n'a pas été changée ; "
              "choisissez un autre fichier.");
}

[[noreturn]] void refuseLarge(const std::string& path, QSize size) {
  const std::string name = QFileInfo(QString::fromStdString(path)).fileName().toStdString();
  throw Error("L'image « " + name + " » est trop grande : " + std::to_string(size.width()) + " × " +
              std::to_string(size.height()) +
              " points. L'image n'a pas été changée ; réduisez celle-ci, ou choisissez-en une autre.");
}

// The decoder fills the missing end of a cut JPEG with grey and says nothing.
bool whole(const QByteArray& file, const QByteArray& format) {
  return format != "jpeg" || file.lastIndexOf(QByteArrayLiteral("\xff\xd9")) > 0;
}

SharedBytes shared(const QByteArray& data) {
  return std::make_shared<const Bytes>(data.begin(), data.end());
}

/// How far a picture has come: its file is read, then decoded. Once given up it stays so.
class Loading {
 public:
  explicit Loading(const Progress& progress) : progress_(progress) {}
  enum Step : std::size_t { Reading = 0, Decoding = 1, Steps = 2 };
  bool tell(Step step, qint64 done, qint64 size) {
    constexpr std::size_t parts = 1000;
    const auto part =
        static_cast<std::size_t>(std::min(done, size) * qint64{parts - 1} / std::max(size, qint64{1}));
    goesOn_ = goesOn_ && (!progress_ || progress_(step * parts + part, Steps * parts));
    return goesOn_;
  }
  bool givenUp() const { return !goesOn_; }

 private:
  const Progress& progress_;
  bool goesOn_ = true;
};

/// A file in memory that tells how far a decoder has read in it, and ends where that was given up.
class ToldBytes : public QIODevice {
 public:
  ToldBytes(const QByteArray& bytes, Loading& loading) : bytes_(bytes), loading_(loading) {
    open(ReadOnly | Unbuffered);
  }
  qint64 size() const override { return bytes_.size(); }

 protected:
  qint64 readData(char* target, qint64 most) override {
    const qint64 at = pos(), count = std::min(most, bytes_.size() - at);
    if (count <= 0 || !loading_.tell(Loading::Decoding, at, bytes_.size())) return -1;
    std::copy_n(bytes_.constData() + at, count, target);
    return count;
  }
  qint64 writeData(const char*, qint64) override { return -1; }

 private:
  const QByteArray& bytes_;
  Loading& loading_;
};

QByteArray readAll(QFile& file, Loading& loading) {
  constexpr qint64 piece = 1 << 20;
  QByteArray data;
  while (!file.atEnd() && loading.tell(Loading::Reading, data.size(), file.size())) {
    const QByteArray more = file.read(piece);
    if (more.isEmpty()) break;
    data += more;
  }
  return data;
}

}  // namespace

SharedBytes pictureFromFile(const std::string& path, const Progress& progress) {
  QFile file(QString::fromStdString(path));
  if (!file.open(QIODevice::ReadOnly)) refuse(path);
  Loading loading(progress);
  const QByteArray data = readAll(file, loading);
  if (loading.givenUp()) return nullptr;
  ToldBytes bytes(data, loading);
  QImageReader::setAllocationLimit(largestDecodedMegabytes);
  QImageReader reader(&bytes);
  reader.setDecideFormatFromContent(true);
  reader.setAutoTransform(true);
  const QByteArray format = reader.format();
  if (format != "png" && format != "jpeg" && format != "bmp") refuse(path);
  if (!whole(data, format)) refuse(path);

  const QSize size = reader.size();
  if (!decodesSoon(reader)) refuseLarge(path, size);
  const bool large = std::max(size.width(), size.height()) > storedPictureEdge;
  if (large) reader.setScaledSize(size.scaled(storedPictureEdge, storedPictureEdge, Qt::KeepAspectRatio));
  const QImage picture = reader.read();
  if (loading.givenUp()) return nullptr;
  if (picture.isNull()) refuse(path);
  if (!large && format != "bmp") return shared(data);

  QByteArray stored;
  QBuffer out(&stored);
  out.open(QIODevice::WriteOnly);
  const bool photograph = format == "jpeg";
  if (!picture.save(&out, photograph ? "JPEG" : "PNG", photograph ? 88 : -1)) refuse(path);
  return shared(stored);
}

}  // namespace tavoline
