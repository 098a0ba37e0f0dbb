// What the pieces of furniture (labels, frames, buttons, texts) have of properties.
#pragma once

#include <string>

#include "host/container/CompanionFiles.h"
#include "host/form/FormFile.h"

namespace qrn::host {

// Kinds of furniture; they add up where several are meant.
enum FurnitureKind : unsigned { kLabel = 1, kFrame = 2, kButton = 4, kText = 8 };

enum class TextAlignment { Left, Right, Centre };
enum class ScrollBars { None, Horizontal, Vertical, Both };

struct FurnitureLook {
  std::wstring text;  // caption, or what a text field holds
  bool enabled = true;
  bool tabStop = true;
  OLE_COLOR backColor = 0x8000000F;
  OLE_COLOR foreColor = 0x80000012;
  Com<IFontDisp> font;  // empty: the form's
  TextAlignment alignment = TextAlignment::Left;
  int borderStyle = 0;  // 0 none, 1 a line
  bool sunken = true;   // three-dimensional borders
  bool transparent = false;
  bool autoSize = false;
  bool wordWrap = false;
  bool useMnemonic = true;
  bool isDefault = false;
  bool isCancel = false;
  bool multiLine = false;
  bool locked = false;
  bool hideSelection = true;
  int maxLength = 0;  // characters; 0: no limit
  wchar_t passwordChar = 0;
  ScrollBars scrollBars = ScrollBars::None;
};

// The look a new piece has.
FurnitureLook FirstLook(FurnitureKind kind);

// Takes a property of the form file. False if the kind has no such property; throws
// std::runtime_error with a reason for a value that does not fit.
bool TakeProperty(FurnitureKind kind, FurnitureLook& look, const form::Property& property,
                  CompanionFiles& files);

}  // namespace qrn::host
