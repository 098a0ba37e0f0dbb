// Whether a call to the system failed because the disk, or the user's share of it, is full: SQLite
// tells that of some of its writes only.
#pragma once

namespace btrieve {

void ForgetLastError() noexcept;
// Of the thread's last failed call since ForgetLastError.
bool LastErrorIsDiskFull() noexcept;

// Whether a file cannot be made for want of room: SQLite tries to open it in further ways before it
// says that it cannot, and so hides why.
bool DiskIsTooFullFor(const char* path) noexcept;

}  // namespace btrieve
