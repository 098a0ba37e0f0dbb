// Controls without windows: they register, keep what is written to them and answer for their names.
// A window handle is the address of a TextWindow.
#pragma once

#include "binding/BoundFaces.h"
#include "binding/database/Database.h"
#include "qrnbt350.h"
#include "tests/core/FakeLexbase.h"
#include "tests/extended/ShownMessages.h"
#include "tests/support/Company.h"
#include "tests/support/Test.h"

namespace qrn::test {

// Names as a form's designer would set them.
struct Names {
  const char* name;
  TextWindow* form;
  const char* table = "";
  const char* field = "";
};

// `Face` is the face of the control's kind.
template <class Face>
class Played : public Face {
 public:
  Played(ControlType type, const Names& names)
      : name(names.name),
        form(names.form),
        boundTable(names.table),
        boundField(names.field),
        type_(type) {}

  void Destroy() override {
    ++destroyed;
    if (onDestroy) onDestroy();
  }
  std::string GetControlName() override { return name; }
  WindowHandle GetContainerWindow() override { return form; }
  ControlType GetControlType() override { return type_; }
  NullableText GetBoundField() override { return boundField; }
  NullableText GetBoundTable() override { return boundTable; }

  std::string name;
  TextWindow* form;
  NullableText boundTable;
  NullableText boundField;
  int destroyed = 0;
  std::function<void()> onDestroy;

 protected:
  ~Played() = default;

 private:
  ControlType type_;
};

// A field control; it is registered while it lives.
template <class Face>
class PlayedField : public Played<Face> {
 public:
  PlayedField(ControlType type, const Names& names) : Played<Face>(type, names) {
    TheRegistry().RegisterFieldControl(*this);
  }

 protected:
  ~PlayedField() { TheRegistry().UnregisterFieldControl(*this); }
};

class PlayedEdit final : public PlayedField<EditFace> {
 public:
  explicit PlayedEdit(const Names& names) : PlayedField(kTypeEdit, names) {}

  WindowHandle ContainedWindow() override { return &window; }
  void ShowFieldText(const char* text) override { Change(text); }
  void ClearFieldText() override { Change(""); }
  std::string Text() const { return window.text; }

  TextWindow window;
  std::function<void()> onChange;  // a handler of `Change`

 private:
  void Change(const char* text) {
    WriteWindowText(&window, text);
    if (onChange) onChange();
  }
};

class PlayedMark final : public PlayedField<MarkFace> {
 public:
  PlayedMark(ControlType type, const Names& names) : PlayedField(type, names) {}

  int32_t GetValue() override { return value; }
  void SetValue(int32_t newValue) override { value = newValue; }
  void ShowMark(int32_t newMark) override { mark = newMark; }
  std::string GetValueTrue() override { return ifTrue; }
  std::string GetValueFalse() override { return ifFalse; }
  std::string GetValueIndeterminate() override { return ifIndeterminate; }
  // "value/mark"
  std::string State() const { return std::to_string(value) + "/" + std::to_string(mark); }

  int32_t value = 0;
  int32_t mark = 0;
  std::string ifTrue = "1";
  std::string ifFalse = "0";
  std::string ifIndeterminate;
};

class PlayedPicture final : public PlayedField<PictureFace> {
 public:
  explicit PlayedPicture(const Names& names) : PlayedField(kTypePic, names) {}

  void LoadPictureFromField(const DbTableInfo& table, const char* text) override {
    loaded += std::string(table.Name) + ":" + text + " ";
  }

  std::string loaded;
};

class PlayedList final : public Played<ListFace> {
 public:
  PlayedList(ControlType type, const Names& names, const char* listSource = "")
      : Played(type, names), source(listSource) {
    TheRegistry().RegisterListControl(*this);
  }
  ~PlayedList() { TheRegistry().UnregisterListControl(*this); }

  std::string GetDbSourceRef() override { return source; }
  uint16_t GetUpdateOption() override { return updateOption; }
  void ReloadList() override {
    ++reloads;
    if (onReload) onReload();
  }
  std::string SelectedText() override { return selected; }
  void SelectText(const char* text) override { selected = text; }
  void ClearSelection() override { selected.clear(); }

  std::string source;
  uint16_t updateOption = 1;
  int reloads = 0;
  std::string selected;
  std::function<void()> onReload;
};

class PlayedScroll final : public Played<CQuorin> {
 public:
  PlayedScroll(const Names& names, const char* dataSource)
      : Played(kTypeScroll, names), source(dataSource) {
    TheRegistry().RegisterNavControl(*this);
  }
  ~PlayedScroll() { TheRegistry().UnregisterNavControl(*this); }

  std::string GetDbTableRef() override { return source; }
  void OnDataControlReady() override { log += "ready "; }
  void OnPositionChanged(const std::string& table, int32_t index) override {
    log += table + "/" + std::to_string(index) + " ";
    if (onMoved) onMoved();
  }

  std::string source;
  std::string log;
  std::function<void()> onMoved;
};

// A database control whose container is the test's.
class PlayedBtr final : public Database {
 public:
  PlayedBtr(const char* itsName, TextWindow* itsForm, const std::string& directory = {})
      : name(itsName), form(itsForm) {
    DDFDir.SetNarrow(directory);
  }
  ~PlayedBtr() { ControlGoes(); }

  void Destroy() override {
    ++destroyed;
    ControlGoes();
  }
  std::string GetControlName() override { return name; }
  WindowHandle GetContainerWindow() override { return form; }
  std::optional<std::string> AskFormName() override { return formName; }
  std::optional<WindowHandle> AskFormWindow() override { return formWindow; }

  std::string name;
  TextWindow* form;
  bool userMode = true;
  std::optional<std::string> formName = "Form1";
  std::optional<WindowHandle> formWindow;
  int destroyed = 0;
  int redraws = 0;
  std::string errors;                    // "People:12 "
  std::function<void(Status&)> onError;  // a handler of BtrieveError

 protected:
  bool InUserMode() override { return userMode; }
  void AskRedraw() override { ++redraws; }
  void FireBtrieveError(const char* tableName, Status& status) override {
    errors += std::string(tableName) + ":" + std::to_string(status) + " ";
    if (onError) onError(status);
  }
};

}  // namespace qrn::test
