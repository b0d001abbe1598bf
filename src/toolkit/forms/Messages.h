#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace tavoline {

/// The one seam for everything that stops the user to tell or ask him something. Screens call ShowMessage,
/// Confirm and the file choosers; tests script the answers by replacing the functions. UI thread only.
struct Messages {
  /// `detail` unfolds below the text: what only helps whoever mends it; empty for none.
  std::function<void(const std::string& text, const std::string& detail)> show;
  std::function<bool(const std::string& text, const std::string& title)> confirm;
  /// A picture file's path in UTF-8; empty when the user gave up.
  std::function<std::string()> openPicture;
  /// A path to write to or read from; empty when the user gave up. `filter` as Qt writes it: "PDF (*.pdf)"; a
  /// name typed without that suffix is given it. `name` is proposed.
  std::function<std::string(const std::string& title, const std::string& filter, const std::string& name)>
      saveFile;
  std::function<std::string(const std::string& title, const std::string& filter)> openFile;

  static Messages& current();  ///< Starts with real QMessageBox and QFileDialog windows.
  static Messages real();
};

/// A plain box with the text and one button. It is as wide and high as its whole text.
void ShowMessage(std::string_view text, std::string_view detail = {});
/// A Yes/No box; true on Yes. Closing it is No.
bool Confirm(std::string_view text, std::string_view title = "confirmation");
/// The usual question before a deletion: "voulez-vous vraiment supprimer", titled "confirmation".
bool ConfirmDeletion();

}  // namespace tavoline
