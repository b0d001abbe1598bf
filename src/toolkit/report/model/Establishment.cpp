#include "toolkit/report/model/Establishment.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <sstream>

namespace tavoline::report {

namespace {

constexpr char kUsualSection[] = "principal";
constexpr char kFile[] = "etablissement.ini";

std::string trimmed(const std::string& text) {
  constexpr char kBlanks[] = " \t\r";
  const std::size_t start = text.find_first_not_of(kBlanks);
  if (start == std::string::npos) return {};
  return text.substr(start, text.find_last_not_of(kBlanks) - start + 1);
}

QStringList places() {
  return {QDir::current().filePath("etablissement"),
          QCoreApplication::applicationDirPath() + "/../share/tavoline/etablissement",
          QString::fromUtf8(TAVOLINE_SHARE_DIR) + "/etablissement"};
}

}  // namespace

std::string EstablishmentBlock::address() const {
  std::string lines = street + "\n" + town + "\nTel : " + phone;
  if (!taxNumber.empty()) lines += "\nN° TVA : " + taxNumber;
  return lines;
}

std::string EstablishmentBlock::foot() const {
  return name + " VOUS SOUHAITE LA BIEN VENUE";
}

Establishment Establishment::load() {
  for (const QString& folder : places()) {
    if (QFile::exists(folder + "/" + kFile)) return load(folder.toStdString());
  }
  return {};
}

Establishment Establishment::load(const std::string& folder) {
  Establishment result;
  QFile file(QString::fromStdString(folder) + "/" + kFile);
  if (file.open(QIODevice::ReadOnly)) {
    result.read(file.readAll().toStdString(), folder);
  } else {
    result.problems_.push_back("Le fichier « " + file.fileName().toStdString() +
                               " » ne peut pas être lu. Les documents portent un en-tête neutre.");
  }
  return result;
}

void Establishment::read(const std::string& text, const std::string& folder) {
  std::istringstream lines(text);
  std::string line, section = kUsualSection;
  for (int number = 1; std::getline(lines, line); ++number) {
    line = trimmed(line);
    if (line.empty() || line.front() == '#' || line.front() == ';') continue;
    if (line.front() == '[' && line.back() == ']') {
      section = trimmed(line.substr(1, line.size() - 2));
      if (section != kUsualSection) blocks_.try_emplace(section, usual_);
      continue;
    }
    const std::size_t equals = line.find('=');
    set(section, trimmed(line.substr(0, equals)),
        equals == std::string::npos ? std::string() : trimmed(line.substr(equals + 1)), folder, number);
  }
}

void Establishment::set(const std::string& section, const std::string& key, const std::string& value,
                        const std::string& folder, int line) {
  EstablishmentBlock& block = section == kUsualSection ? usual_ : blocks_[section];
  if (key == "nom") {
    block.name = value;
  } else if (key == "rue") {
    block.street = value;
  } else if (key == "ville") {
    block.town = value;
  } else if (key == "telephone") {
    block.phone = value;
  } else if (key == "tva") {
    block.taxNumber = value;
  } else if (key == "logo") {
    block.logo.reset();
    QFile picture(QDir(QString::fromStdString(folder)).filePath(QString::fromStdString(value)));
    if (value.empty() || !picture.open(QIODevice::ReadOnly)) return;
    const QByteArray bytes = picture.readAll();
    block.logo = std::make_shared<const Bytes>(bytes.begin(), bytes.end());
  } else {
    problems_.push_back(std::string(kFile) + ", ligne " + std::to_string(line) + " : « " + key +
                        " » n'est pas un réglage connu (nom, rue, ville, telephone, tva, logo).");
  }
}

const EstablishmentBlock& Establishment::block(const std::string& section) const {
  const auto found = blocks_.find(section);
  return found == blocks_.end() ? usual_ : found->second;
}

}  // namespace tavoline::report
