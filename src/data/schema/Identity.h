#pragma once

#include <cstdint>
#include <string_view>

/// What a store says of itself, whatever its engine.
namespace tavoline::schema {

/// "Store of this system" in the header of a file ("TAVO").
inline constexpr std::uint32_t kApplicationId = 0x5441564F;
inline constexpr int kVersion = 1;  ///< Of the definition of the tables.

/// The hidden column of every table: given by the engine, in order of insertion, never given twice.
inline constexpr std::string_view kRowNumber = "rid";

/// The store's record of itself: a table of keys and values, both texts.
inline constexpr std::string_view kRecordTable = "tavoline_store";
inline constexpr std::string_view kRecordKey = "cle", kRecordValue = "valeur";
/// How many rows were written to each table, by whatever program; triggers count.
inline constexpr std::string_view kCountTable = "tavoline_ecritures";
/// Among the counts stands, in place of one, the number that tells this store from every other and from its
/// copies: whatever is written to the store takes it along into the log.
inline constexpr std::string_view kIdentityRow = "tavoline:identite";
inline constexpr std::string_view kVersionKey = "version", kPasswordKey = "mot_de_passe";

/// The password that a store records when nothing else is asked; workstations present it in their connection
/// string.
inline constexpr std::string_view kStorePassword = "rainandshine20042011";

}  // namespace tavoline::schema
