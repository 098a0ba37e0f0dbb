#include "btrieve/storage/ForeignFile.h"

#include "btrieve/pages/Sqlite.h"

namespace btrieve {
namespace {

// What is only read is refused before it comes here.
[[noreturn]] void RefuseWriting() { throw Failure{kAccessDenied}; }

}  // namespace

Status ForeignFile::BeginWrite(Head&, LoneWrite*) { RefuseWriting(); }
Status ForeignFile::Carry(const RowChange&, const Head&, const CarryTerms&) { RefuseWriting(); }
uint32_t ForeignFile::PutPositionsAside(uint32_t) { RefuseWriting(); }
Status ForeignFile::CarryBlock(std::span<const RowChange>, const Head&, bool) { RefuseWriting(); }
void ForeignFile::CommitWrite(const Head&) { RefuseWriting(); }
uint32_t ForeignFile::FindFreePosition() { RefuseWriting(); }
void ForeignFile::WriteOwner(const OwnerRecord&) { RefuseWriting(); }
Status ForeignFile::AddKey(const FileSpec&, size_t, Head&) { RefuseWriting(); }
void ForeignFile::RemoveKey(const FileSpec&, size_t, Head&) { RefuseWriting(); }

}  // namespace btrieve
