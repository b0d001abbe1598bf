#include "toolkit/ToolkitFixture.h"
#include "toolkit/controls/Button.h"
#include "toolkit/controls/DBEdit.h"
#include "toolkit/controls/DBText.h"

namespace tavoline {
namespace {

class BoundTextTest : public ToolkitTest {};

TEST_F(BoundTextTest, ACaptionIsPulledAtThatMomentHiddenOrNot) {
  auto* shown = screen->add<DBText>("DBText1", "DataSourceEndroit", "Endoit");
  auto* hidden = screen->add<DBText>("DBText2", "DataSourceEndroit", "endoit");
  hidden->setVisible(false);
  open();
  DM->Endroit.Last();
  for (DBText* text : {shown, hidden}) {
    EXPECT_EQ(text->property("text").toString(), "Étage") << text->objectName().toStdString();
    EXPECT_EQ(text->Caption(), "Étage");
  }
  DM->Endroit.First();
  EXPECT_EQ(hidden->Caption(), "Salle");
  station.settle();
  EXPECT_EQ(shown->text(), "Salle");  // painted by itself
}

TEST_F(BoundTextTest, AnAmountTooLongForItsInputIsWrittenSmaller) {
  auto* input = screen->add<DBEdit>("DBEdit1", "DataSourceCaisse", "solde");
  input->setAlignment(Qt::AlignRight);
  input->setFixedWidth(100);
  open();
  const auto letters = [&](const char* amount) {
    input->Text(amount);
    station.settle();
    EXPECT_LT(input->fontMetrics().horizontalAdvance(input->text()), input->width() - 20) << amount;
    return input->fontInfo().pixelSize();
  };
  const int usual = letters("12");
  EXPECT_LT(letters("123456789,75"), usual);
  EXPECT_EQ(letters("12"), usual);
}

TEST_F(BoundTextTest, AFigureIsNeverCut) {
  station.sql("update caisse set solde = 1234567.75");
  DM->Caisse.Reopen();
  auto* total = screen->add<DBText>("DBText1", "DataSourceCaisse", "solde");
  auto* name = screen->add<Label>("Label1");
  name->Caption("Comptoir de la terrasse");
  for (Label* label : {static_cast<Label*>(total), name}) {
    label->setStyleSheet("font-size: 44px");
    label->setFixedWidth(90);
    label->setAlignment(Qt::AlignRight);
  }
  open();
  const auto inkAtLeft = [](Label& label) {
    const QImage picture = label.grab().toImage();
    for (int y = 0; y < picture.height(); ++y)
      if (picture.pixel(0, y) != picture.pixel(0, 0)) return true;
    return false;
  };
  EXPECT_EQ(total->Caption(), "1234567,75");
  EXPECT_FALSE(inkAtLeft(*total));
  EXPECT_TRUE(inkAtLeft(*name)) << "a text that is no figure shows what a cut looks like";
}

TEST_F(BoundTextTest, AHandlerOfManyStepsPullsOnce) {
  struct Counting : DBText {
    using DBText::DBText;
    void pull() override {
      ++pulls;
      DBText::pull();
    }
    int pulls = 0;
  };
  auto* text = screen->add<Counting>("DBText1", "DataSourceEndroit", "Endoit");
  open();
  text->pulls = 0;
  for (int step = 0; step < 20; ++step)
    DM->Endroit.FilterBy("id_endroit='" + std::to_string(step % 3 + 1) + "'");
  EXPECT_EQ(text->pulls, 0);
  station.settle();
  EXPECT_EQ(text->pulls, 1);
  text->setVisible(false);
  DM->Endroit.Filtered(false);
  station.settle();
  EXPECT_EQ(text->pulls, 1);  // nobody sees it
  text->setVisible(true);
  station.settle();
  EXPECT_EQ(text->pulls, 2);
}

// Ink left and right of the middle of a control, in columns that are not background.
std::pair<int, int> margins(QWidget& control) {
  const QImage picture = control.grab().toImage();
  const QRgb ground = picture.pixel(picture.width() / 2, 8);
  int first = picture.width(), last = 0;
  for (int x = 8; x < picture.width() - 8; ++x) {
    for (int y = 8; y < picture.height() - 8; ++y) {
      if (picture.pixel(x, y) == ground) continue;
      first = std::min(first, x);
      last = std::max(last, x);
    }
  }
  return {first, picture.width() - 1 - last};
}

TEST_F(BoundTextTest, BlanksAtTheEndsAreHeldAndNotDrawn) {
  auto* button = screen->add<Button>("RzBitBtn1");
  auto* label = screen->add<Label>("RzLabel1");
  label->setAlignment(Qt::AlignCenter);
  label->setMinimumHeight(40);
  open();
  button->Caption("Annuler             ");
  label->Caption("Annuler             ");
  for (QWidget* control : {static_cast<QWidget*>(button), static_cast<QWidget*>(label)}) {
    EXPECT_EQ(control->property("text").toString(), "Annuler             ");
    const auto [left, right] = margins(*control);
    EXPECT_NEAR(left, right, 4) << control->objectName().toStdString();
  }
  EXPECT_EQ(button->Caption(), "Annuler             ");
  const int wide = button->sizeHint().width();
  button->Caption("Annuler");
  EXPECT_NEAR(button->sizeHint().width(), wide, 4);
}

}  // namespace
}  // namespace tavoline
