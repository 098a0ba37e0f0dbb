// A named mapping of the logon session. A seat is taken by an event of its name: the name is there
// as long as the process that made it, and others open it only to see whether it is there.
#include <windows.h>

#include <cstdio>
#include <cstring>
#include <new>

#include "btrieve/locks/SharedBoard.h"

namespace btrieve {
namespace {

struct CloseObject {
  void operator()(void* object) const noexcept { CloseHandle(object); }
};
using Object = std::unique_ptr<void, CloseObject>;

struct EndView {
  void operator()(uint8_t* view) const noexcept { UnmapViewOfFile(view); }
};
using View = std::unique_ptr<uint8_t, EndView>;

// Opens what is made to every user of the session.
class ForAll {
 public:
  ForAll() noexcept {
    InitializeSecurityDescriptor(&descriptor_, SECURITY_DESCRIPTOR_REVISION);
    SetSecurityDescriptorDacl(&descriptor_, TRUE, nullptr, FALSE);
  }
  SECURITY_ATTRIBUTES* Get() noexcept { return &attributes_; }

 private:
  SECURITY_DESCRIPTOR descriptor_{};
  SECURITY_ATTRIBUTES attributes_{sizeof attributes_, &descriptor_, FALSE};
};

struct Name {
  char text[64];
};

Name BoardName(const char* board) noexcept {
  Name name;
  std::snprintf(name.text, sizeof name.text, "Local\\%s", board);
  return name;
}
Name SeatName(const char* board, size_t seat) noexcept {
  Name name;
  std::snprintf(name.text, sizeof name.text, "Local\\%s-%u", board, static_cast<unsigned>(seat));
  return name;
}

}  // namespace

struct SharedBoard::Handle {
  Object mapping;
  View view;
  Object seat;
};

SharedBoard::SharedBoard(const BoardShape& shape) noexcept : shape_(shape) {
  if (!Open()) return;
  while (seat_ < shape_.seats && !Take(seat_)) ++seat_;
}
SharedBoard::~SharedBoard() = default;

bool SharedBoard::Open() noexcept {
  const size_t size = shape_.seats * shape_.seatSize;
  ForAll forAll;
  Object mapping(CreateFileMappingA(INVALID_HANDLE_VALUE, forAll.Get(), PAGE_READWRITE, 0,
                                    static_cast<DWORD>(size), BoardName(shape_.name).text));
  if (!mapping) return false;
  View view(static_cast<uint8_t*>(
      MapViewOfFile(mapping.get(), FILE_MAP_READ | FILE_MAP_WRITE, 0, 0, size)));
  if (!view) return false;
  handle_.reset(new (std::nothrow) Handle{std::move(mapping), std::move(view), nullptr});
  return handle_ != nullptr;
}

bool SharedBoard::Take(size_t seat) noexcept {
  ForAll forAll;
  Object event(CreateEventA(forAll.Get(), TRUE, FALSE, SeatName(shape_.name, seat).text));
  if (!event || GetLastError() == ERROR_ALREADY_EXISTS) return false;
  handle_->seat = std::move(event);
  return true;
}

bool SharedBoard::IsTaken(size_t seat) const noexcept {
  const Object event(OpenEventA(SYNCHRONIZE, FALSE, SeatName(shape_.name, seat).text));
  return event || GetLastError() != ERROR_FILE_NOT_FOUND;
}

bool SharedBoard::Read(std::span<uint8_t> seats) const noexcept {
  std::memcpy(seats.data(), handle_->view.get(), seats.size());
  return true;
}

bool SharedBoard::Write(std::span<const uint8_t> bytes) noexcept {
  std::memcpy(handle_->view.get() + seat_ * shape_.seatSize, bytes.data(), bytes.size());
  return true;
}

}  // namespace btrieve
