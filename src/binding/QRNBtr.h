// QRNBtr, the database control of a form. It shows nothing at run time; at design time its picture
// tells whether the dictionary was found.
#pragma once

#include "binding/BoundControl.h"
#include "binding/database/Database.h"

namespace qrn {

class CQRNBtr final : public BoundControl<ole::Control, Database> {
 public:
  CQRNBtr();

  int16_t TabStop = -1;

  // Properties.
  com::Bstr GetDDFDir() const;
  HRESULT PutDDFDir(const com::Bstr& value);
  com::Bstr GetOwnerName() const;
  void PutOwnerName(const com::Bstr& value);
  com::Bstr GetDistName() const;
  void PutDistName(const com::Bstr& value);

  // Methods that are more than one function of the engine; arguments as in the table.
  HRESULT GetUseCount(int16_t& rc);
  void DbExFree(int16_t resultId);
  void DbExAccess(int16_t operation, const com::Bstr& tableName, const com::Bstr& searchCond,
                  const com::Bstr& fields, const com::Bstr& keyName, int16_t skipRecords,
                  int16_t maxRecords, int16_t ignoreCase, int16_t& resultId, int16_t& numOfResults,
                  int16_t& rc);
  void DbExSetMode(const com::Bstr& mode, int16_t& rc);
  void DbGetModulePath(com::Bstr& path, int16_t& rc);
  void About();

  // Whole records. The first two write `rc` on failure alone.
  void DbGetRecord(const com::Bstr& tableName, VARIANT& array, int16_t& rc);
  void DbSetRecord(const com::Bstr& tableName, VARIANT& array, int16_t& rc);
  void DbGetRecordImage(const com::Bstr& tableName, VARIANT& array, int16_t& rc);
  void DbSetRecordImage(const com::Bstr& tableName, VARIANT& array, int16_t& rc);
  void DbGetPosBlock(const com::Bstr& tableName, VARIANT& array, int16_t& rc);

  // Control.
  void OnSited() override { DbControlStart(); }
  void OnLoaded() override { DbControlStart(); }
  void OnRetire() override { ControlGoes(); }
  void OnAmbientChanged(int32_t id) override;
  bool OnWindowMessage(com::Message& message) override;
  void OnDraw(HDC dc, const RECT& rect) override;
  bool HasFixedSize() const override { return true; }
  void AdjustRect(RECT& place) override;
  // At run time there is nothing to click or type here: what lies behind gets it.
  DWORD ExtraWindowStyle() const override { return UserMode() ? WS_DISABLED : 0; }

  // DataControl.
  std::optional<std::string> AskFormName() override;
  std::optional<WindowHandle> AskFormWindow() override;

 protected:
  bool InUserMode() override { return UserMode(); }
  void AskRedraw() override { Redraw(); }
  void FireBtrieveError(const char* tableName, Status& status) override;

 private:
  // Runs `body`(table, bytes) on a table and the bytes of the host's array.
  template <class Body>
  Status WithBytes(const com::Bstr& tableName, VARIANT& array, Body body);
};

}  // namespace qrn
