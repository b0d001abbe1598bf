#include "help/BookKey.h"

#include <QtGui/QKeyEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenuBar>
#include <utility>

#include "help/Book.h"
#include "shell/MenuU.h"
#include "toolkit/controls/Button.h"
#include "toolkit/forms/Guard.h"

namespace tavoline {

namespace {

constexpr std::pair<std::string_view, const char*> kPages[] = {
    {"LoginF", "session"},
    {"TVAF", "tva"},
    {"liste_endroitF", "salle"},
    {"c_endroitF", "salle"},
    {"liste_tableF", "salle"},
    {"C_tableF", "salle"},
    {"Liste_TypeF", "articles"},
    {"Type_produitF", "articles"},
    {"Liste_produitF", "articles"},
    {"C_articleF", "articles"},
    {"Configuration_utlisateurF", "personnel"},
    {"utilisateurFF", "personnel"},
    {"liste_caisseF", "caisses"},
    {"C_caisseF", "caisses"},
    {"liste_aff_caisseF", "caisses"},
    {"Aff_caisseF", "caisses"},
    {"acc_caisseF", "session"},
    {"commandeF", "commande"},
    {"Commande_avnF", "commande"},
    {"qteF", "commande"},
    {"champsF", "encaisser"},
    {"RenduF", "encaisser"},
    {"liste_commandeF", "historique"},
    {"fac_clF", "historique"},
    {"liste_ClientF", "historique"},
    {"C_clientF", "historique"},
    {"liste_depenceF", "depenses"},
    {"C_depenceF", "depenses"},
    {"liste_caiseF", "cloture"},
    {"caiseF", "cloture"},
    {"comptageF", "cloture"},
    {"Liste_fournisseurF", "achats"},
    {"C_fournisseurF", "achats"},
    {"liste_facture_achatF", "achats"},
    {"c_facture_achatF", "achats"},
    {"MontantF", "achats"},
    {"statF", "mois"},
    {"BestF", "mois"},
};

const TForm* screenAround(const QWidget* at) {
  while (at && !qobject_cast<const TForm*>(at)) at = at->parentWidget();
  return static_cast<const TForm*>(at);
}

// A window over the menu, or else what the menu's work area shows.
const TForm* screenInFront() {
  const QWidget* window = QApplication::activeModalWidget();
  if (!window) window = QApplication::activeWindow();
  const TForm* front = screenAround(window);
  if (front && front != MenuF) return front;
  return screenAround(MenuF->RzPanel4->childAt(MenuF->RzPanel4->rect().center()));
}

}  // namespace

const char* pageOf(std::string_view screen) {
  for (const auto& [name, page] : kPages)
    if (name == screen) return page;
  return "index";
}

BookKey::BookKey() {
  QCoreApplication::instance()->installEventFilter(this);
  offerIn(MenuF->MainMenu1);
}

BookKey::~BookKey() = default;

void BookKey::offerIn(QMenuBar* bar) {
  auto* button = new Button(bar);
  button->setObjectName(QStringLiteral("OuvrirLivre"));
  button->Caption("Aide");
  button->setToolTip(QStringLiteral("Ouvrir le livre à la page de cet écran (F1)"));
  button->setIcon(QIcon::fromTheme(QStringLiteral("help-contents")));
  button->setProperty("kind", "link");
  button->setFocusPolicy(Qt::NoFocus);
  button->OnClick = [this] { Shown(); };
  bar->setCornerWidget(button);
  button->show();
}

Book& BookKey::Shown() {
  while (QWidget* popup = QApplication::activePopupWidget()) popup->close();
  const TForm* front = screenInFront();
  const QString page = QString::fromUtf8(front ? pageOf(front->objectName().toStdString()) : "index");
  if (!book_) book_ = std::make_unique<Book>();
  book_->Open(page);
  return *book_;
}

bool BookKey::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return false;
  const auto* key = static_cast<QKeyEvent*>(event);
  if (key->key() != Qt::Key_F1 || key->modifiers() != Qt::NoModifier)
    return QObject::eventFilter(watched, event);
  if (!key->isAutoRepeat()) guarded([this] { Shown(); });
  return true;
}

}  // namespace tavoline
