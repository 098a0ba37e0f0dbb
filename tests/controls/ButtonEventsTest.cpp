// What an operation button asks and tells, operation by operation.

#include "Boxes.h"
#include "ButtonFixture.h"
#include "SystemCalls.h"
#include "tests/extended/ShownMessages.h"

namespace qrn::test {
namespace {

constexpr int32_t kOperations = 18;

bool Steps(int32_t operation) { return operation >= DbStepFirst && operation <= DbStepPrevious; }

using ButtonEvents = Button;

TEST_F(ButtonEvents, EveryOperationTellsOfItsFailure) {
  struct Case {
    int32_t operation;
    const char* status;
  };
  // On an empty table.
  const Case empty[] = {
      {DbUpdate, "8"},       {DbDelete, "8"},        {DbGetEqual, "4"},
      {DbGetFirst, "9"},     {DbGetLast, "9"},       {DbGetNext, "8"},
      {DbGetPrevious, "8"},  {DbGetGreater, "9"},    {DbGetLessThan, "9"},
      {DbStepFirst, "9"},    {DbStepLast, "9"},      {DbStepNext, "9"},
      {DbStepPrevious, "9"}, {DbUpdateNCC, "8"},     {DbGetGreaterOrEqual, "9"},
      {DbInsert, nullptr},   {DbInsertNCC, "5"},     {DbInsert, "5"},
      {DbUpdate, nullptr},   {DbUpdateNCC, nullptr}, {DbGetLessThanOrEuqal, nullptr}};
  ShownMessages messages;
  button_.Set(L"ClearControlData", Bool(false));
  Fill(L"5", L"氏名");
  for (const Case& row : empty) {
    const std::string setData = Steps(row.operation) ? "" : "2() ";
    const std::string told =
        row.status ? std::string("1(BSTR:People,I2&:") + row.status + ") " : std::string();
    scroll_.log.clear();
    EXPECT_EQ(Click(row.operation), setData + told + "-600() ") << row.operation;
    EXPECT_EQ(messages.Take(), row.status ? std::string(kFailed) + "(" + row.status + ")" : "")
        << row.operation;
    EXPECT_EQ(scroll_.log, row.status ? "" : "People:0 ") << row.operation;
    EXPECT_EQ(Screen(), "5|氏名") << row.operation;
  }
}

TEST_F(ButtonEvents, EveryOperationButAStepCanBeRefused) {
  InsertThree();
  Fill(L"2", L"氏名");
  ShownMessages messages;
  button_.events.answer = [&](DISPID id, DISPPARAMS&) {
    if (id == kSetData) button_.Set(L"Abort", Bool(true));
  };
  std::vector<int32_t> operations = {DbStepFirst, DbStepNext, DbStepPrevious, DbStepLast};
  for (int32_t operation = 0; operation < kOperations; ++operation) {
    if (!Steps(operation)) operations.push_back(operation);
  }
  for (const int32_t operation : operations) {
    scroll_.log.clear();
    CallLog log;
    EXPECT_EQ(Click(operation), Steps(operation) ? "-600() " : "2() -600() ") << operation;
    EXPECT_EQ(log.Take().empty(), !Steps(operation)) << operation;
    EXPECT_EQ(scroll_.log.empty(), !Steps(operation)) << operation;
    EXPECT_EQ(messages.Take(), "") << operation;
  }
}

// At a write the buffer has the screen's texts by then, so that a handler may change them.
TEST_F(ButtonEvents, SetDataFindsTheScreensTextsBeforeAWriteAlone) {
  InsertThree();
  EXPECT_EQ(Click(DbGetFirst), "2() -600() ");
  Fill(L"1", L"画面");
  std::string seen;
  button_.events.answer = [&](DISPID id, DISPPARAMS&) {
    if (id == kSetData) seen = office_.Field("People", "Name");
    button_.Set(L"Abort", Bool(true));
  };
  const struct {
    int32_t operation;
    const char* seen;
  } cases[] = {{DbGetEqual, "氏名"},  {DbGetNext, "氏名"}, {DbDelete, "氏名"},   {DbUpdate, "画面"},
               {DbUpdateNCC, "画面"}, {DbInsert, "画面"},  {DbInsertNCC, "画面"}};
  for (const auto& row : cases) {
    seen.clear();
    EXPECT_EQ(Click(row.operation), "2() -600() ") << row.operation;
    EXPECT_EQ(seen, row.seen) << row.operation;
  }
}

TEST_F(ButtonEvents, EveryOperationAsksItsQuestionFirst) {
  InsertThree();
  button_.Set(L"ConfirmMsg", Text(L"実行？"));
  Fill(L"2", L"氏名");
  for (const int answer : {IDCANCEL, 0}) {
    PlayedMessageBox box(answer);
    CallLog log;
    for (int32_t operation = 0; operation <= kOperations; ++operation) {
      EXPECT_EQ(Click(operation), "-600() ") << operation << " answered " << answer;
    }
    EXPECT_EQ(box.calls, kOperations + 1);
    EXPECT_EQ(log.Take(), "");
    EXPECT_EQ(Screen(), "2|氏名");
  }
}

TEST_F(ButtonEvents, TheQuestionStandsOverTheButtonOrItsForm) {
  button_.Set(L"ConfirmMsg", Text(L"実行？"));
  PlayedMessageBox box(IDCANCEL);
  Click(DbInsert);
  EXPECT_EQ(box.owner, GetParent(button_.window()));
  EXPECT_EQ(box.text, L"実行？");
  EXPECT_EQ(box.title, L"");
  EXPECT_EQ(box.kind, static_cast<UINT>(MB_OKCANCEL));
  Hosted<CQRNBtn> hidden(L"btn2");
  hidden.Set(L"ConfirmMsg", Text(L"実行？"));
  hidden->Click();
  EXPECT_EQ(box.owner, TheForm()) << "without a window of its own";
  auto* const alone = new CQRNBtn;
  const auto held = com::Com<IUnknown>::Take(&alone->Inner());
  alone->ConfirmMsg = com::Bstr(L"実行？");
  alone->Click();
  EXPECT_EQ(box.calls, 3);
  EXPECT_EQ(box.owner, nullptr) << "without a container";
}

TEST_F(ButtonEvents, AQuestionClosedIsDeclined) {
  button_.Set(L"ConfirmMsg", Text(L"実行？"));
  Fill(L"1", L"x");
  Boxes boxes(Boxes::kCloses);
  CallLog log;
  EXPECT_EQ(Click(DbInsert), "-600() ");
  EXPECT_EQ(boxes.Take(), "|実行？; ");
  EXPECT_EQ(log.Take(), "");
}

TEST_F(ButtonEvents, WhatAHandlerPutsCountsFromTheNextClickOn) {
  InsertThree();
  Fill(L"1", L"氏名");
  button_.events.answer = [&](DISPID id, DISPPARAMS&) {
    if (id != kSetData) return;
    button_.events.answer = nullptr;
    button_.Set(L"DbOperation", Long(DbDelete));
    button_.Set(L"DbTable", Text(L"Days"));
    button_.Set(L"DbIndex", Text(L"ByName"));
  };
  CallLog log;
  EXPECT_EQ(Click(DbGetEqual), "2() -600() ");
  EXPECT_EQ(log.Take(), "5/0:42 ") << "this click goes on as it began";
  EXPECT_EQ(Screen(), "1|氏名");
}

}  // namespace
}  // namespace qrn::test
