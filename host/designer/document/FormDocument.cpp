#include "host/designer/document/FormDocument.h"

#include "host/designer/document/DocumentReader.h"

namespace qrn::designer {

std::unique_ptr<FormDocument> FormDocument::Read(std::string_view fileBytes,
                                                 form::Mistakes& mistakes) {
  return DocumentReader(fileBytes, mistakes).ReadDocument();
}

std::string FormDocument::Bytes() const {
  std::string formBytes;
  form_->Write(&formBytes);
  return BytesWith(formBytes);
}

std::string FormDocument::BytesWith(std::string_view formBytes) const {
  std::string bytes = mark_;
  head_->Write(&bytes);
  bytes += formBytes;
  attributes_->Write(&bytes);
  code_->Write(&bytes);
  return bytes + tail_;
}

int FormDocument::CodeLine() const noexcept {
  return static_cast<int>(head_->LineCount() + form_->LineCount() + attributes_->LineCount()) + 1;
}

FormFragment ReadFragment(std::string_view utf8, const FileText& text, form::Mistakes& mistakes) {
  std::string bytes;
  int number = 0;
  for (const std::string_view line : LinesWithEnds(utf8)) {
    ++number;
    const auto encoded = text.Encode(WithoutEnd(line));
    if (!encoded)
      return mistakes.Add(number, "a character that the file cannot hold"), FormFragment{};
    bytes += *encoded + text.lineEnd;
  }
  return DocumentReader(bytes, text, mistakes).ReadFragment();
}

}  // namespace qrn::designer
