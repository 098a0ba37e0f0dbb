// Makes data files as an older record manager left them, and keeps the model of what they hold:
// records come and go, slots are used again, and Build lays pages, trees, chains and counters out.
#pragma once

#include "Choices.h"
#include "ModelFile.h"
#include "ModelMakeUp.h"

namespace btrieve::test {

struct OldShape {
  uint16_t pageSize = 512;
  size_t mostEntries = SIZE_MAX;  // in an index page, at most as many as it takes
  bool isOwned = false;
  bool isMixed = true;      // index pages stand between data pages, else behind them
  uint16_t spareBytes = 0;  // in each slot, behind everything else
};

class OldFileMaker {
 public:
  // `spec` must stay; its keys are numbered from 0.
  OldFileMaker(const FileSpec& spec, const OldShape& shape);

  uint32_t Insert(const Bytes& record);  // gives the address of its slot
  void Update(uint32_t address, const Bytes& record) { model_.Update(address, record); }
  void Remove(uint32_t address);

  const ModelFile& Model() const { return model_; }
  uint16_t SlotLength() const { return slotLength_; }
  Bytes Build() const;

  class Image;  // the bytes in the making

 private:
  uint32_t NewSlot();
  void WriteRecords(Image& image) const;
  uint32_t WriteDeleted(Image& image) const;  // the first one's address
  void WriteKeys(Image& image) const;
  void WriteChains(Image& image, const std::map<uint32_t, struct Pointers>& pointers,
                   size_t at) const;
  void WriteHead(Image& image) const;
  uint32_t SlotsInPage() const { return (shape_.pageSize - 6u) / slotLength_; }

  const FileSpec* spec_;
  OldShape shape_;
  uint16_t slotLength_;
  ModelFile model_;
  std::vector<uint32_t> dataPages_;
  std::vector<uint32_t> indexPages_;  // left free between them
  uint32_t nextPage_ = 1;
  uint32_t usedInLast_ = 0;
  std::vector<uint32_t> deleted_;  // the next to be used again at the back
};

// A random file without records of variable length, collating sequences and repeating keys.
MakeUp RandomOldMakeUp(Choices& choices);
OldShape RandomOldShape(Choices& choices, const FileSpec& spec);
// Random records come, change and go. 0 to `mostRecords` are left.
void FillAtRandom(OldFileMaker& maker, Choices& choices, const FileSpec& spec, size_t mostRecords);

}  // namespace btrieve::test
