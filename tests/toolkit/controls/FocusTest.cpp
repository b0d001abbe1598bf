#include "data/value/Errors.h"
#include "toolkit/ToolkitFixture.h"
#include "toolkit/controls/Button.h"
#include "toolkit/controls/DBEdit.h"
#include "toolkit/controls/Keypad.h"

namespace tavoline {
namespace {

class FocusTest : public ToolkitTest {
 protected:
  Edit* first = screen->add<Edit>("RzEdit1");
  Edit* second = screen->add<Edit>("RzEdit2");
};

TEST_F(FocusTest, AControlThatCannotTakeTheFocusSaysSo) {
  EXPECT_NO_THROW((second->setEnabled(false), second->SetFocus()));  // its screen is not there yet
  open();
  EXPECT_THROW(second->SetFocus(), FocusError);
  second->setEnabled(true);
  second->setVisible(false);
  EXPECT_THROW(second->SetFocus(), FocusError);
  second->setVisible(true);
  second->SetFocus();
  EXPECT_TRUE(second->hasFocus());

  first->OnEnter = [this] { second->SetFocus(); };
  second->setEnabled(false);
  first->SetFocus();
  station.answers({{testing::HasSubstr("RzEdit2")}});
  station.type("\n");
  EXPECT_TRUE(first->hasFocus());
}

TEST_F(FocusTest, TheKeyboardPathRunsItsHandlers) {
  std::string path;
  first->OnEnter = [&] { path += "enter "; };
  first->OnDown = [&] { path += "down "; };
  first->OnUp = [&] { path += "up "; };
  second->OnExit = [&] { path += "exit "; };
  open();
  second->SetFocus();
  first->SetFocus();
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Down, Qt::Key_Up}) station.press(key);
  EXPECT_EQ(path, "exit enter enter down up ");
}

TEST_F(FocusTest, TheKeypadTypesIntoWhatHasTheFocusAndLeavesItThere) {
  auto* keypad = screen->add<Keypad>("AdvTouchKeyboard1");
  bool entered = false;
  first->OnEnter = [&] { entered = true; };
  open();
  first->SetFocus();
  const struct {
    const char* key;
    const char* text;
  } keys[] = {{"7", "7"},           {"8", "78"},           {"9", "789"},           {"/", "789/"},
              {"*", "789/*"},       {"-", "789/*-"},       {"+", "789/*-+"},       {"Back", "789/*-"},
              {".", "789/*-."},     {"4", "789/*-.4"},     {"5", "789/*-.45"},     {"6", "789/*-.456"},
              {"1", "789/*-.4561"}, {"2", "789/*-.45612"}, {"3", "789/*-.456123"}, {"0", "789/*-.4561230"}};
  for (const auto& each : keys) {
    auto* key = keypad->findChild<QWidget*>(QStringLiteral("key") + QString::fromUtf8(each.key));
    ASSERT_TRUE(key) << each.key;
    EXPECT_GE(key->height(), 48) << each.key;
    station.tap(key);
    EXPECT_EQ(first->Text(), each.text);
  }
  EXPECT_FALSE(entered);
  station.tap(keypad->findChild<QWidget*>(QStringLiteral("keyEnter")));
  EXPECT_TRUE(entered);
  EXPECT_TRUE(first->hasFocus());
}

TEST_F(FocusTest, TypingIsRaisedToUpperCaseWhereTheInputAsksForIt) {
  first->setUpperCase(true);
  std::string seen;
  first->OnChange = [&] { seen += first->Text() + " "; };
  open();
  first->SetFocus();
  station.type("thé");
  EXPECT_EQ(seen, "T TH THÉ ");
}

TEST_F(FocusTest, ReturnAndSpacePressAFocusedButtonAndCodePressesADisabledOne) {
  auto* button = screen->add<Button>("RzBitBtn1");
  int clicks = 0;
  button->OnClick = [&] { ++clicks; };
  open();
  button->SetFocus();
  station.press(Qt::Key_Return);
  station.press(Qt::Key_Space);
  EXPECT_EQ(clicks, 2);
  button->setEnabled(false);
  button->Click();
  EXPECT_EQ(clicks, 3);
}

TEST_F(FocusTest, AFailureEndsTheHandlerInABoxAndTheCallerByCode) {
  auto* button = screen->add<Button>("RzBitBtn1");
  open();
  first->OnChange = [] { throw ConversionError("« x » n'est pas un nombre."); };
  bool went = false;
  button->OnClick = [&] {
    first->Text("x");
    went = true;
  };
  EXPECT_THROW(button->Click(), ConversionError);
  EXPECT_THROW(first->Text(""), ConversionError);
  station.answers({{"« x » n'est pas un nombre."}});
  station.tap(button);
  EXPECT_FALSE(went);
  station.answers({{"« x » n'est pas un nombre."}});
  first->SetFocus();
  station.type("y");
}

}  // namespace
}  // namespace tavoline
