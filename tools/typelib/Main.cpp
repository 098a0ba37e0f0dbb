// Writes the module's type library and registration scripts at build time.
//   make_typelib LIBRARY.tlb
#include <objbase.h>

#include <cstdio>

#include "binding/tables/AllTables.h"
#include "ole/Guard.h"
#include "typelib/TypeLibraryWriter.h"

int wmain(int count, wchar_t** arguments) {
  if (count != 2) {
    std::fprintf(stderr, "usage: make_typelib LIBRARY.tlb\n");
    return 2;
  }
  CoInitialize(nullptr);
  const HRESULT result = qrn::ole::Guard([&] {
    qrn::ole::WriteTypeLibrary(qrn::kLibrary, arguments[1]);
    return S_OK;
  });
  CoUninitialize();
  if (SUCCEEDED(result)) return 0;
  std::fprintf(stderr, "make_typelib: the type library could not be written (%08lX)\n", result);
  return 1;
}
