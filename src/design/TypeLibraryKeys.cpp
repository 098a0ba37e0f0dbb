#include "design/TypeLibraryKeys.h"

namespace qrn::design {
namespace {

using ole::KeyRule;
using ole::RegistryKey;
using ole::RegistryValue;

// The system's marshaler of dispatch interfaces.
constexpr ole::Guid kDispatchMarshaler = ole::MakeGuid("00020420-0000-0000-C000-000000000046");

std::u16string Wide(const std::string& ascii) { return {ascii.begin(), ascii.end()}; }

RegistryValue Text(std::u16string name, std::u16string text) {
  RegistryValue value;
  value.name = std::move(name);
  value.text = std::move(text);
  return value;
}

RegistryKey Key(std::u16string name, KeyRule rule = KeyRule::Plain) {
  RegistryKey key;
  key.name = std::move(name);
  key.rule = rule;
  return key;
}
RegistryKey Key(std::u16string name, std::u16string text, KeyRule rule = KeyRule::Plain) {
  RegistryKey key = Key(std::move(name), rule);
  key.values.push_back(Text(u"", std::move(text)));
  return key;
}

std::u16string Version(const ole::LibraryTable& library) {
  return Wide(std::to_string(library.major) + "." + std::to_string(library.minor));
}

RegistryKey LibraryKey(const ole::LibraryTable& library, const std::u16string& path) {
  RegistryKey version = Key(Version(library), std::u16string(library.description));
  RegistryKey language = Key(u"0");
  language.keys.push_back(Key(u"win64", path));
  version.keys.push_back(std::move(language));
  version.keys.push_back(Key(u"FLAGS", u"0"));
  version.keys.push_back(Key(u"HELPDIR", path.substr(0, path.rfind(u'\\'))));
  RegistryKey key = Key(Wide(GuidText(library.id)), KeyRule::ForceRemove);
  key.keys.push_back(std::move(version));
  return key;
}

RegistryKey InterfaceKey(const ole::LibraryTable& library, const ole::Guid& id, const char* name) {
  RegistryKey owner = Key(u"TypeLib", Wide(GuidText(library.id)));
  owner.values.push_back(Text(u"Version", Version(library)));
  RegistryKey key = Key(Wide(GuidText(id)), Wide(name), KeyRule::ForceRemove);
  key.keys.push_back(Key(u"ProxyStubClsid32", Wide(GuidText(kDispatchMarshaler))));
  key.keys.push_back(std::move(owner));
  return key;
}

}  // namespace

std::vector<RegistryKey> TypeLibraryKeys(const ole::LibraryTable& library,
                                         const std::u16string& path) {
  RegistryKey libraries = Key(u"TypeLib", KeyRule::NoRemove);
  libraries.keys.push_back(LibraryKey(library, path));
  RegistryKey interfaces = Key(u"Interface", KeyRule::NoRemove);
  for (const ole::ControlTable* table : library.controls) {
    interfaces.keys.push_back(InterfaceKey(library, table->interfaceId, table->interfaceName));
    interfaces.keys.push_back(InterfaceKey(library, table->eventsId, table->eventsName));
  }
  RegistryKey root = Key(u"HKCR", KeyRule::NoRemove);
  root.keys.push_back(std::move(libraries));
  root.keys.push_back(std::move(interfaces));
  return {root};
}

}  // namespace qrn::design
