#include "tools/store/Versions.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>

#include "data/store/sqlite/Holders.h"
#include "data/value/Errors.h"
#include "tools/store/server/ServerCreation.h"
#include "tools/store/server/ServerVersions.h"

namespace tavoline::tool {
namespace {

namespace fs = std::filesystem;
using sqlite::Holder;
using sqlite::HolderEntry;

std::string clockTime(HolderEntry::Moment moment) {
  return tool::clockTime(std::chrono::system_clock::to_time_t(moment));
}

/// What it holds by its own word, as long as the system's locks bear it out.
std::string heldBy(const Holder& holder) {
  if (holder.marks == 0) return "aucune version";
  const bool said = holder.said && !holder.said->versions.empty();
  const std::size_t least = static_cast<std::size_t>(holder.marks);
  const std::size_t versions = said ? std::max(least, holder.said->versions.size()) : least;
  return quantity(versions, "version", "versions") + ", " +
         (said ? (versions < 2 ? "depuis le " : "la plus ancienne depuis le ") +
                     clockTime(holder.said->versions.front())
               : std::string("depuis un moment inconnu")) +
         (holder.inLog ? "" : " (dans le fichier : le journal est libre)");
}

std::string lineOf(const Holder& holder) {
  std::string line =
      "processus " + std::to_string(holder.process) + " (" + holder.program + ") : " + heldBy(holder);
  if (holder.said)
    line += " ; " + quantity(holder.said->connections, "connexion", "connexions") + " ; dit le " +
            clockTime(holder.said->written);
  return line;
}

}  // namespace

std::string clockTime(std::time_t moment) {
  std::tm local = {};
  ::localtime_r(&moment, &local);
  char text[32];
  std::strftime(text, sizeof text, "%d/%m/%Y %H:%M:%S", &local);
  return text;
}

std::string quantity(std::size_t count, const std::string& one, const std::string& more) {
  return std::to_string(count) + ' ' + (count < 2 ? one : more);
}

std::vector<std::string> versionsOf(const std::string& path) {
  if (const auto address = serverAddress(path)) return versionsOnServer(*address);
  if (!fs::is_regular_file(path)) throw StoreError("« " + path + " » n'existe pas. Vérifiez le chemin.");
  const std::string store = fs::canonical(path).string();
  std::error_code none;
  const auto bytes = fs::file_size(store + "-wal", none);
  char size[32];
  std::snprintf(size, sizeof size, "%.1f", none ? 0.0 : double(bytes) / (1 << 20));
  std::replace(size, size + sizeof size, '.', ',');

  const std::vector<Holder> holders = sqlite::holdersOf(store);
  std::size_t held = 0;
  for (const Holder& holder : holders)
    held += std::max<std::size_t>(static_cast<std::size_t>(holder.marks),
                                  holder.marks && holder.said ? holder.said->versions.size() : 0);
  std::vector<std::string> lines = {quantity(held, "version tenue", "versions tenues") + " par " +
                                    quantity(holders.size(), "processus", "processus") + " ; journal de " +
                                    size + " Mo."};
  for (const Holder& holder : holders) lines.push_back(lineOf(holder));
  return lines;
}

}  // namespace tavoline::tool
