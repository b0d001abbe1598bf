// What a transcript puts together: pictures, and a screen of controls for what they do by themselves.

#include <QtGui/QImage>
#include <QtWidgets/QLayout>
#include <fstream>
#include <map>

#include "support/Session.h"
#include "toolkit/controls/Button.h"
#include "toolkit/controls/DBCheckBox.h"
#include "toolkit/controls/DBComboBox.h"
#include "toolkit/controls/DBEdit.h"
#include "toolkit/controls/DBText.h"
#include "toolkit/controls/DateEdit.h"
#include "toolkit/controls/Keypad.h"
#include "toolkit/controls/Lookup.h"

namespace tavoline {

using test::takeWord;

namespace {

template <class Control>
QWidget* made(QWidget* form) {
  return new Control(form);
}

template <class Control>
bool hears(QObject* found, std::function<void()> Control::*event, const std::function<void()>& say) {
  auto* control = dynamic_cast<Control*>(found);
  if (control) control->*event = say;
  return control != nullptr;
}

}  // namespace

void Session::make(std::string& rest) {
  static const std::map<std::string, QWidget* (*)(QWidget*)> kinds = {
      {"Button", made<Button>},
      {"DBCheckBox", made<DBCheckBox>},
      {"DBComboBox", made<DBComboBox>},
      {"DBEdit", made<DBEdit>},
      {"DBText", made<DBText>},
      {"DBLookupComboBox", made<DBLookupComboBox>},
      {"DateEdit", made<DateEdit>},
      {"DBLookupListBox", made<DBLookupListBox>},
      {"Edit", made<Edit>},
      {"Keypad", made<Keypad>}};
  TForm* form = Forms::find(form_);
  QWidget* widget = kinds.at(takeWord(rest))(form);
  widget->setObjectName(QString::fromStdString(takeWord(rest)));
  for (const std::string& word : test::words(rest)) {
    const QString name = QString::fromStdString(word).section(u'=', 0, 0);
    const QString value = QString::fromStdString(word).section(u'=', 1);
    widget->setProperty(name.toUtf8().constData(),
                        name == u"items" ? QVariant(value.split(u',')) : QVariant(value));
  }
  form->layout()->addWidget(widget);
  form->BindControls();
  form->Show();
  at.settle();
}

void Session::picture(std::string& rest) {
  const std::string file = takeWord(rest);
  if (rest.empty()) {
    std::ofstream(file, std::ios::binary) << "\x89PNG\r\n\x1a\n and nothing else";
    return;
  }
  const int width = std::stoi(takeWord(rest)), height = std::stoi(takeWord(rest));
  QImage picture(width, height, QImage::Format_RGB32);
  picture.fill(Qt::darkGreen);
  picture.save(QString::fromStdString(file));
}

void Session::hear(std::string& name) {
  QObject* found = find(name);
  const auto say = [this, name] { script_->say(name + " tells"); };
  const bool heard = hears(found, &DBEdit::OnChange, say) || hears(found, &DBComboBox::OnChange, say) ||
                     hears(found, &DBLookupComboBox::OnChange, say) || hears(found, &Edit::OnChange, say) ||
                     hears(found, &DBCheckBox::OnClick, say) ||
                     hears(found, &DBLookupListBox::OnClick, say) || hears(found, &Button::OnClick, say);
  if (!heard) throw std::runtime_error(name + " tells nothing");
}

}  // namespace tavoline
