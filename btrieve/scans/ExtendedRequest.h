// The descriptor of an extended read (Get Next/Previous Extended, Step Next/Previous Extended),
// compiled: a condition judged on record bytes in place, and the writer of the reply.
//
// Use: Compile once, BindLimit for reads along a key, then for each record Judge, and for each
// accepted one ReplyWriter::Add; ReplyWriter::Finish at the end, whatever the status.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "btrieve/keys/Entry.h"
#include "btrieve/keys/KeySpec.h"
#include "btrieve/keys/KeyTypes.h"
#include "btrieve/system/Status.h"

namespace btrieve {

class ByteReader;

// Rejections after which a call stops when the descriptor says 0.
inline constexpr uint16_t kSystemRejectCount = 4095;
enum class Verdict : uint8_t {
  Accept,
  Reject,       // counts towards the reject count (60)
  RejectAtEnd,  // and no later record along the key can match: the call ends with 64, before 60
};

// One field of the reply: bytes from the start of the record.
struct ExtractField {
  uint16_t length;
  uint16_t offset;
};

class ExtendedRequest {
 public:
  struct Term {
    CompareFields compare;
    const uint8_t* map;
    uint32_t end;      // the bytes a record needs for this term to be judged
    uint32_t operand;  // offset of the constant in descriptor_, or of the second field
    uint16_t offset;
    uint16_t length;
    uint8_t accepted;  // outcomes that make it true: bit 0 less, bit 1 equal, bit 2 greater
    uint8_t atEnd;     // outcomes that prove the end of the matches
    uint8_t connector;
    uint8_t type;
    uint8_t comparison;  // 1..6
    bool secondField;
    bool foldsCase;
    bool usesSequence;
  };

  // Reads the descriptor at the start of `data`; it may be followed by anything. 62 for whatever
  // is wrong with it. Keeps a copy: the reply may overwrite `data`.
  [[nodiscard]] Status Compile(std::span<const uint8_t> data, const FileSpec& file);

  // Lets Judge tell where matches along `key` end, when the first term permits it. `forward` is
  // the direction of the read along the index.
  void BindLimit(const KeySpec& key, bool forward);

  // "UC": the search begins with the current record, otherwise ("EG") after it.
  bool BeginsWithCurrent() const noexcept { return beginsWithCurrent_; }
  uint16_t RejectCount() const noexcept { return rejectCount_; }             // never 0
  uint16_t RecordsWanted() const noexcept { return recordsWanted_; }         // never 0
  std::span<const ExtractField> Fields() const noexcept { return fields_; }  // never empty

  // Terms are taken from left to right and each may decide: a false one before AND rejects, a true
  // one before OR accepts. A term reaching beyond the record is false.
  Verdict Judge(const uint8_t* record, size_t length) const noexcept;

  // For who judges elsewhere. Requests on one file that have the same bytes here judge alike, but
  // for the end of the matches.
  ByteView Condition() const noexcept {
    return ByteView(descriptor_).subspan(kHeadSize, conditionSize_);
  }
  std::span<const Term> Terms() const noexcept { return terms_; }
  // Of a term without a second field.
  ByteView ConstantOf(const Term& term) const noexcept {
    return ByteView(descriptor_).subspan(term.operand, term.length);
  }
  // Once the limit is bound: the place among the key's entries from which on, in the direction of
  // the read, all records are rejected at the end, and none before it.
  std::optional<Entry> EndOfMatches() const;
  // Bytes that a record of so many takes of the reply.
  size_t BytesReplied(size_t recordLength) const noexcept;

 private:
  Status ReadHead(ByteReader& reader, const FileSpec& file);
  Status ReadTerm(ByteReader& reader, const FileSpec& file, bool last);
  void ReadOperand(ByteReader& reader, Term& term);
  Status ReadFields(ByteReader& reader);
  const uint8_t* ChooseMap(const Term& term, const FileSpec& file);
  static bool CollatesAs(const Term& term, const KeySegment& segment) noexcept;

  static constexpr size_t kHeadSize = 8;  // before the terms

  std::vector<uint8_t> descriptor_;
  std::vector<Term> terms_;
  std::vector<ExtractField> fields_;
  std::vector<uint8_t> sequenceMap_;  // the file's first sequence
  std::vector<uint8_t> foldedMap_;    // the same after case folding
  size_t conditionSize_ = 0;          // of the terms, in descriptor_
  bool forward_ = true;               // the read along the key
  bool descending_ = false;           // the key's first segment
  uint16_t rejectCount_ = kSystemRejectCount;
  uint16_t recordsWanted_ = 0;
  bool beginsWithCurrent_ = false;
};

// Writes a reply: u16 count, then for each record u16 length, u32 position, extracted bytes.
class ReplyWriter {
 public:
  // `out` has at least 2 bytes, and all of it may be used. Writes nothing yet.
  ReplyWriter(std::span<uint8_t> out, std::span<const ExtractField> fields) noexcept;

  // 0 added; 22 it does not fit, or is longer than its length can tell; 65 a field begins at or
  // past the record's end, or one before the last runs past it (the last one is cut). Nothing of
  // the record is written but on 0.
  [[nodiscard]] Status Add(uint32_t position, const uint8_t* record, size_t length) noexcept;

  uint16_t Count() const noexcept { return count_; }
  // Writes the count; returns the bytes of the whole reply.
  uint32_t Finish() noexcept;

 private:
  std::span<uint8_t> out_;
  std::span<const ExtractField> fields_;
  size_t used_ = 2;
  uint16_t count_ = 0;
};

// The images of an Insert Extended, as pieces of `data`. 63 when the data is not exactly a count
// (not 0) and that many lengths and images. The reply may only be written after the last use.
[[nodiscard]] Status ParseInsertExtended(std::span<const uint8_t> data,
                                         std::vector<std::span<const uint8_t>>& images);

}  // namespace btrieve
