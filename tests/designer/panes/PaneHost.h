// A window that has panes as the designer's has them, and somebody who works them by key and mouse.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "host/designer/panes/Workplace.h"

namespace qrn::test {

class PaneHost final : public designer::Workplace {
 public:
  // A form of these lines and this code (UTF-8) as tests/designer/kit makes it.
  explicit PaneHost(const std::string& controls, const std::string& code = {});
  ~PaneHost() override;

  // --- As the panes see it.
  designer::Design& design() override { return *design_; }
  const designer::NameOffers& offers() override { return *offers_; }
  designer::Language language() const override { return designer::Language::Japanese; }
  HWND Frame() const override { return frame_; }
  HFONT Font() const override;
  // What was told is kept, a line each; no box keeps the test waiting.
  void Tell(const designer::Refusal& refusal) override;
  void Tell(const std::string& text) override { told_ += text + "\n"; }
  bool HasPages(designer::ControlId control) const override;
  void ShowPages(designer::ControlId control) override;
  void ShowCode(designer::ControlId, const std::string&) override {}

  // --- As the test sees it.
  void Hold(std::unique_ptr<designer::Pane> pane);
  designer::Pane& pane() { return *pane_; }
  void Select(const std::vector<std::string>& names);
  // Another folder for relative names of dictionaries.
  void PutFolder(const std::string& folder);
  std::string TakeTold() { return std::exchange(told_, {}); }

  // Lets the windows have what waits for them.
  void Pump();
  void Key(const char* chord);  // "Ctrl+Enter"
  void Type(const std::string& text);
  void Click(POINT onScreen, bool twice = false);
  HWND Child(int id) const;
  std::string Text(int id) const;
  // The file as it would be saved.
  std::string Saved() const;

 private:
  HWND frame_ = nullptr;
  std::unique_ptr<designer::Design> design_;
  std::unique_ptr<designer::NameOffers> offers_;
  std::unique_ptr<designer::Pane> pane_;
  std::string told_;
};

}  // namespace qrn::test
