// What a grid shows of its records, and its properties.
#include "GridFixture.h"

namespace qrn::test {
namespace {

constexpr char kPeople[] =
    "|Code|Name|Town|;   1|1|うめ|Kyoto|;   2|2||Osaka|;   3|3|さくら|Kyoto|;   4|4|うめだ|Nara|;";

TEST_F(Grids, StartAsTheirTableSays) {
  Hosted<CQRNGrid> fresh(L"grd2");
  constexpr char kStart[] =
      "DbListSource=BSTR: Cols=I4:2 Rows=I4:2 FixedCols=I4:1 FixedRows=I4:1 Row=I4:1 "
      "DbMaxRecords=I4:300 DbSkipRecords=I2:100 DbUpdateOption=I4:1 DbExOperation=I4:1 "
      "GridLines=BOOL:-1 GridLineWidth=I4:1 ScrollBars=I4:3 AllowUpdate=BOOL:0 "
      "AllowUserResizing=I4:3 HighLight=BOOL:0 FillStyle=I4:0 SetColNames=BOOL:-1 "
      "SetRecordNumbers=BOOL:-1 SetColWidth=BOOL:0 Appearance=I2:1 BorderStyle=I4:1 "
      "BackColor=UI4:16777215 ForeColor=UI4:2147483666 MousePointer=I4:0 Enabled=BOOL:-1";
  EXPECT_EQ(fresh.Values(kStart), kStart);
}

TEST_F(Grids, AreFilledWhenTheyAreMadeAndWhenTheyAreAsked) {
  MakeShown();
  EXPECT_EQ(Cells(), kPeople);
  EXPECT_EQ(Current(), "1,1");
  Insert("5", "もも", "Nara");
  for (const wchar_t* method : {L"Reload", L"Refresh"}) {
    EXPECT_EQ(CallMethod(host_->object(), method).Text(), "ok EMPTY");
    EXPECT_EQ(Cells(), std::string(kPeople) + "   5|5|もも|Nara|;");
  }
  EXPECT_EQ(CallMethod(host_->object(), L"Clear").result, S_OK);
  EXPECT_EQ(Row(1), "||||");
  Make();
  Set(L"DbUpdateOption", Long(0));
  ASSERT_EQ(host_->Show(), S_OK);
  EXPECT_EQ(Row(1), "||||");
  EXPECT_EQ(grid().Rows, 2);
}

TEST_F(Grids, AFormatHandlerChangesLinesAndEndsTheFill) {
  Make();
  int raised = 0;
  host_->events.answer = [&](DISPID id, DISPPARAMS& sent) {
    if (id != kFormat) return;
    if (++raised == 3) grid().Abort = -1;
    SysReAllocString(sent.rgvarg[0].pbstrVal, L"x\ty");
  };
  ASSERT_EQ(host_->Show(), S_OK);
  EXPECT_EQ(raised, 3);
  EXPECT_EQ(Cells(), "|Code|Name|Town|;   1|x|y||;   2|x|y||;");
}

TEST_F(Grids, SizesThatWouldMeetTheFixedOnesAreRefused) {
  Make();
  const struct {
    const wchar_t* name;
    int32_t value;
    HRESULT result;
  } cases[] = {{L"Cols", 1, HRESULT(0x800A017C)},
               {L"Cols", 65, HRESULT(0x800A017C)},
               {L"Cols", 0, S_OK},
               {L"Cols", 64, S_OK},
               {L"Rows", 1, HRESULT(0x800A017C)},
               {L"Rows", 1025, HRESULT(0x800A017C)},
               {L"Rows", 0, S_OK},
               {L"Rows", 1024, S_OK},
               {L"FixedCols", 64, HRESULT(0x800A017C)},
               {L"FixedCols", 63, S_OK},
               {L"FixedRows", 1024, HRESULT(0x800A017C)},
               {L"FixedRows", 3, S_OK}};
  for (const auto& row : cases) {
    EXPECT_EQ(Put(host_->object(), row.name, {Long(row.value)}).scode, row.result) << row.value;
  }
}

TEST_F(Grids, IndexedPropertiesAnswerByColumnAndRow) {
  MakeShown("u");
  const auto at = [&](const wchar_t* name, int32_t index) {
    return Get(host_->object(), name, {Long(index)}).Text();
  };
  SetAt(L"ColWidth", 1, Long(29));
  EXPECT_EQ(at(L"ColWidth", 1), "ok I4:15");
  EXPECT_EQ(at(L"ColWidth", 4), "ok I4:750");
  EXPECT_EQ(Get(host_->object(), L"ColWidth", {Long(5)}).scode, HRESULT(0x800A017D));
  EXPECT_EQ(at(L"RowHeight", -1), "ok I4:300");
  SetAt(L"TextAlign", 2, Short(1));
  EXPECT_EQ(at(L"TextAlign", 2), "ok I2:1");
  EXPECT_EQ(at(L"IMEMode", 7), "ok I4:0");
  EXPECT_EQ(at(L"CellMaxLength", 1), "ok I2:20") << "the second field's";
  EXPECT_EQ(Get(host_->object(), L"CellMaxLength", {Long(0)}).scode, HRESULT(0x800A017D));
  EXPECT_NE(at(L"DbPhysicalPosition", 0), "ok I4:0");
  EXPECT_EQ(Get(host_->object(), L"DbPhysicalPosition", {Long(4)}).scode, HRESULT(0x800A017D));
  EXPECT_EQ(Put(host_->object(), L"DbPhysicalPosition", {Long(0), Long(1)}).scode,
            HRESULT(0x800A017F));
  SetAt(L"FormatString", 1, Text(L"0000"));
  EXPECT_EQ(at(L"FormatString", 1), "ok BSTR:0000");
}

TEST_F(Grids, CellsTakeTheFormatOfTheirColumn) {
  Make();
  host_->format.offered = PlayedFormat::kService;
  Set(L"DbUpdateOption", Long(0));
  ASSERT_EQ(host_->Show(), S_OK);
  SetAt(L"FormatString", 2, Text(L"@@"));
  Refill();
  EXPECT_EQ(Row(1), "   1|1|[うめ]|Kyoto|");
  EXPECT_EQ(host_->format.asked.substr(0, 20), "@@:うめ 17 512 0;@");
}

TEST_F(Grids, PropertiesOfTheBindingAskForLeaveAndTellOfChange) {
  Make();
  PropertySink sink;
  const com::Com<IUnknown> control(&grid().Outer());
  const Connection connection(control.get(), __uuidof(IPropertyNotifySink), &sink);
  Set(L"DbListTable", Text(L"People"));
  EXPECT_EQ(sink.log, "") << "the same text";
  Set(L"DbListTable", Text(L"Notes"));
  EXPECT_EQ(sink.log, "ask(2) changed(2) ");
  sink.log.clear();
  sink.refuses = 2;
  EXPECT_EQ(host_->Set(L"DbListTable", Text(L"Days")), S_FALSE);
  EXPECT_EQ(Value(L"DbListTable"), "ok BSTR:Notes");
  Set(L"DbListFields", Text(L"a,b,c,d,e"));
  EXPECT_EQ(Value(L"Cols"), "ok I4:6") << "they grow with the fields";
}

}  // namespace
}  // namespace qrn::test
