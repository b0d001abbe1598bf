#pragma once

#include <map>
#include <string>
#include <vector>

#include "data/value/Value.h"

namespace tavoline::report {

/// The fixed head and foot of tickets: a constant of each installation.
struct EstablishmentBlock {
  std::string name = "Cafétéria";
  std::string street, town, phone, taxNumber;
  SharedBytes logo;  ///< The picture file as it stands; null for none.

  /// Street, town and "Tel : " with the number, a line each; a fourth line "N° TVA : " where there is a
  /// number.
  std::string address() const;
  std::string foot() const;  ///< The name and " VOUS SOUHAITE LA BIEN VENUE".
};

/// The establishment blocks of this installation, read from `etablissement.ini` and the pictures beside it:
/// in the folder `etablissement` beside the store, else the one installed with the program. Without either,
/// and for whatever the file leaves out, neutral texts and no logo.
class Establishment {
 public:
  static Establishment load();
  static Establishment load(const std::string& folder);  ///< UTF-8 path; reads no other place.

  /// The block of a section; the usual one for the empty name and for a name that the file does not have.
  const EstablishmentBlock& block(const std::string& section) const;
  /// Lines of the file that say nothing known, as French sentences for the owner.
  const std::vector<std::string>& problems() const { return problems_; }

 private:
  void read(const std::string& text, const std::string& folder);
  void set(const std::string& section, const std::string& key, const std::string& value,
           const std::string& folder, int line);

  std::map<std::string, EstablishmentBlock> blocks_;
  EstablishmentBlock usual_;
  std::vector<std::string> problems_;
};

}  // namespace tavoline::report
