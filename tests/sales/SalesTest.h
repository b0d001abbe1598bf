#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "data/DMU.h"
#include "data/value/DateTime.h"
#include "sales/RecordingStore.h"
#include "sales/fac_clU.h"
#include "sales/liste_commandeU.h"
#include "shell/MenuU.h"
#include "support/Workstation.h"
#include "toolkit/report/Report.h"

namespace tavoline {

/// A workstation on a small store of its own: one user at one desk, logged in, five tables and seven
/// articles. The clock stands at 14/07/2024 12:30:15. Screens are played through their controls; what reached
/// the store is read beside them, through a connection of its own.
class SalesTest : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  // The store, beside the workstation.
  void store(const std::string& sql) { workstation_.sql(sql); }
  std::string row(const std::string& select);  ///< The first row, values joined by "|"; empty for none.
  std::string stockOf(const std::string& article) {
    return row("select qte_stock from article where designation_article='" + article + "'");
  }
  const std::vector<std::string>& writes() const { return recording_->writes; }
  void forgetWrites() { recording_->writes.clear(); }

  // What the user is told and asked. Each answers since the last time it was called.
  std::vector<std::string> said() { return std::exchange(said_, {}); }
  std::vector<std::string> asked() { return std::exchange(asked_, {}); }
  void answer(bool yes) { answer_ = yes; }

  // Gestures.
  void press(QWidget* control) { workstation_.tap(control); }
  void type(QLineEdit* input, const std::string& text);  ///< Over what it holds.
  void pressKey(Qt::Key key, Qt::KeyboardModifiers with = {}) { workstation_.press(key, with); }
  /// Steps on the modal screen that an action opens.
  void during(const std::function<void()>& action, const std::function<void()>& steps) {
    workstation_.during(action, steps);
  }
  /// The words of the document that an action launches; closes its preview.
  std::string printed(const std::function<void()>& launch, const Report& report);

 private:
  Workstation workstation_;
  std::shared_ptr<RecordingStore> recording_;
  std::vector<std::string> said_, asked_;
  bool answer_ = false;
};

}  // namespace tavoline
