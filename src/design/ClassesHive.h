// Where classes are registered: for the whole machine, or for the present user.
#pragma once

#include "com/Handles.h"

namespace qrn::design {

enum class Hive { Machine, User };
enum class Purpose { Add, Remove };

// One of the two places, open for writing. The common keys that are left empty in the user's place
// go when this goes, and the place itself: a new user has none.
class ClassesHive {
 public:
  // Opens the place, and makes the user's for adding. `open` is false without leave to write there.
  ClassesHive(Hive hive, Purpose purpose) noexcept;
  ClassesHive(const ClassesHive&) = delete;
  ClassesHive& operator=(const ClassesHive&) = delete;
  ~ClassesHive();

  bool open() const noexcept { return static_cast<bool>(classes_); }
  HKEY get() const noexcept { return classes_.get(); }
  Hive hive() const noexcept { return hive_; }

 private:
  Hive hive_;
  com::Key classes_;
};

}  // namespace qrn::design
