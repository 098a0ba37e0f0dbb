// The dictionary library: reads the three dictionary files of one directory (file.ddf, field.ddf,
// index.ddf) row by row. It knows no file format: everything goes through BTRCALL, so any record
// manager that can open the files serves.
//
// One reading exists at a time in a process: DDFOpen begins it, DDFClose ends it. Within it the
// three files are read independently of each other, each from its first row to its end. Calls come
// from one thread.
//
// Every function returns 0 for success, 9 at the end of a file, and otherwise either the record
// manager's own status (12 file missing, 30 no file of the record manager, 20 no record manager
// installed, ...) or one of the codes below. No call throws, and none changes a file.
//
// Rows are little-endian images without padding; names are blank-padded text in code page 932.
//
//   file.ddf    0 i16 table id     2 char[20] name   22 char[64] data file   86 u8 flags (16: own)
//   field.ddf   0 i16 field id     2 i16 table id     4 char[20] name        24 u8 type
//              25 i16 offset      27 i16 size        29 u8 decimals          30 i16 flags
//   index.ddf   0 i16 table id     2 i16 field id     4 i16 key number        6 i16 segment
//               8 i16 flags
//
// Field offsets are the file's: the data tool counts them past a null-indicator byte, other tools
// may not. In a field.ddf row of type 255 the name is that of a key, and the offset its number.
#pragma once

#ifdef _WIN32
#define QRN_DDFAPI __stdcall
#else
#define QRN_DDFAPI
#endif

namespace qrn::lexbase {

// Codes of the library's own, apart from every status of the record manager.
enum DdfCode : int {
  kDdfSuccess = 0,
  kDdfEndOfFile = 9,
  kDdfNotOpen = 1001,         // no reading is under way
  kDdfAlreadyOpen = 1002,     // a reading is under way; it goes on undisturbed
  kDdfBadDirectory = 1003,    // null, empty, or too long for the record manager's 254 bytes of path
  kDdfNotADictionary = 1004,  // a file of another record length, or without the keys of its kind
  kDdfNoBuffer = 1005,        // null buffer
  kDdfFailed = 1006,          // no memory
};

// Bytes that a read writes. Callers reserve the second figure.
inline constexpr int kFileRowSize = 97, kFileRowReserve = 112;
inline constexpr int kFieldRowSize = 32, kFieldRowReserve = 32;
inline constexpr int kIndexRowSize = 10, kIndexRowReserve = 16;

}  // namespace qrn::lexbase

extern "C" {

// Opens the three files of `directory` (bytes as the record manager takes them in a path: code page
// 932 on Windows), read-only and shared. `mode` is 0; other values are taken the same. On failure
// nothing stays open.
int QRN_DDFAPI DDFOpen(const char* directory, int mode);

// Ends the reading, whatever the result: the first non-zero status of closing the three files.
int QRN_DDFAPI DDFClose();

// The next row, into the caller's buffer. After 9 every further call gives 9; after another failure
// the same row is tried again. On anything but 0 the buffer is left as it was.
//
// Tables come by table id; fields by table id and within a table by field id; index rows by table
// id, key number and segment. Rows of the dictionary itself (tables 1 to 3) are delivered like any.
int QRN_DDFAPI DDFReadFile(void* fileRow);
int QRN_DDFAPI DDFReadField(void* fieldRow);
int QRN_DDFAPI DDFReadIndex(void* indexRow);
}
