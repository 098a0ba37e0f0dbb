// Where classes are registered: for the whole machine, or for the present user.
#pragma once

#include "ole/Handles.h"

namespace qrn::design {

enum class Hive { Machine, User };

// One of the two places, open for writing. The common keys that are left empty in the user's place
// go when this goes: a new user has none.
class ClassesHive {
 public:
  // Opens the place; without leave to write there, `open` is false.
  explicit ClassesHive(Hive hive) noexcept;
  ClassesHive(const ClassesHive&) = delete;
  ClassesHive& operator=(const ClassesHive&) = delete;
  ~ClassesHive();

  bool open() const noexcept { return static_cast<bool>(classes_); }
  HKEY get() const noexcept { return classes_.get(); }
  Hive hive() const noexcept { return hive_; }

 private:
  Hive hive_;
  ole::Key classes_;
};

}  // namespace qrn::design
