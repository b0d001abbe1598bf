#include "toolkit/controls/Binding.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QPointer>
#include <QtWidgets/QWidget>
#include <algorithm>

#include "data/DMU.h"
#include "data/value/Errors.h"
#include "data/value/Regional.h"
#include "toolkit/controls/BindingQueue.h"
#include "toolkit/forms/Guard.h"

namespace tavoline {

namespace {

DataSource* partner(const QString& name) {
  if (DataSource* source = DM->Source(name.toStdString())) return source;
  throw DatasetError("Cet écran attend des données que ce programme n'a pas. Prévenez le service technique.",
                     "DM." + name.toStdString());
}

}  // namespace

BindingQueue& BindingQueue::instance() {
  static QPointer<BindingQueue> queue;
  if (!queue) queue = new BindingQueue(QCoreApplication::instance());
  return *queue;
}

void BindingQueue::add(Binding* control) {
  if (std::find(waiting_.begin(), waiting_.end(), control) == waiting_.end()) waiting_.push_back(control);
  if (!std::exchange(posted_, true)) QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}

void BindingQueue::remove(Binding* control) {
  std::erase(waiting_, control);
}

bool BindingQueue::event(QEvent* event) {
  if (event->type() != QEvent::User) return QObject::event(event);
  posted_ = false;
  pullAll();
  return true;
}

// A store that fails fails for every control at once; it is told once.
void BindingQueue::pullAll() {
  std::exception_ptr failure;
  for (std::size_t left = waiting_.size(); left > 0 && !waiting_.empty(); --left) {
    Binding* control = waiting_.front();
    waiting_.pop_front();
    if (!control->self_->isVisible()) continue;  // shown later, it is brought up to date then
    try {
      control->sync();
    } catch (...) {
      failure = std::current_exception();
    }
  }
  if (failure) guarded([&] { std::rethrow_exception(failure); });
}

bool BindingQueue::eventFilter(QObject* widget, QEvent* event) {
  if (event->type() == QEvent::Show) {
    if (auto* control = dynamic_cast<Binding*>(static_cast<QWidget*>(widget))) {
      if (control->stale_) add(control);
    }
  }
  return false;
}

int Binding::Displaying::depth = 0;

Binding::Binding(QWidget* self) : self_(self) {
  self->installEventFilter(&BindingQueue::instance());
}

Binding::~Binding() {
  if (source_) source_->remove(this);
  BindingQueue::instance().remove(this);
}

void Binding::bind() {
  if (sourceName_.isEmpty()) return;
  DataSource* found = partner(sourceName_);
  if (found == source_) return;
  if (source_) source_->remove(this);
  source_ = found;
  source_->add(this);
  markStale();
}

Dataset* Binding::dataset() const {
  return source_ ? &source_->dataset() : nullptr;
}

Value Binding::fieldValue() const {
  Dataset* rows = dataset();
  const std::string name = field_.toStdString();
  if (!rows || !rows->Active() || rows->ColumnIndex(name) < 0) return {};
  if (Displaying::now() && rows->RowGone()) return {};
  return rows->FieldValue(name);
}

Value Binding::displayValue() const {
  const Displaying display;
  return fieldValue();
}

std::string Binding::fieldText() const {
  return shown(fieldValue());
}

std::string Binding::shown(const Value& value) const {
  return money_ && value.isNumber() ? formatPattern(moneyFormat, value.toFloat()) : value.text();
}

void Binding::sync() {
  if (!stale_) return;
  stale_ = false;
  const Displaying display;
  pull();
}

void Binding::dataEvent(DataEvent) {
  markStale();
}

void Binding::markStale() {
  if (stale_) return;
  stale_ = true;
  if (self_->isVisible()) BindingQueue::instance().add(this);
}

RowsListener::~RowsListener() {
  if (source_) source_->remove(this);
}

void RowsListener::listenTo(const QString& name) {
  if (name.isEmpty()) return;
  DataSource* found = partner(name);
  if (found == source_) return;
  if (source_) source_->remove(this);
  source_ = found;
  source_->add(this);
}

}  // namespace tavoline
