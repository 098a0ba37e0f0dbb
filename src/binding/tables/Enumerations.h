// The enumerations of the interfaces, with the texts that designers show. Several names and texts
// are misspelt or doubled (mpArrowAndHousrGlass, LockMultiWait, DbGetLessThanOrEuqal): programs and
// forms use them as they stand.
#pragma once

#include "ole/tables/Members.h"

namespace qrn {

using ole::EnumRow;
using ole::EnumTable;
using ole::MakeGuid;

// clang-format off
inline constexpr EnumRow kBorderStyleRows[] = {
    {"BorderNone",       0, u"なし"},
    {"BorderSingleLine", 1, u"実線"},
};
inline constexpr EnumRow kAlignmentRows[] = {
    {"AlignLeft",   0, u"左揃え"},
    {"AlignRight",  1, u"右揃え"},
    {"AlignCenter", 2, u"中央揃え"},
};
inline constexpr EnumRow kMousePointerRows[] = {
    {"mpDefault",                0, u"既定値"},
    {"mpArrow",                  1, u"矢印"},
    {"mpCross",                  2, u"ｸﾛｽ"},
    {"mpIBeam",                  3, u"Iﾋﾞｰﾑ"},
    {"mpIcon",                   4, u"ｱｲｺﾝ"},
    {"mpSizeFourDir",            5, u"ｻｲｽﾞ(上下左右)"},
    {"mpSizeRightUpperLeftDown", 6, u"ｻｲｽﾞ(右上-左下)"},
    {"mpSizeUpDown",             7, u"ｻｲｽﾞ(上下)"},
    {"mpSizeLeftUpperRightDown", 8, u"ｻｲｽﾞ(左上-右下)"},
    {"mpSizeLeftRight",          9, u"ｻｲｽﾞ(左右)"},
    {"mpUpArrow",               10, u"上矢印"},
    {"mpHourGlass",             11, u"砂時計"},
    {"mpStop",                  12, u"禁止"},
    {"mpArrowAndHousrGlass",    13, u"矢印と砂時計"},
    {"mpArrowAndQuestion",      14, u"矢印と疑問符"},
    {"mpSizeAllDir",            15, u"ｻｲｽﾞ(全方向)"},
    {"mpUserDefined",           99, u"ﾕｰｻﾞｰ定義"},
};
inline constexpr EnumRow kImeModeRows[] = {
    {"ImeNone",       0, u"なし"},
    {"ImeOn",         1, u"ｵﾝ"},
    {"ImeOff",        2, u"ｵﾌ"},
    {"ImeOffFixed",   3, u"ｵﾌ固定"},
    {"ImeZenHira",    4, u"全角ひらがな"},
    {"ImeZenKata",    5, u"全角ｶﾀｶﾅ"},
    {"ImeHanKata",    6, u"半角ｶﾀｶﾅ"},
    {"ImeZenEnglish", 7, u"全角英数"},
    {"ImeHanEnglish", 8, u"半角英数"},
};
inline constexpr EnumRow kOpenModeRows[] = {
    {"OpenNormal",    0, {}},
    {"OpenAccel",     1, {}},
    {"OpenReadOnly",  2, {}},
    {"OpenVerify",    3, {}},
    {"OpenExclusive", 4, {}},
    {"OpenSfsh",      5, {}},
    {"OpenMfsh",      6, {}},
};
inline constexpr EnumRow kFormatOptionRows[] = {
    {"FormatNone",       0, {}},
    {"FormatEveryChar",  1, {}},
    {"FormatRightAlign", 2, {}},
    {"FormatEveryRight", 3, {}},
};
inline constexpr EnumRow kDbOperationRows[] = {
    {"DbInsert",              0, u"Insert"},
    {"DbUpdate",              1, u"Update"},
    {"DbDelete",              2, u"Delete"},
    {"DbGetEqual",            3, u"GetEqual"},
    {"DbGetFirst",            4, u"GetFirst"},
    {"DbGetLast",             5, u"GetLast"},
    {"DbGetNext",             6, u"GetNext"},
    {"DbGetPrevious",         7, u"GetPrevious"},
    {"DbGetGreater",          8, u"GetGreater"},
    {"DbGetLessThan",         9, u"GetLessThan"},
    {"DbGetGreaterOrEqual",  10, u"GetGreaterOrEqual"},
    {"DbGetLessThanOrEuqal", 11, u"GetLessThanOrEqual"},
    {"DbStepFirst",          12, u"StepFirst"},
    {"DbStepLast",           13, u"StepLast"},
    {"DbStepNext",           14, u"StepNext"},
    {"DbStepPrevious",       15, u"StepPrevious"},
    {"DbInsertNCC",          16, u"Insert NCC"},
    {"DbUpdateNCC",          17, u"Update NCC"},
};
inline constexpr EnumRow kLocksRows[] = {
    {"LockNone",         0, u"ﾉｰﾛｯｸ"},
    {"LockSingleWait",   1, u"ｼﾝｸﾞﾙ ｳｴｲﾄ"},
    {"LockSingleNoWait", 2, u"ｼﾝｸﾞﾙ ﾉｰｳｴｲﾄ"},
    {"LockMultiWait",    3, u"ﾏﾙﾁ ﾉｰｳｴｲﾄ"},
    {"LockMultiNoWait",  4, u"ﾏﾙﾁ ﾉｰｳｴｲﾄ"},
};
inline constexpr EnumRow kBtnStyleRows[] = {
    {"btnStyleStandard", 0, u"Standard"},
    {"btnStyleGraphics", 1, u"Graphics"},
};
inline constexpr EnumRow kCheckAlignmentRows[] = {
    {"checkAlignLeft",  0, u"左揃え"},
    {"checkAlignRight", 1, u"右揃え"},
};
inline constexpr EnumRow kOptBtnAlignmentRows[] = {
    {"optbtnAlignLeft",  0, u"左揃え"},
    {"optbtnAlignRight", 1, u"右揃え"},
};
inline constexpr EnumRow kUpdateOptionRows[] = {
    {"UpdateNone",    0, u"なし"},
    {"UpdateOnInit",  1, u"初期化時"},
    {"UpdateOnFocus", 2, u"ﾌｫｰｶｽ時"},
};
inline constexpr EnumRow kComboStyleRows[] = {
    {"DropDownCombo", 0, u"drop down combo"},
    {"NormalCombo",   1, u"simple combo"},
    {"DropDownList",  2, u"drop down list"},
};
inline constexpr EnumRow kDbCompareCaseRows[] = {
    {"CaseSensitive", 0, {}},
    {"CaseIgnore",    1, {}},
};
inline constexpr EnumRow kExOpCodeRows[] = {
    {"OpGetPrevEx",  0, {}},
    {"OpGetNextEx",  1, {}},
    {"OpStepPrevEx", 2, {}},
    {"OpStepNextEx", 3, {}},
};
inline constexpr EnumRow kGridUpdateOptionRows[] = {
    {"UpdateGridNone",    0, u"なし"},
    {"UpdateGridInitial", 1, u"初期化時"},
};
inline constexpr EnumRow kGridFillStyleRows[] = {
    {"gridFillCell", 0, u"セル位置"},
    {"gridFillSel",  1, u"選択範囲"},
};
inline constexpr EnumRow kGridScRows[] = {
    {"gridScNone", 0, u"なし"},
    {"gridScHorz", 1, u"水平"},
    {"gridScVert", 2, u"垂直"},
    {"gridScBoth", 3, u"両方"},
};
inline constexpr EnumRow kGridResizingRows[] = {
    {"gridResizeNone", 0, u"なし"},
    {"gridResizeCol",  1, u"カラム"},
    {"gridResizeRow",  2, u"ロー"},
    {"gridResizeBoth", 3, u"両方"},
};

// Not an enumeration of the library: what property browsers show for the grid's Appearance.
inline constexpr EnumRow kAppearanceChoices[] = {
    {"Flat", 0, u"Flat"},
    {"3D",   1, u"3D"},
};

inline constexpr EnumTable kEnumBorderStyle      {"_enumBorderStyle",       MakeGuid("C746F125-A22F-40A1-AEE1-5FC938CEF3CE"), kBorderStyleRows};
inline constexpr EnumTable kEnumAlignment        {"_enumAlignment",         MakeGuid("23B5968D-3DF7-4284-821E-A5261EB30C03"), kAlignmentRows};
inline constexpr EnumTable kEnumMousePointer     {"_enumMousePointer",      MakeGuid("6502BCA0-A339-4E4D-92A8-25C975F855FA"), kMousePointerRows};
inline constexpr EnumTable kEnumImeMode          {"_enumImeMode",           MakeGuid("B026A23E-D296-44E0-8031-11F6FFC278F7"), kImeModeRows};
inline constexpr EnumTable kEnumOpenMode         {"_enumOpenMode",          MakeGuid("B87F90B3-597D-4731-A844-5F108AC7CD80"), kOpenModeRows};
inline constexpr EnumTable kEnumFormatOption     {"_enumFormatOption",      MakeGuid("55D6F51A-4CDF-4A03-B2A1-4158DCE2D4E5"), kFormatOptionRows};
inline constexpr EnumTable kEnumDbOperation      {"_enumDbOperation",       MakeGuid("35AFD53A-82D2-4633-BBE1-C49F0C9DFE64"), kDbOperationRows};
inline constexpr EnumTable kEnumLocks            {"_enumLocks",             MakeGuid("C563D515-BB57-4381-93BD-46CBB48EC8D1"), kLocksRows};
inline constexpr EnumTable kEnumBtnStyle         {"_enumBtnStyle",          MakeGuid("DB9EE41A-A2BB-4A92-805D-E9238B5D0DEE"), kBtnStyleRows};
inline constexpr EnumTable kEnumCheckAlignment   {"_enumCheckAlignment",    MakeGuid("B9F54C71-AA12-4240-8D7F-A79D2E911C76"), kCheckAlignmentRows};
inline constexpr EnumTable kEnumOptBtnAlignment  {"_enumOptBtnAlignment",   MakeGuid("B04E0C8E-AD00-427C-B9FF-13ACEAE7DAAF"), kOptBtnAlignmentRows};
inline constexpr EnumTable kEnumUpdateOption     {"_enumUpdateOption",      MakeGuid("D7188298-9EB7-4494-8515-1844490B9FC4"), kUpdateOptionRows};
inline constexpr EnumTable kEnumComboStyle       {"_enumComboStyle",        MakeGuid("6B81FC8C-6393-42FB-8D85-F0F9A93132E7"), kComboStyleRows};
inline constexpr EnumTable kEnumDbCompareCase    {"_enumDbCompareCase",     MakeGuid("21EE4FAF-6072-4C0F-AEBA-E47142F2EE21"), kDbCompareCaseRows};
inline constexpr EnumTable kEnumExOpCode         {"_enumExOpCode",          MakeGuid("B99C88B8-2B46-40F4-9352-8CDD84D7400A"), kExOpCodeRows};
inline constexpr EnumTable kEnumGridUpdateOption {"_enumGridUpdateOption",  MakeGuid("0E26908B-FA3D-453E-BEC6-F34EC696B738"), kGridUpdateOptionRows};
inline constexpr EnumTable kEnumGridFillStyle    {"_enumGridFillStyle",     MakeGuid("E1FB5FA3-F238-415C-8D45-A5AD1BBF99BA"), kGridFillStyleRows};
inline constexpr EnumTable kEnumGridSc           {"_enumGridSc",            MakeGuid("5BDE2295-EADE-49BB-8685-99ED7411F498"), kGridScRows};
inline constexpr EnumTable kEnumGridResizing     {"_enumGridResizing",      MakeGuid("2957435C-5332-4EBD-B483-C8BB84CA9551"), kGridResizingRows};
// clang-format on

// All of them, in the order of the type library.
inline constexpr const EnumTable* kEnumerations[] = {
    &kEnumBorderStyle,   &kEnumAlignment,      &kEnumMousePointer,    &kEnumImeMode,
    &kEnumOpenMode,      &kEnumFormatOption,   &kEnumDbOperation,     &kEnumLocks,
    &kEnumBtnStyle,      &kEnumCheckAlignment, &kEnumOptBtnAlignment, &kEnumUpdateOption,
    &kEnumComboStyle,    &kEnumDbCompareCase,  &kEnumExOpCode,        &kEnumGridUpdateOption,
    &kEnumGridFillStyle, &kEnumGridSc,         &kEnumGridResizing,
};

}  // namespace qrn
