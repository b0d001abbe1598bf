#pragma once

#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "data/value/Value.h"
#include "toolkit/controls/Button.h"
#include "toolkit/forms/TForm.h"

namespace tavoline {

class Dataset;
class DBImage;
class DBText;

/// The gesture "list and entry": the list starts an Insert or an Edit and opens the entry screen, the menu's
/// column of buttons is disabled meanwhile, and the entry screen saves or cancels. What every such pair
/// shares stands here; a pair's own code is the sentences that are its own.

/// Shows a screen in the main area, over what is there.
void showInMainArea(TForm& screen);
/// Disables the menu's column of buttons: an entry is open.
void beginEntry();
/// True if the entry is open on a row that is not saved yet: it comes to the front as it was left.
bool backToEntry(TForm& entry, const Dataset& rows);
/// Closes the entry screen, then enables the menu's column of buttons again.
void endEntry(TForm& entry);
/// Saves what the list began, an insert as well as an edit: Edit, Post. If the store refuses, throws and the
/// entry stays open with what was typed.
void saveEntry(Dataset& rows);

/// An input of an entry screen: any control that answers Text() and can be painted with Red().
class EntryInput {
 public:
  template <class Control>
  EntryInput(Control* control)
      : text_([control] { return control->Text(); }), red_([control](bool on) { control->Red(on); }) {}

  bool empty() const { return text_().empty(); }
  void Red(bool on) const { red_(on); }

 private:
  std::function<std::string()> text_;
  std::function<void(bool)> red_;
};
using EntryInputs = std::vector<EntryInput>;

/// Paints the inputs red, or puts their own colours back.
void paintRed(const EntryInputs& inputs, bool on);
/// True if every input has a text; blanks count as one. Otherwise shows the message, paints all of them red,
/// those that are filled too, and is false.
bool filledIn(const EntryInputs& inputs, std::string_view message);
/// The same, and puts their own colours back if it is true.
bool mandatory(const EntryInputs& inputs,
               std::string_view message = "Saisissez le code de l'élément en cours");

/// Makes the entry's "Enregistrer" save once its mandatory inputs are filled, and end the entry.
void saves(Dataset& rows, TForm& entry, Button* Enregistrer, const EntryInputs& mandatories);
/// Makes the entry's "Fermer" drop what was typed, put the colours of `painted` back, and end the entry.
void givesUp(Dataset& rows, TForm& entry, Button* Fermer, const EntryInputs& painted = {});

/// Says that the row which a screen began is no more: "Actualiser" drops it and goes to another one, which
/// must not take its place. `begun` is the subject of the sentence ("La dépense commencée"), `leave` the
/// caption of the button that gives the screen up.
void sayDropped(std::string_view begun, std::string_view leave);

/// The key of a row about to be inserted: the number that `highest` shows plus one, 1 where it shows nothing.
/// The aggregate behind it is to be reopened before.
Value nextNumber(DBText& highest);
/// Throws ConversionError, `what` being told, for a value that is no number: nothing is to be computed with
/// it or kept.
void demandNumber(const Value& value, const std::string& what);

/// Deletes the current row once the user has agreed; asks nothing and does nothing at Eof.
void deleteOnConsent(Dataset& rows);
/// Makes the list's "Supprimer" do that.
void deletes(Dataset& rows, Button* Supprimer);
/// Makes the list's "Quitter" cancel what is pending and close the list.
void quits(Dataset& rows, TForm& list, Button* Quitter);
/// Runs another statement: Close, the text, Open.
void runQuery(Dataset& rows, std::string statement);
/// Filters by exact equality of the fields that have a value; the pieces are joined without a blank. Nothing
/// where both values are empty.
void filterByEither(Dataset& rows, std::string_view field, std::string_view value, std::string_view field2,
                    std::string_view value2);

/// Makes a button move the current row: moves(Premier, DM->Table_, &Dataset::Prior).
void moves(Button* button, Dataset& rows, void (Dataset::*step)());
/// Makes the four buttons move to the first, previous, next and last row.
void navigates(Dataset& rows, Button* first, Button* prior, Button* next, Button* last);

/// "Insert Image": asks for a picture file and puts it into the control's field, by way of the clipboard,
/// whose earlier content is lost. A broken file is refused with a sentence and changes nothing.
void insertImage(DBImage& image);

}  // namespace tavoline
