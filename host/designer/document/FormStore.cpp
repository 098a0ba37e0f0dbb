#include "host/designer/document/FormStore.h"

#include <algorithm>
#include <functional>
#include <set>

#include "host/designer/document/PropertyText.h"
#include "host/designer/document/SafeSave.h"
#include "host/form/SourceText.h"

namespace qrn::designer {
namespace {

#ifdef _WIN32
constexpr char kSeparators[] = "/\\:";
#else
constexpr char kSeparators[] = "/";
#endif

size_t NameStart(const std::string& path) {
  const size_t separator = path.find_last_of(kSeparators);
  return separator == std::string::npos ? 0 : separator + 1;
}

std::string CompanionPath(const std::string& formPath) {
  return formPath.substr(0, NameStart(formPath)) + CompanionNameOf(formPath);
}

// Of a line `Name = "file.frx":0A3C`; nothing for any other.
std::optional<form::FileReference> ReferenceOf(const Item& item, const FileText& text) {
  if (item.name.empty() || item.bytes.find("\":") == std::string::npos) return std::nullopt;
  const auto property = PropertyOf(item, text);
  if (!property) return std::nullopt;
  const auto* reference = std::get_if<form::FileReference>(&property->value);
  return reference ? std::optional(*reference) : std::nullopt;
}

using LineTask = std::function<void(const Item& item, const form::FileReference& reference)>;

void ForReferences(const Block& block, const FileText& text, const LineTask& task) {
  for (const Item& item : block.items()) {
    if (item.block) {
      ForReferences(*item.block, text, task);
    } else if (const auto reference = ReferenceOf(item, text)) {
      task(item, *reference);
    }
  }
}

std::set<uint32_t> OffsetsIn(const FormDocument& document, const Companion& companion) {
  std::set<uint32_t> offsets;
  ForReferences(*document.form(), document.text(),
                [&](const Item&, const form::FileReference& reference) {
                  if (companion.IsName(reference.fileName)) offsets.insert(reference.offset);
                });
  return offsets;
}

// A block on its way to a file: its references to the form's own companion are made those of the
// image.
struct ImageWriter {
  const FormDocument& document;
  const Companion& companion;
  const std::string& name;
  const CompanionImage& image;
  std::string bytes;

  void Write(const Block& block) {
    for (const Item& item : block.items()) {
      if (item.block) {
        Write(*item.block);
      } else {
        bytes += LineOf(item);
      }
    }
  }

  std::string LineOf(const Item& item) const {
    const FileText& text = document.text();
    const auto reference = ReferenceOf(item, text);
    if (!reference || !companion.IsName(reference->fileName)) return item.bytes;
    const auto place = image.places.find(reference->offset);
    const uint32_t offset = place == image.places.end() ? reference->offset : place->second;
    if (form::SameWord(reference->fileName, name) && offset == reference->offset) return item.bytes;
    return Changed(item.bytes, ValueText(form::FileReference{name, offset, reference->isText}));
  }

  // What stands around the value stays.
  std::string Changed(const std::string& line, const std::string& value) const {
    const size_t start = line.find_first_not_of(" \t", line.find('=') + 1);
    const size_t digits = line.find("\":", start) + 2;
    const size_t end = line.find_first_not_of("0123456789ABCDEFabcdef", digits);
    const std::string rest = end == std::string::npos ? std::string() : line.substr(end);
    return line.substr(0, start) + document.text().Encode(value).value_or("") + rest;
  }
};

bool Holds(const std::string& path, std::string_view bytes) {
  return FileStands(path) && form::ReadWholeFile(path) == bytes;
}

}  // namespace

std::string CompanionNameOf(const std::string& formPath) {
  const std::string name = formPath.substr(NameStart(formPath));
  return name.substr(0, name.rfind('.')) + ".frx";
}

StoredForm OpenStoredForm(const std::string& path) {
  form::Mistakes mistakes;
  StoredForm stored;
  stored.document = FormDocument::Read(form::ReadWholeFile(path), mistakes);
  if (!stored.document) throw form::FileRefused(path, mistakes);
  const std::string companionPath = CompanionPath(path);
  const bool stands = FileStands(companionPath);
  stored.companion = std::make_unique<Companion>(
      CompanionNameOf(path), stands ? form::ReadWholeFile(companionPath) : std::string());
  return stored;
}

FormImages ImagesOf(const FormDocument& document, const Companion& companion,
                    const std::string& companionName) {
  FormImages images;
  const std::set<uint32_t> offsets = OffsetsIn(document, companion);
  images.hasReferences = !offsets.empty();
  images.companion = companion.Image(offsets);
  ImageWriter writer{document, companion, companionName, images.companion, {}};
  writer.Write(*document.form());
  images.form = document.BytesWith(writer.bytes);
  return images;
}

std::string SaveStoredForm(const std::string& path, const FormDocument& document,
                           Companion& companion) {
  const std::string name = CompanionNameOf(path);
  const std::string companionPath = CompanionPath(path);
  const FormImages images = ImagesOf(document, companion, name);
  if (images.hasReferences && !document.text().Encode(name)) {
    return path + ": the file's code page does not have the companion's name";
  }
  const std::string& records = images.companion.bytes;
  std::vector<NewFile> files{{path, images.form}};
  if (images.hasReferences && !records.empty() && !Holds(companionPath, records)) {
    // In this order the old form finds its records should only the first be put in place.
    files.insert(images.companion.shrinks ? files.end() : files.begin(), {companionPath, records});
  }
  std::string reason = SaveFiles(files);
  if (!reason.empty()) return reason;
  companion.Rename(name);
  companion.Saved(images.companion);
  return {};
}

}  // namespace qrn::designer
