// The database control's methods, called late-bound on real files as by a script's CreateObject.

#include "MadeBtr.h"
#include "core/DbEngine.h"
#include "ole/SystemGuid.h"

namespace qrn::test {
namespace {

struct BtrMethods : ::testing::Test {
  void SetUp() override {
    ASSERT_EQ(btr.Set(L"DDFDir", Text(company.Directory())), "ok EMPTY");
    ASSERT_EQ(btr.Say(L"DbOpenAll"), "ok I2:0");
  }

  void Insert(const wchar_t* code, const wchar_t* name) {
    EXPECT_EQ(btr.Say(L"DbClearFieldBuffer", {Text(L"People")}), "ok I2:0");
    Put(L"Code", code);
    Put(L"Name", name);
    EXPECT_EQ(btr.Say(L"DbAccess", {Short(2), Text(L"People"), Text(L"ByCode")}), "ok I2:0");
  }
  void Put(const wchar_t* field, const wchar_t* text) {
    EXPECT_EQ(btr.Say(L"DbSetFieldData", {Text(L"People"), Text(field), Text(text)}), "ok I2:0");
  }
  std::string Field(const wchar_t* field) {
    return btr.Say(L"DbGetFieldData", {Text(L"People"), Text(field)});
  }

  Company company;
  ShownMessages messages;
  MadeBtr btr;
};

TEST_F(BtrMethods, TextsKeepTheirCharacters) {
  Insert(L"1", L"\x8868\x793A \xFF76\xFF85");
  Variant name;
  EXPECT_EQ(CallMethod(btr.object(), L"DbGetFieldData", {Text(L"People"), Text(L"Name"), Ref(name)})
                .result,
            S_OK);
  EXPECT_STREQ(name->bstrVal, L"\x8868\x793A \xFF76\xFF85");
  Variant none;
  CallMethod(btr.object(), L"DbGetFieldData", {Text(L"people"), Text(L"Name"), Ref(none)});
  EXPECT_EQ(none.type(), VT_BSTR);
  EXPECT_EQ(none->bstrVal, nullptr) << "no such table gives a null text";
  Bstr text(L"kept");
  CallMethod(btr.object(), L"DbGetFieldData",
             {Text(L"People"), Text(L"no"), Ref(VT_BSTR, text.place())});
  EXPECT_FALSE(text.null()) << "no such field gives an empty one";
  EXPECT_TRUE(text.empty());
}

// One call of each remaining method: the answer, then what its out variable holds.
TEST_F(BtrMethods, EachMethodAnswers) {
  Insert(L"1", L"Abe");
  const auto people = Text(L"People");
  int16_t number = 0;
  Bstr text;
  const struct {
    const wchar_t* method;
    std::initializer_list<VARIANT> arguments;
    const char* answer;
  } cases[] = {
      {L"DbOpen", {people}, "ok I2:-2"},
      {L"DbIsOpen", {people}, "ok I2:1"},
      {L"DbIsOpen", {Text(L"x")}, "ok I2:-4"},
      {L"DbGetDataSize", {people, Text(L"Name")}, "ok I2:20"},
      {L"DbGetDataType", {people, Text(L"Born")}, "ok I2:3"},
      {L"DbTransferToControl", {people}, "ok I2:0"},
      {L"DbTransferFromControl", {people}, "ok I2:0"},
      {L"DbClearControlData", {people}, "ok I2:0"},
      {L"DbBeginTransaction", {Short(500)}, "ok I2:-10"},
      {L"DbBeginTransaction", {Short(0)}, "ok I2:0"},
      {L"DbEndTransaction", {}, "ok I2:0"},
      {L"DbBeginConCurTransaction", {Short(500)}, "ok I2:0"},
      {L"DbAbortTransaction", {}, "ok I2:0"},
      {L"DbSetLockBias", {Short(50)}, "ok I2:-10"},
      {L"DbSetLockBias", {Short(0)}, "ok I2:0"},
      {L"DbGetByPercentage", {people, Text(L"ByCode"), Short(0)}, "ok I2:0"},
      {L"DbFindPercentage", {people, Text(L"ByCode"), Long(0), Ref(VT_I2, &number)}, "ok I2:0"},
      {L"DbGetPosition", {Text(L"x")}, "ok I4:-1"},
      {L"DbGetDirect", {people, Long(-1), Text(L"ByCode")}, "ok I2:43"},
      {L"DbUnlock", {people, Short(0)}, "ok I2:81"},
      {L"DbExGetPosition", {Short(47), Short(0)}, "ok I4:-1"},
      {L"DbExGetFieldData", {Short(48), Text(L"Name"), Short(0)}, "ok BSTR:"},
      {L"DbExFree", {Short(5)}, "ok EMPTY"},
      {L"DbExSetMode", {Text(L"U")}, "ok I2:-1"},
      {L"DbExSetMode", {Text(L"EG")}, "ok I2:0"},
      {L"DbExSetMode", {Text(L"UC")}, "ok I2:0"},
      {L"DbAccessByID", {Short(12), Short(0), Short(0)}, "ok I2:0"},
      {L"DbAccessByID", {Short(12), Short(4), Short(0)}, "ok I2:-15"},
      {L"DbSetFieldDataByID", {Short(0), Short(1), Text(L"Zen")}, "ok I2:0"},
      {L"DbGetFieldDataByID", {Short(0), Short(1)}, "ok BSTR:Zen"},
      {L"DbGetTableName", {Short(0), Ref(VT_BSTR, text.place())}, "ok I2:0"},
      {L"DbGetFieldName", {people, Short(1), Ref(VT_BSTR, text.place())}, "ok I2:0"},
      {L"DbGetIndexName", {people, Short(2), Ref(VT_BSTR, text.place())}, "ok I2:0"},
      {L"DbGetRecordLength", {people, Ref(VT_I2, &number)}, "ok I2:0"},
      {L"DbGetNumOfIndex", {people, Ref(VT_I2, &number)}, "ok I2:0"},
      {L"DbGetNumOfTable", {Ref(VT_I2, &number)}, "ok I2:0"},
      {L"DbGetModulePath", {Ref(VT_BSTR, text.place())}, "ok I2:-1"},
      {L"DbIsNull", {people, Text(L"Name")}, "ok BOOL:0"},
      {L"DbLogOut", {}, "ok I2:0"},
      {L"DbClose", {people}, "ok I2:0"},
      {L"DbSetFileName", {people, Text(L"Other.btr")}, "ok I2:0"},
      {L"DbCreate", {people}, "ok I2:0"},
      {L"DbOpen", {people}, "ok I2:0"},
      {L"DbCloseAll", {}, "ok I2:0"},
      {L"DbReset", {}, "ok I2:0"},
      {L"DbLoadDDF", {}, "ok I2:0"},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(btr.Say(row.method, row.arguments), row.answer) << NarrowText(Bstr(row.method));
  }
  EXPECT_EQ(number, kTableCount);
  EXPECT_STREQ(text.c_str(), L"Code");
}

// An array of the host's, freed at scope end.
class HostArray : Pinned {
 public:
  HostArray(VARTYPE type, LONG lower, ULONG count, UINT dimensions = 1) : type_(type) {
    SAFEARRAYBOUND bounds[2] = {{count, lower}, {count, lower}};
    array_ = SafeArrayCreate(type, dimensions, bounds);
  }
  ~HostArray() { SafeArrayDestroy(array_); }

  VARIANT Value() const {
    VARIANT value{};
    value.vt = static_cast<VARTYPE>(VT_ARRAY | type_);
    value.parray = array_;
    return value;
  }
  VARIANT Reference() { return Ref(static_cast<VARTYPE>(VT_ARRAY | type_), &array_); }
  template <class T>
  T* data() const {
    return static_cast<T*>(array_->pvData);
  }
  std::string Texts() const {
    std::string all;
    for (ULONG i = 0; i < array_->rgsabound[0].cElements; ++i) {
      all += NarrowText(Bstr::Copy(data<BSTR>()[i])) + "|";
    }
    return all;
  }

 private:
  VARTYPE type_;
  SAFEARRAY* array_;
};

TEST_F(BtrMethods, RecordsMoveInArraysOfStrings) {
  Insert(L"7", L"Abe");
  const struct {
    const char* what;
    LONG lower;
    ULONG count;
    const char* texts;
  } cases[] = {{"all", 0, 5, "7|Abe||0000/00/00|0.00|"},
               {"from the second", 1, 1, "Abe|"},
               {"past the last", 4, 3, "0.00|||"},
               {"from below", -1, 2, "7||"},
               {"at the end", 5, 1, "|"},
               {"none", 0, 0, ""}};
  for (const auto& row : cases) {
    HostArray array(VT_BSTR, row.lower, row.count);
    int16_t rc = 99;
    CallMethod(btr.object(), L"DbGetRecord", {Text(L"People"), array.Reference(), Ref(VT_I2, &rc)});
    EXPECT_EQ(array.Texts(), row.texts) << row.what;
    EXPECT_EQ(rc, 99) << "success leaves the status as it was";
  }
  HostArray two(VT_BSTR, 0, 2);
  CallMethod(btr.object(), L"DbGetRecord", {Text(L"People"), two.Value()});
  EXPECT_EQ(two.Texts(), "7|Abe|");
  SysReAllocString(&two.data<BSTR>()[1], L"Ito");
  CallMethod(btr.object(), L"DbSetRecord", {Text(L"People"), two.Value()});
  EXPECT_EQ(Field(L"Name"), "ok BSTR:Ito");
  EXPECT_EQ(Field(L"Pay"), "ok BSTR:0.00");
}

TEST_F(BtrMethods, ArraysThatAreNotAsTheyShouldBeAreRefused) {
  HostArray strings(VT_BSTR, 0, 5), bytes(VT_UI1, 0, 8), numbers(VT_I4, 0, 5);
  HostArray table(VT_BSTR, 0, 2, 2), byteTable(VT_UI1, 0, 2, 2), late(VT_BSTR, 6, 1);
  SAFEARRAY* missing = nullptr;
  const struct {
    const wchar_t *method, *tableName;
    VARIANT array;
    const char* answer;
  } cases[] = {
      {L"DbGetRecord", L"People", Text(L"no array"), "ok I2:-17"},
      {L"DbGetRecord", L"People", bytes.Value(), "ok I2:-17"},
      {L"DbSetRecord", L"People", numbers.Reference(), "ok I2:-17"},
      {L"DbGetRecord", L"People", table.Value(), "ok I2:-18"},
      {L"DbGetRecord", L"People", Ref(VT_ARRAY | VT_BSTR, &missing), "ok I2:-18"},
      {L"DbSetRecord", L"People", late.Value(), "ok I2:-19"},
      {L"DbGetRecord", L"Nobody", strings.Value(), "ok I2:-4"},
      {L"DbGetRecordImage", L"People", strings.Value(), "ok I2:-23"},
      {L"DbSetRecordImage", L"People", byteTable.Reference(), "ok I2:-24"},
      {L"DbGetPosBlock", L"People", numbers.Value(), "ok I2:-23"},
      {L"DbGetPosBlock", L"Nobody", numbers.Value(), "ok I2:-23"},
      {L"DbGetPosBlock", L"Nobody", bytes.Value(), "ok I2:-4"},
      {L"DbGetRecordImage", L"Nobody", bytes.Reference(), "ok I2:-4"},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(btr.Say(row.method, {Text(row.tableName), row.array}), row.answer);
  }
}

TEST_F(BtrMethods, BufferAndPositionBlockMoveInArraysOfBytes) {
  Insert(L"7", L"Abe");
  HostArray image(VT_UI1, 1, 8);
  EXPECT_EQ(btr.Say(L"DbGetRecordImage", {Text(L"People"), image.Reference()}), "ok I2:0");
  EXPECT_EQ(std::string(image.data<char>() + 4, 3), "Abe");
  image.data<char>()[4] = 'O';
  EXPECT_EQ(btr.Say(L"DbSetRecordImage", {Text(L"People"), image.Value()}), "ok I2:0");
  EXPECT_EQ(Field(L"Name"), "ok BSTR:Obe");
  HostArray block(VT_UI1, 0, 200);
  EXPECT_EQ(btr.Say(L"DbGetPosBlock", {Text(L"People"), block.Value()}), "ok I2:0");
  EXPECT_NE(std::string(block.data<char>(), 128), std::string(128, '\0'));
  EXPECT_EQ(std::string(block.data<char>() + 128, 72), std::string(72, '\0'));
  HostArray huge(VT_UI1, 0, 100000);
  EXPECT_EQ(btr.Say(L"DbSetRecordImage", {Text(L"People"), huge.Value()}), "ok I2:0");
  EXPECT_EQ(Field(L"Code"), "ok BSTR:0") << "what lies beyond the buffer is left out";
}

TEST_F(BtrMethods, AnAnswersVariableMayHoldTheLastReference) {
  Variant self{Com<IDispatch>(btr.object())};
  btr.Drop();
  EXPECT_EQ(CallMethod(self->pdispVal, L"DbIsOpen", {Text(L"People"), Ref(self)}).Text(),
            "ok I2:1");
  EXPECT_EQ(Show(*self.get()), "I2:1");
  EXPECT_TRUE(ModuleIsIdle());
}

}  // namespace
}  // namespace qrn::test
