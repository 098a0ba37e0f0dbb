#include "typelib/ManifestWriter.h"

#include <fstream>
#include <stdexcept>

#include "binding/tables/AllTables.h"

namespace qrn {
namespace {

// The system's marshaler of dispatch interfaces.
constexpr Guid kDispatchMarshaler = MakeGuid("00020420-0000-0000-C000-000000000046");

struct FlagName {
  uint32_t flag;
  const char* name;
};

// OLEMISC flags as manifests call them.
constexpr FlagName kFlagNames[] = {
    {0x1, "recomposeonresize"},     {0x10, "cantlinkinside"},   {0x80, "insideout"},
    {0x100, "activatewhenvisible"}, {0x1000, "actslikebutton"}, {0x20000, "setclientsitefirst"},
};

constexpr uint32_t AllNamed() {
  uint32_t all = 0;
  for (const FlagName& each : kFlagNames) all |= each.flag;
  return all;
}
static_assert((kControlMiscStatus | kButtonMiscStatus) == AllNamed());

std::string FlagText(uint32_t flags) {
  std::string text;
  for (const FlagName& each : kFlagNames) {
    if ((flags & each.flag) == 0) continue;
    text += (text.empty() ? "" : ",") + std::string(each.name);
  }
  return text;
}

std::string Attribute(const char* name, const std::string& value) {
  return std::string(" ") + name + "=\"" + value + "\"";
}

std::string ClassStart(const char* className, const Guid& classId) {
  return "    <comClass" + Attribute("clsid", GuidText(classId)) +
         Attribute("description", className + std::string(" Class")) +
         Attribute("threadingModel", "Apartment");
}

std::string ControlClass(const ole::ControlTable& table) {
  const std::string progId = std::string(table.className) + "." + table.className;
  return ClassStart(table.className, table.classId) + Attribute("progid", progId + ".1") +
         Attribute("tlbid", GuidText(kLibrary.id)) +
         Attribute("miscStatusContent", FlagText(table.registration.miscStatus)) +
         ">\n      <progid>" + progId + "</progid>\n    </comClass>\n";
}

std::string Interface(const char* name, const Guid& id) {
  return "  <comInterfaceExternalProxyStub" + Attribute("name", name) +
         Attribute("iid", GuidText(id)) + Attribute("tlbid", GuidText(kLibrary.id)) +
         Attribute("proxyStubClsid32", GuidText(kDispatchMarshaler)) + "/>\n";
}

std::string TypeLibrary() {
  return "    <typelib" + Attribute("tlbid", GuidText(kLibrary.id)) +
         Attribute("version",
                   std::to_string(kLibrary.major) + "." + std::to_string(kLibrary.minor)) +
         Attribute("helpdir", "") + "/>\n";
}

}  // namespace

std::string AssemblyManifest() {
  std::string text =
      "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
      "<assembly xmlns=\"urn:schemas-microsoft-com:asm.v1\" manifestVersion=\"1.0\">\n"
      "  <assemblyIdentity type=\"win32\" name=\"qrnbt350\" version=\"3.5.1.0\""
      " processorArchitecture=\"amd64\"/>\n"
      "  <file name=\"qrnbt350.ocx\">\n";
  for (const ole::ControlTable* table : kControls) text += ControlClass(*table);
  for (const PageRow& page : kPages) text += ClassStart(page.className, page.classId) + "/>\n";
  text += TypeLibrary() + "  </file>\n";
  for (const ole::ControlTable* table : kControls) {
    text += Interface(table->interfaceName, table->interfaceId);
    text += Interface(table->eventsName, table->eventsId);
  }
  return text + "</assembly>\n";
}

void WriteManifest(const std::filesystem::path& folder) {
  const std::filesystem::path path = folder / "qrnbt350.manifest";
  std::ofstream file(path, std::ios::binary);
  file << AssemblyManifest();
  if (!file.flush()) throw std::runtime_error("cannot write " + path.string());
}

}  // namespace qrn
