#include <QtCore/QSignalBlocker>
#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyledItemDelegate>

#include "data/value/Errors.h"
#include "toolkit/controls/FittedText.h"
#include "toolkit/controls/Focus.h"
#include "toolkit/controls/Lookup.h"
#include "toolkit/forms/Guard.h"
#include "toolkit/theme/Theme.h"

namespace tavoline {

namespace {

constexpr int noteRole = Qt::UserRole;
constexpr int noteLetters = 13, noteEdge = 7;        // pixels
constexpr int smallestLetters = 12;                  // pixels
constexpr int airAtSides = 18, denseAirAtSides = 9;  // pixels of an entry without letters, on either side

/// An entry with a note has it beneath its text. Where entries take two lines: makes the letters smaller
/// where a word is still longer than the list is wide.
class Entries : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& view, const QModelIndex& index) const override {
    const QString note = index.data(noteRole).toString();
    if (note.isEmpty()) return QStyledItemDelegate::paint(painter, view, index);
    QStyleOptionViewItem option = view;
    initStyleOption(&option, index);
    const QString text = std::exchange(option.text, {});
    option.widget->style()->drawControl(QStyle::CE_ItemViewItem, &option, painter, option.widget);
    const bool chosen = option.state & QStyle::State_Selected;
    const QRect room = option.rect.adjusted(airAtSides, noteEdge, -airAtSides, -noteEdge);
    QFont letters = option.font;
    const auto draw = [&](const QString& words, Qt::AlignmentFlag place, QRgb colour) {
      painter->setFont(letters);
      painter->setPen(QColor(colour));
      painter->drawText(room, Qt::AlignLeft | place,
                        painter->fontMetrics().elidedText(words, Qt::ElideRight, room.width()));
    };
    painter->save();
    draw(text, Qt::AlignTop, chosen ? theme().onAccent : theme().ink);
    letters.setPixelSize(noteLetters);
    draw(note, Qt::AlignBottom, chosen ? theme().accentSoft : theme().muted);
    painter->restore();
  }

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    const auto* list = static_cast<const QListWidget*>(option->widget);
    if (!list->wordWrap()) return;
    const int air = list->property("dense").toBool() ? denseAirAtSides : airAtSides;
    const QSize room(list->viewport()->width() - 2 * air, 2 * option->fontMetrics.height());
    option->font = fitText(option->text, option->font, room, smallestLetters).font;
    option->fontMetrics = QFontMetrics(option->font);
  }
};

}  // namespace

DBLookupListBox::DBLookupListBox(QWidget* parent)
    : QListWidget(parent), Binding(this), fingers_(viewport(), FingerScroll::ByPointer) {
  setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  setItemDelegate(new Entries(this));
  connect(this, &QListWidget::itemClicked, this,
          [this](QListWidgetItem* item) { guarded([&] { chosen(std::size_t(row(item))); }); });
}

void DBLookupListBox::bind() {
  setDataSourceName(list_.listSource);
  Binding::bind();
}

// The list's own current row is no concern of the list box: only the user's choice is shown.
void DBLookupListBox::dataEvent(DataEvent event) {
  if (event == DataEvent::Rows) markStale();
}

void DBLookupListBox::pull() {
  const QSignalBlocker quiet(this);
  const int rows = int(list_.count());
  while (count() > rows) delete takeItem(count() - 1);
  while (count() < rows) addItem(QString());
  for (int row = 0; row < rows; ++row) {
    item(row)->setText(list_.text(std::size_t(row)));
    if (OnNote) item(row)->setData(noteRole, QString::fromStdString(OnNote(list_.key(std::size_t(row)))));
  }
  setCurrentRow(list_.rowOf(key_));
}

Value DBLookupListBox::KeyValue() {
  return list_.rowOf(key_) < 0 ? Value() : key_;
}

void DBLookupListBox::KeyValue(const Value& key) {
  key_ = key;
  markStale();
}

void DBLookupListBox::chosen(std::size_t row) {
  key_ = list_.key(row);
  list_.choose(row);
  markStale();
  if (OnClick) OnClick();
}

void DBLookupListBox::Choose(const Value& key) {
  const int row = list_.rowOf(key);
  if (row < 0) throw DatasetError("« " + key.text() + " » n'est pas dans la liste. Actualisez la liste.");
  chosen(std::size_t(row));
}

void DBLookupListBox::SetFocus() {
  focusControl(*this);
}

QString DBLookupListBox::heldText() {
  QString text;
  guarded([&] {
    const int row = list_.rowOf(key_);
    if (row >= 0) text = list_.text(std::size_t(row));
  });
  return text;
}

void DBLookupListBox::enterText(const QString& text) {
  guarded([&] {
    for (std::size_t row = 0; row < list_.count(); ++row) {
      if (list_.text(row) == text) return chosen(row);
    }
  });
}

void DBLookupListBox::keyPressEvent(QKeyEvent* event) {
  const int before = currentRow();
  QListWidget::keyPressEvent(event);
  if (currentRow() >= 0 && currentRow() != before) {
    guarded([this] { chosen(std::size_t(currentRow())); });
  }
}

}  // namespace tavoline
