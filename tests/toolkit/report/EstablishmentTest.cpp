#include "toolkit/report/model/Establishment.h"

#include <gmock/gmock.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

namespace tavoline::report {
namespace {

using testing::HasSubstr;

class EstablishmentTest : public testing::Test {
 protected:
  void write(const QString& name, const QByteArray& bytes) {
    QDir().mkpath(QFileInfo(folder_.filePath(name)).path());
    QFile file(folder_.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
  }
  Establishment loaded() const { return Establishment::load(folder_.path().toStdString()); }
  QTemporaryDir folder_;
};

TEST_F(EstablishmentTest, theFileSaysWhatStandsOnPaper) {
  write("logo.png", "picture");
  write("etablissement.ini",
        "# remarque\n[principal]\n nom = CAFÉ = BAR \nrue=1, rue A\nville=ALGER\r\ntelephone = "
        "021\nlogo=logo.png\n"
        "[caisse]\ntva = 42\nnom = AUTRE\n");
  const Establishment establishment = loaded();
  EXPECT_TRUE(establishment.problems().empty());
  const EstablishmentBlock& usual = establishment.block("");
  EXPECT_EQ(usual.name, "CAFÉ = BAR");
  EXPECT_EQ(usual.address(), "1, rue A\nALGER\nTel : 021");
  EXPECT_EQ(usual.foot(), "CAFÉ = BAR VOUS SOUHAITE LA BIEN VENUE");
  ASSERT_TRUE(usual.logo);
  EXPECT_EQ(usual.logo->size(), 7U);
  EXPECT_EQ(establishment.block("caisse").address(), "1, rue A\nALGER\nTel : 021\nN° TVA : 42");
  EXPECT_EQ(establishment.block("caisse").name, "AUTRE");
  EXPECT_EQ(establishment.block("unknown").name, usual.name);
}

TEST_F(EstablishmentTest, whatIsMissingOrWrongLeavesNeutralTexts) {
  EXPECT_THAT(loaded().problems(), testing::ElementsAre(HasSubstr("etablissement.ini")));
  EXPECT_FALSE(loaded().block("").name.empty());
  write("etablissement.ini", "nom\nlogo = missing.png\nadresse = 3\n");
  const Establishment establishment = loaded();
  EXPECT_FALSE(establishment.block("").logo);
  EXPECT_EQ(establishment.block("").address(), "\n\nTel : ");
  EXPECT_THAT(establishment.problems(), testing::ElementsAre(HasSubstr("ligne 3 : « adresse »")));
}

TEST_F(EstablishmentTest, theFolderBesideTheStoreComesFirst) {
  const QString before = QDir::currentPath();
  QDir::setCurrent(folder_.path());
  const std::string shipped = Establishment::load().block("").name;
  write("etablissement/etablissement.ini", "nom = À CÔTÉ\n");
  const std::string beside = Establishment::load().block("").name;
  QDir::setCurrent(before);
  EXPECT_EQ(beside, "À CÔTÉ");
  EXPECT_NE(shipped, beside);
  EXPECT_FALSE(shipped.empty());
}

}  // namespace
}  // namespace tavoline::report
