#include <QtTest/QTest>
#include <QtWidgets/QtWidgets>

#include "screens/AllScreens.h"
#include "toolkit/controls/Board.h"
#include "toolkit/controls/Keypad.h"

namespace tavoline {
namespace {

// Each screen's own keypad, or the one that stands alone, and the keyboard: both type into the input that has
// the focus, and leave it there.
TEST_F(AllScreens, KeypadAndKeyboardTypeIntoTheFocusedInput) {
  start();
  TForm* alone = Forms::find("clavierF");
  alone->Show();
  alone->move(0, 0);
  int inputs = 0, ownKeypads = 0;
  for (TForm* form : Forms::all()) {
    if (form == MenuF || form == alone) continue;
    bringUp(form);
    const auto own = visible<Keypad>(form);
    Keypad* keypad = own.empty() ? alone->findChild<Keypad*>() : own.front();
    const auto tap = [&](const char* key) {
      at.tap(keypad->findChild<QWidget*>(QStringLiteral("key") + QString::fromLatin1(key)));
    };
    for (QLineEdit* input : visible<QLineEdit>(form)) {
      if (!input->isEnabled() || input->isReadOnly() || !input->inputMask().isEmpty()) continue;
      if (qobject_cast<QAbstractSpinBox*>(input->parentWidget())) continue;  // the number of a page
      SCOPED_TRACE(form->objectName().toStdString() + "." + input->objectName().toStdString());
      auto* list = qobject_cast<QComboBox*>(input->parentWidget());
      QWidget* control = list ? static_cast<QWidget*>(list) : input;
      form->activateWindow();
      control->setFocus();
      input->clear();
      at.settle();
      tap("7");
      at.type("8");
      EXPECT_EQ(input->text(), "78");
      tap("Back");
      tap("9");
      at.type("\b5");
      EXPECT_EQ(input->text(), "75");
      EXPECT_EQ(QApplication::focusWidget(), control);
      if (!input->property("numberDue").toBool()) input->clear();
      ++inputs;
      ownKeypads += own.empty() ? 0 : 1;
    }
    form->Close();
  }
  EXPECT_GE(inputs, 30);
  EXPECT_GE(ownKeypads, 5);
}

// A mouse that raised the board would cover what it is about to press.
TEST_F(AllScreens, AFingerRaisesTheLettersAndAMouseDoesNot) {
  start();
  const BoardRaiser raiser;
  TForm* form = Forms::find("c_endroitF");
  bringUp(form);
  auto* input = form->findChild<QLineEdit*>(QStringLiteral("RzDBEdit2"));
  at.tap(input);
  EXPECT_FALSE(raiser.board());
  static QPointingDevice* const finger = QTest::createTouchDevice();
  QTest::touchEvent(input, finger).press(0, input->rect().center(), input);
  QTest::touchEvent(input, finger).release(0, input->rect().center(), input);
  ASSERT_TRUE(raiser.board());
  form->activateWindow();  // offscreen, whatever window comes is the active one
  at.settle();
  for (const char* key : {"keyb", "key⇧", "keyé", "key-"})
    at.tap(raiser.board()->findChild<QWidget*>(QString::fromUtf8(key)));
  EXPECT_EQ(input->text(), QString::fromUtf8("bÉ-"));
  form->Close();
  at.settle();
  EXPECT_FALSE(raiser.board());
}

}  // namespace
}  // namespace tavoline
