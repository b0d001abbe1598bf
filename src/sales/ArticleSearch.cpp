#include "sales/ArticleSearch.h"

#include <QtGui/QKeyEvent>
#include <QtWidgets/QAbstractSpinBox>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>
#include <algorithm>

#include "data/DMU.h"
#include "data/dataset/ReadRows.h"
#include "toolkit/forms/Guard.h"

namespace tavoline {

namespace {

constexpr const char* kAll =
    "SELECT article.code_barre, article.designation_article, article.id_categorie FROM article order by "
    "article.code_barre";

// Letters alone, small and without their accents.
QString folded(const QString& text) {
  QString plain;
  for (const QChar sign : text.normalized(QString::NormalizationForm_D))
    if (sign.category() != QChar::Mark_NonSpacing) plain += sign.toLower();
  return plain;
}

// The figures that were meant where a scanner, or a hand without the Shift key, types on an AZERTY keyboard.
QString asFigures(QString text) {
  static const QString row = QString::fromUtf8("à&é\"'(-è_ç");
  for (QChar& sign : text)
    if (const qsizetype figure = row.indexOf(sign.toLower()); figure >= 0) sign = QChar(u'0' + int(figure));
  return text;
}

// How well a designation answers: 0 at its beginning, 1 at the beginning of a word, 2 within one; 3 not at
// all.
int distance(const QString& designation, const QString& sought) {
  const qsizetype at = designation.indexOf(sought);
  if (at <= 0) return at < 0 ? 3 : 0;
  return designation.contains(QLatin1Char(' ') + sought) ? 1 : 2;
}

}  // namespace

ArticleSearch::ArticleSearch(Edit* input, QWidget* screen) : QObject(input), input_(input), screen_(screen) {
  input->OnChange = [this] { changed(); };
  input->OnEnter = [this] { taken(); };
  qApp->installEventFilter(this);
}

void ArticleSearch::Clear() {
  input_->Red(false);
  input_->Text("");
}

void ArticleSearch::changed() {
  const QString text = input_->text().trimmed();
  if (text.isEmpty()) articles_.clear();
  const Article* found = text.isEmpty() ? nullptr : find(text);
  input_->Red(!text.isEmpty() && !found);
  const auto code = found ? std::optional(found->code) : std::nullopt;
  if (std::exchange(found_, code) != code && OnFound) OnFound(found);
}

const ArticleSearch::Article* ArticleSearch::find(const QString& text) {
  if (articles_.empty())
    for (const auto& row : readRows(DM->store(), kAll))
      articles_.push_back(
          {row[0].text(), row[1].text(), row[2], folded(QString::fromStdString(row[1].text()))});
  const auto withCode = [this](const std::string& code) -> const Article* {
    const auto found = std::ranges::find(articles_, code, &Article::code);
    return found == articles_.end() ? nullptr : &*found;
  };
  if (const Article* exact = withCode(text.toStdString())) return exact;
  const QString sought = folded(text);
  const auto best = std::ranges::min_element(
      articles_, {}, [&](const Article& article) { return distance(article.folded, sought); });
  if (best != articles_.end() && distance(best->folded, sought) < 3) return &*best;
  return withCode(asFigures(text).toStdString());
}

void ArticleSearch::taken() {
  if (input_->text().trimmed().isEmpty()) return;
  const auto found = std::ranges::find_if(
      articles_, [this](const Article& article) { return found_ && article.code == *found_; });
  if (found == articles_.end()) {
    QApplication::beep();
    return input_->selectAll();
  }
  const Article article = *found;
  Clear();
  if (OnTaken) OnTaken(article);
}

bool ArticleSearch::belongsHere(const QObject* watched) const {
  if (!watched->isWidgetType() || !screen_->isVisible() || !screen_->isActiveWindow()) return false;
  if (QApplication::activeModalWidget() || QApplication::activePopupWidget()) return false;
  const auto* widget = static_cast<const QWidget*>(watched);
  if (widget->window() != screen_->window()) return false;
  return !qobject_cast<const QLineEdit*>(widget) && !qobject_cast<const QAbstractSpinBox*>(widget);
}

/// A blank, Return and the like belong to what has the focus until something is sought.
bool ArticleSearch::takes(const QKeyEvent& key) const {
  if (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) return false;
  const bool begun = !input_->text().isEmpty();
  switch (key.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Backspace:
    case Qt::Key_Space:
    case Qt::Key_Escape:
      return begun;
    default:
      return !key.text().isEmpty() && key.text().front().isPrint();
  }
}

bool ArticleSearch::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress || !belongsHere(watched)) return false;
  auto* key = static_cast<QKeyEvent*>(event);
  if (!takes(*key)) return false;
  if (key->key() == Qt::Key_Escape)
    guarded([this] { Clear(); });
  else
    QCoreApplication::sendEvent(input_, key);
  key->accept();
  return true;
}

}  // namespace tavoline
