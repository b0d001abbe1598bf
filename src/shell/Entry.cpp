#include "shell/Entry.h"

#include <algorithm>

#include "data/dataset/Dataset.h"
#include "data/value/Errors.h"
#include "data/value/Text.h"
#include "shell/MenuU.h"
#include "toolkit/controls/DBImage.h"
#include "toolkit/controls/DBText.h"
#include "toolkit/forms/Messages.h"

namespace tavoline {

void showInMainArea(TForm& screen) {
  screen.Dock(MenuF->RzPanel4);
  screen.Show();
}

void beginEntry() {
  MenuF->RzGroupBar2->setEnabled(false);
}

bool backToEntry(TForm& entry, const Dataset& rows) {
  const bool pending = rows.State() == DatasetState::Insert || rows.State() == DatasetState::Edit;
  if (!entry.Visible() || !pending) return false;
  entry.Show();
  return true;
}

void endEntry(TForm& entry) {
  entry.Close();
  MenuF->RzGroupBar2->setEnabled(true);
}

void saveEntry(Dataset& rows) {
  rows.Edit();
  rows.Post();
}

void paintRed(const EntryInputs& inputs, bool on) {
  for (const EntryInput& input : inputs) input.Red(on);
}

bool filledIn(const EntryInputs& inputs, std::string_view message) {
  if (std::none_of(inputs.begin(), inputs.end(), [](const EntryInput& i) { return i.empty(); })) return true;
  ShowMessage(message);
  paintRed(inputs, true);
  return false;
}

bool mandatory(const EntryInputs& inputs, std::string_view message) {
  if (!filledIn(inputs, message)) return false;
  paintRed(inputs, false);
  return true;
}

void demandNumber(const Value& value, const std::string& what) {
  if (value.isNull())
    throw ConversionError("Il manque un nombre : " + what + " est vide. Rien n'est enregistré.");
}

void sayDropped(std::string_view begun, std::string_view leave) {
  ShowMessage(std::string(begun) +
              " n'est plus là : « Actualiser » l'a abandonnée. Rien n'a été enregistré. Quittez par « " +
              std::string(leave) + " », puis recommencez.");
}

void deleteOnConsent(Dataset& rows) {
  if (rows.Eof()) return;
  if (ConfirmDeletion()) rows.Delete();
}

void saves(Dataset& rows, TForm& entry, Button* Enregistrer, const EntryInputs& mandatories) {
  Enregistrer->OnClick = [&rows, &entry, mandatories] {
    if (!mandatory(mandatories)) return;
    saveEntry(rows);
    endEntry(entry);
  };
}

void givesUp(Dataset& rows, TForm& entry, Button* Fermer, const EntryInputs& painted) {
  Fermer->OnClick = [&rows, &entry, painted] {
    rows.Cancel();
    paintRed(painted, false);
    endEntry(entry);
  };
}

Value nextNumber(DBText& highest) {
  const std::string shown = highest.Caption();
  return shown.empty() ? Value(1) : Value(Value(shown).toInteger() + 1);
}

void deletes(Dataset& rows, Button* Supprimer) {
  Supprimer->OnClick = [&rows] { deleteOnConsent(rows); };
}

void quits(Dataset& rows, TForm& list, Button* Quitter) {
  Quitter->OnClick = [&rows, &list] {
    rows.Cancel();
    list.Close();
  };
}

void runQuery(Dataset& rows, std::string statement) {
  rows.Close();
  rows.SQL(std::move(statement));
  rows.Open();
}

void filterByEither(Dataset& rows, std::string_view field, std::string_view value, std::string_view field2,
                    std::string_view value2) {
  std::string filter;
  const auto piece = [&](std::string_view name, std::string_view wanted) {
    if (wanted.empty()) return;
    filter += (filter.empty() ? "" : "and ") + std::string(name) + "=" + inQuotes(wanted);
  };
  piece(field, value);
  piece(field2, value2);
  if (!filter.empty()) rows.FilterBy(filter);
}

void moves(Button* button, Dataset& rows, void (Dataset::*step)()) {
  button->OnClick = [&rows, step] { (rows.*step)(); };
}

void navigates(Dataset& rows, Button* first, Button* prior, Button* next, Button* last) {
  moves(first, rows, &Dataset::First);
  moves(prior, rows, &Dataset::Prior);
  moves(next, rows, &Dataset::Next);
  moves(last, rows, &Dataset::Last);
}

void insertImage(DBImage& image) {
  const std::string file = Messages::current().openPicture();
  if (!file.empty()) image.LoadFromFile(file);
}

}  // namespace tavoline
