// A database control apart from its window and its automation: it names a directory, owns the
// dictionary loaded from there with every open table of it, and is what the other controls of its
// form name as their source. The whole engine is offered by table and field name.
//
// Texts are code page 932, NUL-terminated. Results are 0, a positive Btrieve status, or a negative
// code of core/ReturnCodes.h. Methods that need a table check, in this order: -20 without a
// dictionary, -4 without a table of that name (case counts), -3 for a closed one; out values stay
// as they are on a failure unless told otherwise.
//
// Handlers of the application run inside opens, closes, creates, transfers and the start, and may
// call anything here, also what frees the dictionary. Whoever calls keeps the control alive.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "binding/database/DictionaryOwner.h"
#include "binding/database/PropertyText.h"
#include "binding/registry/ControlRegistry.h"
#include "binding/registry/TableTransfer.h"
#include "core/Table.h"
#include "extended/ExecuteExtended.h"

namespace qrn {

class Database : public DataControl {
 public:
  // The persisted properties. What is put into OpenMode is not checked.
  PropertyText DDFDir;     // the directory of the dictionary
  PropertyText OwnerName;  // used at the next open
  PropertyText DistName;   // section of quorin.ini that may name another directory at run time
  int32_t OpenMode = 0;    // _enumOpenMode
  int16_t AllOpen = -1;    // open all tables at start
  int16_t CacheDDF = -1;   // copy the dictionary of another control of the same directory

  // The start, run whenever the control may have become able to: a window, a site, loaded state.
  // Once it ran to its end it does nothing more, until the control's window has gone. Shows VE814
  // without a name, VE028 when the dictionary does not load, VE803 when a table does not open.
  void DbControlStart();

  // A new DDFDir was stored. At design time the dictionary follows, for the designer to choose
  // from; at run time nothing happens before DbLoadDDF.
  void DirectoryWasPut();

  // The control's window goes: at run time the tables are closed and the dictionary freed.
  void WindowGoes();
  // The control itself goes, whatever it was in.
  void ControlGoes();

  // Tables and their files. Failures of DbOpen, DbOpenAll, DbCloseAll and DbCreate raise
  // BtrieveError; VE803 follows if a handler leaves the status (VE007 came before). The result is
  // the operation's in any case.
  Status DbOpen(const char* tableName);
  Status DbClose(const char* tableName);
  Status DbOpenAll();
  Status DbCloseAll();
  Status DbCreate(const char* tableName);
  Status DbSetFileName(const char* tableName, const char* fileName);
  Status DbLoadDDF();                      // -21 without a directory
  Status DbReset();                        // closes all, then all of the client's work at Btrieve
  Status DbIsOpen(const char* tableName);  // 0 without a dictionary, -4, else IsOpen

  // What the dictionary knows. An id may be as large as the count, and is then that of an empty
  // entry.
  Status DbGetNumOfTable(int32_t& count);
  Status DbGetNumOfField(const char* tableName, int32_t& count);
  Status DbGetNumOfIndex(const char* tableName, int32_t& count);
  Status DbGetTableName(int32_t id, std::string& name);                              // -4
  Status DbGetFieldName(const char* tableName, int32_t fieldId, std::string& name);  // -13
  // The field that a key segment indexes: -14, and -4 when there is no such field.
  Status DbGetIndexName(const char* tableName, int32_t id, std::string& name);
  Status DbGetRecordLength(const char* tableName, int32_t& length);
  // Of an open table, as the result; -5 without such a field.
  Status DbGetDataSize(const char* tableName, const char* fieldName);
  Status DbGetDataType(const char* tableName, const char* fieldName);

  // Fields. Reading needs no open table; nothing comes back without dictionary or table.
  NullableText DbGetFieldData(const char* tableName, const char* fieldName);
  Status DbSetFieldData(const char* tableName, const char* fieldName, const char* text);
  NullableText DbGetFieldDataByID(int32_t tableId, int32_t fieldId);
  Status DbSetFieldDataByID(int32_t tableId, int32_t fieldId, const char* text);
  bool DbIsNull(const char* tableName, const char* fieldName);
  Status DbClearFieldBuffer(const char* tableName);

  // Records. `index` is a key's name, an index id a position in the table's segments.
  Status DbAccess(int32_t operation, const char* tableName, const char* index);
  Status DbAccessByID(int32_t operation, int32_t tableId, int32_t indexId);  // -15
  int32_t DbGetPosition(const char* tableName);                              // -1 for any failure
  Status DbGetDirect(const char* tableName, int32_t position, const char* index);
  Status DbGetByPercentage(const char* tableName, const char* index, int32_t percentage);
  // Without a key's name by physical order.
  Status DbFindPercentage(const char* tableName, const char* index, int32_t position,
                          uint16_t& percentage);
  Status DbUnlock(const char* tableName, int32_t unlockType);
  Status DbGetNumOfRecords(const char* tableName, int32_t& count);

  // Extended operations; texts of results need no table, only a result's id.
  Status DbExAccess(const char* tableName, const ExAccess& access, const char* keyName,
                    ExAccessResult& result);
  NullableText DbExGetFieldData(int16_t resultId, const char* fieldName, int32_t location);
  int32_t DbExGetPosition(int16_t resultId, int32_t location);
  Status DbExSetMode(const char* mode);  // for all controls

  // The record to and from the controls of the form that the control stands on.
  Status DbTransferToControl(const char* tableName);
  Status DbTransferFromControl(const char* tableName);
  Status DbClearControlData(const char* tableName);

  // Connections. The login is remembered until it is undone, whatever its status.
  Status DbLogIn(const char* connection);
  Status DbLogOut();

  // Runs `body`(table) after the checks: a table of that name, or an open one.
  Status WithTable(const char* tableName, const std::function<Status(DbTableInfo&)>& body);
  Status WithOpenTable(const char* tableName, const std::function<Status(DbTableInfo&)>& body);

  // DataControl.
  ControlType GetControlType() override { return kTypeBtr; }
  DbDictionary* GetDictionary() const noexcept override { return Dictionary.get(); }
  const char* DdfDirText() const noexcept override { return DDFDir.c_str(); }
  const char* OwnerNameText() const noexcept override { return OwnerName.c_str(); }
  int32_t OpenModeValue() const noexcept override { return OpenMode; }
  void DictionaryIsTaken() noexcept override;

 protected:
  Database() = default;
  ~Database() = default;

  // What the control's container and window give.
  virtual bool InUserMode() = 0;
  virtual void AskRedraw() = 0;
  virtual void FireBtrieveError(const char* tableName, Status& status) = 0;

 private:
  DbTableInfo* Find(const char* tableName) const noexcept;
  TableFinder FinderOf(const char* tableName) const;
  Status Transfer(const char* tableName, int32_t (*transfer)(CQuorin&, TableFinder));
  Status OpenTable(DbTableInfo& table);
  Status CloseTable(DbTableInfo& table);
  // BtrieveError for a failure; true when the handler leaves the status.
  bool ErrorStands(const std::string& tableName, Status status);

  void TakeDistributedDirectory(const std::string& name);
  void Adopt(DbDictionary* dictionary);  // in the place of the present one, which is dropped
  bool CopyFromAnother(Status& status);  // false when there is no other
  Status LoadQuietly();
  Status Load();  // VE028 for a failure
  bool ObtainAtStart();
  Status OpenAllAtStart();
  void AnnounceReady(const std::string& name);
  void DropTables();

  OwnedDictionary Dictionary;
  std::string ExModeText = "UC";
  int32_t Started = 0;
  DbLogin Login;  // LoginText and LoggedIn
  bool starting_ = false;
};

}  // namespace qrn
