// What a form file is made of: lines as they stand in it, byte for byte, and blocks of lines
// (Begin ... End, BeginProperty ... EndProperty) within them.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace qrn::designer {

class Block;
using BlockRef = std::shared_ptr<Block>;

// A line, or a block in the line's place. `bytes` is the line as it is written to the file, with
// its end (the last line of a file may have none). `name` is, in UTF-8, the property that a line
// sets; in the first line of a control or group its name; empty for every other line.
struct Item {
  std::string bytes;
  std::string name;
  BlockRef block;
};

enum class BlockKind {
  Lines,    // part of a file: what stands before the form, the attributes, the code
  Control,  // the first item is its Begin line, the last its End line
  Group,    // the same with BeginProperty and EndProperty
};

// Stays the same while a control is changed, moved into another container, deleted and brought
// back by undo. Never used again for another one in the same process; never 0.
using BlockId = uint32_t;

inline constexpr size_t kNowhere = static_cast<size_t>(-1);

class Block {
 public:
  // `library` and `className` are a control's; a group has its class id, if any, as `className`.
  explicit Block(BlockKind kind, std::string library = {}, std::string className = {});
  Block(const Block&) = delete;
  Block& operator=(const Block&) = delete;

  BlockKind kind() const noexcept { return kind_; }
  BlockId id() const noexcept { return id_; }
  const std::string& library() const noexcept { return library_; }
  const std::string& className() const noexcept { return className_; }
  bool Is(std::string_view library, std::string_view className) const noexcept;
  // Of a control or a group; empty for lines.
  const std::string& Name() const noexcept;
  // The block that this one lies in; null for the parts of a file and for what was taken out.
  const Block* parent() const noexcept { return parent_; }
  // Levels of indentation of the block's first line: 0 for a form, 1 for what lies on it.
  int Depth() const noexcept;

  const std::vector<Item>& items() const noexcept { return items_; }
  // Where the property of that name stands, a line or a group, whatever its case; kNowhere if it
  // is not written. Of several with one name the first counts.
  size_t Find(std::string_view property) const noexcept;
  // Where that very block stands among the items, or kNowhere.
  size_t Find(const Block& child) const noexcept;

  // While a file is read.
  void Append(Item item);

  void Write(std::string* fileBytes) const;
  size_t LineCount() const noexcept;

 private:
  friend struct Splice;
  friend BlockRef Reindented(const Block& block, int levels);

  BlockKind kind_;
  BlockId id_;
  std::string library_;
  std::string className_;
  Block* parent_ = nullptr;
  std::vector<Item> items_;
};

// The one kind of change there is: in `block`, `count` items from `at` on give way to `items`.
struct Splice {
  BlockRef block;
  size_t at = 0;
  size_t count = 0;
  std::vector<Item> items;

  // Makes the change and turns into the change back. Throws nothing but for memory, before
  // anything is changed.
  void Swap();
};

// A copy under the same id, and so for all blocks in it, each line moved by that many levels of
// indentation: to the left no further than its own blanks go.
BlockRef Reindented(const Block& block, int levels);

}  // namespace qrn::designer
