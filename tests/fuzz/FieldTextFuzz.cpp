// Fields of every type, size and number of decimals under every setting, read from and written to
// bytes of any kind. Memory is taken to the byte, so that the sanitizer sees what lies outside;
// what must come back from a round trip comes back.

#include "fields/DateRepair.h"
#include "fields/FieldCodecs.h"
#include "fields/FieldText.h"
#include "fields/Messages.h"
#include "fields/NumberText.h"
#include "fields/RightAlign.h"
#include "platform/Memory.h"
#include "platform/MessageBox.h"
#include "tests/fuzz/FuzzInput.h"

using namespace qrn;
using namespace qrn::fuzz;

namespace {

using Bytes = std::vector<uint8_t>;

void Require(bool holds, const char* what, const DbFieldInfo& field = {}) {
  if (holds) return;
  const FieldCodec* codec = FindFieldCodec(field.Type);
  const char* name = codec != nullptr && codec->name != nullptr ? codec->name : "nameless";
  Fail(std::string(what) + ": " + name + " (" + std::to_string(field.Type) + "), size " +
       std::to_string(field.Size) + ", decimals " + std::to_string(field.Decimals));
}

QuorinSettings TakeSettings(Input& input) {
  QuorinSettings settings;
  const uint8_t bits = input.Byte();
  settings.fill_space = bits & 1;
  settings.year_2000 = bits >> 1 & 1;
  if ((bits & 4) != 0) {
    settings.DateStyle = kTwoDigitYears;
    std::snprintf(settings.DateFormat, sizeof settings.DateFormat, "%%02d/%%02d/%%02d");
  }
  settings.float_size = input.Pick({10, 0, 1, 17, -1, 1000});
  settings.sign_nibble = input.Pick({15, 12, 13});
  return settings;
}

DbFieldInfo TakeField(Input& input) {
  DbFieldInfo field{};
  field.Type = input.Byte() % 29 - 1;
  field.Size = input.Pick({8, 4, 2, 1, 0, -1, 3, 10, 255, 256});
  field.Decimals = input.Pick({0, 2, 1, 3, 9, 63, 64, 255});
  return field;
}

std::string Read(const QuorinSettings& settings, const DbFieldInfo& field, const Bytes& record,
                 size_t at, size_t room = 2048) {
  std::vector<char> text(room, '\x7F');
  GetFieldText(settings, text, record.data() + at, field, record);
  const auto end = std::find(text.begin(), text.end(), '\0');
  const bool whole = field.Type != kBit && field.Type >= 0 && field.Type < 20;
  Require(!whole || room == 0 || end != text.end(), "text without its end", field);
  return {text.begin(), end};
}

Bytes Write(const QuorinSettings& settings, const DbFieldInfo& field, const std::string& text,
            size_t room) {
  Bytes record(room, 0xA5);
  SetFieldText(settings, record, text.c_str(), field);
  return record;
}

void TryRead(Input& input, const QuorinSettings& settings) {
  const DbFieldInfo field = TakeField(input);
  const size_t at = input.Byte() % 16;
  const size_t room = static_cast<size_t>(input.Pick({16, 0, 1, 2, 300}) & 0xFFF);
  const Bytes record = input.Take(4096);
  if (at > record.size()) return;
  Read(settings, field, record, at, room);
  GetFieldStoredSize(settings, field, record.data() + at, record.size() - at);
}

void TryWrite(Input& input, const QuorinSettings& settings) {
  const DbFieldInfo field = TakeField(input);
  const size_t room = static_cast<size_t>(input.Pick({64, 0, 1, 8, 9, 300}) & 0xFFF);
  const Bytes record = Write(settings, field, input.Text(4096), room);
  Read(settings, field, record, 0);
}

// Types whose every stored form survives being shown and put back.
bool KeepsAnyBytes(const DbFieldInfo& field) {
  switch (field.Type) {
    case kInteger:
      return field.Size == 1 || field.Size == 2 || field.Size == 4 || field.Size == 8;
    case kUBin:
      return field.Size == 2;
    case kCurrency:
      return field.Decimals <= 255;
    case kLogical:
      return true;
    default:
      return false;
  }
}

void TryAnyBytesComeBack(Input& input, const QuorinSettings& settings) {
  const DbFieldInfo field = TakeField(input);
  if (!KeepsAnyBytes(field)) return;
  const size_t size = field.Type == kCurrency  ? 8
                      : field.Type == kLogical ? 1
                                               : static_cast<size_t>(field.Size);
  Bytes stored = input.Take(size);
  stored.resize(size);
  const std::string text = Read(settings, field, stored, 0);
  Require(Write(settings, field, text, size) == stored, "changed by a round trip", field);
}

// A number of the most digits that the field's two parts hold.
std::string TakeNumber(Input& input, int whole, int fraction) {
  std::string text = (input.Byte() & 1) != 0 ? "-" : "";
  const int digits = input.Byte() % (whole + 1);
  for (int i = 0; i < digits; ++i) text += static_cast<char>('0' + input.Byte() % 10);
  if (fraction == 0) return text + (digits == 0 ? "0" : "");
  text += '.';
  for (int i = 0; i < fraction; ++i) text += static_cast<char>('0' + input.Byte() % 10);
  return text;
}

// What was written from a number that fits stays the same when shown and written again.
void TryNumbersComeBack(Input& input, const QuorinSettings& settings) {
  constexpr int kTypes[] = {kDecimal, kMoney, kNumeric, kNumericSTS, kNumericSA};
  DbFieldInfo field{};
  field.Type = kTypes[input.Byte() % std::size(kTypes)];
  field.Size = 1 + input.Byte() % 80;
  const bool packed = field.Type == kDecimal || field.Type == kMoney;
  const int digits = packed ? 2 * field.Size - 1 : field.Size - (field.Type == kNumericSTS);
  // A trailing or carried sign loses the zeros behind the point.
  const bool keepsFraction = packed || field.Type == kNumeric;
  field.Decimals = keepsFraction && digits > 0 ? input.Byte() % digits : 0;
  const std::string number = TakeNumber(input, digits - field.Decimals, field.Decimals);
  const auto size = static_cast<size_t>(field.Size);
  const Bytes stored = Write(settings, field, number, size);
  const std::string text = Read(settings, field, stored, 0);
  Require(Write(settings, field, text, size) == stored, "number changed by a round trip", field);
}

void TryTextComesBack(Input& input, const QuorinSettings& settings) {
  constexpr int kTypes[] = {kString, kZString, kNote, kLString};
  DbFieldInfo field{};
  field.Type = kTypes[input.Byte() % std::size(kTypes)];
  field.Size = 1 + input.Byte() % 127;
  const auto size = static_cast<size_t>(field.Size);
  const std::string text = input.Text(size - 1);
  const Bytes stored = Write(settings, field, text, size);
  std::string shown = text;
  if (field.Type == kString && settings.fill_space != 0) {
    shown.erase(shown.find_last_not_of(' ') + 1);
  }
  Require(Read(settings, field, stored, 0) == shown, "text changed by a round trip", field);
}

void TryRepair(Input& input, const QuorinSettings& settings) {
  const std::string typed = input.Text(15);
  char text[kRepairedTextSize];
  RepairTimeText(typed.c_str(), text);
  DbFieldInfo field{};
  field.Type = kTime;
  Require(Read(settings, field, Write(settings, field, text, 4), 0) == text, "time", field);
  RepairDateText(settings, typed.c_str(), text);
  if (settings.DateStyle == kTwoDigitYears) return;
  field.Type = kDate;
  Require(Read(settings, field, Write(settings, field, text, 4), 0) == text, "date", field);
}

void TryNumberText(Input& input, const QuorinSettings& settings) {
  const size_t room = input.Byte();
  const std::string text = input.Text(1024);
  std::vector<char> out(room);
  const std::string clean(StripToNumber(settings, text, out));
  Require(clean.size() <= room, "stripped beyond its room");
  std::vector<char> again(room);
  Require(StripToNumber(settings, clean, again) == clean, "stripped twice");
  RightAlignToWidth(out, input.Byte());
}

// Blobs of a small table, stored one after another; all values always read as last stored.
void TryBlobs(Input& input, const QuorinSettings& settings) {
  DbFieldInfo fields[3] = {};
  for (DbFieldInfo& field : fields) field.Type = kBlob;
  DbTableInfo table{};
  table.Fields = fields;
  table.FieldCount = 3;
  table.RecordLength = table.BufferSize = 24;
  table.BufferAllocated = 25;
  table.RecordBuffer = static_cast<uint8_t*>(AllocateZeroed(table.BufferAllocated));
  std::string values[3];
  const bool damage = (input.Byte() & 7) == 0;
  for (int i = 0; i < 24; ++i) {
    const size_t which = input.Byte() % 3;
    values[which] = input.Text(input.Byte() % 16);
    if (damage) table.RecordBuffer[input.Byte() % 24] = input.Byte();
    int32_t end = table.RecordLength;
    const auto length = SetBlobField(settings, table, values[which].c_str(), fields[which],
                                     static_cast<int32_t>(which * 8), &end);
    Require(damage || length == static_cast<int32_t>(values[which].size()), "blob length");
    Require(static_cast<size_t>(table.BufferSize) < table.BufferAllocated, "blob buffer");
    const Bytes record(table.RecordBuffer, table.RecordBuffer + table.BufferAllocated);
    for (size_t blob = 0; blob < 3 && !damage; ++blob) {
      Require(Read(settings, fields[blob], record, blob * 8) == values[blob], "blob value");
    }
  }
  FreeMemory(table.RecordBuffer);
}

using Target = void (*)(Input&, const QuorinSettings&);
constexpr Target kTargets[] = {TryRead,          TryWrite,  TryAnyBytesComeBack, TryNumbersComeBack,
                               TryTextComesBack, TryRepair, TryNumberText,       TryBlobs};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  ReplaceBeep([](unsigned) {});
  ReplaceShowBox([](const char*, unsigned) { return kBoxOk; });
  Input input(data, size);
  const Target target = kTargets[input.Byte() % std::size(kTargets)];
  const QuorinSettings settings = TakeSettings(input);
  target(input, settings);
  return 0;
}
