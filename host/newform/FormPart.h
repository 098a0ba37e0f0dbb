// A form and what stands on it, as it is put together and then written.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/form/Twips.h"

namespace qrn::newform {

using form::kTwipsPerPixel;

// Pixels of 96 to the inch, from the corner of what holds it.
struct Box {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;

  int Right() const noexcept { return left + width; }
  int Bottom() const noexcept { return top + height; }
};

class FormPart {
 public:
  // `kind` is "VB.Label" or "QRNBTRLib.QRNEdit"; an index makes it an element of a control array.
  FormPart(std::string kind, std::string name, const Box& box, int index = -1);

  // Each sets a property of that name; texts are UTF-8 without line ends.
  FormPart& Text(std::string_view property, std::string_view text);
  FormPart& Number(std::string_view property, long number);
  FormPart& Truth(std::string_view property, bool truth);
  FormPart& Colour(std::string_view property, unsigned colour);
  FormPart& Font();  // the form's own, for what does not take it from there

  const Box& box() const noexcept { return box_; }
  const std::string& name() const noexcept { return name_; }
  bool IsModules() const noexcept { return kind_.starts_with("QRN"); }

  std::vector<FormPart> parts;  // what it holds

  // Appends its lines, what it holds included.
  void Write(std::string& text, int depth) const;

 private:
  struct Value {
    std::string name;
    std::string text;  // as it stands in the file
  };

  FormPart& Set(std::string_view property, std::string text);
  std::vector<Value> AllValues(int depth) const;

  std::string kind_;
  std::string name_;
  Box box_;
  int index_;
  bool hasFont_ = false;
  std::vector<Value> values_;
};

// A text as code and form files write it: in quotes, those inside doubled.
std::string Quoted(std::string_view text);

}  // namespace qrn::newform
