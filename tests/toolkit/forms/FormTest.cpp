#include "data/value/Errors.h"
#include "toolkit/ToolkitFixture.h"
#include "toolkit/controls/Button.h"
#include "toolkit/controls/DBText.h"
#include "toolkit/controls/Edit.h"

#include <QtCore/QDirIterator>
#include <QtCore/QRegularExpression>
#include <QtCore/QStringListModel>
#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QListView>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

namespace tavoline {
namespace {

class FormTest : public ToolkitTest {};

TEST_F(FormTest, ShowAndCloseTellTheScreenOnlyWhenItComesAndGoes) {
  screen->Close();
  EXPECT_EQ(screen->closes, 0);
  screen->Show();
  screen->Show();
  EXPECT_TRUE(screen->Visible());
  EXPECT_EQ(screen->shows, 1);
  screen->close();  // the window system's command
  EXPECT_FALSE(screen->Visible());
  screen->Close();
  EXPECT_EQ(screen->closes, 1);
  screen->Show();
  EXPECT_EQ(screen->shows, 2);
}

TEST_F(FormTest, AModalScreenReturnsWhenItIsClosedAndKeepsTheOthersBack) {
  auto* behind = screen->add<Button>("RzBitBtn1");
  TestScreen& modal = station.create<TestScreen>();
  auto* leave = modal.add<Button>("RzBitBtn2");
  leave->OnClick = [&] { modal.Close(); };
  int behindClicks = 0;
  behind->OnClick = [&] { ++behindClicks; };
  open();
  station.during([&] { modal.ShowModal(); },
                 [&] {
                   QTest::mouseClick(screen->windowHandle(), Qt::LeftButton, {}, behind->geometry().center());
                   EXPECT_EQ(behindClicks, 0);
                   station.tap(leave);
                 });
  EXPECT_FALSE(modal.Visible());
  EXPECT_FALSE(modal.isModal());
  station.tap(behind);
  EXPECT_EQ(behindClicks, 1);
}

TEST_F(FormTest, AModalScreenThatCannotOpenIsNotLeftInTheWay) {
  struct Failing : TForm {
    Failing() : TForm("EchecF") {}
    void FormShow() override { throw StoreError("La base de données est occupée."); }
  };
  Failing& failing = station.create<Failing>();
  EXPECT_THROW(failing.ShowModal(), StoreError);
  EXPECT_FALSE(failing.Visible());
  EXPECT_FALSE(failing.isVisible());
}

TEST_F(FormTest, DockedScreensLieOneOverTheOther) {
  auto* panel = screen->add<QWidget>("RzPanel4");
  TestScreen *below = &station.create<TestScreen>(), *above = &station.create<TestScreen>();
  auto* text = below->add<DBText>("DBText1", "DataSourceEndroit", "Endoit");
  below->add<Edit>("RzEdit1");
  auto* edit = below->add<Edit>("RzEdit2");
  below->BindControls();
  open();
  for (TestScreen* form : {below, above}) {
    form->Dock(panel);
    form->Show();
    if (form == below) edit->SetFocus();
    station.settle();
  }
  EXPECT_TRUE(below->Visible());
  EXPECT_FALSE(below->isVisible());  // covered: no repaint, no focus, no reading
  EXPECT_TRUE(above->isVisible());
  EXPECT_EQ(above->geometry(), panel->contentsRect());
  DM->Endroit.Next();
  station.settle();
  EXPECT_EQ(text->text(), "Salle");
  EXPECT_EQ(text->Caption(), "Terrasse");

  screen->resize(900, 700);
  station.settle();
  EXPECT_EQ(above->geometry(), panel->contentsRect());
  above->Close();
  station.settle();
  EXPECT_TRUE(below->isVisible());
  EXPECT_EQ(below->geometry(), panel->contentsRect());
  EXPECT_EQ(text->text(), "Terrasse");
  EXPECT_TRUE(edit->hasFocus());  // where it was
  EXPECT_EQ(below->shows, 1);

  above->Dock(panel);
  above->Show();
  below->Dock(panel);  // again, as every embedding does
  below->Show();
  EXPECT_TRUE(below->isVisible());
  EXPECT_FALSE(above->isVisible());
  EXPECT_EQ(below->shows, 1);
}

TEST(FormBinding, ScreensMadeBeforeTheDataModuleAreBoundByItsCreation) {
  Workstation station;
  station.sql("insert into TVA (tva, utilisation) values (19, 'OUI')");
  auto* text = station.create<TestScreen>().add<DBText>("DBText1", "DataSourceTVA", "utilisation");
  EXPECT_EQ(text->Caption(), "");
  station.start();
  EXPECT_EQ(text->Caption(), "OUI");
}

// Wherever Qt calls: nothing of it may end the program.
TEST_F(FormTest, WhatIsThrownAnywhereIsToldInABox) {
#ifdef __SANITIZE_ADDRESS__
  const __lsan::ScopedDisabler whatQtHadBegun;  // a painter, a list of arguments: it knows no exceptions
#endif
  struct Fails {
    const char* how = nullptr;
    [[noreturn]] void now() const { throw StoreError(std::string("Le disque est plein : ") + how); }
  };
  struct Handler : QWidget, Fails {
    using QWidget::QWidget;
    bool event(QEvent* event) override {
      return event->type() == QEvent::User ? (now(), true) : QWidget::event(event);
    }
  };
  struct Filter : QObject, Fails {
    bool eventFilter(QObject*, QEvent* event) override {
      return event->type() == QEvent::User && (now(), true);
    }
  };
  struct Painted : QWidget, Fails {
    using QWidget::QWidget;
    void paintEvent(QPaintEvent*) override {
      if (how) now();
    }
  };
  struct Model : QStringListModel, Fails {
    QVariant data(const QModelIndex& index, int role) const override {
      if (how) now();
      return QStringListModel::data(index, role);
    }
  };
  auto* button = screen->add<QPushButton>("slot");
  auto* handler = screen->add<Handler>("handler");
  auto* filtered = screen->add<QWidget>("filtered");
  auto* painted = screen->add<Painted>("painted");
  auto* list = screen->add<QListView>("list");
  painted->setMinimumHeight(20);
  Filter filter;
  filtered->installEventFilter(&filter);
  Model model;
  model.setStringList({"un"});
  list->setModel(&model);
  open();
  const auto post = [](QObject* to) { QCoreApplication::postEvent(to, new QEvent(QEvent::User)); };
  const struct {
    const char* how;
    std::function<void(const char* how)> act;
  } kinds[] = {
      {"timer", [&](const char* how) { QTimer::singleShot(0, screen, [how] { Fails{how}.now(); }); }},
      {"slot",
       [&](const char* how) {
         QObject::connect(button, &QPushButton::clicked, screen, [how] { Fails{how}.now(); });
         QTest::mouseClick(button, Qt::LeftButton);
       }},
      {"call",
       [&](const char* how) {
         QMetaObject::invokeMethod(
             screen, [how] { Fails{how}.now(); }, Qt::QueuedConnection);
       }},
      {"event", [&](const char* how) { post(handler), handler->how = how; }},
      {"filter", [&](const char* how) { post(filtered), filter.how = how; }},
      {"painting", [&](const char* how) { painted->update(), painted->how = how; }},
      {"model", [&](const char* how) { list->viewport()->update(), model.how = how; }},
  };
  for (const auto& kind : kinds) {
    station.answers({{std::string("Le disque est plein : ") + kind.how}});
    kind.act(kind.how);
    station.settle();
  }
  painted->how = model.how = nullptr;
}

class RealBoxTest : public ToolkitTest {
 protected:
  static QMessageBox* box() { return qobject_cast<QMessageBox*>(QApplication::activeModalWidget()); }
};

TEST_F(RealBoxTest, AMessageIsAPlainBoxWithOneButton) {
  open();
  station.during([] { Messages::real().show("STOCK=0", {}); },
                 [&] {
                   ASSERT_TRUE(box());
                   EXPECT_EQ(box()->text(), "STOCK=0");
                   EXPECT_EQ(box()->windowTitle(), "Tavoline");
                   EXPECT_EQ(box()->buttons().size(), 1);
                   QTest::keyClick(box(), Qt::Key_Return);
                 });
}

// The told sentences, as they stand in the sources, and one as long as any of the store's.
QStringList toldSentences() {
  const QRegularExpression told(
      QStringLiteral(R"re((?:ShowMessage|Confirm|Error)\((?:\w+, )?((?:"(?:[^"\\]|\\.)+"\s*)+))re"));
  QStringList sentences = {QStringLiteral(
      "Le fichier des données « /srv/caisse/partage/BDD.mdb » est occupé par un autre poste depuis "
      "trop longtemps ; l'opération en cours n'a pas été faite. Attendez un instant, puis "
      "recommencez ; si cela se répète, prévenez le service technique.")};
  QDirIterator sources(QStringLiteral(TAVOLINE_SOURCES), {QStringLiteral("*.cpp")}, QDir::Files,
                       QDirIterator::Subdirectories);
  while (sources.hasNext()) {
    QFile file(sources.next());
    if (!file.open(QIODevice::ReadOnly)) continue;
    auto found = told.globalMatch(QString::fromUtf8(file.readAll()));
    while (found.hasNext()) {
      QString text = found.next().captured(1);
      sentences << text.remove(QRegularExpression(QStringLiteral("\"\\s*\"?")));
    }
  }
  sentences.removeDuplicates();
  return sentences;
}

TEST_F(RealBoxTest, EverySentenceIsShownWholeAtEverySize) {
  open();
  const QStringList sentences = toldSentences();
  ASSERT_GT(sentences.size(), 30);
  const QString sheet = qApp->styleSheet();
  for (const double scale : {1.0, 1.4, 2.0}) {
    qApp->setStyleSheet(
        sheet + QStringLiteral("QMessageBox QLabel { font-size: %1px; }").arg(18 * scale) +
        QStringLiteral("QMessageBox QLabel#qt_msgbox_label { font-size: %1px; }").arg(18 * scale));
    for (const QString& sentence : sentences) {
      station.during([&] { Messages::real().show(sentence.toStdString(), "détail"); },
                     [&] {
                       ASSERT_TRUE(box());
                       const auto* label = box()->findChild<QLabel*>("qt_msgbox_label");
                       const QRect room = label->contentsRect();
                       const QRect needed = label->fontMetrics().boundingRect(
                           QRect(0, 0, room.width(), 10000), Qt::TextWordWrap, sentence);
                       EXPECT_EQ(box()->text(), sentence);
                       EXPECT_GE(room.width(), needed.width()) << sentence.toStdString() << scale;
                       EXPECT_GE(room.height(), needed.height()) << sentence.toStdString() << scale;
                       EXPECT_LE(box()->width(), box()->screen()->availableSize().width());
                       EXPECT_LE(box()->height(), box()->screen()->availableSize().height());
                       box()->button(QMessageBox::Ok)->click();
                     });
    }
  }
  qApp->setStyleSheet(sheet);
}

TEST_F(RealBoxTest, AQuestionIsAnsweredInFrenchAndClosingItIsNo) {
  open();
  const struct {
    const char* what;
    std::function<void(QMessageBox&)> act;
    bool yes;
  } cases[] = {
      {"Oui", [](QMessageBox& b) { b.button(QMessageBox::Yes)->click(); }, true},
      {"Non", [](QMessageBox& b) { b.button(QMessageBox::No)->click(); }, false},
      {"close", [](QMessageBox& b) { b.close(); }, false},
      {"Esc", [](QMessageBox& b) { QTest::keyClick(&b, Qt::Key_Escape); }, false},
  };
  for (const auto& each : cases) {
    bool answer = !each.yes;
    station.during(
        [&] { answer = Messages::real().confirm("voulez-vous vraiment supprimer", "confirmation"); },
        [&] {
          ASSERT_TRUE(box());
          EXPECT_EQ(box()->windowTitle(), "confirmation");
          EXPECT_EQ(box()->button(QMessageBox::Yes)->text(), "Oui");
          EXPECT_EQ(box()->button(QMessageBox::No)->text(), "Non");
          each.act(*box());
        });
    EXPECT_EQ(answer, each.yes) << each.what;
  }
}

}  // namespace
}  // namespace tavoline
