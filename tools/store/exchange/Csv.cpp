#include "tools/store/exchange/Csv.h"

#include "data/value/Errors.h"

namespace tavoline::tool {
namespace {

using namespace std::string_view_literals;

constexpr int kNothing = std::filebuf::traits_type::eof();
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::size_t kAtOnce = 65536;

// Where a spreadsheet may see a cell begin: in the whole text, or behind a separator of some country.
bool endsCell(char c) {
  return c == ',' || c == ';' || c == '\t' || c == '|' || c == '\n' || c == '\r';
}

std::size_t behindBlanks(std::string_view text) {
  std::size_t at = 0;
  for (bool blank = true; blank;) {
    blank = false;
    for (const std::string_view one : {" "sv, "\""sv, "\xC2\xA0"sv})
      if (text.substr(at).starts_with(one)) at += one.size(), blank = true;
  }
  return at;
}

bool wantsGuard(std::string_view cell) {
  if (cell.starts_with('\'')) return true;  // or it would be taken for a guard
  cell.remove_prefix(behindBlanks(cell));
  for (const std::string_view sign :
       {"="sv, "+"sv, "-"sv, "@"sv, "\t"sv, "\r"sv, "\n"sv, "＝"sv, "＋"sv, "－"sv, "＠"sv})
    if (cell.starts_with(sign)) return true;
  return false;
}

}  // namespace

std::string csvField(const CsvField& field) {
  if (!field.quoted) return field.text;
  std::string quoted = "\"";
  for (const char c : field.text) {
    if (c == '"') quoted += c;
    quoted += c;
  }
  return quoted + '"';
}

CsvReader::CsvReader(const std::string& path) : path_(path), buffer_(kAtOnce, '\0') {
  file_.pubsetbuf(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
  if (!file_.open(path, std::ios::in | std::ios::binary))
    throw StoreError("« " + path + " » manque ou ne peut pas être lu. L'export n'est pas entier.");
  for (const char c : kByteOrderMark)
    if (peek() == static_cast<unsigned char>(c)) file_.sbumpc();
}

int CsvReader::take() {
  return file_.sbumpc();
}

void CsvReader::malformed() const {
  throw StoreError("« " + path_ + " » n'est pas un fichier de table lisible, à l'enregistrement " +
                   std::to_string(record_) + ". Refaites l'export.");
}

void CsvReader::readQuoted(std::string& text) {
  while (true) {
    const int c = take();
    if (c == kNothing) malformed();
    if (c == '"') {
      if (peek() != '"') return;
      take();
    }
    text += static_cast<char>(c);
  }
}

bool CsvReader::next() {
  if (peek() == kNothing) return false;
  ++record_;
  fields_.clear();
  while (true) {
    CsvField& field = fields_.emplace_back();
    if (peek() == '"') {
      take();
      field.quoted = true;
      readQuoted(field.text);
    }
    int c = take();
    while (c != kNothing && c != ',' && c != '\n' && c != '\r') {
      if (field.quoted || c == '"') malformed();
      field.text += static_cast<char>(c);
      c = take();
    }
    if (c == ',') continue;
    if (c == '\r' && take() != '\n') malformed();
    return true;
  }
}

std::string guarded(std::string_view text) {
  std::string result;
  bool begins = true;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (begins && wantsGuard(text.substr(i))) result += '\'';
    result += text[i];
    begins = endsCell(text[i]);
  }
  return result;
}

std::string unguarded(std::string_view text) {
  std::string result;
  bool begins = true;
  for (const char c : text) {
    const bool guard = begins && c == '\'';
    begins = !guard && endsCell(c);
    if (!guard) result += c;
  }
  return result;
}

}  // namespace tavoline::tool
