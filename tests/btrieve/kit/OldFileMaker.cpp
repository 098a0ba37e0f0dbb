#include "OldFileMaker.h"

#include <algorithm>

namespace btrieve::test {

constexpr uint32_t kNowhere = 0xFFFFFFFF;

struct Pointers {
  uint32_t previous = kNowhere;
  uint32_t next = kNowhere;
};

// Writes a file's bytes; pages come into being as they are asked for.
class OldFileMaker::Image {
 public:
  explicit Image(uint16_t pageSize) : pageSize_(pageSize) {}

  void Word(size_t at, size_t value) {
    Reach(at + 2);
    bytes_[at] = static_cast<uint8_t>(value);
    bytes_[at + 1] = static_cast<uint8_t>(value >> 8);
  }
  void HighLow(size_t at, uint32_t value) {
    Word(at, value >> 16);
    Word(at + 2, value & 0xFFFF);
  }
  void Put(size_t at, const Bytes& bytes) {
    Reach(at + bytes.size());
    std::copy(bytes.begin(), bytes.end(), bytes_.begin() + static_cast<ptrdiff_t>(at));
  }
  void Byte(size_t at, uint8_t value) { Put(at, {value}); }
  size_t Start(uint32_t page) const { return size_t{page} * pageSize_; }
  size_t Size() const { return bytes_.size(); }
  const Bytes& All() const { return bytes_; }

 private:
  // What nobody has written may hold anything.
  void Reach(size_t end) {
    const size_t whole = (end + pageSize_ - 1) / pageSize_ * pageSize_;
    if (bytes_.size() < whole) bytes_.resize(whole, 0xD5);
  }

  uint16_t pageSize_;
  Bytes bytes_;
};

namespace {

using Image = OldFileMaker::Image;

// One value of a key with its first and last record.
struct Group {
  Bytes value;
  uint32_t first = kNowhere;
  uint32_t last = kNowhere;
};

// One key's tree, laid out from its sorted values.
class TreeMaker {
 public:
  TreeMaker(Image& image, const KeySpec& key, size_t most, std::vector<uint32_t>& freePages,
            uint32_t& nextPage)
      : image_(image), key_(key), most_(most), freePages_(freePages), nextPage_(nextPage) {}

  uint32_t Make(const std::vector<Group>& groups) {
    groups_ = &groups;
    int level = 1;
    while (Holds(level) < groups.size()) ++level;
    return Page(0, groups.size(), level);
  }

 private:
  // Values that a tree of so many levels takes.
  size_t Holds(int level) const {
    return level == 1 ? most_ : most_ + (most_ + 1) * Holds(level - 1);
  }

  uint32_t NewPage() {
    if (freePages_.empty()) return nextPage_++;
    const uint32_t page = freePages_.back();
    freePages_.pop_back();
    return page;
  }

  uint32_t Page(size_t from, size_t to, int level) {
    const uint32_t page = NewPage();
    size_t own = to - from;
    for (own = level == 1 ? own : 1; level > 1 && to - from - own > (own + 1) * Holds(level - 1);) {
      ++own;
    }
    size_t at = image_.Start(page);
    image_.HighLow(at, page);
    image_.Word(at + 4, 7);
    image_.Word(at + 6, own);
    const size_t rightMost = at + 8;
    at += 12;
    for (size_t left = own; left > 0; --left) {
      const size_t below = level == 1 ? 0 : (to - from - left) / (left + 1);
      image_.HighLow(at, level == 1 ? kNowhere : Page(from, from + below, level - 1));
      from += below;
      at = Entry(at + 4, (*groups_)[from++]);
    }
    image_.HighLow(rightMost, level == 1 ? kNowhere : Page(from, to, level - 1));
    return page;
  }

  size_t Entry(size_t at, const Group& group) {
    image_.Put(at, group.value);
    at += group.value.size();
    image_.HighLow(at, group.first);
    if (!key_.AllowsDuplicates()) return at + 4;
    image_.HighLow(at + 4, group.last);
    return at + 8;
  }

  Image& image_;
  const KeySpec& key_;
  size_t most_;
  std::vector<uint32_t>& freePages_;
  uint32_t& nextPage_;
  const std::vector<Group>* groups_ = nullptr;
};

size_t EntryLength(const KeySpec& key) { return key.Length() + (key.AllowsDuplicates() ? 12 : 8); }
size_t MostEntries(const KeySpec& key, uint16_t pageSize) {
  return (pageSize - 12) / EntryLength(key);
}

std::vector<Group> GroupsOf(const ModelFile& model, size_t key,
                            std::map<uint32_t, Pointers>& pointers) {
  std::vector<Group> groups;
  for (const ModelEntry& entry : model.indexes[key]) {
    Pointers& own = pointers[entry.position];
    if (groups.empty() || model.Compare(key, groups.back().value, entry.value) != 0) {
      groups.push_back({entry.value, entry.position, entry.position});
      continue;
    }
    own.previous = groups.back().last;
    pointers[own.previous].next = entry.position;
    groups.back().last = entry.position;
  }
  return groups;
}

void WriteDescriptors(Image& image, size_t& at, const KeySpec& key, uint16_t pageSize,
                      size_t pointers, uint32_t root, size_t values) {
  for (const KeySegment& segment : key.segments) {
    const bool isFirst = &segment == &key.segments.front();
    image.Put(at, Bytes(30));
    if (isFirst) {
      image.HighLow(at, root);
      image.HighLow(at + 4, static_cast<uint32_t>(values));
      image.Word(at + 0x0A, key.Length());
      image.Word(at + 0x0C, EntryLength(key));
      image.Word(at + 0x0E, MostEntries(key, pageSize));
      image.Word(at + 0x10, MostEntries(key, pageSize) / 2);
      image.Word(at + 0x12, pointers);
    }
    image.Word(at + 0x08, segment.flags);
    image.Word(at + 0x14, segment.offset);
    image.Word(at + 0x16, segment.length);
    image.Byte(at + 0x1C, segment.givenType);
    image.Byte(at + 0x1D, segment.nullValue);
    at += 30;
  }
}

}  // namespace

OldFileMaker::OldFileMaker(const FileSpec& spec, const OldShape& shape)
    : spec_(&spec), shape_(shape), model_(spec) {
  const auto duplicates = std::count_if(spec.keys.begin(), spec.keys.end(),
                                        [](const KeySpec& key) { return key.AllowsDuplicates(); });
  slotLength_ = static_cast<uint16_t>(spec.recordLength + 8 * duplicates + shape.spareBytes);
}

uint32_t OldFileMaker::NewSlot() {
  if (!deleted_.empty()) {
    const uint32_t address = deleted_.back();
    deleted_.pop_back();
    return address;
  }
  if (dataPages_.empty() || usedInLast_ == SlotsInPage()) {
    if (shape_.isMixed) indexPages_.push_back(nextPage_++);
    dataPages_.push_back(nextPage_++);
    usedInLast_ = 0;
  }
  return dataPages_.back() * shape_.pageSize + 6 + slotLength_ * usedInLast_++;
}

uint32_t OldFileMaker::Insert(const Bytes& record) {
  const uint32_t address = NewSlot();
  model_.Insert(address, record);
  return address;
}

void OldFileMaker::Remove(uint32_t address) {
  model_.Remove(address);
  deleted_.push_back(address);
}

void OldFileMaker::WriteRecords(Image& image) const {
  for (const uint32_t page : dataPages_) {
    image.HighLow(image.Start(page), page);
    image.Word(image.Start(page) + 4, 0x8003);
  }
  for (const auto& [address, record] : model_.records) image.Put(address, record.data);
}

uint32_t OldFileMaker::WriteDeleted(Image& image) const {
  uint32_t next = kNowhere;
  for (const uint32_t address : deleted_) {
    image.Put(address, Bytes(slotLength_));
    image.HighLow(address, next);
    next = address;
  }
  return next;
}

void OldFileMaker::WriteChains(Image& image, const std::map<uint32_t, Pointers>& pointers,
                               size_t at) const {
  for (const auto& [address, record] : model_.records) {
    const auto found = pointers.find(address);
    const Pointers own = found == pointers.end() ? Pointers() : found->second;
    image.HighLow(address + at, own.previous);
    image.HighLow(address + at + 4, own.next);
  }
}

void OldFileMaker::WriteKeys(Image& image) const {
  std::vector<uint32_t> freePages = indexPages_;
  uint32_t nextPage = nextPage_;
  size_t descriptor = 0x110;
  size_t chain = spec_->recordLength;
  for (size_t key = 0; key < spec_->keys.size(); ++key) {
    const KeySpec& spec = spec_->keys[key];
    std::map<uint32_t, Pointers> pointers;
    const std::vector<Group> groups = GroupsOf(model_, key, pointers);
    const size_t most = std::min(MostEntries(spec, shape_.pageSize), shape_.mostEntries);
    const uint32_t root = TreeMaker(image, spec, most, freePages, nextPage).Make(groups);
    const size_t own = spec.AllowsDuplicates() ? chain : 0;
    WriteDescriptors(image, descriptor, spec, shape_.pageSize, own, root, groups.size());
    if (own == 0) continue;
    WriteChains(image, pointers, own);
    chain += 8;
  }
  for (const uint32_t page : freePages) {  // belongs to nobody
    image.HighLow(image.Start(page), page);
    image.Word(image.Start(page) + 4, 1);
  }
}

void OldFileMaker::WriteHead(Image& image) const {
  image.Word(0x04, 99);
  image.Word(0x06, shape_.isOwned ? 0xFC00 : 0x0400);
  image.Word(0x08, shape_.pageSize);
  image.HighLow(0x0C, kNowhere);
  image.Word(0x14, spec_->keys.size());
  image.Word(0x16, spec_->recordLength);
  image.Word(0x18, slotLength_);
  image.HighLow(0x1A, static_cast<uint32_t>(model_.records.size()));
  image.HighLow(0x1E, dataPages_.empty() ? 0 : dataPages_.back());
  image.HighLow(0x22, 1);
  image.HighLow(0x26, static_cast<uint32_t>(image.Size() / shape_.pageSize));
  image.Word(0x2A, shape_.pageSize - 6 - usedInLast_ * slotLength_);
  if (shape_.isOwned) image.Put(0x2E, Hex("9a41c05e7712b8e301"));
}

Bytes OldFileMaker::Build() const {
  Image image(shape_.pageSize);
  image.Put(0, Bytes(0x110));
  WriteRecords(image);
  image.HighLow(0x10, WriteDeleted(image));
  WriteKeys(image);
  WriteHead(image);
  return image.All();
}

MakeUp RandomOldMakeUp(Choices& choices) {
  while (true) {
    MakeUp makeUp = RandomMakeUp(choices);
    makeUp.spec.sequences.clear();
    bool isOld = makeUp.spec.recordLength != 0 && !makeUp.spec.IsVariable();
    for (const KeySpec& key : makeUp.spec.keys) {
      for (const KeySegment& segment : key.segments) {
        isOld = isOld && !segment.Has(kSequence) && !segment.Has(kRepeating);
      }
    }
    if (isOld) return makeUp;
  }
}

OldShape RandomOldShape(Choices& choices, const FileSpec& spec) {
  OldShape shape;
  shape.pageSize = static_cast<uint16_t>((spec.SegmentCount() > 8 ? 1024 : 512) +
                                         512 * (choices.Chance(2) ? 0 : choices.Pick(7)));
  if (choices.Chance(2)) shape.mostEntries = 2 + choices.Pick(3);
  shape.isMixed = choices.Chance(2);
  if (choices.Chance(4)) shape.spareBytes = 8;
  return shape;
}

void FillAtRandom(OldFileMaker& maker, Choices& choices, const FileSpec& spec, size_t mostRecords) {
  const ModelFile& model = maker.Model();
  const auto some = [&] {
    auto record = model.records.begin();
    std::advance(record, choices.Pick(static_cast<uint32_t>(model.records.size())));
    return record->first;
  };
  for (uint32_t left = choices.Pick(static_cast<uint32_t>(4 * mostRecords)); left > 0; --left) {
    const Bytes record = RandomRecord(choices, spec);
    const bool isFull = model.records.size() >= mostRecords;
    if (!model.records.empty() && (isFull || choices.Chance(5))) {
      maker.Remove(some());
    } else if (!model.records.empty() && choices.Chance(4)) {
      const uint32_t address = some();
      if (model.CheckUnique(record, address) == 0) maker.Update(address, record);
    } else if (model.CheckUnique(record, 0) == 0) {
      maker.Insert(record);
    }
  }
}

}  // namespace btrieve::test
