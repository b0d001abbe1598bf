#include "toolkit/report/output/Export.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtCore/QXmlStreamReader>
#include <QtGui/QImage>

#include <sys/wait.h>
#include <unistd.h>

#include "data/value/Clock.h"
#include "data/value/Errors.h"
#include "toolkit/report/Samples.h"
#include "toolkit/report/model/DocumentFile.h"

namespace tavoline::report {
namespace {

using testing::HasSubstr;

QByteArray contents(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

class ExportTest : public testing::Test {
 protected:
  QString path(const QString& name) const { return folder_.filePath(name); }
  QTemporaryDir folder_;
};

TEST_F(ExportTest, anotherProgramReadsThePdf) {
  ASSERT_TRUE(exportDocument(sampleDocument(30), path("a.pdf")));
  QProcess reader;
  reader.start("pdftotext", {"-layout", path("a.pdf"), "-"});
  ASSERT_TRUE(reader.waitForFinished()) << "pdftotext is needed";
  const QString text = QString::fromUtf8(reader.readAllStandardOutput());
  EXPECT_EQ(text.count(u'\f'), 3) << "a form feed ends each page";
  for (const char* word : {"Liste d'été", "ligne 1", "ligne 30", "Total : 465"})
    EXPECT_TRUE(text.contains(word)) << word;

  reader.start("pdfinfo", {path("a.pdf")});
  ASSERT_TRUE(reader.waitForFinished());
  const std::string info = reader.readAllStandardOutput().toStdString();
  EXPECT_THAT(info, HasSubstr("Pages:           3"));
  EXPECT_THAT(info, HasSubstr("241 x 283 pts")) << "85 x 100 mm";
}

TEST_F(ExportTest, htmlIsWellFormedAndHoldsEveryText) {
  Document document = sampleDocument(30);
  const std::vector<Item> items = document.items(0);
  const Item& word =
      *std::find_if(items.begin(), items.end(), [](const Item& item) { return item.text == "ligne 3"; });
  document.setText(0, word.word, "un \x1b signe \x01 de commande");
  ASSERT_TRUE(exportDocument(document, path("a.html")));
  QXmlStreamReader html(contents(path("a.html")));
  int pages = 0, bars = 0;
  QString text;
  while (!html.atEnd()) {
    html.readNext();
    if (html.isCharacters()) text += html.text();
    if (!html.isStartElement()) continue;
    pages += html.name() == QLatin1String("section");
    bars += html.attributes().value("class").startsWith(QLatin1String("bars"));
  }
  EXPECT_FALSE(html.hasError()) << html.errorString().toStdString();
  EXPECT_EQ(pages, 3);
  EXPECT_EQ(bars, 3);
  EXPECT_TRUE(text.contains("Liste d'été <1>"));
  EXPECT_TRUE(text.contains("ligne 30"));
}

TEST_F(ExportTest, csvKeepsColumnsAndQuotesWhatNeedsIt) {
  ASSERT_TRUE(exportDocument(sampleDocument(2), path("a.csv")));
  const QByteArray csv = contents(path("a.csv"));
  EXPECT_TRUE(csv.startsWith("\xEF\xBB\xBF"));
  EXPECT_EQ(csv.mid(3).toStdString(),
            "\"Liste d'été <1>\nd'une cafétéria\"\r\n1;ligne 1;\r\n2;ligne 2;\"dit \"\"b\"\"; c\"\r\nTotal : "
            "3\r\n");
}

TEST_F(ExportTest, pngIsAPictureForEveryPage) {
  ASSERT_TRUE(exportDocument(sampleDocument(30), path("a.png")));
  EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files), (QStringList{"a-1.png", "a-2.png", "a-3.png"}));
  const QImage page(path("a-2.png"));
  EXPECT_EQ(page.size(), QSize(643, 756));
  bool black = false;
  for (int x = 0; x < page.width() && !black; ++x) black = qGray(page.pixel(x, 700)) < 64;
  EXPECT_TRUE(black) << "the barcode at the foot";
}

TEST_F(ExportTest, whatCannotBeWrittenIsToldAndWhatIsGivenUpLeavesNothing) {
  const Document document = sampleDocument(30);
  for (const ExportFormat& format : exportFormats()) {
    SCOPED_TRACE(format.suffix);
    const QString name = QString("no/such/folder/a.") + format.suffix;
    try {
      exportDocument(document, path(name));
      ADD_FAILURE() << "it was written";
    } catch (const Error& error) {
      EXPECT_THAT(error.what(), HasSubstr("ne peut pas être écrit"));
    }
    EXPECT_FALSE(exportDocument(document, path(QString("b.") + format.suffix),
                                [](std::size_t done, std::size_t) { return done < 2; }));
  }
  EXPECT_FALSE(savePages(document, path("b.pages"), [](std::size_t, std::size_t) { return false; }));
  EXPECT_THROW(savePages(document, path("no/such/folder/b.pages")), Error);
  // The second picture cannot be written: its name is taken by a folder.
  ASSERT_TRUE(QDir(folder_.path()).mkdir("c-2.png"));
  EXPECT_THROW(exportDocument(document, path("c.png")), Error);
  EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files), QStringList());
}

TEST_F(ExportTest, quickExportsAreNamedByDocumentNumberAndMoment) {
  const QString before = QDir::currentPath();
  QDir::setCurrent(folder_.path());
  Clock::set([] { return DateTime::of(2024, 3, 9, 7, 5, 1); });
  const Document document = sampleDocument(1);
  EXPECT_EQ(quickExport(document), folder_.filePath("impressions/Essai 1 2024-03-09 07h05m01.pdf"));
  EXPECT_EQ(quickExport(document), folder_.filePath("impressions/Essai 1 2024-03-09 07h05m01 (2).pdf"));
  Clock::set({});
  QDir::setCurrent(before);
}

TEST_F(ExportTest, fourWorkstationsThatPrintInOneSecondKeepAllTheirPapers) {
  const QString before = QDir::currentPath();
  QDir::setCurrent(folder_.path());
  Clock::set([] { return DateTime::of(2024, 3, 9, 7, 5, 1); });
  const Document document = sampleDocument(1);
  std::vector<pid_t> stations;
  for (int station = 0; station < 4; ++station) {
    stations.push_back(::fork());
    for (int paper = 0; stations.back() == 0 && paper < 12; ++paper) quickExport(document);
    if (stations.back() == 0) ::_exit(0);
  }
  for (const pid_t station : stations) ::waitpid(station, nullptr, 0);
  const QDir folder(folder_.filePath("impressions"));
  EXPECT_EQ(folder.entryList(QDir::Files).size(), 48);
  for (const QString& name : folder.entryList(QDir::Files))
    EXPECT_TRUE(contents(folder.filePath(name)).startsWith("%PDF")) << name.toStdString();
  Clock::set({});
  QDir::setCurrent(before);
}

TEST_F(ExportTest, savedPagesComeBackAsTheyWere) {
  Document document = sampleDocument(30);
  document.setText(1, 0, "corrigé \x01 <&>");
  PageSetup setup = document.setup();
  setup.marginLeft = 3;
  document.setSetup(setup);
  ASSERT_TRUE(savePages(document, path("a.pages")));
  const auto again = loadPages(path("a.pages"));
  EXPECT_EQ(again->pageCount(), 3U);
  document.setText(1, 0, "corrigé \uFFFD <&>");
  EXPECT_EQ(again->dump(), document.dump());
  EXPECT_EQ(again->setup(), document.setup());
  ASSERT_TRUE(again->logo());
  EXPECT_EQ(*again->logo(), *document.logo());
  std::size_t told = 0;
  EXPECT_EQ(loadPages(path("a.pages"), [&](std::size_t, std::size_t) { return ++told < 4; }), nullptr);
  EXPECT_EQ(told, 4U) << "given up at once";
  ASSERT_TRUE(savePages(*again, path("b.pages")));
  EXPECT_EQ(contents(path("b.pages")), contents(path("a.pages")));
}

// A name typed long ago is text for whatever program opens the export.
TEST_F(ExportTest, whatASpreadsheetWouldRunIsGuarded) {
  Document document = sampleDocument(1);
  for (const auto& [word, csv, html] : {std::tuple("=cmd|'/C calc'!A0", "'=cmd|'/C calc'!A0", "&#8203;=cmd|"),
                                        {"@SUM(A1)", "'@SUM(A1)", "&#8203;@SUM"},
                                        {"-12,5", "-12,5", ">-12,5<"},
                                        {"a\x1B\u202Eb", "a\uFFFD\uFFFDb", ">a\uFFFD\uFFFDb<"}}) {
    document.setText(0, 0, word);
    ASSERT_TRUE(exportDocument(document, path("g.csv")) && exportDocument(document, path("g.html")));
    const std::string records = contents(path("g.csv")).toStdString();
    EXPECT_THAT(records, testing::HasSubstr(csv));
    EXPECT_EQ(records.find("'-12"), records.npos);
    EXPECT_THAT(contents(path("g.html")).toStdString(), testing::HasSubstr(html));
  }
}

TEST_F(ExportTest, foreignAndDamagedPageFilesAreRefused) {
  ASSERT_TRUE(savePages(sampleDocument(3), path("a.pages")));
  const QByteArray good = contents(path("a.pages"));
  const struct {
    const char* name;
    QByteArray bytes;
    const char* says;
  } files[] = {
      {"empty", "", "pages préparées"},
      {"a picture", "\x89PNG\r\n", "pages préparées"},
      {"other XML", "<html/>", "pages préparées"},
      {"another version", QByteArray(good).replace("Version=\"1\"", "Version=\"9\""), "autre version"},
      {"cut short", good.left(good.size() - 40), "abîmé"},
      {"a band that the template does not have",
       QByteArray(good).replace("Band Index=\"1\"", "Band Index=\"7\""), "abîmé"},
      {"a text too few", QByteArray(good).replace("<Text>ligne 1</Text>", ""), "abîmé"},
      {"no pages", good.left(good.indexOf("<Page>")) + "</TavolinePages>", "abîmé"},
      {"no template", QByteArray(good).replace("TfrxReport ", "TfrxRapport "), "abîmé"},
      {"a paper of nine metres", QByteArray(good).replace("PaperHeight=\"", "PaperHeight=\"9"), "abîmé"},
      {"a paper of no size", QByteArray(good).replace("<Setup ", "<Setup TopMargin=\"x\" "), "abîmé"},
  };
  for (const auto& file : files) {
    SCOPED_TRACE(file.name);
    QFile out(path("x.pages"));
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    out.write(file.bytes);
    out.close();
    try {
      loadPages(path("x.pages"));
      ADD_FAILURE() << "it was read";
    } catch (const Error& error) {
      EXPECT_THAT(error.what(), HasSubstr(file.says));
    }
  }
  EXPECT_THROW(loadPages(path("missing.pages")), Error);
}

}  // namespace
}  // namespace tavoline::report
