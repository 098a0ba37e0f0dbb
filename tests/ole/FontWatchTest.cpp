// Hearing of a font's changes, and of none when the listener has gone.
#include <olectl.h>

#include "com/Fonts.h"
#include "com/Object.h"
#include "tests/support/Test.h"

namespace qrn::test {
namespace {

using namespace qrn::com;

// A font's notices alone. It keeps every sink for good, whoever unadvises.
class KeepingFont final : public Object<IConnectionPointContainer, IConnectionPoint, IFontDisp> {
 public:
  void Change() {
    for (const auto& sink : sinks_) sink->OnChanged(DISPID_FONT_SIZE);
  }

  STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints**) override { return E_NOTIMPL; }
  STDMETHODIMP FindConnectionPoint(REFIID, IConnectionPoint** point) override {
    return Com<IConnectionPoint>(this).copyTo(point);
  }
  STDMETHODIMP GetConnectionInterface(IID*) override { return E_NOTIMPL; }
  STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer**) override {
    return E_NOTIMPL;
  }
  STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override {
    sinks_.push_back(Query<IPropertyNotifySink>(sink));
    *cookie = static_cast<DWORD>(sinks_.size());
    return S_OK;
  }
  STDMETHODIMP Unadvise(DWORD) override { return CONNECT_E_NOCONNECTION; }
  STDMETHODIMP EnumConnections(IEnumConnections**) override { return E_NOTIMPL; }

  STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                      UINT*) override {
    return E_NOTIMPL;
  }

 private:
  std::vector<Com<IPropertyNotifySink>> sinks_;
};

TEST(FontWatch, SpeaksToNobodyOnceItIsGone) {
  const Com<KeepingFont> font = Make<KeepingFont>();
  int changes = 0;
  {
    FontHolder holder([&] { ++changes; });
    holder.Set(Com<IFontDisp>(font.get()));
    font->Change();
    EXPECT_EQ(changes, 1);
  }
  font->Change();
  EXPECT_EQ(changes, 1);
}

TEST(FontWatch, MayBeLetGoByWhoItTells) {
  const Com<KeepingFont> font = Make<KeepingFont>();
  std::unique_ptr<FontWatch> watch;
  watch = std::make_unique<FontWatch>([&] { watch.reset(); });
  watch->Watch(font.get());
  font->Change();
  EXPECT_EQ(watch, nullptr);
}

}  // namespace
}  // namespace qrn::test
