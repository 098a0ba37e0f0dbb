// A form file as a tree that keeps every byte of it: header lines, blocks, comments, order, unusual
// blanks, lines that mean nothing here, the code. What is not touched is written back as it was
// read.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "host/designer/document/Block.h"
#include "host/designer/document/FileText.h"
#include "host/form/Mistakes.h"

namespace qrn::designer {

class FormDocument {
 public:
  // Null, and every mistake with its line, for a file whose blocks are not closed or that is no
  // form (a form, MDI form, user control, document or property page). A line inside a block that
  // is not understood is no mistake: it is kept. Takes VERSION lines of every release.
  static std::unique_ptr<FormDocument> Read(std::string_view fileBytes, form::Mistakes& mistakes);

  // The file. Equal to what was read as long as nothing was changed.
  std::string Bytes() const;
  // The file with these bytes where the form stands.
  std::string BytesWith(std::string_view formBytes) const;

  const FileText& text() const noexcept { return text_; }
  // Lines before the form (VERSION, Object), the form, the Attribute lines, the code.
  const BlockRef& head() const noexcept { return head_; }
  const BlockRef& form() const noexcept { return form_; }
  const BlockRef& attributes() const noexcept { return attributes_; }
  const BlockRef& code() const noexcept { return code_; }

  // The file's number, from 1, of the first line of code.
  int CodeLine() const noexcept;

 private:
  friend class DocumentReader;

  FileText text_;
  BlockRef head_ = std::make_shared<Block>(BlockKind::Lines);
  BlockRef form_;
  BlockRef attributes_ = std::make_shared<Block>(BlockKind::Lines);
  BlockRef code_ = std::make_shared<Block>(BlockKind::Lines);
  std::string mark_;  // a UTF-8 byte order mark
  std::string tail_;  // a Ctrl+Z and what follows: no text any more
};

// Blocks `Begin Library.Class Name ... End` alone, as they lie on the clipboard, in UTF-8, with
// header lines before them and comments behind. Empty with a mistake if that is not what it is.
struct FormFragment {
  BlockRef head = std::make_shared<Block>(BlockKind::Lines);
  std::vector<BlockRef> controls;
  std::vector<std::string> comments;  // whole lines after the controls, without their ends
};
// Lines get the ends of `text`, and its code page: a mistake where that does not have a character.
FormFragment ReadFragment(std::string_view utf8, const FileText& text, form::Mistakes& mistakes);

}  // namespace qrn::designer
