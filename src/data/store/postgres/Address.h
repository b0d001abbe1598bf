#pragma once

#include <string>
#include <string_view>

namespace tavoline::postgres {

/// Whether a text, such as the first bytes of a file, is the address of a server.
bool isAddress(std::string_view text);

/// Where a store stands on a server.
struct Address {
  std::string name;      ///< What the user calls the store: the file that holds the address, or the address.
  std::string uri;       ///< `postgresql://...`, as it was given.
  std::string place;     ///< The server in words, for sentences: "« caisse:5432 »".
  std::string database;  ///< Its name, for sentences.
  bool bearsPassword = false;
  bool several = false;  ///< It names more than one host.
};

/// Takes one address out of `text`, which may end with line ends. Throws StoreError with a sentence if more
/// stands there, or what the engine does not read as an address.
Address parseAddress(const std::string& name, std::string_view text);

/// The address that the file `path` holds, called `name`. Throws StoreError as well if it bears a password
/// and others may read the file.
Address addressIn(const std::string& name, const std::string& path);

/// The same server, another database of it.
Address beside(const Address& address, const std::string& database);

/// An address as other programs take it on a command line, which every user of the computer may read: its
/// password stands apart.
struct Spoken {
  std::string words;     ///< host='...' port='...'
  std::string password;  ///< Empty where the address bears none.
};
Spoken spoken(const Address& address);

}  // namespace tavoline::postgres
