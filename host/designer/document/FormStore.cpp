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

// The line with another file name between its first quotes.
std::string Renamed(const std::string& line, const std::string& name) {
  const size_t open = line.find('"');
  return line.substr(0, open + 1) + name + line.substr(line.find("\":", open));
}

void WriteUnder(const Block& block, const FormDocument& document, const Companion& companion,
                const std::string& name, std::string* bytes) {
  const FileText& text = document.text();
  for (const Item& item : block.items()) {
    if (item.block) {
      WriteUnder(*item.block, document, companion, name, bytes);
      continue;
    }
    const auto reference = ReferenceOf(item, text);
    const bool isOld = reference && companion.IsName(reference->fileName) &&
                       !form::SameWord(reference->fileName, name);
    *bytes += isOld ? Renamed(item.bytes, text.Encode(name).value_or("")) : item.bytes;
  }
}

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

std::string BytesUnder(const FormDocument& document, const Companion& companion,
                       const std::string& companionName) {
  std::string formBytes;
  WriteUnder(*document.form(), document, companion, companionName, &formBytes);
  return document.BytesWith(formBytes);
}

std::string SaveStoredForm(const std::string& path, const FormDocument& document,
                           Companion& companion) {
  const std::string name = CompanionNameOf(path);
  const std::string companionPath = CompanionPath(path);
  const std::set<uint32_t> offsets = OffsetsIn(document, companion);
  if (!offsets.empty() && !document.text().Encode(name)) {
    return path + ": the file's code page does not have the companion's name";
  }
  const std::string_view records = companion.FileFor(offsets);
  const std::string bytes = BytesUnder(document, companion, name);
  std::vector<NewFile> files;
  // First: a form that stayed the old one still finds its records in the longer companion.
  if (!offsets.empty() && !records.empty() && !Holds(companionPath, records))
    files.push_back({companionPath, records});
  files.push_back({path, bytes});
  std::string reason = SaveFiles(files);
  if (reason.empty()) companion.Rename(name);
  return reason;
}

}  // namespace qrn::designer
