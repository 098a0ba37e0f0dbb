// QRNPic: the picture whose file a field of the record names. It draws itself, and only shows:
// nothing goes from it into a record.
#pragma once

#include "binding/BoundFaces.h"
#include "binding/FieldBound.h"

namespace qrn {

class CQRNPic final : public FieldBound<PictureFace> {
 public:
  // Properties.
  ole::Com<IPictureDisp> Picture;
  ole::Bstr BlobPath = ole::Bstr::Empty();  // directory of the files; empty: their names are paths
  int16_t PictureType = 0;                  // without effect
  int16_t Stretch = 0;                      // fits the picture to the control

  CQRNPic();

  // CQuorin
  ControlType GetControlType() override { return kTypePic; }

  // PictureFace
  void LoadPictureFromField(const DbTableInfo& table, const char* text) override;

  bool OnWindowMessage(ole::Message& message) override;
  void OnDraw(HDC dc, const RECT& rect) override;

 protected:
  KeyEnd OnKeyDown(MSG& message) override;
  LONG AccessibleRole() const override { return ROLE_SYSTEM_GRAPHIC; }

 private:
  bool OnButtonUp(ole::Message& message);
  bool OnDoubleClick(ole::Message& message);
  bool IsCharacterField(const DbTableInfo& table) const;
  std::string PathOf(const std::string& text) const;
  void DrawPicture(HDC dc, const RECT& rect) const;

  static const ole::MessageRow<CQRNPic> kOwnMessages[];
};

}  // namespace qrn
