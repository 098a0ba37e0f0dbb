/* The module's functions as a program in C finds them: qrnbt350.ocx loaded by name, each function
 * looked up once. */
#ifndef FLATAPI_H
#define FLATAPI_H

#include "qrnbt350.h"

/* A pointer for each function, by its name. */
#define FLAT_POINTER(result, name, arguments) result(QRN_CALL* name) arguments;
struct FlatApi {
  QRN_FUNCTIONS(FLAT_POINTER)
};
#undef FLAT_POINTER

/* Ends the program with a sentence when the module or one of its functions is missing. */
void LoadFlatApi(struct FlatApi* api);

/* UTF-8 to the module's code page, into one of a few areas that later calls use again. */
const char* ToCodePage(const char* utf8);

/* A string that the module gave, as UTF-8 in such an area; the string is freed. Names come as
 * bytes, field data as UTF-16. Null counts as empty. */
const char* TakeBytes(void* text);
const char* TakeUnits(void* text);

#endif /* FLATAPI_H */
