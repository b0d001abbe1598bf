#include "toolkit/report/model/Renderer.h"

#include "data/value/Errors.h"
#include "toolkit/report/Support.h"

namespace tavoline::report {
namespace {

using Words = std::vector<std::string>;

std::string memo(const std::string& text, const std::string& attributes = "") {
  return "<TfrxMemoView Width='10' Height='10' " + attributes + ">" + text + "</TfrxMemoView>";
}

// A page of 100 units, on datasets ds1 to ds3 of which ds3 has nothing behind it.
std::string page(const std::string& bands) {
  return "<TfrxReport Name='r'><TfrxDBDataset UserName='ds1' DataSet='a'><FieldAlias Field='TCC' "
         "Alias='tcc'/>"
         "</TfrxDBDataset><TfrxDBDataset UserName='ds2' DataSet='b'/><TfrxDBDataset UserName='ds3'/>"
         "<TfrxReportPage PaperSize='256' PaperWidth='50' PaperHeight='26.45831'>" +
         bands + "</TfrxReportPage></TfrxReport>";
}

TEST(Renderer, readsTheRecordAtHand) {
  const auto report = templateOf(page("<TfrxReportTitle Height='10'>" + memo("n[ds1.\"n\"]") +
                                      "</TfrxReportTitle>"
                                      "<TfrxMasterData Name='M' Height='10' DataSet='ds1'>" +
                                      memo("[ds1.\"n\"]") +
                                      "</TfrxMasterData>"
                                      "<TfrxReportSummary Height='10'>" +
                                      memo("[(&lt;ds1.\"n\">)]!") + "</TfrxReportSummary>"));
  Rows rows(Rows::Records{{{"n", 7}}, {{"n", 8}}, {{"n", 9}}});
  rows.standOn(2);
  const Document document = rendered(report, {&rows});
  EXPECT_EQ(words(document, 0), (Words{"n7", "7", "8", "9", "9!"}));
  EXPECT_EQ(rows.position(), 2U) << "the dataset is left on its last record";
}

TEST(Renderer, withoutADataBandTheCurrentRecordIsKept) {
  const auto report =
      templateOf(page("<TfrxReportTitle Height='10'>" + memo("[ds1.\"n\"]") + "</TfrxReportTitle>"));
  Rows rows(Rows::Records{{{"n", 7}}, {{"n", 8}}});
  rows.standOn(1);
  EXPECT_EQ(words(rendered(report, {&rows}), 0), Words{"8"});
  EXPECT_EQ(rows.position(), 1U);
}

TEST(Renderer, sumsRunOverBandsThatShowNothing) {
  const std::string sums = memo("[SUM(&lt;ds1.\"x\">,M)]") + memo("[SUM(&lt;ds1.\"x\">)]") +
                           memo("[SUM(&lt;ds2.\"x\">)]") + memo("[SUM(&lt;ds1.\"x\">)+SUM(&lt;ds2.\"x\">)]") +
                           memo("[SUM(&lt;ds1.\"tcc\">,M)]") + memo("[SUM(&lt;ds3.\"x\">)]") +
                           memo("[SUM(&lt;ds1.\"x\">,M)] DA", "DisplayFormat='%2.2f'") +
                           memo("[SUM(&lt;ds1.\"x\">,N)]");
  const std::string summary = "<TfrxReportSummary Height='10'>" + sums + "</TfrxReportSummary>";
  const struct {
    const char* name;
    const char* first;
  } bands[] = {
      {"visible",
       "<TfrxMasterData Name='M' Top='1' Height='10' "
       "DataSet='ds1'><TfrxMemoView>x</TfrxMemoView></TfrxMasterData>"},
      {"of no height, its memos not visible",
       "<TfrxMasterData Name='M' Top='1' DataSet='ds1'><TfrxMemoView "
       "Visible='false'>[ds1.\"x\"]</TfrxMemoView></TfrxMasterData>"},
      {"empty", "<TfrxMasterData Name='M' Top='1' DataSet='ds1'/>"},
  };
  for (const auto& band : bands) {
    SCOPED_TRACE(band.name);
    const auto report = templateOf(page(std::string(band.first) +
                                        "<TfrxMasterData Name='N' Top='2' DataSet='ds2'/>"
                                        "<TfrxMasterData Name='O' Top='3' DataSet='ds3'/>" +
                                        summary));
    Rows one(Rows::Records{{{"x", 0.1}, {"TCC", 100}},
                           {{"x", 0.2}, {"TCC", Value()}},
                           {{"x", Value()}, {"TCC", ""}},
                           {{"x", ""}},
                           {{"x", 0.3}, {"TCC", "2,5"}}});
    Rows two(Rows::Records{{{"x", 1000}}, {{"x", 200}}});
    const Document document = rendered(report, {&one, &two});
    EXPECT_EQ(words(document, document.pageCount() - 1, BandKind::Summary),
              (Words{"0,6", "0,6", "1200", "1200,6", "102,5", "0", "0,60 DA", "0,6"}));
  }
}

TEST(Renderer, aValueThatIsNoNumberStopsTheSum) {
  const auto report = templateOf(page("<TfrxMasterData Name='M' DataSet='ds1'/><TfrxReportSummary>" +
                                      memo("[SUM(&lt;ds1.\"x\">)]") + "</TfrxReportSummary>"));
  Rows rows(Rows::Records{{{"x", "douze"}}});
  EXPECT_THROW(rendered(report, {&rows}), ConversionError);
}

TEST(Renderer, twoDataBandsRunOneAfterTheOther) {
  const auto report =
      templateOf(page("<TfrxMasterData Name='N' Top='50' Height='10' DataSet='ds2'>" + memo("b[ds2.\"n\"]") +
                      "</TfrxMasterData>"
                      "<TfrxMasterData Name='M' Top='20' Height='10' DataSet='ds1'>" +
                      memo("a[ds1.\"n\"]") + "</TfrxMasterData>"));
  Rows one(Rows::Records{{{"n", 1}}, {{"n", 2}}}), two(Rows::Records{{{"n", 3}}});
  EXPECT_EQ(words(rendered(report, {&one, &two}), 0), (Words{"a1", "a2", "b3"}));
}

TEST(Renderer, pagesBreakAboveTheFooterWhichComesOnEach) {
  const auto report = templateOf(page(
      "<TfrxReportTitle Height='35'>" + memo("title") +
      "</TfrxReportTitle>"
      "<TfrxMasterData Name='M' Height='20' DataSet='ds1'>" +
      memo("[ds1.\"n\"]") +
      "</TfrxMasterData>"
      "<TfrxReportSummary Height='30'>" +
      memo("end") +
      "</TfrxReportSummary>"
      "<TfrxPageFooter Height='20'><TfrxBarCodeView Expression='&lt;ds1.\"order\">'/></TfrxPageFooter>"));
  struct Case {
    int records;
    std::vector<Words> pages;
  };
  const Case cases[] = {
      {0, {{"title", "end", ""}}},
      {2, {{"title", "1", "2", "42"}, {"end", "42"}}},
      {3, {{"title", "1", "2", "42"}, {"3", "end", "42"}}},
      {6, {{"title", "1", "2", "42"}, {"3", "4", "5", "6", "42"}, {"end", "42"}}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.records);
    Rows::Records records;
    for (int i = 1; i <= c.records; ++i) records.push_back({{"n", i}, {"order", 42}});
    Rows rows(records);
    const Document document = rendered(report, {&rows});
    ASSERT_EQ(document.pageCount(), c.pages.size());
    for (std::size_t i = 0; i < c.pages.size(); ++i) {
      EXPECT_EQ(words(document, i), c.pages[i]) << "page " << i;
      EXPECT_NEAR(document.items(i).back().rect.top, 80, 0.001);
    }
  }
}

TEST(Renderer, nothingBehindADatasetGivesNoRowsAndEmptyFields) {
  const auto report = templateOf(page("<TfrxReportTitle>" + memo("<!-- -->[ds3.\"n\"]") +
                                      "</TfrxReportTitle>"
                                      "<TfrxMasterData Name='M' Height='10' DataSet='ds3'>" +
                                      memo("row") +
                                      "</TfrxMasterData>"
                                      "<TfrxReportSummary>" +
                                      memo("[SUM(&lt;ds3.\"n\">,M)]") + "</TfrxReportSummary>"));
  EXPECT_EQ(words(rendered(report, {}), 0), (Words{"", "0"}));
}

TEST(Renderer, worksPageByPageAndReturnsFromALongHiddenBand) {
  const auto report =
      templateOf(page("<TfrxMasterData Name='H' Top='1' DataSet='ds1'/>"
                      "<TfrxMasterData Name='M' Top='2' Height='50' DataSet='ds2'>" +
                      memo("x") + "</TfrxMasterData>"));
  Rows hidden(Rows::Records(1000)), shown(Rows::Records(5));
  Renderer renderer(report, {&hidden, &shown}, {});
  ASSERT_TRUE(renderer.advance());
  EXPECT_LT(renderer.recordsRead(), 1000U);
  EXPECT_EQ(renderer.recordCount(), 1005U);
  while (renderer.document()->pageCount() == 0) ASSERT_TRUE(renderer.advance());
  EXPECT_LT(renderer.recordsRead(), 1005U) << "the first page is there before all records are read";
  renderer.finish();
  EXPECT_EQ(renderer.document()->pageCount(), 3U);
  EXPECT_FALSE(renderer.advance());
}

}  // namespace
}  // namespace tavoline::report
