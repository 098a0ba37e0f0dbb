// What a script's user sits before: a program with its forms, or the designer with the form that is
// made there.
#pragma once

#include "host/designer/window/DesignWindow.h"
#include "host/runner/Program.h"

namespace qrn::host {

// Everything but IsWaiting is for the thread of the windows.
class Scene {
 public:
  virtual ~Scene() = default;

  // Shows the first window.
  virtual void Start() = 0;
  // Runs until the last one is closed, or until End.
  virtual void Run() = 0;
  virtual void End() = 0;
  // True while the user can do something.
  virtual bool IsWaiting() const noexcept = 0;
  // Whose forms are before the user; null while there are none.
  virtual Program* program() noexcept = 0;
  // The designer, while its form is designed; else null.
  virtual designer::DesignWindow* designer() noexcept { return nullptr; }
};

class ProgramScene final : public Scene {
 public:
  explicit ProgramScene(Program& program) noexcept : program_(program) {}

  void Start() override { program_.Start(); }
  void Run() override { program_.Run(); }
  void End() override { program_.End(); }
  bool IsWaiting() const noexcept override { return program_.IsWaiting(); }
  Program* program() noexcept override { return &program_; }

 private:
  Program& program_;
};

class DesignerScene final : public Scene {
 public:
  explicit DesignerScene(designer::DesignWindow& window) noexcept : window_(window) {}

  void Start() override {}
  void Run() override { window_.Run(); }
  void End() override { window_.Quit(); }
  bool IsWaiting() const noexcept override { return window_.IsWaiting(); }
  Program* program() noexcept override { return window_.program(); }
  designer::DesignWindow* designer() noexcept override {
    return window_.IsRunning() ? nullptr : &window_;
  }

 private:
  designer::DesignWindow& window_;
};

}  // namespace qrn::host
