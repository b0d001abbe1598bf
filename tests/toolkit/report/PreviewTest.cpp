#include "toolkit/report/preview/Preview.h"

#include <QtCore/QTimer>
#include <QtPrintSupport/QPrinter>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QProgressDialog>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>

#include "data/value/Errors.h"
#include "toolkit/report/PreviewFixture.h"
#include "toolkit/report/model/DocumentFile.h"

namespace tavoline {
namespace {

using report::sampleDocument;

TEST_F(PreviewTest, pagesThroughByButtonsNumberAndKeys) {
  open(80);
  auto* number = panel_.findChild<QSpinBox*>("PageNumber");
  ASSERT_EQ(panel_.document()->pageCount(), 5U);
  EXPECT_EQ(number->maximum(), 5);
  EXPECT_FALSE(button("PriorPage")->isEnabled());
  QTest::mouseClick(button("NextPage"), Qt::LeftButton);
  EXPECT_EQ(number->value(), 2);
  QTest::mouseClick(button("LastPage"), Qt::LeftButton);
  EXPECT_EQ(number->value(), 5);
  EXPECT_FALSE(button("NextPage")->isEnabled());
  QTest::mouseClick(button("PriorPage"), Qt::LeftButton);
  EXPECT_EQ(number->value(), 4);
  number->setValue(3);
  EXPECT_EQ(pages().currentPage(), 2U);
  panel_.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&panel_));
  pages().setFocus();
  const struct {
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
    std::size_t page;
  } keys[] = {{Qt::Key_Home, Qt::ControlModifier, 0},     {Qt::Key_End, {}, 4},
              {Qt::Key_PageUp, Qt::ControlModifier, 3},   {Qt::Key_Home, {}, 0},
              {Qt::Key_PageDown, Qt::ControlModifier, 1}, {Qt::Key_PageDown, {}, 2},
              {Qt::Key_End, Qt::ControlModifier, 4}};
  for (const auto& each : keys) {
    QTest::keyClick(&pages(), each.key, each.modifiers);
    EXPECT_EQ(pages().currentPage(), each.page) << each.key;
  }
  EXPECT_EQ(button("FirstPage")->toolTip(), "Première page (Ctrl+Home)");
  EXPECT_EQ(action("Print")->toolTip(), "Imprimer (Ctrl+P)");
}

TEST_F(PreviewTest, savesAndOpensPages) {
  open(30);
  const std::string before = panel_.document()->dump();
  action("Save")->trigger();
  open(1);
  file_ += ".pages";
  action("Load")->trigger();
  EXPECT_EQ(panel_.document()->dump(), before);
  EXPECT_TRUE(shown_.empty());

  file_ = folder_.filePath("missing.pages").toStdString();
  action("Load")->trigger();
  EXPECT_EQ(shown_.size(), 1U);
  file_ = folder_.filePath("no/folder/a").toStdString();
  action("Save")->trigger();
  EXPECT_EQ(shown_.size(), 2U);
  EXPECT_EQ(panel_.document()->dump(), before) << "the preview stays";
}

TEST_F(PreviewTest, printsThroughTheDialogAndToAPdfWithoutPrinters) {
  open(30);
  int asked = 0;
  QString file = folder_.filePath("printed.pdf");
  report::PrintSystem::current() = {[] { return QStringList("Caisse"); }, [] { return QString(); },
                                    [&](QPrinter& printer, QWidget*) {
                                      ++asked;
                                      printer.setOutputFileName(file);
                                      return true;
                                    }};
  action("Print")->trigger();
  EXPECT_EQ(asked, 1);
  EXPECT_TRUE(QFile::exists(file));
  EXPECT_FALSE(
      report::print(*panel_.document(), {}, &panel_, [](std::size_t, std::size_t) { return false; }));
  EXPECT_FALSE(QFile::exists(file)) << "what was given up leaves no half of it";
  asked = 0;
  file = folder_.filePath("no/folder/printed.pdf");
  action("Print")->trigger();
  file.clear();
  action("Print")->trigger();
  EXPECT_THAT(shown_, testing::ElementsAre(testing::HasSubstr("ne peut pas commencer"),
                                           testing::HasSubstr("ne répond plus")))
      << "a file that cannot be written, and a printer that is gone when the dialog closes";
  shown_.clear();
  asked = 0;

  const QString before = QDir::currentPath();
  QDir::setCurrent(folder_.path());
  report::PrintSystem::current().printers = [] { return QStringList(); };
  action("Print")->trigger();
  action("QuickExport")->trigger();
  QDir::setCurrent(before);
  EXPECT_EQ(asked, 0);
  EXPECT_EQ(QDir(folder_.filePath("impressions")).entryList({"Essai *.pdf"}).size(), 2);
  ASSERT_EQ(shown_.size(), 2U);
  EXPECT_THAT(shown_[0], testing::HasSubstr("Aucune imprimante"));
}

TEST_F(PreviewTest, offersWhatTheTemplateAsksFor) {
  auto document = std::make_shared<report::Document>(sampleDocument(1));
  auto plain = std::make_shared<report::Template>(document->report());
  plain->previewButtons = report::ButtonPrint | report::ButtonFind;
  auto other = std::make_shared<report::Document>(plain, nullptr);
  other->append(*document);
  panel_.open({other, {}, {}, {}});
  EXPECT_TRUE(action("Print")->isVisible());
  EXPECT_TRUE(action("Find")->isVisible());
  for (const char* absent : {"Copy", "Select", "Edit", "Save", "ZoomIn", "Outline"})
    EXPECT_FALSE(action(absent)->isVisible()) << absent;
  EXPECT_FALSE(panel_.findChild<QWidget*>("Navigator")->isVisible());
  EXPECT_FALSE(panel_.findChild<QPushButton*>("ClosePreview")->isVisible())
      << "a panel of a screen is not closed";
}

// Rows for a document that takes many turns of the event loop.
struct LongBuild {
  explicit LongBuild(int count)
      : rows(report::sampleRows(count)), renderer(report::sampleTemplate(), {&rows}, {}) {}
  report::Build build() {
    return {renderer.document(), [this] { return renderer.advance(); },
            [this] { return renderer.recordsRead(); }, [this] { return renderer.recordCount(); }};
  }
  report::Rows rows;
  report::Renderer renderer;
};

TEST_F(PreviewTest, aLongDocumentGrowsWhileItIsShownAndCanBeInterrupted) {
  // However fast the machine, the work is not done before the user has had his turn.
  LongBuild work(40000);
  int steps = 0;
  report::Build unending = work.build();
  unending.advance = [&] { return ++steps > 20 || work.renderer.advance(); };
  panel_.open(std::move(unending));
  QApplication::processEvents();
  EXPECT_TRUE(panel_.building());
  EXPECT_GT(panel_.document()->pageCount(), 0U) << "the first pages are there at once";
  EXPECT_FALSE(action("Print")->isEnabled()) << "half a document is not printed";
  auto* cancel = panel_.findChild<QPushButton*>("ProgressCancel");
  ASSERT_TRUE(cancel->isVisible());
  const std::size_t before = panel_.document()->pageCount();
  QTest::mouseClick(cancel, Qt::LeftButton);
  EXPECT_FALSE(panel_.building());
  EXPECT_FALSE(cancel->isVisible());
  EXPECT_GE(panel_.document()->pageCount(), before);
  EXPECT_LT(panel_.document()->pageCount(), 2000U);
  EXPECT_TRUE(action("Print")->isEnabled());

  LongBuild whole(2000);
  panel_.open(whole.build());
  ASSERT_TRUE(QTest::qWaitFor([this] { return !panel_.building(); }, 20000));
  EXPECT_EQ(panel_.findChild<QSpinBox*>("PageNumber")->maximum(),
            static_cast<int>(panel_.document()->pageCount()));
  EXPECT_EQ(whole.renderer.recordsRead(), 2000U);
}

TEST_F(PreviewTest, aFailureWhileItGrowsLeavesWhatIsThere) {
  int steps = 0;
  LongBuild work(100);
  report::Build build = work.build();
  build.advance = [&] {
    if (++steps == 3) throw StoreError("Le fichier des données ne répond plus.");
    return work.renderer.advance();
  };
  panel_.open(std::move(build));
  ASSERT_TRUE(QTest::qWaitFor([this] { return !panel_.building(); }, 20000));
  EXPECT_EQ(shown_, std::vector<std::string>{"Le fichier des données ne répond plus."});
  EXPECT_EQ(panel_.document()->pageCount(), 2U);

  LongBuild counted(100);
  build = counted.build();
  build.advance = [] { return true; };
  build.total = []() -> std::size_t { throw StoreError("Le disque ne répond plus."); };
  panel_.open(std::move(build));
  ASSERT_TRUE(QTest::qWaitFor([this] { return !panel_.building(); }, 20000));
  EXPECT_EQ(shown_.back(), "Le disque ne répond plus.") << "counting the records fails too";
}

TEST(Build, aLongPreparationCanBeGivenUp) {
  LongBuild work(100);
  report::Build build = work.build();
  bool offered = false;
  build.advance = [&] {
    if (auto* box = qobject_cast<QProgressDialog*>(QApplication::activeModalWidget()); box && !offered) {
      offered = true;
      box->cancel();
    }
    return true;
  };
  EXPECT_FALSE(report::complete(build, nullptr));
  EXPECT_TRUE(offered);
  PreviewPanel panel;
  panel.open(build);
  EXPECT_TRUE(panel.findChild<QLabel*>("PageTotal")->text().endsWith("(interrompu)"));
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);

  LongBuild brief(100);
  build = brief.build();
  EXPECT_TRUE(report::complete(build, nullptr));
  EXPECT_EQ(brief.renderer.recordsRead(), 100U);
}

TEST(Preview, blocksUntilItIsClosed) {
  Preview preview({std::make_shared<report::Document>(sampleDocument(3)), {}, {}, {}}, {}, nullptr);
  bool wasCurrent = false, stayed = false;
  QTimer::singleShot(0, [&] {
    wasCurrent = Preview::current() == &preview;
    preview.findChild<QAction*>("Find")->trigger();
    auto* text = preview.findChild<QLineEdit*>("FindText");
    text->setText("ligne");
    QTest::keyClick(text, Qt::Key_Return);
    stayed = preview.isVisible();
    QTest::mouseClick(preview.findChild<QPushButton*>("ClosePreview"), Qt::LeftButton);
  });
  preview.run();
  EXPECT_TRUE(wasCurrent);
  EXPECT_TRUE(stayed) << "Enter looks for a text and closes nothing";
  EXPECT_EQ(Preview::current(), nullptr);
}

}  // namespace
}  // namespace tavoline
