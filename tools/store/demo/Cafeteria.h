#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tavoline::tool {

// The cafeteria of the demo: who works there, where one sits, what is sold. Amounts in DA, before VAT.

struct DemoCategory {
  std::string_view name;
  int code;
};

struct DemoArticle {
  std::string_view
      designation;  ///< In capitals, as the entry screen writes it; no apostrophe, which no tap survives.
  int category;
  int purchasePrice;
  int price;
  int minimum;  ///< Alert threshold of a counted article; 0 for what is prepared to order.
  int stock;
  std::string_view picture;  ///< One emoji.
  std::string_view badge;    ///< A second, small one that tells like articles apart; may be empty.

  /// Bottles and pieces are taken off the stock; what is prepared to order is not.
  bool counted() const { return minimum > 0; }
};

struct DemoPlace {
  std::string_view name;
  std::string_view prefix;  ///< Tables are called by it and a number.
  int tables;
  std::string_view desk;  ///< Where its guests pay.
};

struct DemoTable {
  int id;
  std::string name;
  int placeId;
  std::string_view placeName;
  std::string_view desk;
};

struct DemoUser {
  std::string_view login;
  std::string_view password;
  std::string_view surname;
  std::string_view firstName;
  std::string_view role;
  std::string_view picture;
};

struct DemoDesk {
  std::string_view code;
  std::string_view name;
  bool house;
};

struct DemoAssignment {
  std::string_view login;
  std::string_view desk;
  std::string_view comment;
};

struct DemoSupplier {
  std::string_view code;
  std::string_view name;
  std::string_view address;
  std::string_view telephone;
  std::string_view mail;
};

struct DemoClient {
  std::string_view code;
  std::string_view surname;
  std::string_view firstName;
  std::string_view telephone;
  std::string_view address;
  std::string_view mail;
};

std::span<const DemoCategory> demoCategories();
std::span<const DemoArticle> demoArticles();  ///< The first one has the code "1".
std::span<const DemoPlace> demoPlaces();
std::vector<DemoTable> demoTables();    ///< Of all places, in the order of their numbers.
std::span<const DemoUser> demoUsers();  ///< The first one is an Admin: others log in undisturbed only then.
std::span<const DemoDesk> demoDesks();
std::span<const DemoAssignment> demoAssignments();
std::span<const DemoSupplier> demoSuppliers();
std::span<const DemoClient> demoClients();

inline constexpr double kVatRate = 19;  ///< Percent: the ordinary rate.

/// The code under which the article at `index` of demoArticles() is sold.
inline std::string articleCode(std::size_t index) {
  return std::to_string(index + 1);
}

}  // namespace tavoline::tool
