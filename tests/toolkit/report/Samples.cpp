#include "toolkit/report/Samples.h"

namespace tavoline::report {

namespace {

constexpr char kTemplate[] =
    R"(<TfrxReport Name="frxReport1" Title="Essai" PreviewOptions.Buttons="print load save export zoom find outline pageSetup tools edit navigator quickExport copy selection">
  <TfrxDBDataset UserName="ds1" DataSet="rows"/>
  <TfrxReportPage PaperSize="256" PaperWidth="85" PaperHeight="100">
    <TfrxReportTitle Height="60">
      <TfrxPictureView Left="5" Top="5" Width="40" Height="40" Source="logo"/>
      <TfrxMemoView Left="60" Top="5" Width="240" Height="40" Font.Size="12" Font.Style="fsBold">Liste d'été &lt;1>
d'une cafétéria</TfrxMemoView>
    </TfrxReportTitle>
    <TfrxMasterData Name="MasterData1" Height="20" DataSet="ds1">
      <TfrxMemoView Left="5" Width="40" Height="20" HAlign="haRight" Frame.Typ="ftLeft ftRight ftTop ftBottom">[ds1."n"]</TfrxMemoView>
      <TfrxMemoView Left="45" Width="150" Height="20">[ds1."text"]</TfrxMemoView>
      <TfrxMemoView Left="195" Width="120" Height="20">[ds1."remark"]</TfrxMemoView>
    </TfrxMasterData>
    <TfrxReportSummary Height="30">
      <TfrxLineView Left="5" Top="2" Width="310" Frame.Style="fsDot"/>
      <TfrxSysMemoView Left="5" Top="5" Width="310" Height="20" Fill.BackColor="#FFF176">Total : [SUM(&lt;ds1."n">)]</TfrxSysMemoView>
    </TfrxReportSummary>
    <TfrxPageFooter Height="35">
      <TfrxBarCodeView Left="5" Top="0" Width="300" Height="30" Expression='&lt;ds1."n">'/>
    </TfrxPageFooter>
  </TfrxReportPage>
</TfrxReport>)";

// A picture of one red dot, as a portable pixmap.
SharedBytes dot() {
  const std::string pixmap("P6 1 1 255\n\xC0\x20\x20", 14);
  return std::make_shared<const Bytes>(pixmap.begin(), pixmap.end());
}

}  // namespace

std::shared_ptr<const Template> sampleTemplate() {
  return templateOf(kTemplate);
}

Rows sampleRows(int count) {
  Rows::Records records;
  for (int i = 1; i <= count; ++i) {
    records.push_back({{"n", i},
                       {"text", "ligne " + std::to_string(i)},
                       {"remark", i % 2 == 0 ? Value("dit \"b\"; c") : Value()}});
  }
  return Rows(records);
}

Document sampleDocument(int count) {
  Rows rows = sampleRows(count);
  EstablishmentBlock block;
  block.logo = dot();
  return rendered(sampleTemplate(), {&rows}, block);
}

}  // namespace tavoline::report
