#pragma once

#include <string>

namespace tavoline {

/// The writes on the current row of commande that more than one screen makes, each one a Post of its own, and
/// the way to the row of a table.

void writeDateParts();  ///< J, M, A as date_commande has them.
void writeDiscount();   ///< remi, from remise and HT.
void writeTax();        ///< TVA, taken on HT before the discount; 0 unless TVA.utilisation is "OUI".

/// Makes commande and sum_commande show the one order. Throws DatasetError where another workstation has
/// deleted it: what follows would begin an order without a number.
void filterOrder(const std::string& number);

/// Makes Table_ show the one table. Its quotes are not doubled: with an apostrophe in the name the filter
/// cannot be read.
void filterTable(const std::string& name);

}  // namespace tavoline
