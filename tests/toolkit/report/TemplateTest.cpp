#include <QtCore/QBuffer>
#include <QtCore/QXmlStreamWriter>

#include "toolkit/report/Support.h"

namespace tavoline::report {
namespace {

std::string inReport(const std::string& bands) {
  return "<TfrxReport Name='r'>\n<TfrxDBDataset UserName='ds1' DataSet='d'/>\n<TfrxReportPage>\n" + bands +
         "\n</TfrxReportPage>\n</TfrxReport>";
}
std::string title(const std::string& objects) {
  return inReport("<TfrxReportTitle>\n" + objects + "\n</TfrxReportTitle>");
}

TEST(Template, whatCannotPrintIsRefusedWithItsPlace) {
  struct Case {
    std::string xml;
    int line, column;
    const char* says;
  };
  const Case cases[] = {
      {"<Other/>", 1, 9, "TfrxReport"},
      {"<TfrxReport Name='r'>\n</TfrxReport>", 1, 1, "TfrxReportPage"},
      {"<TfrxReport><TfrxReportPage/></TfrxReport", 1, 42, "bien formé"},
      {inReport("<TfrxHeader/>"), 4, 1, "TfrxHeader"},
      {inReport("  <TfrxReportTitle Hauteur='3'/>"), 4, 3, "Hauteur"},
      {inReport("<TfrxReportTitle Height='-1'/>"), 4, 1, "négative"},
      {inReport("<TfrxReportTitle Height='x'/>"), 4, 1, "« x »"},
      {inReport("<TfrxReportTitle/><TfrxReportTitle/>"), 4, 19, "qu'une fois"},
      {inReport("<TfrxMasterData Name='M' DataSet='ds2'/>"), 4, 1, "ds2"},
      {inReport("<TfrxMasterData Name='M' DataSet='ds1'/>\n<TfrxMasterData Name='m' DataSet='ds1'/>"), 5, 1,
       "deux bandes"},
      {title("<TfrxMemoView>[Page#]</TfrxMemoView>"), 5, 1, "[Page#]"},
      {title(" <TfrxMemoView>[ds2.\"x\"]</TfrxMemoView>"), 5, 2, "ds2"},
      {title("<TfrxMemoView>[SUM(&lt;ds1.\"x\">,M)]</TfrxMemoView>"), 5, 1, "« M »"},
      {title("<TfrxMemoView>[SUM(&lt;ds1.\"x\">)]</TfrxMemoView>"), 5, 1, "ds1"},
      {title("<TfrxMemoView HAlign='left'/>"), 5, 1, "HAlign"},
      {title("<TfrxMemoView Fill.BackColor='red'/>"), 5, 1, "Fill.BackColor"},
      {title("<TfrxBarCodeView BarType='bcCode39'/>"), 5, 1, "BarType"},
      {title("<TfrxBarCodeView/>"), 5, 1, "Expression"},
      {inReport("<TfrxMasterData Name='M' RowCount='5' DataSet='ds1'/>"), 4, 1, "RowCount"},
      {"<TfrxReport><TfrxDBDataset UserName='a' CloseDataSource='true'/></TfrxReport>", 1, 13,
       "CloseDataSource"},
      {title("<TfrxPictureView/>"), 5, 1, "logo"},
      {title("<TfrxLineView>x</TfrxLineView>"), 5, 15, "texte"},
      {"<TfrxReport><TfrxDBDataset UserName='a'/><TfrxDBDataset UserName='A'/></TfrxReport>", 1, 42,
       "deux fois"},
      {"<TfrxReport><TfrxDBDataset UserName='a'><FieldAlias Field='x'/></TfrxDBDataset></TfrxReport>", 1, 41,
       "Alias"},
      {"<TfrxReport><TfrxReportPage PaperWidth='20' LeftMargin='20'/></TfrxReport>", 1, 13, "marges"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.xml);
    const TemplateResult result = readTemplate(QByteArray::fromStdString(c.xml));
    const auto* wrong = std::get_if<TemplateError>(&result);
    if (!wrong) {
      ADD_FAILURE() << "it was accepted";
      continue;
    }
    EXPECT_EQ(wrong->line, c.line) << wrong->text();
    EXPECT_EQ(wrong->column, c.column) << wrong->text();
    EXPECT_NE(wrong->sentence.find(c.says), std::string::npos) << wrong->text();
  }
}

TEST(Template, blanksInTextsAreKeptAndDataBandsRunByTop) {
  const auto report =
      templateOf(inReport("<TfrxReportSummary/>"
                          "<TfrxMasterData Name='B' Top='40' DataSet='ds1'/>"
                          "<TfrxMasterData Name='A' Top='20' DataSet='DS1'/>"
                          "<TfrxReportTitle><TfrxMemoView>TICKET   N° : </TfrxMemoView></TfrxReportTitle>"));
  ASSERT_TRUE(report);
  ASSERT_EQ(report->bands.size(), 4U);
  EXPECT_EQ(report->bands[0].kind, BandKind::Title);
  EXPECT_EQ(writeMemoText(report->bands[0].objects[0].text), "TICKET   N° : ");
  EXPECT_EQ(report->bands[1].name, "A");
  EXPECT_EQ(report->bands[2].name, "B");
  EXPECT_EQ(report->bands[3].kind, BandKind::Summary);
}

}  // namespace
}  // namespace tavoline::report
