// What the steps of a session tell of screens, datasets and the store.

#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>

#include "support/Session.h"
#include "toolkit/controls/FlowPanel.h"
#include "toolkit/report/output/ExportText.h"
#include "toolkit/report/preview/Preview.h"

namespace tavoline {

using test::takeWord;

std::string Session::told(const Value& value) {
  if (value.isNull()) return "null";
  if (value.isBytes()) return "(bytes)";
  const std::string text = value.text();
  return text.empty() || text.find(' ') != std::string::npos ? '"' + text + '"' : text;
}

void Session::show(std::string& names) {
  std::string all;
  for (const std::string& name : test::words(names)) {
    const QObject* found = find(name);
    std::string line;
    if (const auto* form = dynamic_cast<const TForm*>(found)) {
      line = form->Visible() ? " open" : " closed";
      if (form->parentWidget()) line += " in " + form->parentWidget()->objectName().toStdString();
      if (form->windowFlags() & Qt::WindowStaysOnTopHint) line += " on top";
    } else if (const QVariant text = found->property("text"); text.isValid()) {
      line += " \"" + text.toString().toStdString() + '"';
    } else if (const auto* chart = dynamic_cast<const QWidget*>(found);
               chart && found->property("chartKind").isValid()) {
      line += " \"" + chart->accessibleName().toStdString() + "\" " +
              found->property("chartLabels").toString().toStdString() + " = " +
              found->property("chartValues").toString().toStdString();
    }
    if (!found->property("visible").toBool() && !found->inherits("QMenu")) line += " hidden";
    if (!found->property("enabled").toBool()) line += " disabled";
    if (found->property("checked").toBool()) line += " checked";
    if (found->property("red").toBool()) line += " red";
    if (found->property("echoMode").toInt() == QLineEdit::Password) line += " secret";
    const auto* widget = dynamic_cast<const QWidget*>(found);
    if (widget && widget->window()->focusWidget() == widget) line += " focused";
    all += (all.empty() ? "" : ",") + (line.empty() ? " on" : line);
  }
  script_->say(all.substr(1));
}

void Session::disabled(std::string& screen) {
  for (const QObject* child : Forms::find(screen)->findChildren<QObject*>()) {
    const auto* around = dynamic_cast<const QWidget*>(child->parent());
    if (child->property("enabled").toBool() || !child->property("enabled").isValid()) continue;
    if (child->objectName().isEmpty() || (child->isWidgetType() && around && !around->isEnabled())) continue;
    script_->say(child->objectName().toStdString());
  }
}

void Session::grid(std::string& name) {
  at.settle();
  const QAbstractItemModel& model = *control<QAbstractItemView>(name).model();
  if (model.rowCount() == 0) script_->say("(none)");
  for (int line = 0; line < model.rowCount(); ++line) {
    QStringList cells;
    for (int column = 0; column < model.columnCount(); ++column)
      cells << model.index(line, column).data().toString();
    script_->say(cells.join(QStringLiteral(" | ")).toStdString());
  }
}

void Session::tiles(std::string& name) {
  std::string all;
  for (auto* tile : control<FlowPanel>(name).tiles<QWidget>()) {
    all += (all.empty() ? "" : ", ") + tile->property("text").toString().toStdString();
    for (const auto* label : tile->findChildren<QLabel*>())
      all += " " + label->property("text").toString().toStdString();
  }
  script_->say(all.empty() ? "(none)" : all);
}

void Session::pages(std::string&) {
  if (!Preview::current()) throw std::runtime_error("there is no preview");
  const report::Document& document = *Preview::current()->panel().document();
  for (std::size_t page = 0; page < document.pageCount(); ++page)
    script_->say(report::csvPage(document, page).replace('\r', "").toStdString());
}

void Session::stored(std::string& statement) {
  const Workstation::Rows rows = at.sql("select " + statement);
  if (rows.empty()) script_->say("(none)");
  for (const std::vector<std::string>& row : rows) {
    std::string line;
    for (const std::string& value : row)
      line += (&value == &row[0] ? "" : " | ") + (value.empty() ? "-" : value);
    script_->say(line);
  }
}

void Session::data(std::string& rest) {
  Dataset& rows = dataset(takeWord(rest));
  const char* const states[] = {"inactive", "browse", "edit", "insert"};
  std::string line = states[static_cast<int>(rows.State())];
  for (const std::string& field : test::words(rest)) line += " " + field + "=" + told(rows.FieldValue(field));
  script_->say(line);
}

void Session::rows(std::string& rest) {
  Dataset& rows = dataset(takeWord(rest));
  std::string all;
  for (std::size_t record = 0; record < rows.RecordCount(); ++record) {
    all += all.empty() ? "" : ", ";
    for (const std::string& field : test::words(rest))
      all += (all.ends_with(", ") || all.empty() ? "" : " ") +
             told(rows.ValueAt(record, rows.ColumnIndex(field)));
  }
  script_->say(all.empty() ? "(none)" : all);
}

void Session::filters(std::string&) {
  bool any = false;
  for (const Dataset* dataset : DM->Datasets()) {
    if (!dataset->Filtered()) continue;
    any = true;
    script_->say(dataset->Name() + ": " + dataset->Filter());
  }
  if (!any) script_->say("(none)");
}

}  // namespace tavoline
