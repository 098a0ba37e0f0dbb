// Plays a user script before a running program.
#pragma once

#include <atomic>
#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "com/Handles.h"
#include "host/container/Scriptable.h"
#include "host/form/MemberPath.h"
#include "host/form/UserScript.h"
#include "host/user/Scene.h"
#include "host/user/UiThread.h"

namespace qrn::host {

// Steps run on a thread of their own, so that boxes which the program waits for can be answered.
// A step that fails ends the script. Made, waited for and destroyed on the program's thread.
class UserPlayer {
 public:
  // `name` stands before the line in what is told of failures. `trace` tells every step.
  UserPlayer(Scene& scene, std::vector<form::UserStep> steps, std::string name, bool trace);
  UserPlayer(const UserPlayer&) = delete;
  UserPlayer& operator=(const UserPlayer&) = delete;
  ~UserPlayer();

  // Runs `load`, which gives the scene its forms, starts the scene, plays, and returns when
  // both have ended; the script's end ends the program. Boxes that come while modules and forms
  // load can be answered already. What `load` and Scene::Start throw comes through. `ifStuck` is
  // called on the player's thread when the script has ended and the program does not end within 30
  // seconds: it waits for something that nobody does, and this will not return.
  void Run(const std::function<void()>& load = {}, const std::function<void()>& ifStuck = {});
  // What failed, with file and line; empty if nothing did. To be asked after the end.
  const std::string& failure() const noexcept { return failure_; }

 private:
  struct VerbRow {
    form::UserVerb verb;
    void (UserPlayer::*run)(const form::UserStep& step);
  };
  static const VerbRow kVerbs[];

  void Play(const std::function<void()>& ifStuck);
  void PlaySteps();
  void WaitForEnd();
  // Waits until the program has nothing left to do, or is no more.
  void WaitIdle();
  // Waits until the program has started, or a box of the start stands that the step is for. False
  // if the program cannot start.
  bool WaitForStart(form::UserVerb verb);
  // Throws where a message box keeps the user from the forms.
  void RequireNoMessage() const;
  // Throws where no window of the program gets the keys, or where a typed text goes to none that
  // takes one.
  void RequireKeyboard(bool forText);
  // The window of a form, the one in front without a name; the designer's own while it is there.
  HWND WindowOf(const std::string& form);
  // Throws where a user's mouse would not reach the form or control at that point of the screen.
  void RequireReach(const std::string& path, POINT point);
  HWND ReachedWindow(const std::string& path, POINT point);
  void RunStep(const form::UserStep& step);

  void OnShow(const form::UserStep& step);
  void OnClose(const form::UserStep& step);
  void OnFocus(const form::UserStep& step);
  void OnClick(const form::UserStep& step);
  void OnDrag(const form::UserStep& step);
  void OnMove(const form::UserStep& step);
  void OnWheel(const form::UserStep& step);
  void OnKey(const form::UserStep& step);
  void OnType(const form::UserStep& step);
  void OnWait(const form::UserStep& step);
  void OnWaitUntil(const form::UserStep& step);
  void OnExpect(const form::UserStep& step);
  void OnSet(const form::UserStep& step);
  void OnCall(const form::UserStep& step);
  void OnPrint(const form::UserStep& step);
  void OnShot(const form::UserStep& step);
  void OnMessage(const form::UserStep& step);
  void OnDialog(const form::UserStep& step);
  void OnDialogClick(const form::UserStep& step);
  void OnMenu(const form::UserStep& step);
  void OnPace(const form::UserStep& step);
  void OnPages(const form::UserStep& step);
  void OnTool(const form::UserStep& step);
  void OnPoint(const form::UserStep& step);
  void OnDraw(const form::UserStep& step);
  void OnPull(const form::UserStep& step);
  void OnProperty(const form::UserStep& step);

  Program& program();  // throws where no form is before the user
  // The designer's window; throws where none is.
  designer::DesignWindow& Designer();
  // The form or a control on it, by its name.
  designer::ControlId Designed(const std::string& path);
  // A point of the form that is designed, told in twips, on the screen.
  POINT DesignPoint(const form::UserStep& step, const char* x, const char* y);
  // What a path leads to. The first name may be a form's; else the form in front has it.
  Variant Value(const std::string& path);
  std::wstring ShownValue(const std::string& path);
  bool Holds(const form::UserStep& step, std::wstring* shown);
  Com<IDispatch> ObjectAt(const form::MemberPath& path, size_t steps);
  FormControl& ControlAt(const std::string& path);
  Form& FormAt(const std::string& path);
  void TakeFocus(const std::string& path);
  RECT ScreenPart(const std::string& path);
  POINT PointIn(const std::string& path, const form::UserStep& step, const char* x, const char* y);
  HWND WaitForWindow(const std::function<HWND()>& look, const std::string& what);
  // A place on the screen, once there is one.
  RECT WaitForPlace(const std::function<RECT()>& look, const std::string& what);
  // Does a step's work on the thread of the forms. A box that comes meanwhile keeps the work there:
  // it must own what it uses. Acting is over then; for all else the box is a failure.
  void ActOnForms(std::function<void()> work);
  void OnForms(std::function<void()> work);
  UiThread::Outcome RunOnForms(std::function<void()> work);
  // The result of such work.
  template <class T>
  T Ask(std::function<T()> work) {
    const auto answer = std::make_shared<T>();
    OnForms([answer, work = std::move(work)] { *answer = work(); });
    return *answer;
  }

  Scene& scene_;
  std::vector<form::UserStep> steps_;
  std::string name_;
  bool trace_;
  UiThread ui_;
  std::thread thread_;
  com::Held<HANDLE, &CloseHandle> up_;  // the thread runs: from here on boxes are seen
  std::string failure_;
  DWORD pace_ = 0;        // milliseconds before each step
  bool started_ = false;  // the player's thread has seen the program up
  std::atomic<bool> refused_ = false;
  std::atomic<bool> programEnded_ = false;
  std::atomic<bool> ended_ = false;
};

}  // namespace qrn::host
