// The status codes of the record manager: 0 is success, every other number is an answer a caller
// acts upon. The names are used throughout this folder and its tests; the numbers never change.
#pragma once

#include <cstdint>

namespace btrieve {

using Status = int16_t;

inline constexpr Status kOk = 0;
inline constexpr Status kInvalidOperation = 1;
inline constexpr Status kIoError = 2;
inline constexpr Status kNotOpen = 3;
inline constexpr Status kKeyNotFound = 4;
inline constexpr Status kDuplicateKey = 5;
inline constexpr Status kInvalidKeyNumber = 6;
inline constexpr Status kDifferentKeyNumber = 7;
inline constexpr Status kInvalidPositioning = 8;
inline constexpr Status kEndOfFile = 9;
inline constexpr Status kKeyNotModifiable = 10;
inline constexpr Status kInvalidFileName = 11;
inline constexpr Status kFileNotFound = 12;
inline constexpr Status kDiskFull = 18;
inline constexpr Status kUnrecoverable = 19;
inline constexpr Status kNotActive = 20;
inline constexpr Status kKeyBufferTooShort = 21;
inline constexpr Status kDataBufferLength = 22;
inline constexpr Status kPageSize = 24;
inline constexpr Status kCreateError = 25;
inline constexpr Status kNumberOfKeys = 26;
inline constexpr Status kKeyPosition = 27;
inline constexpr Status kRecordLength = 28;
inline constexpr Status kKeyLength = 29;
inline constexpr Status kNotABtrieveFile = 30;
inline constexpr Status kCannotUnload = 33;
inline constexpr Status kDirectoryError = 35;
inline constexpr Status kTransactionError = 36;
inline constexpr Status kTransactionActive = 37;
inline constexpr Status kTransactionNotWritten = 38;
inline constexpr Status kNoTransaction = 39;
inline constexpr Status kNotAllowed = 41;
inline constexpr Status kInvalidAddress = 43;
inline constexpr Status kNullKeyPath = 44;
inline constexpr Status kInconsistentKeyFlags = 45;
inline constexpr Status kAccessDenied = 46;
inline constexpr Status kCollatingSequence = 48;
inline constexpr Status kKeyType = 49;
inline constexpr Status kOwnerAlreadySet = 50;
inline constexpr Status kOwnerInvalid = 51;
inline constexpr Status kVariablePageError = 54;
inline constexpr Status kAutoIncrement = 55;
inline constexpr Status kIndexIncomplete = 56;
inline constexpr Status kFileExists = 59;
inline constexpr Status kRejectCount = 60;
inline constexpr Status kWorkSpace = 61;
inline constexpr Status kDescriptor = 62;
inline constexpr Status kInsertDescriptor = 63;
inline constexpr Status kFilterLimit = 64;
inline constexpr Status kFieldOffset = 65;
inline constexpr Status kDeadlock = 78;
inline constexpr Status kProgrammingError = 79;
inline constexpr Status kConflict = 80;
inline constexpr Status kLockError = 81;
inline constexpr Status kLostPosition = 82;
inline constexpr Status kRecordInUse = 84;
inline constexpr Status kFileInUse = 85;
inline constexpr Status kFileTableFull = 86;
inline constexpr Status kHandleTableFull = 87;
inline constexpr Status kIncompatibleMode = 88;
inline constexpr Status kIncompatibleLock = 93;
inline constexpr Status kPermissionError = 94;
inline constexpr Status kNoCacheBuffer = 100;
inline constexpr Status kLoginNeeded = 170;
inline constexpr Status kLoginFailed = 171;
inline constexpr Status kNoSuchDatabase = 172;
inline constexpr Status kAlreadyLoggedIn = 173;
inline constexpr Status kExplicitLoginNeeded = 174;
inline constexpr Status kWrongUri = 175;

}  // namespace btrieve
