// Fonts as forms describe them and as windows use them.
#pragma once

#include <ocidl.h>
#include <olectl.h>

#include "com/Fonts.h"
#include "com/Handles.h"
#include "host/container/ComObject.h"
#include "host/form/FormFile.h"

namespace qrn::host {

// The class id of the standard font, as it stands behind `BeginProperty Font`.
bool IsFontGroup(const form::Property& property) noexcept;

// The font a group describes (Name, Size, Charset, Weight, Underline, Italic, Strikethrough); what
// it does not name is as in the default font. Throws form-level reasons as std::runtime_error.
Com<IFontDisp> MakeFont(const form::Property& group);

// The group of that name which describes a font, in the order of Visual Basic's files.
form::Property FontGroup(const std::string& name, const com::FontDescription& font);
// What a font object is like; its default where it does not tell.
com::FontDescription DescriptionOf(IFont* font);

// ＭＳ Ｐゴシック, 9 points: what a form has that names no font.
Com<IFontDisp> DefaultFont();

// The handle of a font for windows; it belongs to the font object. Null on failure.
HFONT HandleOf(IFontDisp* font) noexcept;

}  // namespace qrn::host
