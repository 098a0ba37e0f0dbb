// Writes the module's type library, registration scripts and assembly manifest at build time.
//   make_typelib FOLDER
#include <objbase.h>

#include <cstdio>
#include <exception>
#include <filesystem>

#include "binding/tables/AllTables.h"
#include "com/Guard.h"
#include "typelib/ManifestWriter.h"
#include "typelib/ScriptWriter.h"
#include "typelib/TypeLibraryWriter.h"

namespace {

// Texts of a type library pass through the code page of the process.
constexpr UINT kJapanese = 932;

int Write(const std::filesystem::path& folder) {
  if (GetACP() != kJapanese) {
    std::fprintf(stderr, "make_typelib: needs a Japanese locale (code page 932)\n");
    return 1;
  }
  try {
    std::filesystem::create_directories(folder);
    qrn::ole::WriteTypeLibrary(qrn::kLibrary, (folder / L"qrnbt350.tlb").c_str());
    qrn::WriteScripts(folder);
    qrn::WriteManifest(folder);
    return 0;
  } catch (const qrn::com::Failure& failure) {
    std::fprintf(stderr, "make_typelib: the type library could not be written (%08lX)\n",
                 failure.code);
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "make_typelib: %s\n", failure.what());
  }
  return 1;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
  if (count != 2) {
    std::fprintf(stderr, "usage: make_typelib FOLDER\n");
    return 2;
  }
  CoInitialize(nullptr);
  const int result = Write(arguments[1]);
  CoUninitialize();
  return result;
}
