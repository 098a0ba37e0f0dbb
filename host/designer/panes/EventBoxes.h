// The two lists over the code: objects, and the events of one. What has a handler is bold.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "com/Handles.h"
#include "host/designer/model/CodePart.h"

namespace qrn::designer {

class EventBoxes {
 public:
  enum Id { kObjectsId = 30, kEventsId };

  // `chosen` is called once the user has chosen an event, or an object that has a handler.
  void Make(HWND parent, HFONT font, std::function<void(const EventPlace&)> chosen);
  void Arrange(int left, int width) noexcept;
  int Height() const noexcept;

  // `general` stands for all that is no event's: the first line of the objects.
  void Show(const CodePart& code, const std::vector<CodeProcedure>& procedures,
            const std::string& general);
  // What the caret is in; nothing: elsewhere.
  void PutPlace(const CodePart& code, const std::optional<EventPlace>& place);

  void OnCommand(const CodePart& code, int id, int notice);
  // Owner-drawn lines: true if the message was one of these lists'.
  bool Draw(const DRAWITEMSTRUCT& item) const;
  bool Measure(MEASUREITEMSTRUCT& item) const noexcept;
  // An arrow key opens the closed list, so that only what is meant is chosen.
  bool TakesKey(const MSG& message) noexcept;

 private:
  struct Line {
    std::string text;
    bool isBold = false;
    bool operator==(const Line&) const = default;
  };
  void Fill(HWND box, std::vector<Line>& shown, std::vector<Line> lines);
  void ShowEvents(const CodePart& code, const std::string& object);
  void OnChosen(const CodePart& code, int id);
  bool HasHandler(const std::string& object, const std::string& event) const;
  HWND Box(int id) const noexcept { return id == kObjectsId ? objects_ : events_; }

  HWND objects_ = nullptr;
  HWND events_ = nullptr;
  HFONT font_ = nullptr;
  com::GdiFont bold_;
  std::function<void(const EventPlace&)> chosen_;
  std::vector<EventPlace> handled_;
  std::vector<Line> objectLines_;
  std::vector<Line> eventLines_;
  bool isAccepted_ = false;
};

}  // namespace qrn::designer
