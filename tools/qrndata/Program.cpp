#include "tools/qrndata/Program.h"

#include <new>

#include "tools/qrndata/Failure.h"
#include "tools/qrndata/Messages.h"

namespace qrndata {

int RunGuarded(const char* name, const Streams& streams, const std::function<int()>& body) {
  try {
    return body();
  } catch (const Failure& failure) {
    streams.err << name << ": " << failure.what() << '\n';
    return failure.Code();
  } catch (const std::bad_alloc&) {
    streams.err << name << ": " << Say(Message::NoMemory) << '\n';
  } catch (const std::exception& error) {
    streams.err << name << ": " << error.what() << '\n';
  }
  return kSystem;
}

}  // namespace qrndata
