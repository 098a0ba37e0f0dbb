#include "btrieve/pages/PageCache.h"

#include <sqlite3.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <new>

namespace btrieve {
namespace {

class FilePages;

// One block of memory holds a page's bytes, this, and what SQLite keeps with a page. SQLite may
// read a few bytes beyond a damaged page, which does no harm here.
struct Page : sqlite3_pcache_page {
  FilePages* file;
  Page* next;   // in a chain of the file's table
  Page* newer;  // in the ring of pages that nobody uses; null in a page that is used
  Page* older;
  uint32_t number;

  bool IsUsed() const noexcept { return newer == nullptr; }
};

// All files together. The ring begins and ends with a page that is none.
struct Shared {
  Page ring{};
  size_t bound = 0;  // in bytes, as all here
  size_t size = 0;
  size_t used = 0;

  Shared() noexcept { ring.newer = ring.older = &ring; }
  bool IsNearlyFull() const noexcept { return used >= bound / 10 * 9; }
  bool HasUnused() const noexcept { return ring.newer != &ring; }
  Page& Oldest() noexcept { return *ring.newer; }
};
Shared shared;

// The pages of one file by number.
class FilePages {
 public:
  // Pages of a temporary file in memory cannot be read again: they are not counted.
  FilePages(size_t pageSize, size_t extraSize, bool counted) noexcept
      : pageSize_(pageSize),
        blockSize_(pageSize + sizeof(Page) + extraSize),
        counted_(counted ? blockSize_ : 0) {}
  ~FilePages() {
    Truncate(0);
    std::free(table_);
  }
  FilePages(const FilePages&) = delete;
  FilePages& operator=(const FilePages&) = delete;

  bool IsMade() noexcept { return table_ || Grow(); }
  uint32_t Count() const noexcept { return count_; }
  Page* Find(uint32_t number) const noexcept {
    Page* page = table_[number & mask_];
    while (page && page->number != number) page = page->next;
    return page;
  }
  // Null without memory.
  Page* Add(uint32_t number) noexcept;
  void Use(Page& page) noexcept {
    if (page.IsUsed()) return;
    page.newer->older = page.older;
    page.older->newer = page.newer;
    page.newer = page.older = nullptr;
    shared.used += counted_;
  }
  void Leave(Page& page, bool discard) noexcept;
  void Renumber(Page& page, uint32_t number) noexcept {
    Remove(page);
    Insert(page, number);
  }
  // Drops the pages from `first` on, used ones too.
  void Truncate(uint32_t first) noexcept;
  void DropUnused() noexcept;

 private:
  bool Grow() noexcept;
  Page* Block() noexcept;
  void Insert(Page& page, uint32_t number) noexcept;
  void Remove(Page& page) noexcept;
  void Free(Page& page) noexcept;
  template <class Condition>
  void DropWhere(uint32_t places, uint32_t firstPlace, Condition condition) noexcept;

  size_t pageSize_;
  size_t blockSize_;
  size_t counted_;
  Page** table_ = nullptr;
  uint32_t mask_ = 0;
  uint32_t count_ = 0;
  uint32_t end_ = 0;  // above the highest number
};

bool FilePages::Grow() noexcept {
  const uint32_t places = table_ ? 2 * (mask_ + 1) : 64;
  auto** larger = static_cast<Page**>(std::calloc(places, sizeof(void*)));
  if (!larger) return false;
  for (uint32_t place = 0; table_ && place <= mask_; ++place) {
    while (Page* page = table_[place]) {
      table_[place] = page->next;
      Page*& chain = larger[page->number & (places - 1)];
      page->next = chain;
      chain = page;
    }
  }
  std::free(table_);
  table_ = larger;
  mask_ = places - 1;
  return true;
}

void FilePages::Insert(Page& page, uint32_t number) noexcept {
  Page*& chain = table_[number & mask_];
  page.number = number;
  page.next = chain;
  chain = &page;
  end_ = std::max(end_, number + 1);
  ++count_;
}

void FilePages::Remove(Page& page) noexcept {
  Page** chain = &table_[page.number & mask_];
  while (*chain != &page) chain = &(*chain)->next;
  *chain = page.next;
  --count_;
}

void FilePages::Free(Page& page) noexcept {
  Use(page);
  shared.used -= counted_;
  shared.size -= counted_;
  std::free(page.pBuf);
}

// The block of the page unused for the longest time, once the bound is reached.
Page* FilePages::Block() noexcept {
  if (counted_ && shared.size + counted_ > shared.bound && shared.HasUnused()) {
    Page& oldest = shared.Oldest();
    FilePages& owner = *oldest.file;
    owner.Remove(oldest);
    if (owner.blockSize_ == blockSize_) {
      owner.Use(oldest);
      return &oldest;
    }
    owner.Free(oldest);
  }
  auto* bytes = static_cast<uint8_t*>(std::malloc(blockSize_));
  if (!bytes) return nullptr;
  Page* page = new (bytes + pageSize_) Page{};
  page->pBuf = bytes;
  page->pExtra = page + 1;
  shared.size += counted_;
  shared.used += counted_;
  return page;
}

Page* FilePages::Add(uint32_t number) noexcept {
  if (count_ > mask_) (void)Grow();  // without memory for it chains get longer
  Page* page = Block();
  if (!page) return nullptr;
  *static_cast<void**>(page->pExtra) = nullptr;  // by which SQLite knows a new page
  page->file = this;
  Insert(*page, number);
  return page;
}

void FilePages::Leave(Page& page, bool discard) noexcept {
  if (discard) {
    Remove(page);
    return Free(page);
  }
  page.newer = &shared.ring;
  page.older = shared.ring.older;
  shared.ring.older = page.older->newer = &page;
  shared.used -= counted_;
  while (shared.size > shared.bound && shared.HasUnused()) {
    Page& oldest = shared.Oldest();
    oldest.file->Remove(oldest);
    oldest.file->Free(oldest);
  }
}

template <class Condition>
void FilePages::DropWhere(uint32_t places, uint32_t firstPlace, Condition condition) noexcept {
  for (uint32_t place = firstPlace; places > 0; ++place, --places) {
    for (Page** chain = &table_[place & mask_]; *chain;) {
      Page& page = **chain;
      if (!condition(page)) {
        chain = &page.next;
        continue;
      }
      *chain = page.next;
      --count_;
      Free(page);
    }
  }
}

// A few numbers stand in as many places.
void FilePages::Truncate(uint32_t first) noexcept {
  if (first >= end_ || !table_) return;
  const uint32_t places = std::min(end_ - first, mask_ + 1);
  DropWhere(places, first, [first](const Page& page) { return page.number >= first; });
  end_ = first;
}

void FilePages::DropUnused() noexcept {
  DropWhere(mask_ + 1, 0, [](const Page& page) { return !page.IsUsed(); });
}

// Connections of different threads share the cache.
std::mutex cacheMutex;
using Lock = std::lock_guard<std::mutex>;

FilePages& Of(sqlite3_pcache* cache) noexcept { return *reinterpret_cast<FilePages*>(cache); }
Page& Of(sqlite3_pcache_page* page) noexcept { return *static_cast<Page*>(page); }

int Begin(void*) { return SQLITE_OK; }
void End(void*) {}

sqlite3_pcache* Create(int pageSize, int extraSize, int purgeable) {
  auto* file = new (std::nothrow)
      FilePages(static_cast<size_t>(pageSize), static_cast<size_t>(extraSize), purgeable != 0);
  if (file && file->IsMade()) return reinterpret_cast<sqlite3_pcache*>(file);
  delete file;
  return nullptr;
}

// There is but the one bound.
void SetSize(sqlite3_pcache*, int) {}

int Count(sqlite3_pcache* cache) {
  const Lock lock(cacheMutex);
  return static_cast<int>(Of(cache).Count());
}

// `create` 1 asks for a new page only if that is easy, else SQLite puts changed ones into the log.
sqlite3_pcache_page* Fetch(sqlite3_pcache* cache, unsigned number, int create) {
  const Lock lock(cacheMutex);
  FilePages& file = Of(cache);
  if (Page* page = file.Find(number)) {
    file.Use(*page);
    return page;
  }
  if (create == 0 || (create == 1 && shared.IsNearlyFull())) return nullptr;
  return file.Add(number);
}

void Unpin(sqlite3_pcache* cache, sqlite3_pcache_page* page, int discard) {
  const Lock lock(cacheMutex);
  Of(cache).Leave(Of(page), discard != 0);
}

void Rekey(sqlite3_pcache* cache, sqlite3_pcache_page* page, unsigned, unsigned number) {
  const Lock lock(cacheMutex);
  Of(cache).Renumber(Of(page), number);
}

void Truncate(sqlite3_pcache* cache, unsigned first) {
  const Lock lock(cacheMutex);
  Of(cache).Truncate(first);
}

void Shrink(sqlite3_pcache* cache) {
  const Lock lock(cacheMutex);
  Of(cache).DropUnused();
}

void Destroy(sqlite3_pcache* cache) {
  const Lock lock(cacheMutex);
  delete &Of(cache);
}

}  // namespace

namespace {

bool PutInPlace() noexcept {
  static sqlite3_pcache_methods2 methods = {1,        nullptr, Begin, End,   Create,
                                            SetSize,  Count,   Fetch, Unpin, Rekey,
                                            Truncate, Destroy, Shrink};
  shared.bound = CacheSizeOf(std::getenv("W64BTRV_CACHE_MB"));
  return sqlite3_config(SQLITE_CONFIG_PCACHE2, &methods) == SQLITE_OK;
}

}  // namespace

bool UseSharedPageCache() noexcept {
  static const bool used = PutInPlace();
  return used;
}

size_t CacheSizeOf(const char* setting) noexcept {
  constexpr size_t kMegabyte = 1u << 20;
  constexpr size_t kDefault = 64;
  const char* end = setting ? setting + std::strlen(setting) : nullptr;
  size_t size = 0;
  const auto [rest, error] = std::from_chars(setting, end, size);
  const bool sound = setting && error == std::errc() && rest == end && size >= 4 && size <= 65536;
  return (sound ? size : kDefault) * kMegabyte;
}

size_t PageCacheBound() noexcept { return shared.bound; }
size_t PageCacheSize() noexcept { return shared.size; }

}  // namespace btrieve
