// Where controls come from: type libraries that forms refer to, and the modules behind them.
#pragma once

#include <oaidl.h>

#include <map>
#include <string>
#include <vector>

#include "com/Handles.h"
#include "host/container/ComObject.h"
#include "host/form/FormFile.h"

namespace qrn::host {

// A class of controls: its id, and its description where there is a library.
struct ControlClass {
  GUID id{};
  Com<ITypeInfo> type;
};

// Raised with a reason in plain words.
struct ClassNotFound {
  std::string reason;
};

// The classes a program can make controls of. Tests bring classes of their own.
class ControlClasses {
 public:
  virtual ~ControlClasses() = default;

  // Makes the libraries of a form known; throws ClassNotFound for one that cannot be had.
  // `folder` is the form file's, without a backslash at the end.
  virtual void Add(const form::LibraryReference& library, const std::wstring& folder) = 0;

  // The class `library`.`name` of a form file; throws ClassNotFound.
  virtual ControlClass Find(const std::string& library, const std::string& name) = 0;

  // A new object of a class: a control or a property page. Empty if it cannot be made.
  virtual Com<IUnknown> Make(const GUID& id) = 0;

  // All libraries known, for their constants.
  virtual std::vector<Com<ITypeLib>> Libraries() const = 0;

  // The module that carries a library, the last part of its path as forms name it; empty if that
  // is not known.
  virtual std::string FileOf(ITypeLib*) const { return {}; }
};

// Classes of modules. A module found beside the program or beside the form is taken as it is,
// registered or not; otherwise the registration of its library leads to it. Modules stay loaded as
// long as this object lives.
class ModuleClasses final : public ControlClasses {
 public:
  void Add(const form::LibraryReference& library, const std::wstring& folder) override;
  ControlClass Find(const std::string& library, const std::string& name) override;
  Com<IUnknown> Make(const GUID& id) override;
  std::vector<Com<ITypeLib>> Libraries() const override;
  std::string FileOf(ITypeLib* library) const override;

  // Takes this very file for every reference to its library, registered or not, and wherever the
  // form says it is. Throws ClassNotFound if it cannot be loaded or carries no library.
  void AddModule(const std::wstring& path);

 private:
  struct Entry {
    Com<ITypeLib> typeLibrary;
    std::wstring name;    // of the library, as class names have it before the dot
    com::Library module;  // empty where registration leads to it
  };
  static Entry LoadModule(const std::wstring& path);
  bool IsGiven(const GUID& library) const;
  Com<ITypeInfo> FindIn(const Entry& entry, const std::string& library, const std::string& name,
                        bool* knownLibrary) const;
  Entry Load(const form::LibraryReference& library, const std::wstring& folder) const;

  std::map<std::string, Entry> entries_;  // by library id and version
  std::vector<Entry> given_;              // by AddModule
};

}  // namespace qrn::host
