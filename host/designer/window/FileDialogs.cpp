#include "host/designer/window/FileDialogs.h"

#include <commdlg.h>

#include <algorithm>

#include "host/container/Text.h"
#include "host/designer/window/WindowTexts.h"

namespace qrn::designer {
namespace {

constexpr size_t kLongestPath = 32768;

std::wstring Filter(form::Language language) {
  std::wstring filter = Said(WindowText::FormFiles, language) + L'\0' + L"*.frm" + L'\0';
  return filter + Said(WindowText::AllFiles, language) + L'\0' + L"*.*" + L'\0';
}

std::optional<std::string> Ask(HWND owner, form::Language language, const std::string& path,
                               DWORD flags, BOOL(WINAPI* ask)(OPENFILENAMEW*)) {
  const std::wstring filter = Filter(language);
  std::wstring file = host::Wide(path);
  file.resize(kLongestPath);
  OPENFILENAMEW dialog{};
  dialog.lStructSize = sizeof dialog;
  dialog.hwndOwner = owner;
  dialog.lpstrFilter = filter.c_str();
  dialog.lpstrFile = file.data();
  dialog.nMaxFile = static_cast<DWORD>(file.size());
  dialog.lpstrDefExt = L"frm";
  dialog.Flags = flags | OFN_NOCHANGEDIR | OFN_HIDEREADONLY | OFN_EXPLORER;
  if (!ask(&dialog)) return std::nullopt;
  return host::Utf8(file.c_str());
}

}  // namespace

std::optional<std::string> AskFormToOpen(HWND owner, form::Language language) {
  return Ask(owner, language, {}, OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST, GetOpenFileNameW);
}

std::optional<std::string> AskWhereToSave(HWND owner, form::Language language,
                                          const std::string& path) {
  return Ask(owner, language, path, OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST, GetSaveFileNameW);
}

}  // namespace qrn::designer
