#include "typelib/ScriptWriter.h"

#include <windows.h>

#include <fstream>
#include <map>
#include <stdexcept>

#include "com/Text.h"

namespace qrn {
namespace {

constexpr UINT kScriptCodePage = 932;

// Lines of a script, indented by what is open.
class Script {
 public:
  Script& Line(const std::string& text) {
    text_.append(static_cast<size_t>(depth_) * 2, ' ');
    text_ += text + '\n';
    return *this;
  }
  Script& Open(const std::string& text) {
    Line(text).Line("{");
    ++depth_;
    return *this;
  }
  Script& Close(int count = 1) {
    for (; count > 0; --count) {
      --depth_;
      Line("}");
    }
    return *this;
  }
  const std::string& text() const { return text_; }

 private:
  std::string text_;
  int depth_ = 0;
};

std::string Quoted(const std::string& text) { return " = s '" + text + "'"; }

// The part that every class has.
void Server(Script& script) {
  script.Open("InprocServer32" + Quoted("%MODULE%"))
      .Line("val ThreadingModel" + Quoted("Apartment"))
      .Close();
}

void ProgIds(Script& script, const std::string& progId, const std::string& description,
             const std::string& classId) {
  script.Open(progId + ".1" + Quoted(description)).Line("CLSID" + Quoted(classId)).Close();
  script.Open(progId + Quoted(description)).Line("CurVer" + Quoted(progId + ".1")).Close();
}

std::string ToolboxPicture(const ole::Registration& registration) {
  return "%MODULE%, " + std::to_string(registration.bitmap);
}

std::string InCodePage(const std::string& utf8) {
  const int size = static_cast<int>(utf8.size());
  std::wstring wide(utf8.size(), L'\0');
  wide.resize(static_cast<size_t>(
      MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, utf8.data(), size, wide.data(), size)));
  std::string bytes(wide.size() * 2, '\0');
  BOOL lost = FALSE;
  bytes.resize(static_cast<size_t>(
      WideCharToMultiByte(kScriptCodePage, 0, wide.data(), static_cast<int>(wide.size()),
                          bytes.data(), static_cast<int>(bytes.size()), nullptr, &lost)));
  if (bytes.empty() || lost) throw std::runtime_error("a script does not fit its code page");
  return bytes;
}

void WriteFile(const std::filesystem::path& path, const std::string& bytes) {
  std::ofstream file(path, std::ios::binary);
  file << bytes;
  if (!file.flush()) throw std::runtime_error("cannot write " + path.string());
}

std::string WithWindowsLines(const std::string& text) {
  std::string lines;
  for (char c : text) c == '\n' ? lines += "\r\n" : lines += c;
  return lines;
}

}  // namespace

std::string ControlScript(const ole::ControlTable& table) {
  const std::string name = table.className;
  const std::string description = name + " Class";
  const std::string progId = name + "." + name;
  const std::string classId = ole::GuidText(table.classId);
  const ole::Registration& registration = table.registration;
  Script script;
  script.Open("HKCR");
  ProgIds(script, progId, description, classId);
  script.Open("NoRemove CLSID").Open("ForceRemove " + classId + Quoted(description));
  script.Line("ProgID" + Quoted(progId + ".1"));
  script.Line("VersionIndependentProgID" + Quoted(progId));
  script.Line("ForceRemove 'Programmable'");
  Server(script);
  for (const char* mark : {"Control", "Programmable", "Insertable"}) {
    script.Line("ForceRemove '" + std::string(mark) + "'");
  }
  script.Line("ForceRemove 'ToolboxBitmap32'" + Quoted(ToolboxPicture(registration)));
  script.Open("'MiscStatus'" + Quoted("0"))
      .Line("'1'" + Quoted(std::to_string(registration.miscStatus)))
      .Close();
  script.Line("'TypeLib'" + Quoted(ole::GuidText(kLibrary.id)));
  script.Line("'Version'" + Quoted(registration.version));
  script.Open("'Verb'")
      .Line("'0'" + Quoted(com::Utf8(com::AsWide(ole::kPropertiesVerb)) + ", 0, 2"))
      .Close();
  return script.Close(3).text();
}

std::string PageScript(const char* className, const ole::Guid& classId) {
  Script script;
  script.Open("HKCR").Open("NoRemove CLSID");
  script.Open("ForceRemove " + ole::GuidText(classId) + Quoted(std::string(className) + " Class"));
  script.Line("ForceRemove 'Programmable'");
  Server(script);
  return script.Close(3).text();
}

std::string ApplicationScript() {
  const std::string id = ole::GuidText(kApplicationId);
  Script script;
  script.Open("HKCR").Open("NoRemove AppID");
  script.Line("ForceRemove " + id + Quoted("qrnbt350"));
  script.Open("'qrnbt350.ocx'").Line("val AppID" + Quoted(id)).Close();
  return script.Close(2).text();
}

void WriteScripts(const std::filesystem::path& folder) {
  std::map<uint16_t, std::string> scripts{
      {kApplicationScript, ApplicationScript()},
      {kOlderPageScript, PageScript("CQRNBtrPpg", kCQRNBtrPpg)},
  };
  for (const ole::ControlTable* table : kControls) {
    scripts[table->registration.script] = ControlScript(*table);
  }
  for (const PageRow& page : kPages) {
    scripts[page.script] = PageScript(page.className, page.classId);
  }
  std::string resources = "// Made by make_typelib.\n";
  for (const auto& [id, text] : scripts) {
    const std::string name = std::to_string(id) + ".rgs";
    WriteFile(folder / name, InCodePage(WithWindowsLines(text)));
    resources += std::to_string(id) + " REGISTRY \"" + name + "\"\n";
  }
  WriteFile(folder / "scripts.rc", resources);
}

}  // namespace qrn
