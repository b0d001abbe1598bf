#pragma once

#include <QtCore/QTemporaryDir>
#include <QtGui/QAction>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QToolButton>

#include "toolkit/forms/Messages.h"
#include "toolkit/report/Samples.h"
#include "toolkit/report/preview/PageView.h"
#include "toolkit/report/preview/PreviewU.h"

namespace tavoline {

/// A panel with the sample document; what it tells is kept in `shown_`, and it is given `file_` wherever it
/// asks for one.
class PreviewTest : public testing::Test {
 public:
  ~PreviewTest() override {
    Messages::current() = Messages::real();
    report::PrintSystem::current() = report::PrintSystem::real();
  }

 protected:
  PreviewTest() {
    Messages::current().show = [this](const std::string& text, const std::string&) {
      shown_.push_back(text);
    };
    Messages::current().saveFile = [this](const std::string&, const std::string&, const std::string&) {
      return file_;
    };
    Messages::current().openFile = [this](const std::string&, const std::string&) { return file_; };
    panel_.resize(900, 700);
    panel_.show();
  }
  void open(int rows) {
    panel_.open({std::make_shared<report::Document>(report::sampleDocument(rows)), {}, {}, {}});
  }
  QAction* action(const char* name) { return panel_.findChild<QAction*>(name); }
  QToolButton* button(const char* name) { return panel_.findChild<QToolButton*>(name); }
  PageView& pages() { return panel_.pages(); }
  QPointF viewPoint(std::size_t page, double x, double y) {  // units on the page
    return pages().pageRect(page).topLeft() + QPointF(x, y) * pages().zoom() - pages().deskPoint({0, 0});
  }

  QTemporaryDir folder_;
  std::string file_ = folder_.filePath("a").toStdString();
  std::vector<std::string> shown_;
  PreviewPanel panel_;
};

}  // namespace tavoline
