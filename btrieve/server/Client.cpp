#include "btrieve/server/Client.h"

#include "btrieve/system/ClientLibrary.h"

namespace btrieve::server {
namespace {

template <class Function>
bool Take(void* library, const char* name, Function& function) noexcept {
  function = reinterpret_cast<Function>(FindInLibrary(library, name));
  return function != nullptr;
}

bool TakeAll(void* library, Client& client) noexcept {
#define QRN_CLIENT_TAKE(name, result, parameters) &&Take(library, #name, client.name)
  return library != nullptr QRN_CLIENT_FUNCTIONS(QRN_CLIENT_TAKE);
#undef QRN_CLIENT_TAKE
}

}  // namespace

const Client* FindClient() noexcept {
  static Client client;
  static const bool found = TakeAll(LoadClientLibrary(), client);
  return found ? &client : nullptr;
}

}  // namespace btrieve::server
