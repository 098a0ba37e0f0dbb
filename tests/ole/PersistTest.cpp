#include <ocidl.h>
#include <olectl.h>

#include "SampleFixture.h"
#include "SavedBytes.h"
#include "SystemStorage.h"
#include "ole/SystemGuid.h"

namespace qrn::test {
namespace {

using Bytes = std::vector<uint8_t>;

class ErrorLog final : public Counted<IErrorLog> {
 public:
  std::wstring names;
  STDMETHODIMP AddError(LPCOLESTR name, EXCEPINFO*) override {
    names += name;
    return S_OK;
  }
};

struct PersistTest : SampleFixture {
  // A state that differs from a new control's in every entry.
  void Fill() {
    Put(object(), L"Name", {Text(L"名前")});
    Put(object(), L"Count", {Short(-7)});
    Put(object(), L"Total", {Long(123456)});
    Put(object(), L"Flag", {Bool(true)});
    Put(object(), L"Flavour", {Long(9)});
    Put(object(), L"Checked", {Short(5)});
    Put(object(), L"BackColor", {Long(0x00FF00)});
    Com<IFont> font;
    sample().GetFont()->QueryInterface(__uuidof(IFont), font.putVoid());
    font->put_Bold(TRUE);
    PICTDESC picture{};
    picture.cbSizeofstruct = sizeof picture;
    picture.picType = PICTYPE_BITMAP;
    picture.bmp.hbitmap = CreateBitmap(3, 2, 1, 1, nullptr);
    OleCreatePictureIndirect(&picture, __uuidof(IPictureDisp), TRUE, sample().MouseIcon.putVoid());
    SIZEL size{4000, 3000};
    Query<IOleObject>(control)->SetExtent(DVASPECT_CONTENT, &size);
  }
  static std::string State(Sample& sample) {
    SIZEL size{};
    Query<IOleObject>(&sample.Outer())->GetExtent(DVASPECT_CONTENT, &size);
    const auto font = Query<IFont>(sample.GetFont());
    BOOL bold = FALSE;
    if (font) font->get_Bold(&bold);
    OLE_XSIZE_HIMETRIC width = 0;
    if (const auto picture = Query<IPicture>(sample.MouseIcon)) picture->get_Width(&width);
    const auto number = [](auto value) { return std::to_string(value) + " "; };
    return number(size.cx) + number(size.cy) + number(sample.Name.view().size()) +
           number(sample.Count) + number(sample.Total) + number(sample.Flag) +
           number(sample.Flavour) + number(sample.Checked) + number(sample.BackColor) +
           number(bold) + number(width);
  }
  // The control still answers, is drawn and can be activated and saved.
  void ExpectUsable() {
    EXPECT_EQ(Put(object(), L"Count", {Short(3)}).result, S_OK);
    EXPECT_EQ(sample().Count, 3);
    EXPECT_EQ(site.Host(unknown()), S_OK);
    EXPECT_GT(Saved(unknown()).size(), 40u);
    site.Unhost();
  }
};

// A second control, gone with the test.
class Fresh {
 public:
  Fresh() : sample(*new Sample), control(Com<IUnknown>::Take(&sample.Inner())) {}
  Sample& sample;
  Com<IUnknown> control;
};

TEST_F(PersistTest, AStreamHoldsTheWholeState) {
  Fill();
  const Bytes bytes = Saved(unknown());
  const Bytes head = {0x00, 0x0E, 0, 0, 0xA0, 0x0F, 0, 0, 0xB8, 0x0B, 0, 0, 8, 0, 6, 0, 0, 0};
  ASSERT_GT(bytes.size(), head.size());
  EXPECT_TRUE(std::equal(head.begin(), head.end(), bytes.begin()));
  ULARGE_INTEGER size{};
  EXPECT_EQ(Query<IPersistStreamInit>(control)->GetSizeMax(&size), S_OK);
  EXPECT_EQ(size.QuadPart, bytes.size());
  Fresh other;
  EXPECT_EQ(LoadFrom(other.control.get(), bytes), S_OK);
  EXPECT_EQ(State(other.sample), State(sample()));
  EXPECT_EQ(other.sample.Name, sample().Name);
  EXPECT_EQ(Saved(other.control.get()), bytes);
}

TEST_F(PersistTest, AStorageHoldsTheStreamAsContents) {
  Fill();
  const SystemStorage storage(false);
  Fresh other;
  EXPECT_EQ(Query<IPersistStorage>(other.control)->Load(storage.get()), STG_E_FILENOTFOUND);
  EXPECT_EQ(Query<IPersistStorage>(control)->Save(storage.get(), TRUE), S_OK);
  EXPECT_EQ(Query<IPersistStorage>(control)->Save(storage.get(), TRUE), S_OK) << "saved over";
  EXPECT_EQ(Query<IPersistStorage>(control)->IsDirty(), S_FALSE);
  {
    Com<IStream> stream;
    ASSERT_EQ(storage.get()->OpenStream(L"Contents", nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE, 0,
                                        stream.put()),
              S_OK);
    EXPECT_EQ(BytesOf(*stream), Saved(unknown()));
  }
  EXPECT_EQ(Query<IPersistStorage>(other.control)->Load(storage.get()), S_OK);
  EXPECT_EQ(State(other.sample), State(sample()));
}

TEST_F(PersistTest, ABagHoldsAValueForEachEntry) {
  Fill();
  Bag bag;
  EXPECT_EQ(Query<IPersistPropertyBag>(control)->Save(&bag, TRUE, TRUE), S_OK);
  std::wstring names;
  for (const auto& entry : bag.values) names += entry.first + L" ";
  EXPECT_EQ(names, L"BackColor Checked Count Flag Flav Font MouseIcon Name Total _cx _cy ");
  Fresh other;
  EXPECT_EQ(Query<IPersistPropertyBag>(other.control)->Load(&bag, nullptr), S_OK);
  EXPECT_EQ(State(other.sample), State(sample()));
  EXPECT_EQ(other.sample.Name, sample().Name);
}

TEST_F(PersistTest, ANullTextIsNotAnEmptyOne) {
  for (const bool null : {true, false}) {
    sample().Name = null ? Bstr() : Bstr::Empty();
    Fresh streamed;
    EXPECT_EQ(LoadFrom(streamed.control.get(), Saved(unknown())), S_OK);
    EXPECT_EQ(streamed.sample.Name.null(), null);
    Bag bag;
    EXPECT_EQ(Query<IPersistPropertyBag>(control)->Save(&bag, TRUE, TRUE), S_OK);
    Fresh bagged;
    EXPECT_EQ(Query<IPersistPropertyBag>(bagged.control)->Load(&bag, nullptr), S_OK);
    EXPECT_EQ(bagged.sample.Name.null(), null);
    EXPECT_EQ(Saved(bagged.control.get()), Saved(unknown()));
  }
}

TEST_F(PersistTest, AControlWithoutItsObjectsGoesToTheSystemsStoragesAndStreams) {
  sample().MouseIcon.reset();
  sample().PutFont(nullptr);
  for (const bool onDisk : {false, true}) {
    const SystemStorage storage(onDisk);
    ASSERT_TRUE(storage.get());
    EXPECT_EQ(Query<IPersistStorage>(control)->Save(storage.get(), TRUE), S_OK);
    Fresh other;
    EXPECT_EQ(Query<IPersistStorage>(other.control)->Load(storage.get()), S_OK);
    EXPECT_FALSE(other.sample.GetFont());
    EXPECT_FALSE(other.sample.MouseIcon);
    Com<IStream> stream;
    const DWORD mode = STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE;
    ASSERT_EQ(storage.get()->CreateStream(L"own", mode, 0, 0, stream.put()), S_OK);
    EXPECT_EQ(Query<IPersistStreamInit>(control)->Save(stream.get(), TRUE), S_OK);
    EXPECT_EQ(BytesOf(*stream), Saved(unknown()));
  }
}

TEST_F(PersistTest, WhatABagLeavesOutKeepsItsValue) {
  Bag bag;
  bag.values[L"Name"] = Variant(Bstr(L"alone"));
  bag.values[L"Flavour"] = Variant(Bstr(L"9"));  // by the property's own name, as text
  Put(object(), L"Total", {Long(5)});
  EXPECT_EQ(Query<IPersistPropertyBag>(control)->Load(&bag, nullptr), S_OK);
  EXPECT_EQ(sample().Name.view(), L"alone");
  EXPECT_EQ(sample().Flavour, 9);
  EXPECT_EQ(sample().Total, 5);
  EXPECT_EQ(Query<IPersistStreamInit>(control)->IsDirty(), S_FALSE);
}

TEST_F(PersistTest, ABagWithAValueOfNoUseFailsAndSaysWhich) {
  const struct {
    const wchar_t* name;
    VARIANT value;
  } cases[] = {{L"Checked", Short(11)}, {L"Font", Long(5)}, {L"_cx", Text(L"wide")}};
  for (const auto& row : cases) {
    Bag bag;
    ErrorLog log;
    VariantCopy(bag.values[row.name].put(), const_cast<VARIANT*>(&row.value));
    const HRESULT result = Query<IPersistPropertyBag>(control)->Load(&bag, &log);
    // What the bag itself cannot convert counts as left out.
    const bool refused = row.name != std::wstring(L"_cx");
    EXPECT_EQ(result, refused ? E_FAIL : S_OK) << Show(row.value);
    EXPECT_EQ(log.names, refused ? row.name : L"") << Show(row.value);
  }
  ExpectUsable();
}

TEST_F(PersistTest, DirtyTellsOfChangesSinceTheLastLoadOrSave) {
  const auto persist = Query<IPersistStreamInit>(control);
  EXPECT_EQ(persist->InitNew(), S_OK);
  Put(object(), L"Name", {Text(L"a")});
  EXPECT_EQ(persist->IsDirty(), S_OK);
  EXPECT_EQ(persist->Save(StreamOf({}).get(), FALSE), S_OK);
  EXPECT_EQ(persist->IsDirty(), S_OK);
  const Bytes bytes = Saved(unknown());
  EXPECT_EQ(persist->IsDirty(), S_FALSE);
  Put(object(), L"Quiet", {Text(L"a")});
  EXPECT_EQ(persist->IsDirty(), S_FALSE) << "a store that nobody hears of";
  Put(object(), L"Name", {Text(L"b")});
  EXPECT_EQ(LoadFrom(unknown(), bytes), S_OK);
  EXPECT_EQ(persist->IsDirty(), S_FALSE);
}

TEST_F(PersistTest, LoadingAsksAndTellsNobody) {
  Fill();
  const Bytes bytes = Saved(unknown());
  PropertySink sink;
  const Connection connection(unknown(), __uuidof(IPropertyNotifySink), &sink);
  sink.refuses = 1;
  sample().log.clear();
  EXPECT_EQ(LoadFrom(unknown(), bytes), S_OK);
  EXPECT_EQ(sink.log, "");
  EXPECT_NE(sample().log.find("changed(1) "), std::string::npos);
  EXPECT_TRUE(sample().log.ends_with("loaded ")) << sample().log;
}

TEST_F(PersistTest, AStreamCutAnywhereFailsAndHarmsNothing) {
  Fill();
  const Bytes bytes = Saved(unknown());
  Fresh other;
  const std::string untouched = State(other.sample);
  for (size_t length = 0; length < bytes.size(); ++length) {
    const Bytes cut(bytes.begin(), bytes.begin() + static_cast<ptrdiff_t>(length));
    ASSERT_EQ(LoadFrom(other.control.get(), cut), E_FAIL) << length;
  }
  EXPECT_EQ(State(other.sample), untouched);
  EXPECT_EQ(LoadFrom(other.control.get(), bytes), S_OK);
  EXPECT_EQ(State(other.sample), State(sample()));
}

TEST_F(PersistTest, AStreamWithAnyByteChangedLoadsOrFails) {
  Fill();
  const Bytes bytes = Saved(unknown());
  int failed = 0;
  for (size_t at = 0; at < bytes.size(); ++at) {
    for (int change : {0x01, 0x80, 0xFF}) {
      Bytes damaged = bytes;
      damaged[at] = static_cast<uint8_t>(damaged[at] ^ change);
      const HRESULT result = LoadFrom(unknown(), damaged);
      ASSERT_TRUE(result == S_OK || result == E_FAIL) << at << " " << std::hex << result;
      failed += result == E_FAIL;
    }
  }
  EXPECT_GT(failed, 50);
  ExpectUsable();
}

TEST_F(PersistTest, AValueThatTheControlRefusesFailsTheLoad) {
  Put(object(), L"Checked", {Short(5)});
  Bytes bytes = Saved(unknown());
  const Bytes five = {2, 0, 5, 0};
  const auto at = std::search(bytes.begin(), bytes.end(), five.begin(), five.end());
  ASSERT_NE(at, bytes.end());
  at[2] = 11;
  EXPECT_EQ(LoadFrom(unknown(), bytes), E_FAIL);
  EXPECT_EQ(sample().Checked, 5);
  PropertySink sink;
  const Connection connection(unknown(), __uuidof(IPropertyNotifySink), &sink);
  Put(object(), L"Count", {Short(1)});
  EXPECT_EQ(sink.log, "ask(2) changed(2) ") << "the control still thinks that it loads";
  ExpectUsable();
}

// Refuses reads or writes from a position on.
class FailingStream final : public Counted<IStream> {
 public:
  Bytes bytes;
  size_t room = 0;
  size_t at = 0;

  STDMETHODIMP Read(void* into, ULONG count, ULONG* read) override {
    const size_t got = at < room ? std::min<size_t>(count, room - at) : 0;
    memcpy(into, bytes.data() + at, got);
    at += got;
    *read = static_cast<ULONG>(got);
    return got == count ? S_OK : STG_E_READFAULT;
  }
  STDMETHODIMP Write(const void*, ULONG count, ULONG* written) override {
    const bool fits = at + count <= room;
    at += fits ? count : 0;
    *written = fits ? count : 0;
    return fits ? S_OK : STG_E_MEDIUMFULL;
  }
  STDMETHODIMP Seek(LARGE_INTEGER, DWORD, ULARGE_INTEGER*) override { return E_NOTIMPL; }
  STDMETHODIMP SetSize(ULARGE_INTEGER) override { return E_NOTIMPL; }
  STDMETHODIMP CopyTo(IStream*, ULARGE_INTEGER, ULARGE_INTEGER*, ULARGE_INTEGER*) override {
    return E_NOTIMPL;
  }
  STDMETHODIMP Commit(DWORD) override { return E_NOTIMPL; }
  STDMETHODIMP Revert() override { return E_NOTIMPL; }
  STDMETHODIMP LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override { return E_NOTIMPL; }
  STDMETHODIMP UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override { return E_NOTIMPL; }
  STDMETHODIMP Stat(STATSTG*, DWORD) override { return E_NOTIMPL; }
  STDMETHODIMP Clone(IStream**) override { return E_NOTIMPL; }
};

TEST_F(PersistTest, AStreamThatFailsIsReportedAndNothingIsLost) {
  Fill();
  const Bytes bytes = Saved(unknown());
  const auto persist = Query<IPersistStreamInit>(control);
  Put(object(), L"Count", {Short(8)});
  for (size_t room = 0; room < bytes.size(); room += 7) {
    FailingStream stream;
    stream.room = room;
    EXPECT_EQ(persist->Save(&stream, TRUE), STG_E_MEDIUMFULL);
    stream.at = 0;
    stream.bytes = bytes;
    EXPECT_EQ(persist->Load(&stream), E_FAIL);
  }
  EXPECT_EQ(persist->IsDirty(), S_OK);
  EXPECT_EQ(sample().Count, 8);
}

TEST_F(PersistTest, NoStreamNoStorageNoBag) {
  EXPECT_EQ(Query<IPersistStreamInit>(control)->Load(nullptr), E_POINTER);
  EXPECT_EQ(Query<IPersistStreamInit>(control)->Save(nullptr, TRUE), E_POINTER);
  EXPECT_EQ(Query<IPersistStorage>(control)->Load(nullptr), E_POINTER);
  EXPECT_EQ(Query<IPersistPropertyBag>(control)->Load(nullptr, nullptr), E_POINTER);
  CLSID id{};
  EXPECT_EQ(Query<IPersist>(control)->GetClassID(&id), S_OK);
  EXPECT_EQ(FromGuid(id), kSampleTable.classId);
}

}  // namespace
}  // namespace qrn::test
