/* The record manager's one entry, BTRCALL, and every number and layout that stands beside it.
 *
 * w64btrv.dll exports the entry by name and as number 1; natively it stands in libw64btrv.so. An
 * installed client of the same interface serves as well. All integers are little-endian and without
 * padding; offsets count from 0 unless a comment says otherwise.
 *
 * Lists of numbers are macros of rows, X(name, number), so that a program can make of them what it
 * needs (a table of names, a switch); the enumerations below them are made of the same rows.
 */
#ifndef BTRIEVE_H
#define BTRIEVE_H

#include <stdint.h>

#ifdef _WIN32
#define BTR_CALL __stdcall
#else
#define BTR_CALL
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* clang-format off */

/* Operations: BtrOpOpen and so on. */
#define BTR_OPERATIONS(X)        \
  X(Open, 0)                     \
  X(Close, 1)                    \
  X(Insert, 2)                   \
  X(Update, 3)                   \
  X(Delete, 4)                   \
  X(GetEqual, 5)                 \
  X(GetNext, 6)                  \
  X(GetPrevious, 7)              \
  X(GetGreater, 8)               \
  X(GetGreaterOrEqual, 9)        \
  X(GetLess, 10)                 \
  X(GetLessOrEqual, 11)          \
  X(GetFirst, 12)                \
  X(GetLast, 13)                 \
  X(Create, 14)                  /* the file specification and its keys: BtrFileSpec */ \
  X(Stat, 15)                    \
  X(BeginTransaction, 19)        /* 19, 20, 21, 1019: of the process, without a position block */ \
  X(EndTransaction, 20)          \
  X(AbortTransaction, 21)        \
  X(GetPosition, 22)             \
  X(GetDirect, 23)               \
  X(StepNext, 24)                \
  X(Stop, 25)                    /* as Reset, and the record manager lets its client go */ \
  X(Version, 26)                 /* BtrVersion */ \
  X(Unlock, 27)                  \
  X(Reset, 28)                   /* aborts, unlocks and closes everything of the process */ \
  X(SetOwner, 29)                \
  X(ClearOwner, 30)              \
  X(CreateIndex, 31)             \
  X(DropIndex, 32)               \
  X(StepFirst, 33)               \
  X(StepLast, 34)                \
  X(StepPrevious, 35)            \
  X(GetNextExtended, 36)         /* 36 to 39: BtrExtendedHead */ \
  X(GetPreviousExtended, 37)     \
  X(StepNextExtended, 38)        \
  X(StepPreviousExtended, 39)    \
  X(InsertExtended, 40)          \
  X(GetByPercentage, 44)         \
  X(FindPercentage, 45)          \
  X(Login, 78)                   /* key number 0 login, 1 logout */ \
  X(BeginConcurrentTransaction, 1019) \
  X(SetLongOwner, 17029)

/* Statuses: BtrStatusOk and so on. */
#define BTR_STATUSES(X)          \
  X(Ok, 0)                       \
  X(InvalidOperation, 1)         \
  X(IoError, 2)                  \
  X(NotOpen, 3)                  \
  X(KeyNotFound, 4)              \
  X(DuplicateKey, 5)             \
  X(InvalidKeyNumber, 6)         \
  X(DifferentKeyNumber, 7)       \
  X(InvalidPositioning, 8)       /* there is no current record */ \
  X(EndOfFile, 9)                /* or its beginning */ \
  X(KeyNotModifiable, 10)        \
  X(InvalidFileName, 11)         \
  X(FileNotFound, 12)            \
  X(DiskFull, 18)                \
  X(Unrecoverable, 19)           \
  X(NotActive, 20)               /* no record manager is installed */ \
  X(KeyBufferTooShort, 21)       \
  X(DataBufferLength, 22)        /* too short; of a variable record what fits is there */ \
  X(PageSize, 24)                \
  X(CreateError, 25)             \
  X(NumberOfKeys, 26)            \
  X(KeyPosition, 27)             \
  X(RecordLength, 28)            \
  X(KeyLength, 29)               \
  X(NotABtrieveFile, 30)         \
  X(CannotUnload, 33)            \
  X(DirectoryError, 35)          \
  X(TransactionError, 36)        \
  X(TransactionActive, 37)       \
  X(TransactionNotWritten, 38)   \
  X(NoTransaction, 39)           \
  X(NotAllowed, 41)              \
  X(InvalidAddress, 43)          \
  X(NullKeyPath, 44)             \
  X(InconsistentKeyFlags, 45)    \
  X(AccessDenied, 46)            \
  X(CollatingSequence, 48)       \
  X(KeyType, 49)                 \
  X(OwnerAlreadySet, 50)         \
  X(OwnerInvalid, 51)            \
  X(VariablePageError, 54)       \
  X(AutoIncrement, 55)           \
  X(IndexIncomplete, 56)         \
  X(FileExists, 59)              \
  X(RejectCount, 60)             \
  X(WorkSpace, 61)               \
  X(Descriptor, 62)              \
  X(InsertDescriptor, 63)        \
  X(FilterLimit, 64)             /* no later record along the key can match */ \
  X(FieldOffset, 65)             \
  X(Deadlock, 78)                \
  X(ProgrammingError, 79)        \
  X(Conflict, 80)                /* the record has changed since it was read */ \
  X(LockError, 81)               \
  X(LostPosition, 82)            \
  X(RecordInUse, 84)             \
  X(FileInUse, 85)               \
  X(FileTableFull, 86)           \
  X(HandleTableFull, 87)         \
  X(IncompatibleMode, 88)        \
  X(IncompatibleLock, 93)        \
  X(PermissionError, 94)         \
  X(NoCacheBuffer, 100)          /* no memory */ \
  X(LoginNeeded, 170)            \
  X(LoginFailed, 171)            \
  X(NoSuchDatabase, 172)         \
  X(AlreadyLoggedIn, 173)        \
  X(ExplicitLoginNeeded, 174)    \
  X(WrongUri, 175)

/* Types of a key segment and of a condition's operand: BtrTypeString and so on. */
#define BTR_KEY_TYPES(X)         \
  X(String, 0)                   \
  X(Integer, 1)                  \
  X(Float, 2)                    \
  X(Date, 3)                     \
  X(Time, 4)                     \
  X(Decimal, 5)                  \
  X(Money, 6)                    \
  X(Logical, 7)                  \
  X(Numeric, 8)                  \
  X(BFloat, 9)                   \
  X(LString, 10)                 /* a length byte in front */ \
  X(ZString, 11)                 /* ends in a NUL */ \
  X(UnsignedBinary, 14)          \
  X(AutoIncrement, 15)           \
  X(NumericSts, 17)              \
  X(NumericSa, 18)               \
  X(Currency, 19)                \
  X(Timestamp, 20)               \
  X(WideString, 25)              \
  X(WideZString, 26)             \
  X(Guid, 27)                    \
  X(NullIndicator, 255)

#define BTR_OPERATION_ROW(name, number) BtrOp##name = number,
#define BTR_STATUS_ROW(name, number) BtrStatus##name = number,
#define BTR_KEY_TYPE_ROW(name, number) BtrType##name = number,
enum BtrOperation {
  BTR_OPERATIONS(BTR_OPERATION_ROW)
  /* Added to an operation. The locks go on reads and on Begin, where they are every read's default. */
  BtrBiasGetKey = 50,            /* on 5 to 13: the key's value alone, duplicates counted as one */
  BtrBiasSingleWait = 100,
  BtrBiasSingleNoWait = 200,
  BtrBiasMultipleWait = 300,
  BtrBiasMultipleNoWait = 400,
  BtrBiasNoRetry = 500           /* on 1019: its writes are not repeated on a conflict */
};
enum BtrStatus { BTR_STATUSES(BTR_STATUS_ROW) };
enum BtrKeyType { BTR_KEY_TYPES(BTR_KEY_TYPE_ROW) };
#undef BTR_OPERATION_ROW
#undef BTR_STATUS_ROW
#undef BTR_KEY_TYPE_ROW

/* Key numbers that are no key's. -1 and 255 are the same byte. */
enum BtrKeyNumber {
  BtrNoKey = -1,                 /* no key; on Insert and Update no change of place along the key */
  BtrCreateReplace = 0,          /* Create: an existing file is replaced, or */
  BtrCreateKeep = -1,            /* it answers 59 */
  BtrUnlockSingle = 0,
  BtrUnlockOne = -1,             /* of several locks the one at the position in the data buffer */
  BtrUnlockAll = -2,
  BtrHighestKeyNumber = 118
};

/* The key number of an Open. The last two are added to another: how engines share the file. */
enum BtrOpenMode {
  BtrModeNormal = 0,
  BtrModeAccelerated = -1,
  BtrModeReadOnly = -2,
  BtrModeVerify = -3,
  BtrModeExclusive = -4,
  BtrModeSingleEngine = -32,
  BtrModeMultiEngine = -64
};

/* BtrFileSpec.flags. The others only steer storage. */
enum BtrFileFlag {
  BtrFileVariable = 0x0001,      /* records of variable length */
  BtrFileKeyOnly = 0x0010,
  BtrFileReservePointers = 0x0100,
  BtrFileKeyNumbers = 0x0400     /* BtrKeySpec.keyNumber is given */
};

/* BtrKeySpec.flags. */
enum BtrKeyFlag {
  BtrKeyDuplicates = 0x0001,
  BtrKeyModifiable = 0x0002,
  BtrKeyOldBinary = 0x0004,      /* unsigned binary, where BtrKeyExtendedType is clear */
  BtrKeyNullAll = 0x0008,        /* a record stays out when every segment is null */
  BtrKeyAnotherSegment = 0x0010,
  BtrKeySequence = 0x0020,
  BtrKeyDescending = 0x0040,
  BtrKeyRepeating = 0x0080,      /* beside BtrKeyDuplicates */
  BtrKeyExtendedType = 0x0100,   /* BtrKeySpec.type counts */
  BtrKeyNullAny = 0x0200,        /* a record stays out when any segment is null */
  BtrKeyIgnoreCase = 0x0400      /* beside BtrKeySequence: the sequence is numbered */
};

/* Comparison codes of a term, and what is added to them. */
enum BtrComparison {
  BtrEqual = 1,
  BtrGreater = 2,
  BtrLess = 3,
  BtrNotEqual = 4,
  BtrGreaterOrEqual = 5,
  BtrLessOrEqual = 6,
  BtrNamedSequence = 8,
  BtrWithSequence = 32,          /* by the file's first collating sequence */
  BtrWithField = 64,             /* the operand is the offset of a second field */
  BtrIgnoringCase = 128
};

/* What follows a term. */
enum BtrConnector { BtrLastTerm = 0, BtrAnd = 1, BtrOr = 2 };

/* Sizes in bytes. */
enum BtrSize {
  BtrPositionBlockSize = 128,
  BtrKeyBufferSize = 255,        /* the largest key, path with its NUL, and owner name */
  BtrLongestPath = 254,          /* without its NUL */
  BtrLongestRecord = 65535,
  BtrSpecSize = 16,              /* BtrFileSpec, and BtrKeySpec */
  BtrSequenceSize = 265,         /* 0xAC, a name of 8 bytes, a map of 256 bytes */
  BtrVersionSize = 5,
  BtrReplyCountSize = 2,         /* in front of the records of an extended reply: u16, their number */
  BtrReplyHeadSize = 6           /* BtrReplyHead */
};

/* clang-format on */

/* What an extended request says about its first record: behind the current one, or with it. */
#define BTR_AFTER_CURRENT "EG"
#define BTR_WITH_CURRENT "UC"

#pragma pack(push, 1)

/* The head of a Create's data and of a Stat's reply. One BtrKeySpec for each segment follows, then
 * BtrSequenceSize bytes for each collating sequence. */
typedef struct BtrFileSpec {
  uint16_t recordLength; /* of a variable file the fixed part */
  uint16_t pageSize;
  uint8_t keyCount; /* keys, not segments */
  uint8_t version;
  uint32_t recordCount; /* Create: 0; Stat: records in the file */
  uint16_t flags;       /* BtrFileFlag */
  uint8_t reservedPointers;
  uint8_t reserved;
  uint16_t preallocatedPages;
} BtrFileSpec;

typedef struct BtrKeySpec {
  uint16_t position; /* in the record, from 1 */
  uint16_t length;
  uint16_t flags;        /* BtrKeyFlag */
  uint32_t uniqueValues; /* Create: 0; Stat: distinct values of the key */
  uint8_t type;          /* BtrKeyType, with BtrKeyExtendedType */
  uint8_t nullValue;
  uint16_t reserved;
  uint8_t keyNumber;
  uint8_t sequenceNumber;
} BtrKeySpec;

/* The reply of Version. */
typedef struct BtrVersion {
  uint16_t version;
  uint16_t revision;
  char engine;
} BtrVersion;

/* An extended request: this head, the terms, BtrExtraction, one BtrExtractField for each field. */
typedef struct BtrExtendedHead {
  uint16_t totalLength;
  char signature[2];    /* BTR_AFTER_CURRENT, BTR_WITH_CURRENT; without a NUL */
  uint16_t rejectCount; /* rejections after which the call ends with 60; 0: 4095 */
  uint16_t termCount;
} BtrExtendedHead;

/* A term's head. The operand follows: `length` bytes, or with BtrWithField the u16 offset of a
 * field of the same type and length. Terms are judged from left to right and each may decide. */
typedef struct BtrTerm {
  uint8_t type; /* BtrKeyType */
  uint16_t length;
  uint16_t offset;
  uint8_t comparison; /* BtrComparison */
  uint8_t connector;  /* BtrConnector */
} BtrTerm;

typedef struct BtrExtraction {
  uint16_t recordCount; /* records wanted */
  uint16_t fieldCount;
} BtrExtraction;

typedef struct BtrExtractField {
  uint16_t length;
  uint16_t offset;
} BtrExtractField;

/* In front of each record of an extended reply; `length` bytes of extracted fields follow. */
typedef struct BtrReplyHead {
  uint16_t length;
  uint32_t position;
} BtrReplyHead;

#pragma pack(pop)

/* One operation; the answer is a BtrStatus.
 *
 * operation   a BtrOperation with its biases.
 * posBlock    BtrPositionBlockSize bytes, filled by Open, handed back untouched with every later
 *             call.
 * data        record, specification, descriptor or reply.
 * dataLength  in: bytes in `data`, out: bytes returned there.
 * key         key value, path, owner name or URI; at most BtrKeyBufferSize bytes. Paths are bytes
 * of the system code page on Windows, plain bytes elsewhere, and end in a NUL. keyLength   bytes in
 * `key`; not looked at where `key` is a path. keyNumber   key, open mode or option.
 *
 * Pointers that an operation does not use may be null. A call that fails before it has read or
 * written anything leaves buffers, length and place as they were. Threads may call at any time; one
 * call runs at a time, and all threads of the process are one client. */
/* clang-format off */
#define BTR_FUNCTIONS(X) \
  X(int16_t, BTRCALL, (uint16_t operation, void* posBlock, void* data, uint32_t* dataLength, \
                       void* key, uint8_t keyLength, int8_t keyNumber))
/* clang-format on */

#define BTR_DECLARATION(result, name, arguments) \
  result BTR_CALL name arguments;                \
  typedef result(BTR_CALL* name##_FUNCTION) arguments;
BTR_FUNCTIONS(BTR_DECLARATION)
#undef BTR_DECLARATION

#ifdef __cplusplus
}
#endif

#endif /* BTRIEVE_H */
