#include "SampleFixture.h"
#include "ole/SystemGuid.h"
#include "tests/support/Test.h"

namespace qrn::test {
namespace {

const GUID& kEvents = AsGuid(kSampleTable.eventsId);

struct EventsTest : SampleFixture {
  void Ring() { CallMethod(object(), L"Ring"); }
};

TEST_F(EventsTest, EverySinkHearsTheEventAndLeavesItsAnswer) {
  EventSink first;
  EventSink second;
  const Connection one(unknown(), kEvents, &first);
  const Connection two(unknown(), kEvents, &second);
  first.answer = [](DISPID, DISPPARAMS& sent) {
    *sent.rgvarg[1].piVal = 9;
    SysReAllocString(sent.rgvarg[0].pbstrVal, L"answer");
  };
  Put(object(), L"Name", {Text(L"me")});
  sample().log.clear();
  Ring();
  EXPECT_EQ(first.log, "1(BSTR:me,I2&:5,BSTR&:line) ");
  EXPECT_EQ(second.log, "1(BSTR:me,I2&:9,BSTR&:answer) ");
  EXPECT_EQ(sample().log, "rang(9,answer) ");
}

TEST_F(EventsTest, ASinkMayLeaveOrJoinWhileTheEventIsRaised) {
  EventSink sinks[4];
  Connection one(unknown(), kEvents, &sinks[0]);
  Connection two(unknown(), kEvents, &sinks[1]);
  Connection three(unknown(), kEvents, &sinks[2]);
  std::unique_ptr<Connection> late;
  sinks[0].answer = [&](DISPID, DISPPARAMS&) {
    one.Leave();
    two.Leave();
    late = std::make_unique<Connection>(unknown(), kEvents, &sinks[3]);
  };
  Ring();
  EXPECT_EQ(sinks[0].log.empty() || sinks[2].log.empty(), false);
  EXPECT_EQ(sinks[1].log, "");
  EXPECT_EQ(sinks[3].log, "");
  EXPECT_EQ(sinks[0].references + sinks[1].references, 0u);
  Ring();
  EXPECT_NE(sinks[3].log, "");
}

TEST_F(EventsTest, FrozenEventsAreNotRaised) {
  EventSink sink;
  const Connection connection(unknown(), kEvents, &sink);
  const auto ole = Query<IOleControl>(control);
  ole->FreezeEvents(TRUE);
  ole->FreezeEvents(TRUE);
  ole->FreezeEvents(FALSE);
  Ring();
  EXPECT_EQ(sink.log, "");
  ole->FreezeEvents(FALSE);
  ole->FreezeEvents(FALSE);
  Ring();
  EXPECT_NE(sink.log, "");
}

TEST_F(EventsTest, AControlMayBeDroppedInItsOwnEvent) {
  EventSink sink;
  Connection connection(unknown(), kEvents, &sink);
  site.Host(unknown());
  const int before = Sample::destroyed;
  sink.answer = [&](DISPID, DISPPARAMS&) {
    connection.Leave();
    site.Unhost();
    control.reset();
  };
  const HWND window = sample().contained();
  SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 4));
  EXPECT_EQ(sink.log, "-605(I2:1,I2:0,R4:3,R4:4) ");
  EXPECT_FALSE(IsWindow(window));
  EXPECT_EQ(Sample::destroyed, before + 1);
}

TEST_F(EventsTest, AControlMayBeDroppedInAnEventOfAMethod) {
  EventSink sink;
  Connection connection(unknown(), kEvents, &sink);
  const int before = Sample::destroyed;
  IDispatch* weak = object();
  sink.answer = [&](DISPID, DISPPARAMS&) {
    connection.Leave();
    control.reset();
  };
  EXPECT_EQ(CallMethod(weak, L"Ring").result, S_OK);
  EXPECT_EQ(Sample::destroyed, before + 1);
}

TEST_F(EventsTest, PointsAndConnectionsCanBeListed) {
  EventSink sink;
  const Connection connection(unknown(), kEvents, &sink);
  const auto container = Query<IConnectionPointContainer>(control);
  Com<IEnumConnectionPoints> points;
  ASSERT_EQ(container->EnumConnectionPoints(points.put()), S_OK);
  Com<IConnectionPoint> both[2];
  ULONG count = 0;
  IConnectionPoint* raw[3] = {};
  EXPECT_EQ(points->Next(3, raw, &count), S_FALSE);
  ASSERT_EQ(count, 2u);
  for (int i = 0; i < 2; ++i) both[i] = Com<IConnectionPoint>::Take(raw[i]);
  IID id{};
  EXPECT_EQ(both[0]->GetConnectionInterface(&id), S_OK);
  EXPECT_EQ(id, kEvents);
  Com<IEnumConnections> connections;
  ASSERT_EQ(both[0]->EnumConnections(connections.put()), S_OK);
  CONNECTDATA data{};
  ASSERT_EQ(connections->Next(1, &data, &count), S_OK);
  EXPECT_EQ(data.pUnk, &sink);
  data.pUnk->Release();
  EXPECT_EQ(connections->Skip(1), S_FALSE);
  Com<IEnumConnections> clone;
  EXPECT_EQ(connections->Reset(), S_OK);
  ASSERT_EQ(connections->Clone(clone.put()), S_OK);
  EXPECT_EQ(clone->Skip(1), S_OK);
}

TEST_F(EventsTest, WhatCannotBeConnectedIsRefused) {
  const auto container = Query<IConnectionPointContainer>(control);
  Com<IConnectionPoint> point;
  EXPECT_EQ(container->FindConnectionPoint(__uuidof(IOleObject), point.put()),
            CONNECT_E_NOCONNECTION);
  ASSERT_EQ(container->FindConnectionPoint(__uuidof(IPropertyNotifySink), point.put()), S_OK);
  EventSink events;
  DWORD cookie = 77;
  EXPECT_EQ(point->Advise(&events, &cookie), CONNECT_E_CANNOTCONNECT);
  EXPECT_EQ(cookie, 0u);
  EXPECT_EQ(point->Advise(nullptr, &cookie), E_POINTER);
  EXPECT_EQ(point->Unadvise(5), CONNECT_E_NOCONNECTION);
  EXPECT_EQ(events.references, 0u);
}

}  // namespace
}  // namespace qrn::test
