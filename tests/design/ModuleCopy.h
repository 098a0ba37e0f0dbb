// Copies of the module in folders of their own.
#pragma once

#include <windows.h>

#include <filesystem>
#include <initializer_list>

#include "BuiltModule.h"

namespace qrn::test {

inline std::wstring Repeated(const std::wstring& text, size_t times) {
  std::wstring all;
  for (size_t i = 0; i < times; ++i) all += text;
  return all;
}

// A folder below the temporary one with copies of files that lie beside the test program; all goes
// at the end.
class CopyFolder : Pinned {
 public:
  CopyFolder(const std::wstring& folder, std::initializer_list<const wchar_t*> files,
             const wchar_t* root = L"qrn-copy")
      : root_(std::filesystem::temp_directory_path().wstring() + root),
        path_(folder.empty() ? root_ : root_ + L"\\" + folder) {
    RemoveAll(root_);
    for (size_t at = root_.size(); at != path_.npos; at = path_.find(L'\\', at + 1)) {
      CreateDirectoryW(Extended(path_.substr(0, at)).c_str(), nullptr);
    }
    CreateDirectoryW(Extended(path_).c_str(), nullptr);
    const std::wstring module = ModuleFile();
    const std::wstring beside = module.substr(0, module.rfind(L'\\') + 1);
    for (const wchar_t* file : files) {
      CopyFileW((beside + file).c_str(), Extended(Place(file)).c_str(), FALSE);
    }
  }
  ~CopyFolder() { RemoveAll(root_); }

  std::wstring Place(const std::wstring& file) const { return path_ + L"\\" + file; }
  // The form of a path that has no limit of 259 characters.
  static std::wstring Extended(const std::wstring& path) { return L"\\\\?\\" + path; }

 private:
  static void RemoveAll(const std::wstring& folder) {
    WIN32_FIND_DATAW entry{};
    const HANDLE search = FindFirstFileW(Extended(folder + L"\\*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) return;
    do {
      const std::wstring name = entry.cFileName;
      if (name == L"." || name == L"..") continue;
      const std::wstring path = folder + L"\\" + name;
      const bool below = (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
      below ? RemoveAll(path) : static_cast<void>(DeleteFileW(Extended(path).c_str()));
    } while (FindNextFileW(search, &entry));
    FindClose(search);
    RemoveDirectoryW(Extended(folder).c_str());
  }

  std::wstring root_;
  std::wstring path_;
};

// One of the module, loaded.
class ModuleCopy : Pinned {
 public:
  explicit ModuleCopy(const std::wstring& folder)
      : folder_(folder, {L"qrnbt350.ocx"}), file_(folder_.Place(L"qrnbt350.ocx")) {
    module_ = LoadLibraryW(file_.c_str());
    if (!module_) module_ = LoadLibraryW(CopyFolder::Extended(file_).c_str());
  }
  ~ModuleCopy() {
    if (module_) FreeLibrary(module_);
  }

  const std::wstring& file() const { return file_; }
  bool loaded() const { return module_ != nullptr; }
  HRESULT Run(const char* entry) const {
    auto* const found = reinterpret_cast<void (*)()>(GetProcAddress(module_, entry));
    return reinterpret_cast<HRESULT(WINAPI*)()>(found)();
  }
  Com<IUnknown> Make(const Guid& classId) const {
    using GetClassObject = HRESULT(WINAPI*)(REFCLSID, REFIID, void**);
    auto* const found = reinterpret_cast<void (*)()>(GetProcAddress(module_, "DllGetClassObject"));
    Com<IClassFactory> factory;
    Com<IUnknown> made;
    reinterpret_cast<GetClassObject>(found)(AsGuid(classId), __uuidof(IClassFactory),
                                            factory.putVoid());
    if (factory) factory->CreateInstance(nullptr, __uuidof(IUnknown), made.putVoid());
    return made;
  }

 private:
  CopyFolder folder_;
  std::wstring file_;
  HMODULE module_ = nullptr;
};

}  // namespace qrn::test
