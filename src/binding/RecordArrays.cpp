#include "binding/RecordArrays.h"

#include <algorithm>
#include <vector>

#include "binding/BoundControl.h"
#include "core/Record.h"
#include "core/ReturnCodes.h"

namespace qrn {
namespace {

constexpr size_t kFieldTextSize = 4097;

// The array of that element type in a VARIANT. False for anything else; a variable that holds no
// array yet gives null.
bool FindArray(const VARIANT& value, VARTYPE element, SAFEARRAY*& array) noexcept {
  const bool byReference = value.vt == (VT_BYREF | VT_ARRAY | element);
  if (!byReference && value.vt != (VT_ARRAY | element)) return false;
  array = !byReference ? value.parray : value.pparray != nullptr ? *value.pparray : nullptr;
  return true;
}

// The fields that lie between an array's bounds, and its elements.
class FieldArray {
 public:
  FieldArray() = default;
  FieldArray(const FieldArray&) = delete;
  FieldArray& operator=(const FieldArray&) = delete;
  ~FieldArray() {
    if (elements_ != nullptr) SafeArrayUnaccessData(array_);
  }

  Status Open(const DbTableInfo& table, VARIANT& value) {
    if (!FindArray(value, VT_BSTR, array_)) return kNotStringArray;
    LONG lower = 0;
    LONG upper = -1;
    if (array_ == nullptr || SafeArrayGetDim(array_) != 1 ||
        FAILED(SafeArrayGetLBound(array_, 1, &lower)) ||
        FAILED(SafeArrayGetUBound(array_, 1, &upper))) {
      return kStringArrayRank;
    }
    if (lower > table.FieldCount) return kArrayBound;
    first_ = std::max<LONG>(lower, 0);
    end_ = std::max(first_, static_cast<int32_t>(std::min<LONG>(upper, table.FieldCount - 1) + 1));
    if (FAILED(SafeArrayAccessData(array_, reinterpret_cast<void**>(&elements_)))) {
      elements_ = nullptr;
      return kStringArrayRank;
    }
    return kSuccess;
  }

  int32_t first() const noexcept { return first_; }
  std::span<BSTR> elements() const noexcept {
    return {elements_, static_cast<size_t>(end_ - first_)};
  }

 private:
  SAFEARRAY* array_ = nullptr;
  BSTR* elements_ = nullptr;
  int32_t first_ = 0;
  int32_t end_ = 0;
};

}  // namespace

Status FieldsToArray(DbEngine& engine, const DbTableInfo& table, VARIANT& value) {
  FieldArray array;
  if (const Status failure = array.Open(table, value); failure != 0) return failure;
  int32_t position = array.first();
  for (BSTR& element : array.elements()) {
    char text[kFieldTextSize] = "";
    DbReadFieldInto(engine, table, position++, text);
    WidenToBstr(text).moveTo(element);
  }
  return kSuccess;
}

Status FieldsFromArray(DbEngine& engine, DbTableInfo& table, VARIANT& value) {
  FieldArray array;
  if (const Status failure = array.Open(table, value); failure != 0) return failure;
  std::vector<std::string> texts;
  for (BSTR element : array.elements()) texts.push_back(NarrowText(com::Bstr::Copy(element)));
  std::vector<const char*> pointers;
  for (const std::string& text : texts) pointers.push_back(text.c_str());
  return DbWriteFields(engine, table, array.first(), pointers);
}

ByteArray::ByteArray(VARIANT& array) noexcept : failure_(Open(array)) {}

Status ByteArray::Open(VARIANT& value) noexcept {
  SAFEARRAY* array = nullptr;
  if (!FindArray(value, VT_UI1, array)) return kNotByteArray;
  if (array == nullptr || SafeArrayGetDim(array) != 1) return kByteArrayRank;
  void* data = nullptr;
  if (FAILED(SafeArrayAccessData(array, &data))) return kArrayUnreachable;
  array_ = array;
  bytes_ = {static_cast<uint8_t*>(data), array->rgsabound[0].cElements};
  return kSuccess;
}

ByteArray::~ByteArray() {
  if (array_ != nullptr) SafeArrayUnaccessData(array_);
}

}  // namespace qrn
