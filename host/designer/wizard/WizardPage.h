// A page of the wizard: a dialog in the system's property sheet.
#pragma once

// clang-format off
#include <windows.h>
#include <commctrl.h>
// clang-format on

#include <string>
#include <vector>

#include "host/designer/wizard/DialogTemplate.h"
#include "host/designer/wizard/WizardChoices.h"
#include "host/designer/wizard/WizardTexts.h"

namespace qrn::designer {

// Width and height of every page, in dialog units.
inline constexpr short kPageWidth = 317;
inline constexpr short kPageHeight = 143;
// Of which so much is free for pieces: the sheet keeps a border.
inline constexpr short kPiecesWidth = 264;

class WizardPage {
 public:
  WizardPage(const WizardPage&) = delete;
  WizardPage& operator=(const WizardPage&) = delete;
  virtual ~WizardPage() = default;

  // For the sheet; the page outlives it. Null where memory is short.
  HPROPSHEETPAGE Handle();

 protected:
  // Texts of the wizard are in `language`, whatever the form will speak.
  WizardPage(WizardChoices& choices, Language language, WizardText title, WizardText hint)
      : choices_(choices), language_(language), title_(title), hint_(hint) {}

  virtual std::vector<DialogPiece> Pieces() const = 0;
  // Once, when the page's window stands.
  virtual void Begin() {}
  // Each time before it is shown.
  virtual void Enter() {}
  // The user goes on; false: stays, and has been told why.
  virtual bool Leave() { return true; }
  virtual void OnCommand(int, int) {}
  virtual void OnNotice(const NMHDR&) {}
  virtual DWORD Buttons() const { return PSWIZB_BACK | PSWIZB_NEXT; }

  HWND window() const noexcept { return window_; }
  HWND Item(int id) const noexcept { return GetDlgItem(window_, id); }
  std::string Text(int id) const;  // UTF-8
  void PutText(int id, const std::string& utf8);
  std::wstring Say(WizardText text, const std::vector<std::string>& words = {}) const {
    return Said(text, language_, words);
  }
  // A message box of the wizard's; true for Yes and OK.
  bool Tell(const std::wstring& text, UINT kind = MB_ICONEXCLAMATION) const;
  // Puts a folder that the user looks for into a field.
  void BrowseFolder(int id, WizardText hint);

  WizardChoices& choices_;
  Language language_;

 private:
  static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
  INT_PTR OnSheet(const NMHDR& notice);
  INT_PTR Answer(LONG_PTR result) const;

  WizardText title_;
  WizardText hint_;
  std::wstring titleText_;
  std::wstring hintText_;
  HWND window_ = nullptr;
  std::vector<DialogTemplate> template_;  // one, once the handle was made
};

// A list of items that can be ticked, in a list view with one column.
void MakeTickList(HWND list);
void ShowTicks(HWND list, const std::vector<WizardChoices::Item>& items);
// True if the notice says that an item's tick changed; `*at` is its place.
bool TickChanged(const NMHDR& notice, size_t* at, bool* ticked);

}  // namespace qrn::designer
