#include "flatapi.h"

/* windows.h comes first. */
/* clang-format off */
#include <windows.h>
#include <oleauto.h>
/* clang-format on */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

enum { kCodePage = 932, kAreas = 8, kAreaSize = 1024 };

static void Fail(const char* what, const char* which) {
  fprintf(stderr, "%s%s\n", what, which);
  exit(1);
}

void LoadFlatApi(struct FlatApi* api) {
  const HMODULE module = LoadLibraryA("qrnbt350.ocx");
  if (module == NULL) Fail("qrnbt350.ocx could not be loaded", "");
#define FLAT_LOOK_UP(result, name, arguments)                                             \
  api->name = (result(QRN_CALL*) arguments)(void (*)(void))GetProcAddress(module, #name); \
  if (api->name == NULL) Fail("qrnbt350.ocx has no ", #name);
  QRN_FUNCTIONS(FLAT_LOOK_UP)
#undef FLAT_LOOK_UP
}

static char* NextArea(void) {
  static char areas[kAreas][kAreaSize];
  static int last = 0;
  last = (last + 1) % kAreas;
  return areas[last];
}

static const char* Narrowed(const wchar_t* wide, int units, UINT codePage) {
  char* area = NextArea();
  const int length = WideCharToMultiByte(codePage, 0, wide, units, area, kAreaSize - 1, NULL, NULL);
  area[length] = '\0';
  return area;
}

static const char* Converted(const char* text, int bytes, UINT from, UINT to) {
  wchar_t wide[kAreaSize];
  return Narrowed(wide, MultiByteToWideChar(from, 0, text, bytes, wide, kAreaSize), to);
}

const char* ToCodePage(const char* utf8) {
  return Converted(utf8, (int)strlen(utf8), CP_UTF8, kCodePage);
}

const char* TakeBytes(void* text) {
  const char* taken = "";
  if (text == NULL) return taken;
  if (SysStringByteLen(text) > 0) {
    taken = Converted(text, (int)SysStringByteLen(text), kCodePage, CP_UTF8);
  }
  SysFreeString(text);
  return taken;
}

const char* TakeUnits(void* text) {
  const char* taken = "";
  if (text == NULL) return taken;
  if (SysStringLen(text) > 0) taken = Narrowed(text, (int)SysStringLen(text), CP_UTF8);
  SysFreeString(text);
  return taken;
}
