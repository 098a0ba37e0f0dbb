// Handlers that call into the control they are called from, or take it away: at every point where
// code of the application runs.

#include <filesystem>
#include <fstream>

#include "PeopleForm.h"
#include "SystemCalls.h"
#include "com/Module.h"
#include "platform/MessageBox.h"

namespace qrn::test {
namespace {

enum Where { kInChange, kInSetData, kInButtonError, kInDatabaseError, kInMessage, kInQuestion };

// Runs something while a message of the engine is up.
std::function<void()> whileShown;

int ShowNothing(const char*, unsigned) {
  if (whileShown) whileShown();
  return kBoxOk;
}

class NoBoxes : Pinned {
 public:
  NoBoxes() { ReplaceShowBox(&ShowNothing); }
  ~NoBoxes() {
    ReplaceShowBox(nullptr);
    whileShown = nullptr;
  }
};

VARIANT People() { return Text(L"People"); }
VARIANT Notes() { return Text(L"Notes"); }

void ClickTo(PeopleForm& form, int32_t operation, const wchar_t* question = L"") {
  form.button.Set(L"DbOperation", Long(operation));
  form.button.Set(L"ConfirmMsg", Text(question));
  form.Click();
}

// What brings the application's code to run, and where it does.
struct Point {
  const char* what;
  Where where;
  void (*reach)(PeopleForm& form);
};
const Point kPoints[] = {
    {"the text changes at a read", kInChange, [](PeopleForm& f) { ClickTo(f, DbGetFirst); }},
    {"the text changes at a step", kInChange, [](PeopleForm& f) { ClickTo(f, DbStepFirst); }},
    {"the text is cleared after a write", kInChange,
     [](PeopleForm& f) {
       f.button.Set(L"ClearControlData", Bool(true));
       ClickTo(f, DbUpdate);
     }},
    {"the text changes at a transfer", kInChange,
     [](PeopleForm& f) { f.Say(L"DbTransferToControl", {People()}); }},
    {"the text changes at a clearing", kInChange,
     [](PeopleForm& f) { f.Say(L"DbClearControlData", {People()}); }},
    {"SetData of a read", kInSetData, [](PeopleForm& f) { ClickTo(f, DbGetFirst); }},
    {"SetData of an insert", kInSetData, [](PeopleForm& f) { ClickTo(f, DbInsert); }},
    {"SetData of an update", kInSetData, [](PeopleForm& f) { ClickTo(f, DbUpdate); }},
    {"SetData of a deletion", kInSetData, [](PeopleForm& f) { ClickTo(f, DbDelete); }},
    {"the button's BtrieveError", kInButtonError, [](PeopleForm& f) { ClickTo(f, DbGetGreater); }},
    {"the button's message", kInMessage, [](PeopleForm& f) { ClickTo(f, DbGetGreater); }},
    {"the message of a bad operation", kInMessage, [](PeopleForm& f) { ClickTo(f, 99); }},
    {"the button's question", kInQuestion, [](PeopleForm& f) { ClickTo(f, DbGetFirst, L"?"); }},
    {"BtrieveError of an open", kInDatabaseError,
     [](PeopleForm& f) { f.Say(L"DbOpen", {Notes()}); }},
    {"BtrieveError of opening all", kInDatabaseError, [](PeopleForm& f) { f.Say(L"DbOpenAll"); }},
    {"the message of an open", kInMessage, [](PeopleForm& f) { f.Say(L"DbOpen", {Notes()}); }},
    {"the message of opening all", kInMessage, [](PeopleForm& f) { f.Say(L"DbOpenAll"); }},
    {"BtrieveError of a creation", kInDatabaseError,
     [](PeopleForm& f) {
       f.Say(L"DbSetFileName", {Notes(), Text(L"none\\file.btr")});
       f.Say(L"DbCreate", {Notes()});
     }},
    {"the message of a creation", kInMessage,
     [](PeopleForm& f) {
       f.Say(L"DbSetFileName", {Notes(), Text(L"none\\file.btr")});
       f.Say(L"DbCreate", {Notes()});
     }},
    {"the message of a file of another length", kInMessage,
     [](PeopleForm& f) {
       f.Say(L"DbSetFileName", {Notes(), Text(L"Days.btr")});
       f.Say(L"DbOpen", {Notes()});
     }},
    {"the message of an open on demand", kInMessage,
     [](PeopleForm& f) {
       f.button.Set(L"DbTable", Notes());
       ClickTo(f, DbGetFirst);
     }},
};

// What the application does there.
struct Deed {
  const char* what;
  void (*run)(PeopleForm& form);
  bool formStays;
};
const Deed kDeeds[] = {
    {"resets", [](PeopleForm& f) { f.Say(L"DbReset"); }, true},
    {"resets and opens all",
     [](PeopleForm& f) {
       f.Say(L"DbReset");
       f.Say(L"DbOpenAll");
     },
     true},
    {"loads the dictionary and opens all",
     [](PeopleForm& f) {
       f.Say(L"DbLoadDDF");
       f.Say(L"DbOpenAll");
     },
     true},
    {"loads a dictionary that is not there",
     [](PeopleForm& f) {
       f.btr.Set(L"DDFDir", Text(L"C:\\nowhere"));
       f.Say(L"DbLoadDDF");
     },
     true},
    {"runs the same again",
     [](PeopleForm& f) {
       f.Click();
       f.Say(L"DbTransferToControl", {People()});
       f.Say(L"DbOpenAll");
       f.Say(L"DbCreate", {Notes()});
     },
     true},
    {"takes the database control away", [](PeopleForm& f) { f.btr.Drop(); }, false},
    {"takes the edit away", [](PeopleForm& f) { f.edit.Drop(); }, true},
    {"takes all away",
     [](PeopleForm& f) {
       f.button.Drop();
       f.edit.Drop();
       f.btr.Drop();
     },
     false},
    {"destroys the window", [](PeopleForm& f) { DestroyWindow(f.window.get()); }, false},
};

// Calls `act` once, at the first event or message of that place.
void Arm(PeopleForm& form, PlayedMessageBox& question, Where where, std::function<void()> act) {
  const auto at = [&form, where, act = std::move(act), done = false](Where here) mutable {
    if (here != where || std::exchange(done, true)) return;
    act();
  };
  const auto shared = std::make_shared<std::function<void(Where)>>(at);
  form.edit.events.answer = [shared](DISPID id, DISPPARAMS&) {
    if (id == 1) (*shared)(kInChange);
  };
  form.button.events.answer = [shared](DISPID id, DISPPARAMS&) {
    if (id == 1) (*shared)(kInButtonError);
    if (id == 2) (*shared)(kInSetData);
  };
  form.btr.events.answer = [shared](DISPID, DISPPARAMS&) { (*shared)(kInDatabaseError); };
  whileShown = [shared] { (*shared)(kInMessage); };
  question.onShow = [shared] { (*shared)(kInQuestion); };
}

// A form on its record, with a table that does not open.
void Prepare(PeopleForm& form) {
  form.button.Set(L"ClearControlData", Bool(false));
  form.Click();
  form.Say(L"DbClose", {Notes()});
  form.Say(L"DbSetFileName", {Notes(), Text(L"absent.btr")});
}

// The form's database is as usable as ever.
void ExpectUsable(PeopleForm& form) {
  const std::string directory = form.company.Directory();
  form.btr.Set(L"DDFDir", Text(std::wstring(directory.begin(), directory.end()).c_str()));
  EXPECT_EQ(form.Say(L"DbLoadDDF", {}), "ok I2:0");
  EXPECT_EQ(form.Say(L"DbOpenAll", {}), "ok I2:0");
  EXPECT_EQ(form.Say(L"DbClearFieldBuffer", {People()}), "ok I2:0");
  EXPECT_EQ(form.Say(L"DbSetFieldData", {People(), Text(L"Code"), Text(L"77")}), "ok I2:0");
  EXPECT_EQ(form.Say(L"DbAccess", {Short(2), People(), Text(L"ByCode")}), "ok I2:0");
  EXPECT_EQ(form.Say(L"DbAccess", {Short(13), People(), Text(L"ByCode")}), "ok I2:0");
  EXPECT_EQ(form.Say(L"DbGetFieldData", {People(), Text(L"Code")}), "ok BSTR:77");
}

class Reentry : public ::testing::TestWithParam<Deed> {};

TEST_P(Reentry, IsTakenAtEveryPoint) {
  const NoBoxes messages;
  for (const Point& point : kPoints) {
    SCOPED_TRACE(std::string(GetParam().what) + " when " + point.what);
    {
      PlayedMessageBox question(IDOK);
      PeopleForm form(L"Abe", "dbe");
      form.closed.emplace();
      Prepare(form);
      int deeds = 0;
      Arm(form, question, point.where, [&] {
        ++deeds;
        GetParam().run(form);
      });
      point.reach(form);
      EXPECT_EQ(deeds, 1);
      RunMessages();
      if (GetParam().formStays) ExpectUsable(form);
    }
    EXPECT_TRUE(com::ModuleIsIdle());
  }
}

// The start opens table after table; a file that is not the table's makes it speak in between.
TEST(ReentryAtStart, IsTakenWhileAMessageIsUp) {
  const NoBoxes messages;
  using Database = Hosted<CQRNBtr>;
  const struct {
    const char* what;
    void (*run)(Database& btr);
  } deeds[] = {
      {"resets", [](Database& btr) { CallMethod(btr.object(), L"DbReset"); }},
      {"loads the dictionary", [](Database& btr) { CallMethod(btr.object(), L"DbLoadDDF"); }},
      {"opens all", [](Database& btr) { CallMethod(btr.object(), L"DbOpenAll"); }},
      {"loads the dictionary and opens all",
       [](Database& btr) {
         CallMethod(btr.object(), L"DbLoadDDF");
         CallMethod(btr.object(), L"DbOpenAll");
       }},
      {"starts again", [](Database& btr) { btr->DbControlStart(); }},
      {"takes its window away", [](Database& btr) { btr.Unhost(); }},
      {"lets go of it", [](Database& btr) { btr.Drop(); }},
  };
  for (const bool junk : {true, false}) {
    for (const auto& deed : deeds) {
      SCOPED_TRACE(std::string(deed.what) + (junk ? ", a file that is none" : ", another file"));
      const Company company;
      const ClosedFiles closed;
      const std::filesystem::path folder = company.Directory();
      CopyFileW((folder / "Days.btr").c_str(), (folder / "People.btr").c_str(), FALSE);
      if (junk) std::ofstream(folder / "People.btr", std::ios::binary) << std::string(5000, 'x');
      Database btr(L"Db");
      btr.Set(L"DDFDir", Text(folder.c_str()));
      int deedsDone = 0;
      whileShown = [&] {
        if (deedsDone++ == 0) deed.run(btr);
      };
      btr.Show();
      EXPECT_GE(deedsDone, 1);
      RunMessages();
      if (btr.object() == nullptr) continue;
      EXPECT_EQ(CallMethod(btr.object(), L"DbLoadDDF").Text(), "ok I2:0");
      EXPECT_EQ(CallMethod(btr.object(), L"DbOpen", {Notes()}).Text(), "ok I2:0");
      EXPECT_EQ(CallMethod(btr.object(), L"DbIsOpen", {People()}).Text(), "ok I2:0");
    }
    EXPECT_TRUE(com::ModuleIsIdle());
  }
}

INSTANTIATE_TEST_SUITE_P(Handlers, Reentry, ::testing::ValuesIn(kDeeds));

}  // namespace
}  // namespace qrn::test
