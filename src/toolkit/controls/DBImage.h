#pragma once

#include <QtGui/QPixmap>
#include <QtWidgets/QFrame>
#include <functional>
#include <string>

#include "toolkit/controls/Binding.h"

namespace tavoline {

/// A picture on one blob field, drawn as large as the control allows in its own proportions.
class DBImage : public QFrame, public Binding {
  Q_OBJECT
  Q_PROPERTY(QString dataSource READ dataSourceName WRITE setDataSourceName)
  Q_PROPERTY(QString dataField READ dataField WRITE setDataField)

 public:
  explicit DBImage(QWidget* parent = nullptr);

  std::function<void()> OnDblClick;

  /// Puts a picture file (PNG, JPEG, BMP) into the field; the dataset goes into edit state. Large photographs
  /// are made smaller first. The picture stands on the clipboard too afterwards, in place of what was there.
  /// A file that is no whole picture is refused with a sentence, and nothing is changed; neither where the
  /// user, to whom a bar tells how far it is, gives up.
  void LoadFromFile(const std::string& path);
  bool Empty();  ///< No picture, or none that can be shown.

  QSize sizeHint() const override { return {160, 160}; }

 protected:
  void pull() override;
  void paintEvent(QPaintEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  QPixmap picture_;
};

}  // namespace tavoline
