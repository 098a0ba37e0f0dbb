#include "host/container/ControlClasses.h"

#include <algorithm>

#include "com/Module.h"
#include "host/container/Text.h"
#include "host/container/TypeNames.h"
#include "host/form/SourceText.h"

namespace qrn::host {
namespace {

std::wstring FolderOf(const std::wstring& file) {
  const size_t slash = file.find_last_of(L"\\/");
  return slash == std::wstring::npos ? L"." : file.substr(0, slash);
}

std::wstring ProgramFolder() { return FolderOf(com::PathOf(nullptr)); }

bool IsFile(const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

// The module beside the program or the form; empty if it is in neither place. A path in the form
// file counts only by its last part: it is the path of the machine that wrote the form.
std::wstring FindModule(const std::string& fileName, const std::wstring& formFolder) {
  std::wstring name = Wide(fileName);
  name.erase(0, name.find_last_of(L"\\/:") + 1);
  if (name.empty()) return L"";
  for (const std::wstring& folder : {ProgramFolder(), formFolder}) {
    const std::wstring path = folder + L"\\" + name;
    if (IsFile(path)) return path;
  }
  return L"";
}

std::wstring LibraryName(ITypeLib* library) {
  Bstr name;
  library->GetDocumentation(MEMBERID_NIL, name.put(), nullptr, nullptr, nullptr);
  return std::wstring(name.view());
}

bool IsLibrary(ITypeLib* library, const GUID& id) {
  TLIBATTR* attributes = nullptr;
  if (FAILED(library->GetLibAttr(&attributes))) return false;
  const bool same = attributes->guid == id;
  library->ReleaseTLibAttr(attributes);
  return same;
}

// Where the system has the library registered.
std::wstring RegisteredPath(ITypeLib* library) {
  TLIBATTR* attributes = nullptr;
  Bstr path;
  if (FAILED(library->GetLibAttr(&attributes))) return {};
  QueryPathOfRegTypeLib(attributes->guid, attributes->wMajorVerNum, attributes->wMinorVerNum, 0,
                        path.put());
  library->ReleaseTLibAttr(attributes);
  return std::wstring(path.view());
}

std::string KeyOf(const form::LibraryReference& library) {
  return form::LowerWord(library.typeLibrary) + "#" + std::to_string(library.major) + "." +
         std::to_string(library.minor);
}

// An object from a module that need not be registered.
Com<IUnknown> MakeFrom(HMODULE module, const GUID& id) {
  using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
  const auto entry = reinterpret_cast<GetClassObject>(
      reinterpret_cast<void*>(GetProcAddress(module, "DllGetClassObject")));
  Com<IClassFactory> factory;
  Com<IUnknown> object;
  if (entry && SUCCEEDED(entry(id, IID_IClassFactory, factory.putVoid()))) {
    factory->CreateInstance(nullptr, IID_IUnknown, object.putVoid());
  }
  return object;
}

}  // namespace

ModuleClasses::Entry ModuleClasses::Load(const form::LibraryReference& library,
                                         const std::wstring& folder) const {
  Entry entry;
  GUID id{};
  CLSIDFromString(Wide(library.typeLibrary).c_str(), &id);
  const std::wstring path = FindModule(library.fileName, folder);
  if (!path.empty()) {
    entry = LoadModule(path);
    if (entry.typeLibrary && !IsLibrary(entry.typeLibrary.get(), id)) {
      throw ClassNotFound{library.fileName + " holds another type library than " +
                          library.typeLibrary};
    }
  }
  if (!entry.typeLibrary) {
    LoadRegTypeLib(id, static_cast<WORD>(library.major), static_cast<WORD>(library.minor),
                   LOCALE_USER_DEFAULT, entry.typeLibrary.put());
  }
  if (!entry.typeLibrary) {
    throw ClassNotFound{library.fileName +
                        " is neither beside the program nor beside the form, and its library is "
                        "not registered"};
  }
  entry.name = LibraryName(entry.typeLibrary.get());
  return entry;
}

ModuleClasses::Entry ModuleClasses::LoadModule(const std::wstring& path) {
  Entry entry;
  entry.module.reset(LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH));
  if (!entry.module) {
    throw ClassNotFound{Utf8(path) + " cannot be loaded (error " + std::to_string(GetLastError()) +
                        ")"};
  }
  LoadTypeLibEx(path.c_str(), REGKIND_NONE, entry.typeLibrary.put());
  return entry;
}

void ModuleClasses::AddModule(const std::wstring& path) {
  std::wstring whole(32768, L'\0');
  whole.resize(
      GetFullPathNameW(path.c_str(), static_cast<DWORD>(whole.size()), whole.data(), nullptr));
  Entry entry = LoadModule(whole);
  if (!entry.typeLibrary) throw ClassNotFound{Utf8(path) + " carries no type library"};
  entry.name = LibraryName(entry.typeLibrary.get());
  given_.push_back(std::move(entry));
}

void ModuleClasses::Add(const form::LibraryReference& library, const std::wstring& folder) {
  const std::string key = KeyOf(library);
  GUID id{};
  CLSIDFromString(Wide(library.typeLibrary).c_str(), &id);
  if (!IsGiven(id) && !entries_.contains(key)) entries_.emplace(key, Load(library, folder));
}

bool ModuleClasses::IsGiven(const GUID& library) const {
  return std::any_of(given_.begin(), given_.end(), [&](const Entry& entry) {
    return IsLibrary(entry.typeLibrary.get(), library);
  });
}

Com<ITypeInfo> ModuleClasses::FindIn(const Entry& entry, const std::string& library,
                                     const std::string& name, bool* knownLibrary) const {
  if (!SameName(entry.name, Wide(library))) return {};
  *knownLibrary = true;
  return FindClass(entry.typeLibrary.get(), Wide(name));
}

ControlClass ModuleClasses::Find(const std::string& library, const std::string& name) {
  bool knownLibrary = false;
  for (const Entry& entry : given_) {
    if (const Com<ITypeInfo> type = FindIn(entry, library, name, &knownLibrary)) {
      return {IdOf(type.get()), type};
    }
  }
  for (const auto& [key, entry] : entries_) {
    if (const Com<ITypeInfo> type = FindIn(entry, library, name, &knownLibrary)) {
      return {IdOf(type.get()), type};
    }
  }
  if (knownLibrary) throw ClassNotFound{library + " has no control " + name};
  ControlClass found;
  if (SUCCEEDED(CLSIDFromProgID(Wide(library + "." + name).c_str(), &found.id))) return found;
  throw ClassNotFound{library + "." + name +
                      " is not known: no Object line of the form names a library " + library};
}

Com<IUnknown> ModuleClasses::Make(const GUID& id) {
  for (const Entry& entry : given_) {
    if (Com<IUnknown> object = MakeFrom(entry.module.get(), id)) return object;
  }
  for (const auto& [key, entry] : entries_) {
    if (!entry.module) continue;
    if (Com<IUnknown> object = MakeFrom(entry.module.get(), id)) return object;
  }
  Com<IUnknown> object;
  CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, object.putVoid());
  return object;
}

std::vector<Com<ITypeLib>> ModuleClasses::Libraries() const {
  std::vector<Com<ITypeLib>> libraries;
  for (const Entry& entry : given_) libraries.push_back(entry.typeLibrary);
  for (const auto& [key, entry] : entries_) libraries.push_back(entry.typeLibrary);
  return libraries;
}

std::string ModuleClasses::FileOf(ITypeLib* library) const {
  std::wstring path;
  const auto take = [&](const Entry& entry) {
    if (!path.empty() || entry.typeLibrary.get() != library) return;
    path = entry.module ? com::PathOf(entry.module.get()) : RegisteredPath(library);
  };
  for (const Entry& entry : given_) take(entry);
  for (const auto& [key, entry] : entries_) take(entry);
  return Utf8(path.substr(path.find_last_of(L"\\/") + 1));
}

}  // namespace qrn::host
