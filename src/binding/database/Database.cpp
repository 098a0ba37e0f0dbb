// The life of a database control's dictionary: start, directory, end.
#include "binding/database/Database.h"

#include "core/ReturnCodes.h"
#include "fields/Messages.h"
#include "platform/Profile.h"

namespace qrn {
namespace {

constexpr size_t kDirectorySize = 260;

// While a message is up or a handler runs, the start must not begin again.
class Starting {
 public:
  explicit Starting(bool& flag) noexcept : flag_(flag) { flag_ = true; }
  Starting(const Starting&) = delete;
  Starting& operator=(const Starting&) = delete;
  ~Starting() { flag_ = false; }

 private:
  bool& flag_;
};

}  // namespace

void Database::DbControlStart() {
  if (Started != 0 || starting_ || GetContainerWindow() == nullptr) return;
  const Starting starting(starting_);
  const std::string name = GetControlName();
  if (InUserMode()) TakeDistributedDirectory(name);
  if (DDFDir.empty()) return;
  if (name.empty()) {
    ShowMessage(kVE814);
    return;
  }
  TheRegistry().RegisterDataControl(*this);
  if (ObtainAtStart()) AnnounceReady(name);
  if (starting_) Started = 1;
}

// One set of forms serves installations whose data lies elsewhere.
void Database::TakeDistributedDirectory(const std::string& name) {
  if (DistName.empty()) return;
  char directory[kDirectorySize];
  const size_t length =
      ReadProfileText(DistName.c_str(), name.c_str(), "", directory, "quorin.ini");
  if (length > 0) DDFDir.SetNarrow({directory, length});
}

// A dictionary from an earlier start at design time goes first: it must not be copied from.
bool Database::ObtainAtStart() {
  Dictionary.reset();
  Status status = 0;
  if (CacheDDF == 0 || !CopyFromAnother(status)) status = Load();
  AskRedraw();
  return status == 0;
}

bool Database::CopyFromAnother(Status& status) {
  DataControl* other = nullptr;
  if (TheRegistry().FindDataControlForDir(other, DDFDir.c_str()) != 0) return false;
  const DbDictionary* source = other->GetDictionary();
  if (source == nullptr) return false;
  DbDictionary* copy = nullptr;
  status = DbDictCopy(*source, &copy);
  Adopt(copy);
  return true;
}

// Kept so: what a load has built before it failed stays, as it does for the flat functions.
Status Database::LoadQuietly() {
  DbDictionary* loaded = nullptr;
  const Status status = DbDictLoad(TheEngine().Settings, DDFDir.c_str(), &loaded);
  Adopt(loaded);
  return status;
}

Status Database::Load() {
  const Status status = LoadQuietly();
  if (status != 0) ShowMessage(kVE028, static_cast<int>(status));
  return status;
}

// As DbOpenAllTables, but while a message is up the form may go and take the dictionary with it.
// Kept so: here the open mode goes to Btrieve as it is stored.
Status Database::OpenAllAtStart() {
  Status status = 0;
  for (int32_t i = 0; status == 0 && Dictionary && i < Dictionary->TableCount; ++i) {
    DbTableInfo& table = Dictionary->Tables[i];
    if (table.IsOpen != 0) continue;
    status = DbOpenOrCreate(TheEngine(), table, DDFDir.c_str(), OwnerName.c_str(), OpenMode);
  }
  return status;
}

void Database::AnnounceReady(const std::string& name) {
  if (!InUserMode()) return;
  if (AllOpen != 0 && OpenAllAtStart() != 0) return;
  if (!Dictionary) return;
  const WindowHandle container = GetContainerWindow();
  TheRegistry().NotifyListsReady(name, container);
  TheRegistry().NotifyNavReady(name, container);
}

void Database::DirectoryWasPut() {
  if (InUserMode()) return;
  Dictionary.reset();
  if (!DDFDir.empty()) {
    Status status = 0;
    if (CacheDDF == 0 || !CopyFromAnother(status)) {
      TheEngine().Settings.delayed_resolve = 0;  // the designer sees all fields
      Load();
    }
    TheRegistry().RegisterDataControl(*this);
  }
  AskRedraw();
}

void Database::WindowGoes() {
  if (InUserMode()) DropTables();
  TheRegistry().UnregisterDataControl(*this);
  ForgetAttachedDatabase(this);
  Started = 0;
  starting_ = false;  // a handler of the start itself closed the form
}

void Database::ControlGoes() {
  DropTables();
  TheRegistry().UnregisterDataControl(*this);
  ForgetAttachedDatabase(this);
}

// While a message of a load or of a close was up, another may have come.
void Database::Adopt(DbDictionary* dictionary) {
  while (Dictionary) DropTables();
  Dictionary.reset(dictionary);
}

// Nobody finds the dictionary while its tables close: a message of a close may let others run.
void Database::DropTables() {
  const OwnedDictionary dropped = std::move(Dictionary);
  if (!dropped) return;
  ForgetFlatDictionary(dropped.get());
  DbDictCloseAll(TheEngine(), *dropped);
}

void Database::DictionaryIsTaken() noexcept { static_cast<void>(Dictionary.release()); }

Status Database::DbLoadDDF() {
  if (DDFDir.empty()) return kNoDirectory;
  DropTables();
  return LoadQuietly();
}

Status Database::DbReset() { return qrn::DbReset(TheEngine(), Dictionary.get()); }

Status Database::DbLogIn(const char* connection) { return qrn::DbLogIn(Login, connection); }
Status Database::DbLogOut() { return qrn::DbLogOut(Login); }

}  // namespace qrn
