#include "running_app.h"

// How the program starts and ends, with whatever it finds in its folder.
namespace {

const std::string open = "zelUnicode on zelOpenSIM(3,115200) ";

TEST(StartUp, AsksTheHandsetInTheFixedOrderAndShowsWhatThereIs) {
  ProgramFolder folder;
  folder.write("port.ini", "[PORT]\nCom = 3x");  // the leading number counts
  ScriptedLink& script = folder.script();
  folder.receive("one", "+31600000001");
  folder.receive("", "", "");
  folder.add(script.sender, script.senderResult, "out");
  for (const std::uint16_t status : std::initializer_list<std::uint16_t>{1, 3, 7, 2, 5, 0})
    folder.add(script.handset, script.handsetResult, "status " + std::to_string(status), "7", "t", status);
  folder.put(pDraft, {{"d"}});
  RunningApp app(folder);
  ASSERT_TRUE(app.start());
  EXPECT_EQ(folder.log(),
            open + "zelInitSMS zelGetReceiverSMS zelGetHandSetSMS zelGetSenderSMS zelGetHandSetSMS ");
  std::string labels = textOf(app.window());
  for (const Place place : {mobile, mInbox, mOutbox, pc, pInbox, pSent, pDraft})
    labels += " " + app.label(place);
  EXPECT_EQ(labels, "Quillet Mobile Inbox(4) Outbox(2) PC Inbox(0) Sent(0) Draft(1)");
  EXPECT_EQ(app.look(), "4 2 0 0 1: one,,status 1,status 3");
  EXPECT_EQ(app.rows(1) + " " + app.rows(2), "+31600000001,,7,7 2026-03-02 11:22:33,,t,t");
  EXPECT_EQ(app.status(), "Mobile\\Inbox: 4, Mobile\\Outbox: 2, PC\\Inbox: 0, PC\\Sent: 0, PC\\Draft: 1");
  EXPECT_EQ(ListView_GetBkColor(app.list()), RGB(212, 222, 234));
  EXPECT_EQ(ListView_GetTextColor(app.list()), RGB(11, 79, 149));
  EXPECT_EQ(app.end(), 0);
  EXPECT_EQ(folder.log(), "zelCloseSIM ");
}

TEST(StartUp, GoesOnWithoutALibraryAndEndsWithoutAConnection) {
  const Steps noConnection{answer("Quillet:Can not connect,Please Check Connection")};
  const std::tuple<const char*, int, int, std::string, Steps> starts[] = {
      {"scripted_link.dll", 0, 1, open, noConnection},
      {"scripted_link.dll", 1, 0, open + "zelInitSMS ", noConnection},
      {"half_link.dll", 1, 1, "", {}},
  };
  for (const auto& [library, opened, initialized, log, boxes] : starts) {
    ProgramFolder folder(library);
    if (!log.empty()) folder.script().openResult = opened, folder.script().initResult = initialized;
    RunningApp app(folder);
    app.watch(boxes, [&] { EXPECT_EQ(app.start(), log.empty()); });
    EXPECT_EQ(log.empty() ? "" : folder.log(), log);
    ASSERT_EQ(app.window() != nullptr, log.empty());
    if (!app.window()) continue;
    folder.put(pDraft, {{"kept"}});
    app.command(ID_REFRESH);
    EXPECT_EQ(app.look(), "0 0 0 0 1: ");
  }
  ProgramFolder held;  // by a program without a window
  held.write("Quillet.lock", "");
  const auto lock = held.hold("Quillet.lock");
  RunningApp second(held);
  second.watch({answer("has no window to show")}, [&] { EXPECT_FALSE(second.start()); });
}

TEST(StartUp, TakesTextsFromTheResourceLibraryAndTheRestFromTheProgram) {
  ProgramFolder folder;
  folder.copy("strings_only.dll", "zelSMS.dll");
  RunningApp app(folder);
  ASSERT_TRUE(app.start());
  EXPECT_EQ(textOf(app.window()) + app.label(mobile) + app.columns().substr(0, 5),
            "Quillet (fr)TéléphoneTexte");
}

}  // namespace
