#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtTest/QTest>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "data/DMU.h"
#include "data/value/DateTime.h"
#include "sales/Commande_avnU.h"
#include "sales/RecordingStore.h"
#include "sales/RenduU.h"
#include "sales/champsU.h"
#include "sales/commandeU.h"
#include "sales/fac_clU.h"
#include "sales/liste_commandeU.h"
#include "sales/qteU.h"
#include "shell/MenuU.h"
#include "support/Workstation.h"
#include "toolkit/report/Report.h"

namespace tavoline {

/// A workstation on a small store of its own: one user at one desk, logged in, five tables and eight
/// articles. The clock stands at 14/07/2024 12:30:15. Screens are played through their controls; what reached
/// the store is read beside them, through a connection of its own.
class SalesTest : public ::testing::Test {
 protected:
  SalesTest() = default;
  /// Another workstation, at the store of one that stands in `folder`.
  explicit SalesTest(const std::filesystem::path& folder) : workstation_(folder), guest_(true) {}
  void SetUp() override;
  void TearDown() override;

  // The store, beside the workstation.
  void store(const std::string& sql);
  std::string row(const std::string& select);  ///< The first row, values joined by "|"; empty for none.
  std::string stockOf(const std::string& article);
  const std::vector<std::string>& writes() const { return recording_->writes; }
  void forgetWrites() { recording_->writes.clear(); }
  RecordingStore& recording() { return *recording_; }

  // What the user is told and asked. Each answers since the last time it was called.
  std::vector<std::string> said() { return std::exchange(said_, {}); }
  std::vector<std::string> asked() { return std::exchange(asked_, {}); }
  void answer(bool yes) { answer_ = yes; }

  void setClock(DateTime now);

  // Gestures.
  void press(QWidget* control) { workstation_.tap(control); }
  void type(QLineEdit* input, const std::string& text);  ///< Over what it holds.
  void openMap();
  void choosePlace(int place);
  void tap(const std::string& table);
  void openOrder(const std::string& table);  ///< From the menu to the order, category 1 chosen.
  void chooseCategory(int category);
  Panel* articleTile(const std::string& designation);  ///< In sight, ready for a finger; null if absent.
  void tapArticle(const std::string& designation, int category = 1);
  void clickLine(int line);
  void pressKey(Qt::Key key, Qt::KeyboardModifiers with = {}) { workstation_.press(key, with); }
  /// Steps on the modal screen that an action, or a button, opens.
  void during(const std::function<void()>& action, const std::function<void()>& steps) {
    workstation_.during(action, steps);
  }
  void during(Button* opener, const std::function<void()>& steps) {
    during([&] { press(opener); }, steps);
  }
  /// The words of the document that an action launches; closes its preview.
  std::string printed(const std::function<void()>& launch, const Report& report);
  void closeOrder();     ///< "Cloturer la Table", then "Enregistrer" on the change.
  std::string finish();  ///< "Enregistrer" on the change; the words of the ticket.

  // What the screens show.
  std::vector<std::string> tableTiles();
  std::vector<std::string> articleTiles();
  QImage looks(const char* tile);
  std::string lines();  ///< "1 Café 100 100; ...": the rows of the order's grid.

 private:
  Workstation workstation_;
  std::shared_ptr<RecordingStore> recording_;
  std::vector<std::string> said_, asked_;
  bool answer_ = false;
  bool guest_ = false;
};

}  // namespace tavoline
