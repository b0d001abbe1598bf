#include "toolkit/forms/Forms.h"

#include <algorithm>

#include "data/value/Text.h"

namespace tavoline {

namespace {
std::vector<TForm*>& forms() {
  static std::vector<TForm*> list;
  return list;
}
}  // namespace

void Forms::add(TForm* form) {
  forms().push_back(form);
}

void Forms::remove(TForm* form) {
  std::erase(forms(), form);
}

TForm* Forms::find(std::string_view instanceName) {
  for (TForm* form : forms()) {
    if (sameName(form->objectName().toStdString(), instanceName)) return form;
  }
  return nullptr;
}

const std::vector<TForm*>& Forms::all() {
  return forms();
}

const TForm* Forms::screenOf(const QObject* control) {
  for (const QObject* at = control; at; at = at->parent()) {
    if (const auto* form = qobject_cast<const TForm*>(at)) return form;
  }
  return nullptr;
}

void Forms::Show(std::string_view instanceName) {
  if (TForm* form = find(instanceName)) form->Show();
}

void Forms::ShowModal(std::string_view instanceName) {
  if (TForm* form = find(instanceName)) form->ShowModal();
}

void Forms::Close(std::string_view instanceName) {
  if (TForm* form = find(instanceName)) form->Close();
}

void Forms::BindControls() {
  for (TForm* form : forms()) form->BindControls();
}

}  // namespace tavoline
