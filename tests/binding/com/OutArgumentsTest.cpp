// Out arguments of the database control's methods given as variables that hold anything: what a
// script has not put a number into.

#include "MadeBtr.h"

namespace qrn::test {
namespace {

// An object of the host's with a value, or with none.
class HostObject final : public Counted<IDispatch> {
 public:
  explicit HostObject(HRESULT result) : result_(result) {}

  STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* value, EXCEPINFO*,
                      UINT*) override {
    if (FAILED(result_) || id != DISPID_VALUE) return DISP_E_MEMBERNOTFOUND;
    value->vt = VT_I4;
    value->lVal = 8;
    return S_OK;
  }

 private:
  HRESULT result_;
};

Variant Of(VARTYPE type) {
  Variant value;
  value->vt = type;
  return value;
}
Variant Real(double number) {
  Variant value = Of(VT_R8);
  value->dblVal = number;
  return value;
}
Variant AnArray() {
  Variant value = Of(VT_ARRAY | VT_VARIANT);
  value->parray = SafeArrayCreateVector(VT_VARIANT, 0, 3);
  return value;
}

struct OutArguments : ::testing::Test {
  struct Case {
    const char* what;
    std::function<Variant()> make;
  };

  std::vector<Case> Cases() {
    return {
        {"nothing yet", [] { return Variant(); }},
        {"Null", [] { return Of(VT_NULL); }},
        {"a text", [] { return Variant(Bstr(L"abc")); }},
        {"an empty text", [] { return Variant(Bstr(L"")); }},
        {"a null text", [] { return Of(VT_BSTR); }},
        {"digits", [] { return Variant(Bstr(L" 12 ")); }},
        {"a large number", [] { return Real(1e300); }},
        {"a fraction", [] { return Real(2.6); }},
        {"True", [] { return Variant::Bool(true); }},
        {"Nothing", [] { return Of(VT_DISPATCH); }},
        {"an object", [this] { return Variant(Com<IDispatch>(&mute)); }},
        {"an object with a value", [this] { return Variant(Com<IDispatch>(&eight)); }},
        {"an argument left out", [] { return Of(VT_ERROR); }},
        {"an array", [] { return AnArray(); }},
    };
  }
  void SetUp() override {
    const std::string directory = company.Directory();
    btr.Set(L"DDFDir", Text(std::wstring(directory.begin(), directory.end()).c_str()));
  }

  Company company;
  ShownMessages messages;
  MadeBtr btr;
  HostObject mute{E_FAIL};
  HostObject eight{S_OK};
};

TEST_F(OutArguments, TakeTheAnswerWhateverTheVariableHeld) {
  for (const Case& row : Cases()) {
    Variant status = row.make();
    EXPECT_EQ(btr.Say(L"DbIsOpen", {Text(L"Nobody"), Ref(status)}), "ok I2:-4") << row.what;
    EXPECT_EQ(Show(*status.get()), "I2:-4") << row.what;
    Variant count = row.make();
    EXPECT_EQ(btr.Say(L"DbGetNumOfTable", {Ref(count)}), "ok I2:0") << row.what;
    EXPECT_EQ(Show(*count.get()), "I2:3") << row.what;
    Variant name = row.make();
    EXPECT_EQ(btr.Say(L"DbGetTableName", {Short(1), Ref(name)}), "ok I2:0") << row.what;
    EXPECT_EQ(Show(*name.get()), "BSTR:Notes") << row.what;
    EXPECT_EQ(mute.references + eight.references, 0u) << row.what;
  }
}

TEST_F(OutArguments, MayHoldTheLastReferenceToTheControl) {
  Variant self{Com<IDispatch>(btr.object())};
  btr.Drop();
  EXPECT_EQ(CallMethod(self->pdispVal, L"DbIsOpen", {Text(L"People"), Ref(self)}).Text(),
            "ok I2:0");
  EXPECT_EQ(Show(*self.get()), "I2:0");
  EXPECT_TRUE(ModuleIsIdle());
}

}  // namespace
}  // namespace qrn::test
