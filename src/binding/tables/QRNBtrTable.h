// QRNBtr, the database control: its interface, event and persisted properties.
#pragma once

#include "binding/tables/PageIds.h"
#include "binding/tables/StockMembers.h"

namespace qrn {

namespace btr {

using ole::kAny;
using ole::kBool;
using ole::kLong;
using ole::kLongOut;
using ole::kShort;
using ole::kShortOut;
using ole::kText;
using ole::kTextOut;

// clang-format off
inline constexpr PropertyRow kProperties[] = {
    kTabStopRow,
    { 1, "DDFDir",    kText, ole::kUnlessSame | ole::kStoreOnly},  // the put does the rest itself
    { 2, "OwnerName", kText},
    { 3, "OpenMode",  ole::Enum(kEnumOpenMode)},
    { 4, "AllOpen",   kBool},
    { 5, "DistName",  kText},
    {40, "CacheDDF",  kBool},
};

// The result of a method comes last, as an argument or as the call's result.
inline constexpr ArgumentRow kRc{"rc", kShortOut};
inline constexpr ArgumentRow kTable{"TableName", kText};
inline constexpr ArgumentRow kFieldName{"FieldName", kText};

inline constexpr ArgumentRow kNoneRc[]        = {kRc};
inline constexpr ArgumentRow kTableRc[]       = {kTable, kRc};
inline constexpr ArgumentRow kTableRet[]      = {kTable, {"ret", kShortOut}};
inline constexpr ArgumentRow kGetField[]      = {kTable, kFieldName, {"ret", kTextOut}};
inline constexpr ArgumentRow kSetField[]      = {kTable, kFieldName, {"newValue", kText}, kRc};
inline constexpr ArgumentRow kAccess[]        = {{"OpCode", kShort}, kTable, {"Index", kText}, kRc};
inline constexpr ArgumentRow kBegin[]         = {{"sLockBias", kShort}, kRc};
inline constexpr ArgumentRow kUnlock[]        = {kTable, {"sUnlockType", kShort}, kRc};
inline constexpr ArgumentRow kGetPosition[]   = {kTable, {"ret", kLongOut}};
inline constexpr ArgumentRow kGetDirect[]     = {kTable, {"lPosition", kLong}, {"NewIndex", kText}, kRc};
inline constexpr ArgumentRow kFieldRc[]       = {kTable, kFieldName, kRc};
inline constexpr ArgumentRow kByPercentage[]  = {kTable, {"KeyName", kText}, {"sPercentage", kShort}, kRc};
inline constexpr ArgumentRow kFindPercentage[] = {kTable, {"KeyName", kText}, {"lPhysPos", kLong}, {"PercenTage", kShortOut}, kRc};
inline constexpr ArgumentRow kExGetField[]    = {{"sExResultID", kShort}, kFieldName, {"sRecLoc", kShort}, {"ret", kTextOut}};
inline constexpr ArgumentRow kExGetPosition[] = {{"sExResultID", kShort}, {"sRecLoc", kShort}, {"lRet", kLongOut}};
inline constexpr ArgumentRow kExFree[]        = {{"sExResultID", kShort}};
inline constexpr ArgumentRow kExAccess[]      = {
    {"sExOperation", kShort}, kTable, {"SearchCond", kText}, {"Fields", kText}, {"KeyName", kText},
    {"sSkipRecords", kShort}, {"sMaxRecords", kShort}, {"bIgnoreCase", kBool},
    {"lpExResultID", kShortOut}, {"lpNumOfResults", kShortOut}, kRc};
inline constexpr ArgumentRow kCount[]         = {kTable, {"lRecords", kLongOut}, kRc};
inline constexpr ArgumentRow kExSetMode[]     = {{"ModeString", kText}, kRc};
inline constexpr ArgumentRow kSetFileName[]   = {kTable, {"BtrieveFileName", kText}, kRc};
inline constexpr ArgumentRow kGetById[]       = {{"sTableID", kShort}, {"sFieldID", kShort}, {"pVal", kTextOut}};
inline constexpr ArgumentRow kSetById[]       = {{"sTableID", kShort}, {"sFieldID", kShort}, {"newValue", kText}, kRc};
inline constexpr ArgumentRow kArray[]         = {kTable, {"ArrayData", kAny}, kRc};
inline constexpr ArgumentRow kPosBlock[]      = {kTable, {"pPosBlock", kAny}, kRc};
inline constexpr ArgumentRow kRecordLength[]  = {kTable, {"pRecLen", kShortOut}, kRc};
inline constexpr ArgumentRow kAccessById[]    = {{"OpCode", kShort}, {"TableID", kShort}, {"IndexID", kShort}, kRc};
inline constexpr ArgumentRow kModulePath[]    = {{"pResult", kTextOut}, kRc};
inline constexpr ArgumentRow kLockBias[]      = {{"LockBias", kShort}, kRc};
inline constexpr ArgumentRow kNumOfTable[]    = {{"pNumOfTable", kShortOut}, {"pVal", kShortOut}};
inline constexpr ArgumentRow kNumOfField[]    = {kTable, {"pNumOfField", kShortOut}, kRc};
inline constexpr ArgumentRow kTableNameOf[]   = {{"ID", kShort}, {"TableName", kTextOut}, kRc};
inline constexpr ArgumentRow kFieldNameOf[]   = {kTable, {"FieldID", kShort}, {"FieldName", kTextOut}, kRc};
inline constexpr ArgumentRow kNumOfIndex[]    = {kTable, {"pNumOfIndex", kShortOut}, kRc};
inline constexpr ArgumentRow kIndexNameOf[]   = {kTable, {"ID", kShort}, {"IndexName", kTextOut}, kRc};
inline constexpr ArgumentRow kIsNull[]        = {kTable, kFieldName, {"bRet", {ole::vt::kBool | ole::vt::kByRef}}};
inline constexpr ArgumentRow kLogIn[]         = {{"ConnectionString", kText}, kRc};

inline constexpr bool kResult = true;
inline constexpr MethodRow kMethods[] = {
    { 6, "DbOpen",                  kTableRc,        kResult},
    { 7, "DbClose",                 kTableRc,        kResult},
    { 8, "GetUseCount",             kNoneRc,         kResult},
    { 9, "DbIsOpen",                kTableRet,       kResult},
    {10, "DbGetFieldData",          kGetField,       kResult},
    {11, "DbSetFieldData",          kSetField,       kResult},
    {12, "DbAccess",                kAccess,         kResult},
    {13, "DbTransferToControl",     kTableRc,        kResult},
    {14, "DbTransferFromControl",   kTableRc,        kResult},
    {15, "DbBeginTransaction",      kBegin,          kResult},
    {16, "DbEndTransaction",        kNoneRc,         kResult},
    {17, "DbAbortTransaction",      kNoneRc,         kResult},
    {18, "DbBeginConCurTransaction", kBegin,         kResult},
    {19, "DbClearControlData",      kTableRc,        kResult},
    {20, "DbUnlock",                kUnlock,         kResult},
    {21, "DbGetPosition",           kGetPosition,    kResult},
    {22, "DbGetDirect",             kGetDirect,      kResult},
    {23, "DbGetDataSize",           kFieldRc,        kResult},
    {24, "DbGetDataType",           kFieldRc,        kResult},
    {25, "DbGetByPercentage",       kByPercentage,   kResult},
    {26, "DbFindPercentage",        kFindPercentage, kResult},
    {27, "DbExGetFieldData",        kExGetField,     kResult},
    {28, "DbExGetPosition",         kExGetPosition,  kResult},
    {29, "DbExFree",                kExFree},
    {30, "DbExAccess",              kExAccess,       kResult},
    {31, "DbCreate",                kTableRc,        kResult},
    {32, "DbGetNumOfRecords",       kCount,          kResult},
    {33, "DbExSetMode",             kExSetMode,      kResult},
    {34, "DbSetFileName",           kSetFileName,    kResult},
    {35, "DbClearFieldBuffer",      kTableRc,        kResult},
    {36, "DbGetFieldDataByID",      kGetById,        kResult},
    {37, "DbSetFieldDataByID",      kSetById,        kResult},
    {38, "DbGetRecord",             kArray,          kResult},
    {39, "DbSetRecord",             kArray,          kResult},
    {41, "DbOpenAll",               kNoneRc,         kResult},
    {42, "DbCloseAll",              kNoneRc,         kResult},
    {43, "DbLoadDDF",               kNoneRc,         kResult},
    {44, "DbReset",                 kNoneRc,         kResult},
    {45, "DbGetRecordLength",       kRecordLength,   kResult},
    {46, "DbGetRecordImage",        kArray,          kResult},
    {47, "DbSetRecordImage",        kArray,          kResult},
    {48, "DbGetPosBlock",           kPosBlock,       kResult},
    {49, "DbAccessByID",            kAccessById,     kResult},
    {50, "DbGetModulePath",         kModulePath,     kResult},
    {51, "DbSetLockBias",           kLockBias,       kResult},
    {52, "DbGetNumOfTable",         kNumOfTable,     kResult},
    {53, "DbGetNumOfField",         kNumOfField,     kResult},
    {54, "DbGetTableName",          kTableNameOf,    kResult},
    {55, "DbGetFieldName",          kFieldNameOf,    kResult},
    {56, "DbGetNumOfIndex",         kNumOfIndex,     kResult},
    {57, "DbGetIndexName",          kIndexNameOf,    kResult},
    {58, "DbIsNull",                kIsNull,         kResult},
    {59, "DbLogIn",                 kLogIn,          kResult},
    {60, "DbLogOut",                kNoneRc,         kResult},
    {ole::stock::kAbout, "About"},
};

inline constexpr EventRow kEvents[] = {
    {1, "BtrieveError", kBtrieveErrorArguments},
};

inline constexpr PersistRow kPersisted[] = {
    kCx, kCy,
    {"DDFDir",    1, Page::Own},
    {"OwnerName", 2},
    {"OpenMode",  3},
    {"AllOpen",   4},
    {"DistName",  5},
    {"CacheDDF", 40},
};
// clang-format on

inline constexpr Guid kPageIds[] = {kQRNBtrPpg};

}  // namespace btr

inline constexpr ControlTable kQRNBtrTable{
    .className = "QRNBtr",
    .coclassName = "QuorinDb",
    .interfaceName = "IQRNBtr",
    .eventsName = "_DQRNBtrEvents",
    .classId = MakeGuid("33E5D64B-5163-4F5F-9EF0-496BF760724C"),
    .interfaceId = MakeGuid("4AD35329-747D-4087-8FCB-01A91C751819"),
    .eventsId = MakeGuid("9788E787-1343-4148-AEDA-02018E9495C7"),
    .registration = {101, 1, "1.0", kControlMiscStatus},
    .pages = btr::kPageIds,
    .properties = btr::kProperties,
    .methods = btr::kMethods,
    .events = btr::kEvents,
    .persisted = btr::kPersisted,
    .widthPx = 32,
    .heightPx = 32,
};
static_assert(ole::IsSound(kQRNBtrTable));

}  // namespace qrn
