#include "catalogue/C_articleU.h"

#include "data/DMU.h"
#include "data/schema/Schema.h"
#include "data/value/Errors.h"
#include "data/value/Text.h"
#include "shell/Entry.h"

namespace tavoline {

TC_articleF* C_articleF = nullptr;

TC_articleF::TC_articleF() : TForm("C_articleF") {
  setupUi(this);
  InsertImage->OnClick = [this] { insertImage(*DBImage1); };
  wireKeyboardPath();
  saves(DM->Article, *this, Enregistrer, {DBEdit1, DBEdit2, RzDBComboBox1, RzDBLookupComboBox1});
  const auto save = Enregistrer->OnClick;
  Enregistrer->OnClick = [this, save] {
    demandSellable();
    save();
  };
  givesUp(DM->Article, *this, Fermer, {DBEdit1, DBEdit2, RzDBComboBox1, RzDBLookupComboBox1});
  Ready();
}

// The lines of orders copy the name into a narrower column: the sale of a longer one would be refused at the
// counter.
void TC_articleF::demandSellable() {
  const int most = schema::table("relation_commande").find("article")->width;
  const std::size_t letters = characterCount(DBEdit2->Text());
  if (letters <= std::size_t(most)) return;
  throw DatasetError("La désignation a " + std::to_string(letters) +
                     " lettres, et une commande n'en prend que " + std::to_string(most) +
                     ". Raccourcissez-la, puis enregistrez.");
}

// DBEdit11 ends the path. The hops into DBEdit1, which is disabled, end in the focus error.
void TC_articleF::wireKeyboardPath() {
  const auto keys = [](auto* input, auto* back, auto* on) {
    input->OnEnter = input->OnDown = [on] { on->SetFocus(); };
    input->OnUp = [back] { back->SetFocus(); };
  };
  keys(DBEdit2, DBEdit1, RzDBLookupComboBox1);
  keys(RzDBLookupComboBox1, DBEdit2, DBEdit4);
  keys(DBEdit4, RzDBLookupComboBox1, DBEdit6);
  keys(DBEdit6, DBEdit4, DBEdit7);
  keys(DBEdit7, DBEdit6, DBEdit8);
  keys(DBEdit8, DBEdit7, DBEdit11);
  keys(RzDBComboBox1, DBEdit11, DBEdit1);
}

}  // namespace tavoline
