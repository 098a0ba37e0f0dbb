// What each call must answer: the model of a cursor's place over a ModelFile.
#pragma once

#include "Calls.h"
#include "Descriptor.h"
#include "ModelFile.h"

namespace btrieve::test {

struct Expected {
  Status status = 0;
  std::optional<Bytes> data = std::nullopt;  // bytes returned; nothing: the buffer is untouched
  std::optional<Bytes> key = std::nullopt;   // key value returned, and untouched behind it
};

inline Expected Fails(Status status) { return {.status = status}; }

class ModelCursor {
 public:
  explicit ModelCursor(ModelFile& file) : file_(&file) {}

  // Each predicts the answer and moves the cursor as the call does.
  Expected Read(int operation, const CallIn& in);     // 5..13
  Expected ReadKey(int operation, const CallIn& in);  // 55..63
  Expected Step(int operation, const CallIn& in);
  Expected Direct(const CallIn& in);
  Expected Position(const CallIn& in) const;
  Expected Extended(int operation, const Descriptor& descriptor, const CallIn& in);
  Expected Percent(const CallIn& in);
  Expected FindPercent(const CallIn& in) const;
  Expected Update(const CallIn& in);
  Expected Delete();
  // The insert's status; when it is 0 Inserted tells where the record came to lie.
  Expected Insert(const CallIn& in) const;
  void Inserted(uint32_t position, const CallIn& in);

  // The record that the cursor stands on; nothing before the first, on a deleted one.
  std::optional<uint32_t> Current() const;
  // The place along a key is that of the current record, so Update may move it.
  bool PlaceIsCurrent() const;
  bool HasDistinctPlace() const { return logical_ == Logical::At && distinct_; }
  // The record it stands on is as the cursor last saw it.
  bool SeesItsRecord() const;
  // What it remembers, record and place, is all in the file.
  bool IsAtHome() const;

 private:
  enum class Physical { BeforeFirst, At, Gone };
  enum class Logical { None, Broken, At };
  using Entry = ModelIndex::const_iterator;

  const ModelIndex& Index(int key) const { return file_->indexes[static_cast<size_t>(key)]; }
  bool HasKey(int key) const { return key >= 0 && key < std::ssize(file_->indexes); }
  size_t KeySize(int key) const { return file_->Spec().keys[static_cast<size_t>(key)].Length(); }

  std::optional<Entry> Find(int operation, int key, const Bytes& value, Status& status) const;
  std::optional<Entry> Neighbour(int key, bool forward, bool byValue, Status& status) const;
  bool AsksForNull(int key, const Bytes& value) const;
  Entry LowerBound(int key, const Bytes& value) const;
  Entry UpperBound(int key, const Bytes& value) const;
  void Stand(uint32_t position, bool usable);
  void StandOn(int key, const ModelEntry& entry, bool usable, bool distinct = false);
  Expected Deliver(uint32_t position, int key, const CallIn& in) const;
  std::vector<uint32_t> Ahead(int operation, bool withCurrent, int key) const;

  ModelFile* file_;
  Physical physical_ = Physical::BeforeFirst;
  uint32_t position_ = 0;
  uint64_t version_ = 0;
  bool usable_ = false;
  Logical logical_ = Logical::None;
  int key_ = 0;
  ModelEntry place_;
  bool distinct_ = false;
};

}  // namespace btrieve::test
