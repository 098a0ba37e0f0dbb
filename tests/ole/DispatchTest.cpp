#include "SampleFixture.h"

namespace qrn::test {
namespace {

constexpr char kNoMember[] = "80020003";
constexpr char kMismatch[] = "80020005";
constexpr char kUnknownName[] = "80020006";
constexpr char kBadCount[] = "8002000E";

struct DispatchTest : SampleFixture {
  void RunTime() {
    site.RunTime();
    Query<IOleObject>(control)->SetClientSite(&site);
  }
};

TEST_F(DispatchTest, PropertiesOfEveryTypeComeBackAsTheyWerePut) {
  const struct {
    const wchar_t* name;
    VARIANT put;
    const char* got;
  } kCases[] = {
      {L"Name", Text(L"abc"), "ok BSTR:abc"},
      {L"name", Long(12), "ok BSTR:12"},
      {L"NAME", Text(L""), "ok BSTR:"},
      {L"Count", Short(-32768), "ok I2:-32768"},
      {L"Count", Text(L"77"), "ok I2:77"},
      {L"Total", Long(2147483647), "ok I4:2147483647"},
      {L"Total", Short(-1), "ok I4:-1"},
      {L"Flag", Bool(true), "ok BOOL:-1"},
      {L"Flag", Short(5), "ok BOOL:-1"},
      {L"Flag", Long(0), "ok BOOL:0"},
      {L"Flavour", Short(9), "ok I4:9"},
      {L"Flavour", Long(12345), "ok I4:12345"},
      {L"BackColor", Long(-2147483640), "ok UI4:2147483656"},
      {L"BackColor", Long(255), "ok UI4:255"},
      {L"Checked", Short(10), "ok I2:10"},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(Put(object(), c.name, {c.put}).result, S_OK) << c.got;
    EXPECT_EQ(Get(object(), c.name).Text(), c.got);
  }
}

TEST_F(DispatchTest, ARefusedPutChangesNothingAndSaysWhy) {
  const struct {
    const wchar_t* name;
    VARIANT put;
    const char *failure, *kept;
  } kCases[] = {
      {L"Count", Long(32768), "8002000A", "ok I2:0"},
      {L"Count", Text(L"many"), kMismatch, "ok I2:0"},
      {L"Total", Text(L"3000000000"), "8002000A", "ok I4:0"},
      {L"Font", Text(L"Arial"), kMismatch, "ok OBJECT"},
      {L"Checked", Short(11), "80020009:800A017C", "ok I2:0"},
      {L"Fixed", Long(1), "80020009:800A017F", "ok I4:42"},
      {L"HWND", Long(1), "80020009:800A017F", "ok I4:0"},
      {L"Live", Text(L"x"), "80020009:800A017F", "80020009:800A018A"},
      {L"Nothing", Long(1), kUnknownName, kUnknownName},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(Put(object(), c.name, {c.put}).Text(), c.failure) << c.failure;
    EXPECT_EQ(Get(object(), c.name).Text(), c.kept) << c.failure;
  }
}

TEST_F(DispatchTest, AFailureWithoutAnExceptionRecordIsTheBareValue) {
  VARIANT value = Short(11);
  DISPID put = DISPID_PROPERTYPUT;
  DISPPARAMS sent{&value, &put, 1, 1};
  EXPECT_EQ(
      object()->Invoke(6, IID_NULL, 0, DISPATCH_PROPERTYPUT, &sent, nullptr, nullptr, nullptr),
      kInvalidPropertyValue);
}

TEST_F(DispatchTest, RunTimeMembersWorkAtRunTimeOnly) {
  EXPECT_EQ(Get(object(), L"Live").Text(), "80020009:800A018A");
  RunTime();
  EXPECT_EQ(Put(object(), L"Live", {Text(L"now")}).result, S_OK);
  EXPECT_EQ(Get(object(), L"Live").Text(), "ok BSTR:now");
}

TEST_F(DispatchTest, IndexedPropertiesTakeTheirIndexFirst) {
  EXPECT_EQ(Put(object(), L"Cell", {Long(2), Text(L"last")}).result, S_OK);
  EXPECT_EQ(Get(object(), L"Cell", {Short(2)}).Text(), "ok BSTR:last");
  EXPECT_EQ(Get(object(), L"Cell", {Text(L"2")}).Text(), "ok BSTR:last");
  EXPECT_EQ(Get(object(), L"Cell", {Long(3)}).Text(), "80020009:800A017D");
  EXPECT_EQ(Put(object(), L"Cell", {Long(-1), Text(L"x")}).Text(), "80020009:800A017D");
  EXPECT_EQ(Get(object(), L"Cell").Text(), kBadCount);
  EXPECT_EQ(Put(object(), L"Cell", {Text(L"x")}).Text(), kBadCount);
  EXPECT_EQ(Get(object(), L"Name", {Long(1)}).Text(), kBadCount);
}

TEST_F(DispatchTest, TheLastArgumentIsAnArgumentOrTheResult) {
  int16_t rc = 0;
  EXPECT_EQ(CallMethod(object(), L"Twice", {Short(4), Ref(VT_I2, &rc)}).Text(), "ok I2:8");
  EXPECT_EQ(rc, 8);
  EXPECT_EQ(CallMethod(object(), L"Twice", {Short(4)}).Text(), "ok I2:8");
  EXPECT_EQ(CallMethod(object(), L"Twice", {Short(4), Missing()}).Text(), "ok I2:8");
  EXPECT_EQ(CallMethod(object(), L"Twice").Text(), kBadCount);
  EXPECT_EQ(CallMethod(object(), L"Twice", {Short(1), Short(2), Short(3)}).Text(), kBadCount);
  EXPECT_EQ(CallMethod(object(), L"Twice", {Missing()}).Text(), "8002000F");
}

TEST_F(DispatchTest, AnswersGoIntoReferencesOfEveryKind) {
  Bstr exactText(L"abc");
  int32_t exactNumber = 12;
  CallMethod(object(), L"Swap", {Ref(VT_BSTR, exactText.place()), Ref(VT_I4, &exactNumber)});
  EXPECT_EQ(exactText.view(), L"12");
  EXPECT_EQ(exactNumber, 3);

  Variant text(Bstr(L"abcd"));
  Variant number(int16_t{7});
  EXPECT_EQ(CallMethod(object(), L"Swap", {Ref(text), Ref(number)}).Text(), "ok I2:0");
  EXPECT_EQ(Show(*text.get()) + Show(*number.get()), "BSTR:7I4:4");

  Variant inner(Bstr(L"ab"));
  Variant outer;
  *outer.get() = Ref(inner);
  double other = 5;
  CallMethod(object(), L"Swap", {Ref(outer), Ref(VT_R8, &other)});
  EXPECT_EQ(Show(*inner.get()), "BSTR:5");
  EXPECT_EQ(other, 2);
}

TEST_F(DispatchTest, AVariableThatHoldsAReferenceIsAnsweredBehindIt) {
  Bstr text(L"abc");
  int16_t narrow = 9;
  Variant first;
  Variant second;
  *first.get() = Ref(VT_BSTR, text.place());
  *second.get() = Ref(VT_I2, &narrow);
  CallMethod(object(), L"Swap", {Ref(first), Ref(second)});
  EXPECT_EQ(text.view(), L"9");
  EXPECT_EQ(narrow, 3);
}

TEST_F(DispatchTest, EmptyVariablesAndPlainValuesServeAsOutArguments) {
  Variant text;
  Variant number;
  EXPECT_EQ(CallMethod(object(), L"Swap", {Ref(text), Ref(number)}).Text(), "ok I2:0");
  EXPECT_EQ(Show(*text.get()) + Show(*number.get()), "BSTR:0I4:0");
  EXPECT_EQ(CallMethod(object(), L"Swap", {Text(L"abc"), Long(1)}).Text(), "ok I2:0");
}

TEST_F(DispatchTest, VariablesKeepWhatACallThatFailedDidNotTouch) {
  Variant text(int16_t{5});
  Variant number(Bstr(L"13"));
  EXPECT_EQ(CallMethod(object(), L"Swap", {Ref(text), Ref(number)}).Text(), "ok I2:-4");
  EXPECT_EQ(Show(*text.get()) + Show(*number.get()), "I2:5BSTR:13");
  BSTR null = nullptr;
  CallMethod(object(), L"Swap", {Ref(VT_BSTR, &null), Ref(number)});
  EXPECT_EQ(null, nullptr);
  Variant status;
  EXPECT_EQ(CallMethod(object(), L"Swap", {Ref(text), Ref(number), Ref(status)}).result, S_OK);
  EXPECT_EQ(Show(*status.get()), "I2:-4");
}

TEST_F(DispatchTest, ANullTextStaysNull) {
  VARIANT null{};
  null.vt = VT_BSTR;
  Variant held;
  held->vt = VT_BSTR;
  const struct {
    const char* what;
    VARIANT value;
  } cases[] = {{"a value", null}, {"a variable's", Ref(held)}};
  for (const auto& row : cases) {
    sample().Name = Bstr(L"before");
    EXPECT_EQ(Put(object(), L"Name", {row.value}).result, S_OK);
    EXPECT_TRUE(sample().Name.null()) << row.what;
    EXPECT_TRUE(sample().Name.empty()) << row.what;
  }
  EXPECT_EQ(Put(object(), L"Name", {Text(L"")}).result, S_OK);
  EXPECT_FALSE(sample().Name.null());
}

TEST_F(DispatchTest, AReferenceThatCannotTakeTheAnswerIsRefusedBeforeTheCall) {
  IDispatch* nothing = nullptr;
  int32_t number = 1;
  const CallResult called =
      CallMethod(object(), L"Swap", {Ref(VT_DISPATCH, &nothing), Ref(VT_I4, &number)});
  EXPECT_EQ(called.Text(), kMismatch);
  EXPECT_EQ(called.badArgument, 1u);
  EXPECT_EQ(number, 1);
  EXPECT_EQ(CallMethod(object(), L"Swap", {Ref(VT_BSTR, nullptr), Long(1)}).Text(), kMismatch);
}

TEST_F(DispatchTest, AnythingGoesThroughAsItWasSent) {
  int32_t number = 3;
  Variant inside(int16_t{1});
  EXPECT_EQ(CallMethod(object(), L"KindOf", {Ref(VT_I4, &number)}).Text(), "ok BSTR:16387 missing");
  EXPECT_EQ(CallMethod(object(), L"KindOf", {Ref(inside), Missing()}).Text(), "ok BSTR:2 missing");
  EXPECT_EQ(CallMethod(object(), L"KindOf", {Long(1), Long(2)}).Text(), "ok BSTR:3 given");
}

TEST_F(DispatchTest, ArgumentsMayBeNamed) {
  const wchar_t* names[] = {L"Join", L"Second", L"First"};
  DISPID ids[3] = {};
  ASSERT_EQ(object()->GetIDsOfNames(IID_NULL, const_cast<LPOLESTR*>(names), 3, 0, ids), S_OK);
  VARIANT values[] = {Text(L"b"), Text(L"a")};
  DISPPARAMS sent{values, &ids[1], 2, 2};
  Variant result;
  EXPECT_EQ(
      object()->Invoke(ids[0], IID_NULL, 0, DISPATCH_METHOD, &sent, result.put(), nullptr, nullptr),
      S_OK);
  EXPECT_EQ(Show(*result.get()), "BSTR:a+b");

  const wchar_t* wrong[] = {L"Join", L"Third"};
  EXPECT_EQ(object()->GetIDsOfNames(IID_NULL, const_cast<LPOLESTR*>(wrong), 2, 0, ids),
            DISP_E_UNKNOWNNAME);
  DISPID twice[] = {0, 0};
  DISPPARAMS doubled{values, twice, 2, 2};
  EXPECT_EQ(object()->Invoke(25, IID_NULL, 0, DISPATCH_METHOD, &doubled, nullptr, nullptr, nullptr),
            DISP_E_PARAMNOTFOUND);
}

TEST_F(DispatchTest, FailuresAndExceptionsStayInside) {
  EXPECT_EQ(CallMethod(object(), L"Fail").Text(), "80020009:800A017C");
  EXPECT_EQ(CallMethod(object(), L"Throw").Text(), "80020009:8000FFFF");
  EXPECT_EQ(object()->Invoke(999, IID_NULL, 0, DISPATCH_METHOD, nullptr, nullptr, nullptr, nullptr),
            E_POINTER);
  DISPPARAMS none{};
  EXPECT_EQ(object()->Invoke(999, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr),
            DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(Call(object(), L"Fail", DISPATCH_PROPERTYPUT, {Long(1)}).Text(), kNoMember);
}

TEST_F(DispatchTest, APutAsksStoresAndTells) {
  PropertySink sink;
  const Connection connection(object(), __uuidof(IPropertyNotifySink), &sink);
  ASSERT_EQ(connection.result, S_OK);
  const auto persist = Query<IPersistStreamInit>(control);
  EXPECT_EQ(persist->IsDirty(), S_FALSE);
  Put(object(), L"Name", {Text(L"a")});
  EXPECT_EQ(sink.log, "ask(1) changed(1) ");
  EXPECT_EQ(persist->IsDirty(), S_OK);
}

TEST_F(DispatchTest, ARefusedLeaveIsTheResultAndChangesNothing) {
  PropertySink sink;
  const Connection connection(object(), __uuidof(IPropertyNotifySink), &sink);
  sink.refuses = 1;
  EXPECT_EQ(Put(object(), L"Name", {Text(L"a")}).result, S_FALSE);
  EXPECT_EQ(sink.log, "ask(1) ");
  EXPECT_EQ(Get(object(), L"Name").Text(), "ok BSTR:");
  EXPECT_EQ(Query<IPersistStreamInit>(control)->IsDirty(), S_FALSE);
}

TEST_F(DispatchTest, StoreOnlyAndUnchangedPutsTellNobody) {
  PropertySink sink;
  const Connection connection(object(), __uuidof(IPropertyNotifySink), &sink);
  Put(object(), L"Quiet", {Text(L"x")});
  Put(object(), L"Same", {Text(L"")});
  EXPECT_EQ(sink.log, "");
  EXPECT_EQ(Get(object(), L"Quiet").Text(), "ok BSTR:x");
  Put(object(), L"Same", {Text(L"new")});
  Put(object(), L"Same", {Text(L"new")});
  EXPECT_EQ(sink.log, "ask(10) changed(10) ");
}

TEST_F(DispatchTest, AnAssignedFontIsACopyAndASetFontIsTheSame) {
  Com<IFontDisp> font = MakeFont();
  VARIANT value{};
  value.vt = VT_DISPATCH;
  value.pdispVal = font.get();
  ASSERT_EQ(Put(object(), L"Font", {value}).result, S_OK);
  EXPECT_NE(Get(object(), L"Font").value->pdispVal, font.get());
  ASSERT_EQ(Call(object(), L"Font", DISPATCH_PROPERTYPUTREF, {value}).result, S_OK);
  EXPECT_EQ(Get(object(), L"Font").value->pdispVal, font.get());
}

TEST_F(DispatchTest, ChangingTheFontObjectIsAChangeOfTheControl) {
  PropertySink sink;
  const Connection connection(object(), __uuidof(IPropertyNotifySink), &sink);
  const CallResult font = Get(object(), L"Font");
  ASSERT_EQ(Put(font.value->pdispVal, L"Size", {Long(12)}).result, S_OK);
  EXPECT_EQ(sink.log, "changed(-512) ");
}

TEST_F(DispatchTest, TypesComeFromTheLibrary) {
  UINT count = 0;
  Com<ITypeInfo> info;
  EXPECT_EQ(object()->GetTypeInfoCount(&count), S_OK);
  EXPECT_EQ(count, 1u);
  EXPECT_EQ(object()->GetTypeInfo(1, 0, info.put()), DISP_E_BADINDEX);
  ASSERT_EQ(object()->GetTypeInfo(0, 0, info.put()), S_OK);
  Bstr name;
  EXPECT_EQ(info->GetDocumentation(MEMBERID_NIL, name.put(), nullptr, nullptr, nullptr), S_OK);
  EXPECT_EQ(name.view(), L"ISample");
}

}  // namespace
}  // namespace qrn::test
