// What a user of the designer can do, one thing at a time, chosen by numbers: random ones in a
// test, a fuzzer's bytes in a fuzzer.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "host/designer/model/Design.h"

namespace qrn::test {

// A number from 0 to below `limit`, which is at least 1.
using Choose = std::function<uint32_t(uint32_t limit)>;

class Actions {
 public:
  Actions(designer::Design& design, Choose choose) : design_(design), choose_(std::move(choose)) {}

  // Does one, and tells which. It may be refused or change nothing.
  const char* DoOne();
  // The files as they would be saved now, and the form's alone.
  static designer::FormImages Images(const designer::Design& design);
  static std::string Saved(const designer::Design& design) { return Images(design).form; }

 private:
  struct Row;
  static const Row kRows[];

  designer::ControlId AnyControl();
  designer::ControlId AnyContainer();
  designer::Ids Some();
  int32_t AnyLength();
  std::string AnyText();

  void Select();
  void Add();
  void Delete();
  void Drag();
  void Nudge();
  void Align();
  void MakeAlike();
  void Restack();
  void MoveInto();
  void Copy();
  void Paste();
  void Cut();
  void TabOrder();
  void EnterProperty();
  void EnterPicture();
  void EnterFont();
  void ResetProperty();
  void TypeCode();
  void MakeProcedure();
  void Seal();

  designer::Design& design_;
  Choose choose_;
  std::string clipboard_;
};

}  // namespace qrn::test
