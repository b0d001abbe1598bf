#include "tools/store/exchange/Report.h"

#include <algorithm>

#include "data/value/Regional.h"
#include "data/value/Text.h"
#include "data/value/Value.h"

namespace tavoline::tool {
namespace {

constexpr std::size_t kKept = 10000;

std::string padded(std::string_view text, std::size_t width, bool right) {
  const std::size_t characters = characterCount(text);
  const std::string blanks(characters < width ? width - characters : 0, ' ');
  return right ? blanks + std::string(text) : std::string(text) + blanks;
}

std::string line(std::string_view name, const std::string& read, const std::string& written) {
  return "  " + padded(name, 24, false) + padded(read, 24, true) + padded(written, 24, true) + '\n';
}

std::string numbers(const ImportReport& report) {
  std::string text = line("Table", "lignes lues", report.trial ? "à écrire" : "lignes écrites");
  std::int64_t read = 0, written = 0;
  for (const ImportReport::Table& table : report.tables) {
    text += line(table.name, std::to_string(table.read), std::to_string(table.written));
    read += table.read;
    written += table.written;
  }
  text += line("Total", std::to_string(read), std::to_string(written)) + '\n';
  text += line("Somme, en DA", "lue", report.trial ? "à écrire" : "écrite");
  for (const ImportReport::Sum& sum : report.sums)
    text += line(std::string(sum.table) + '.' + std::string(sum.column), Value(sum.read).text(),
                 Value(sum.written).text());
  return text;
}

std::string list(const std::string& title, const std::vector<std::string>& all, std::int64_t count,
                 std::size_t shown) {
  if (count == 0) return {};
  const std::size_t told = shown ? std::min(shown, all.size()) : all.size();
  std::string text = '\n' + title + " (" + std::to_string(count) + ") :\n";
  for (std::size_t i = 0; i < told; ++i) text += "  - " + all[i] + '\n';
  const std::int64_t more = count - static_cast<std::int64_t>(told);
  if (more > 0) text += "  - et " + std::to_string(more) + (more > 1 ? " autres" : " autre") + ".\n";
  return text;
}

std::string ending(const ImportReport& report) {
  if (report.refused.count() > 0)
    return report.trial ? "Des lignes seraient refusées.\n" : "Des lignes ont été refusées et manquent.\n";
  if (report.trial)
    return report.withoutRemarks() ? "Tout arriverait.\n" : "Tout arriverait, avec des remarques.\n";
  return report.withoutRemarks() ? "Tout est arrivé.\n" : "Tout est arrivé, avec des remarques.\n";
}

}  // namespace

void Listed::add(std::string one) {
  ++count_;
  if (kept_.size() < kKept) kept_.push_back(std::move(one));
}

bool ImportReport::withoutRemarks() const {
  return remarks.empty() && refused.count() == 0 && wrapped.count() == 0;
}

std::string told(const ImportReport& report, std::size_t shown) {
  std::string text = (report.trial ? "Essai d'import de « " : "Import de « ") + report.source + " » vers « " +
                     report.target + " », le " + Value(report.begun).text() + "\n\n" + numbers(report);
  text += list("Remarques", report.remarks, static_cast<std::int64_t>(report.remarks.size()), shown);
  text += list("Lignes refusées", report.refused.kept(), report.refused.count(), shown);
  text += list("Images sorties de leur enveloppe", report.freed.kept(), report.freed.count(), shown);
  text += list("Images non reconnues, gardées telles quelles", report.wrapped.kept(), report.wrapped.count(),
               shown);
  return text + '\n' + ending(report);
}

}  // namespace tavoline::tool
