// Bound controls on the test's form, over the office's people: what their tests begin with.
#pragma once

#include "Hosted.h"
#include "PlayedDatabase.h"
#include "binding/registry/ControlRegistry.h"
#include "controls/QRNEdit.h"
#include "core/DictionaryLookup.h"
#include "tests/support/Test.h"

namespace qrn::test {

// A control of one of several classes that share `Base`, made and hosted.
template <class Base>
struct Made {
  std::unique_ptr<HostedControl> host;
  Base* control;

  Base* operator->() const { return control; }
};
template <class C, class Base>
Made<Base> Make(const wchar_t* name, bool runs) {
  auto hosted = std::make_unique<Hosted<C>>(name, runs);
  Base* control = &**hosted;
  return {std::move(hosted), control};
}

struct OfficeFixture : ::testing::Test {
  static void Bind(HostedControl& control, const wchar_t* field = nullptr,
                   const wchar_t* table = L"People") {
    control.Set(L"DbSource", Text(L"Db1"));
    control.Set(L"DbTable", Text(table));
    if (field) control.Set(L"DbField", Text(field));
  }

  const DbTableInfo& people() { return *office_.Table("People"); }
  const DbFieldInfo& FieldOf(const char* name) {
    return people().Fields[DbFindField(people(), name)];
  }
  // A text of a record to the controls of a field and back: "count:text", the text is "kept" where
  // none was read.
  void Write(const char* text, const char* field, HWND form = TheForm()) {
    TheRegistry().WriteControlField(form, people(), FieldOf(field), text);
  }
  std::string Read(const char* field) {
    std::string text = "kept";
    const int32_t count = TheRegistry().ReadControlField(TheForm(), people(), FieldOf(field), text);
    return std::to_string(count) + ":" + text;
  }
  void Clear(const char* field) {
    TheRegistry().ClearControlField(TheForm(), people(), FieldOf(field));
  }

  // Puts a person into the file, the fields that are named alone.
  void Insert(std::map<std::string, std::string> texts) {
    PlayedForm form;
    form.texts = std::move(texts);
    PlayedButton button(office_, form, "People");
    ASSERT_EQ(DbButtonInsert(office_.engine, button, false), 0);
  }

  Office office_;
  PlayedDatabase database_{office_};
};

}  // namespace qrn::test
