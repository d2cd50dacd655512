#include "handset/at/at_handset.h"

#include <algorithm>
#include <sstream>

#include "handset/at/line_reader.h"
#include "handset/fakes.h"

namespace handset::at {
namespace {

using namespace std::string_literals;

const std::string someone = "+31600000001", longText(161, 'x'), contacts = "+31600000001=A; 112=B; ";
const std::string hello = "1/1/+31600000001/26112117154004/Hello; ";
const std::string list = "|+CMGL: 1,1,,24|07911326040000F0040B911306000000F100006211127151044005C8329BFD06";

const std::string place1 = ";AT+CMGR=1: |+CMGR: 1,,24" + list.substr(15) + "||OK|";
const std::string part = "07911326040000F0440B911306000000F10000621112715104400B05000300020";
const std::string expectedOther = "07911326040000F0040B911306000000F100006211127151044002C834";

const char* const usualScript =
    "AT: |OK|;ATE0: |OK|;ATV1: |OK|;AT+CMEE=1: |OK|;AT+CMGF=0: |OK|;AT+CNMI=2,1,0,0,0: |OK|;"
    "AT+CSCS='UCS2': |OK|;AT+CSCS='GSM': |OK|;AT+CSCS='IRA': |OK|;AT+CPBS='SM': |OK|;AT+CPBS='ME': |OK|;"
    "AT+CPMS='SM': |+CPMS: 2,50,2,50,2,50||OK|;AT+CPMS='ME': |+CPMS: 2,50,2,50,2,50||OK|;"
    "AT+CPIN?: |+CPIN: READY||OK|;AT+CSCS?: |+CSCS: 'GSM'||OK|;AT+CSCS=?: |+CSCS: ('GSM','IRA','UCS2')||OK|;"
    "AT+CPMS=?: |+CPMS: ('SM','ME'),('SM','ME'),('SM')||OK|;AT+CNMI?: |+CNMI: 2,1,0,0,0||OK|;"
    "AT+CNMI=?: |+CNMI: (0-2),(0-3),(0,2),(0,1),(0,1)||OK|;AT+CMGL=4 SM: |+CMGL: 1,1,,24|"
    "07911326040000F0040B911306000000F100006211127151044005C8329BFD06|+CMGL: 7,3,,18|"
    "0001000B911306000000F1000005C8329BFD06||OK|;AT+CMGL=4 ME: |+CMGL: 3,0,,29|"
    "07911326040000F0440B911306000000F10000621112715104400B050003000202C462B118|+CMGL: 5,1,,29|"
    "07911326040000F0440B911306000000F10000621112715104400B050003000201C462B118||OK|;<text>: |+CMGS: 7||OK|;"
    "AT+CPBR=?: |+CPBR: (1-150),40,14||OK|;AT+CPBR=1,100 ME: |OK|;AT+CPBR=101,150 SM: |+CME ERROR: 22|;"
    "AT+CPBR=1,100 SM: |+CPBR: 1,'31600000001',145,'0041'|+CPBR: 2,'112',129,'0042'||OK|;"
    "AT+CPBR=101,150 ME: |+CPBR: 120,'113',129,'D55C'||OK|;AT+CMGS=20: |> ;AT+CMGS=154: |> ;AT+CMGS=28: |> ";

const std::string usual =
    "1/1/+31600000001/26112117154004/Hello; \n7/7/+31600000001//Hello; "
    "\n5/3/+31600000001/26112117154004/bbbbbbbb; \nphonebook\n+31600000001=A; 112=B; \n113=한; \nsent";

// A handset and its modem, the usual one but for what `changes` say; "<port>" is the problem that its port
// has.
struct Session {
  explicit Session(const std::string& changes = "") {
    modem.learn(usualScript);
    modem.learn(changes);
    modem.input = "half a text";
    modem.prompted = true;
  }
  OpenedPort openPort(int port, int baud) {
    EXPECT_EQ(port * baud, 3 * 115200);
    const auto problem = static_cast<PortProblem>(modem.answers["<port>"].size());
    return {problem, problem == PortProblem::none ? std::make_unique<FakeLine>(modem) : nullptr};
  }
  bool open() { return handset.open(3, 115200) && handset.init(); }
  // Everything a handset is used for, once.
  std::string all() {
    if (!open()) return {};
    const std::string lists = Shown::of(handset);
    return lists + (handset.send(someone, longText) ? "\nsent" : "\nnot sent");
  }

  FakeModem modem;
  FakeSettings settings{modem};
  AtHandset handset{[this](int port, int baud) { return openPort(port, baud); }, modem.clock, settings};
};

// What `use` gives with a modem that is changed, and what went wrong; `limit` milliseconds are enough for it.
template <typename Use>
auto with(int limit, const Use& use) {
  return [limit, use](const std::string& changes) {
    Session at{changes};
    const std::string given = at.open() ? use(at) : "";
    EXPECT_LE(at.modem.clock.now, limit) << changes;
    return given + at.handset.lastProblem();
  };
}

TEST(AtHandset, ReadsAndSendsEverything) {
  Session at;
  EXPECT_EQ(at.all(), usual);
  // A list serves both halves of a store, once.
  EXPECT_EQ(std::ranges::count(at.modem.commands, "AT+CMGL=4"), 2);
  // Nothing was waited for but the line's silence at first.
  EXPECT_LE(at.modem.clock.now, 300);
  // Parts of different messages can be told apart.
  EXPECT_TRUE(at.handset.send(someone, longText));
  ASSERT_EQ(at.modem.texts.size(), 4U);
  EXPECT_EQ(at.modem.texts[1].substr(36, 2), at.modem.texts[0].substr(36, 2));
  EXPECT_NE(at.modem.texts[2].substr(36, 2), at.modem.texts[0].substr(36, 2));
}

TEST(AtHandset, DoesNotCareHowTheBytesComeOrWhatComesBetween) {
  const std::string unreadable = "0/3///(unreadable message) 0011; ";
  for (const auto& [text, message] :
       {std::pair{"", ""s},
        {"^RSSI: 7|*A1: 1|%Z_z: 2|#a b: 3|$A9: 4|", ""},
        {"|+CMT: ,24|0011|NO ANSWER|NO DIAL TONE|", unreadable},
        {"+CDS: 25|RING|0011|NO CARRIER|BUSY|NO DIALTONE|+CDS: 6,23,'+31',145,'26',0|", unreadable},
        {"+CBM: 88|0011|+CMT: '+31',,'26'|OK|", "0/3/+31//OK; "}}) {
    for (const std::size_t chunk : {1U, 2U, 3U, 5U, 8U, 19U}) {
      Session at{chunk % 2 != 0 ? "<echo>: " : ""};
      at.modem.chunk = chunk;
      at.modem.between = text;
      // What is handed over in the middle of an answer is in the inbox, once.
      EXPECT_EQ(at.all(), hello + message + usual.substr(hello.size()))
          << text << " before each line, " << chunk << at.handset.lastProblem();
      EXPECT_EQ(at.modem.texts.size(), 2U);
    }
  }
}

TEST(AtHandset, EndsAtOnceWhereverTheLineGoesAway) {
  Session whole;
  whole.all();
  for (std::size_t left = 0; left + 1 < whole.modem.passed; ++left) {
    Session at;
    at.modem.goneAfter = left;
    std::istringstream given{at.all()};
    // Half a list is no list, and an unconfirmed message is none either.
    for (std::string line; std::getline(given, line);)
      EXPECT_TRUE(line.starts_with("no") || ('\n' + usual).find('\n' + line + '\n') != usual.npos) << line;
    EXPECT_TRUE(at.handset.lastProblem().ends_with("the connection is gone")) << left;
    EXPECT_LE(at.modem.clock.now, 1000);
    EXPECT_LE(at.modem.texts.size(), 2U);
  }
}

TEST(AtHandset, SaysWhyAPortWillNotDo) {
  const std::string mute = "AT: ;AT+CSCS=?: ";
  const auto reason = [](const std::string& changes) {
    Session at{changes};
    EXPECT_FALSE(at.handset.open(3, 115200));
    const std::string problem = at.handset.lastProblem();
    EXPECT_LE(at.modem.clock.now, 11'000);
    EXPECT_FALSE(at.handset.init() || at.handset.send("1", "x"));
    EXPECT_EQ(Shown::of(at.handset), "none\nnone\nnone\nno phonebook\nnone\nnone");
    at.modem.learn("<idle>: ;<port>: ");
    at.modem.learn(usualScript);
    EXPECT_EQ(at.all() + at.handset.lastProblem(), usual);
    return problem;
  };
  expectEach(reason, {"there is no COM3 <= <port>: 1", "COM3 is used by another program <= <port>: 22",
                      "nothing answers <= " + mute, "only the echo comes back <= <echo>: ;" + mute,
                      "what answers is no modem <= AT: |ERROR|;AT+CSCS=?: |ERROR| <= <idle>: " +
                          std::string(9000, '\xFF') + ';' + mute});
}

TEST(AtHandset, IsReadyOnlyForMessagesAsPdus) {
  const auto ready = with(12'000, [](Session& at) {
    EXPECT_TRUE(at.modem.texts.empty());
    return at.modem.commands.back().starts_with("AT+CNMI=2") ? "changed"s : "ready"s;
  });
  const std::string wantsPin = "<pin>: 1234;AT+CPIN?: |+CPIN: SIM PIN||OK|";
  expectEach(
      ready,
      {"ready <= AT: 0\r;ATE0: 0\r <= AT: ~~~|OK| <= ATE0: |ERROR|;AT+CMEE=1: |COMMAND NOT SUPPORT| <= "
       "AT+CPIN?: |ERROR|",
       "ready <= AT+CPIN?: |+CME ERROR: 14|~|+CMS ERROR: 314|~|OK| <= AT+CMGF=0: |+CME ERROR: 14|~|0|",
       "ready <= AT+CPMS=?: |ERROR|~|ERROR|~|+CPMS: ('SM')||OK| <= AT+CNMI?: |+CNMI: 2,2,0,0,0||ERROR|",
       "changed <= AT+CNMI?: |+CNMI: 2,2,0,0,0||OK|",  // else new messages would be lost while nobody looks
       "the handset does not answer <= ATV1:  <= AT+CPIN?:  <= AT+CPMS=?: ",
       "the SIM is busy (+CME ERROR: 14) <= AT+CPIN?: |+CME ERROR: 14|",
       "ready <= " + wantsPin + "~|+CPIN: READY||OK|;AT+CPIN='1234': |OK|",
       "the handset asks for SIM PIN; it has refused the pin in port.ini <= " + wantsPin +
           ";<pin refused>: 1234 4321",
       "the PIN was not accepted: wrong password (+CME ERROR: 16) <= " + wantsPin +
           ";AT+CPIN='1234': |+CME ERROR: 16|",
       "no SIM (+CME ERROR: SIM not inserted) <= AT+CPIN?: |+CME ERROR: SIM not inserted|",
       "changed <= <report>: yes;AT+CNMI=?: |+CNMI: (2),(1),(0),(0-2),(0)||OK|;AT+CNMI=2,1,0,2,0: |OK|",
       "the handset asks for X <= AT+CPIN?: \r+CPIN:X\rOK\r <= AT+CPIN?: AT+CPIN?+CPIN: X||OK|",
       "the handset asks for \"X+CPIN: Y <= AT+CPIN?: |0011+CPIN: 'X+CPIN: Y|OK|",
       "the handset asks for " + std::string(LineReader::longestLine - 6, '1') +
           " <= AT+CPIN?: +CPIN:" + std::string(100'000, '1') + "|OK|",
       "no messages as PDUs: the handset does not answer <= AT+CMGF=0: |OKAY| O K|OK"});
  EXPECT_EQ(ready("AT+CMGF=0: \0\0|\0OK|"s), "ready");
}

TEST(AtHandset, ListsStoresOfEveryKind) {
  const auto received = with(45'000, [](Session& at) { return Shown::of(at.handset.simReceived()); });
  const std::string none = "nonemessages in SM: the handset ";
  expectEach(
      received,
      {" <= AT+CPMS=?: |+CPMS: ('ME'),('SM')||OK| <= AT+CPMS='SM': |OK|;AT+CMGL=4 SM: |+CMS ERROR: 321|",
       hello + " <= AT+CPMS='SM': |+CMS ERROR: 314|~|+CMS ERROR: 314|~|OK|",
       hello + " <= AT+CPMS='SM': |ERROR|;AT+CPMS='0053004D': |OK|;AT+CMGL=4 00: " + list + "||OK|",
       hello +
           "0/3///(unreadable message) 0011;  <= AT+CPMS='SM': |OK|;AT+CMGL=4 SM: |+CMGL: 1,1|+CMT: "
           ",23|+CMT: 'A',23|0011" +
           list.substr(15) + "|+9A: 1|OK|",
       hello + hello + " <= AT+CMGL=4 SM: junk" + list.substr(1) + list.substr(1) + "||OK|",
       // What came is there all the same; where nothing is listed, each place is asked for.
       "none" + hello + "messages in SM: the handset refuses (MODEM ERROR: 9) <= AT+CMGL=4 SM: " + list +
           "|+CMGL: 2,1,,24|MODEM ERROR: 9|",
       "none" + hello + "messages in SM: the handset counts 2 and lists 1 <= AT+CMGL=4 SM: " + list + "||OK|",
       hello + " <= AT+CMGL=4 SM: |ERROR|;AT+CPMS='SM': |+CPMS: 1,9||OK|" + place1 +
           " <= AT+CMGL=4 SM: |ERROR|;AT+CPMS='SM': |OK|;AT+CPMS?: |+CPMS: 'SM',1,9||OK|" + place1,
       "none" + hello + "messages in SM: the handset refuses (ERROR) <= AT+CMGL=4 SM: |ERROR|" + place1,
       "nonemessages in SM: no SIM (+CMS ERROR: 310) <= AT+CMGL=4 SM: |+CMS ERROR: 310|" + place1,
       none + "does not answer <= AT+CPMS='SM': |+CPMS: 0,50||OK|;AT+CMGL=4 SM: "});
  const auto reading = with(45'000, [](Session& at) {
    const std::string sim = Shown::of(at.handset.simReceived()),
                      phone = Shown::of(at.handset.phoneMessages());
    EXPECT_EQ(Shown::of(at.handset.phoneMessages()), phone);
    const auto lists = std::ranges::count(at.modem.commands, "AT+CMGL=4");
    return sim + phone + at.handset.simRoom() + ' ' + std::to_string(lists) + ' ';
  });
  const std::string report = "|+CDS: 24||07911326040000F006070B911306000000F1621112715104406211127151044000";
  expectEach(reading,
             {hello + "5/3/+31600000001/26112117154004/bbbbbbbb; SIM: 2 of 50 used 2  <= ",
              "none" + hello +
                  "noneSIM: 2 of 50 used 1 messages in SM: the handset does not answer <= "
                  "AT+CMGL=4 SM: " +
                  list + '|',
              hello +
                  " 1  <= AT+CPMS=?: |+CPMS: ('MT')||OK|;AT+CPMS='MT': |+CPMS: 1,9||OK|;"
                  "AT+CMGL=4 MT: " +
                  list + "||OK|",
              hello +
                  "0/3/+31600000001/26112117154004/(delivered 2026-11-21 17:15); "
                  "SIM: 2 of 50 used 2  <= AT+CPMS='ME': |OK|;AT+CMGL=4 ME: " +
                  report + "||OK|",
              hello +
                  "0/3/+31600000001/26112117154004/bbbbbbbb; SIM: 2 of 50 used 2  <= AT+CPMS='ME': |OK|;"
                  "AT+CMGL=4 ME: |+CMT: ,29|" +
                  part + "2C462B118|+CMT: ,29|" + part + "1C462B118||OK|",
              hello +
                  "3/1/+31600000001/26112117154004/(delivered 2026-11-21 17:15); "
                  "SIM: 2 of 50 used 3  <= <report>: yes;AT+CPMS=?: |+CPMS: ('SM','ME','SR')||OK|;"
                  "AT+CPMS='ME': |OK|;AT+CMGL=4 ME: |OK|;AT+CPMS='SR': |OK|;AT+CMGL=4 SR: |+CMGL: 3,1,,24" +
                  report.substr(10) + "||OK|"});
}

TEST(AtHandset, WaitsForSlowHandsets) {
  for (const int delay : {100, 700, 1500, 3000, 8000}) {
    for (const bool waits : {true, false}) {
      Session at{waits ? "" : "AT+CSCS=?: |ERROR|"};
      at.modem.delay = delay;
      at.modem.waits = waits;
      EXPECT_EQ(at.all(), usual) << delay << at.handset.lastProblem();
      EXPECT_EQ(at.modem.texts.size(), 2U);
    }
  }
}

TEST(AtHandset, RemovesOnlyWhatItHasReadAgain) {
  // The message of the SIM, or the phone's that came in two parts.
  const auto removing = [](bool sim) {
    return with(1000, [sim](Session& at) {
      const Message listed = (sim ? at.handset.simReceived() : at.handset.phoneMessages()).items.at(0);
      std::string all = at.handset.remove(listed) ? "gone" : "kept";
      for (const std::string& command : at.modem.commands)
        if (command.starts_with("AT+CMGD")) all += command.substr(7);
      // What is listed again was not removed, whatever its place says.
      sim ? at.handset.simReceived() : at.handset.phoneMessages();
      return all + ' ';
    });
  };
  const std::string other = "|+CMGR: 1,,24|" + expectedOther + "||OK|", place = "messages in SM: the ";
  expectEach(removing(true),
             {"gone=1 " + place + "handset lists a message that it has removed <= ;AT+CMGD=1: |OK|" + place1 +
                  "~|+CMS ERROR: 321| <= ;AT+CMGD=1: |OK|" + place1 + '~' + other,
              "kept=1 " + place + "handset keeps what it has said to remove <= ;AT+CMGD=1: |OK|" + place1,
              "kept=1 " + place + "handset refuses (ERROR) <= " + place1,
              "kept " + place + "message is not at its place any more <= AT+CMGR=1: " + other +
                  " <= AT+CMGR=1: |OK|"});
  const std::string cmgr = "|+CMGR: 1,,29|" + part;
  expectEach(removing(false),
             {"gone=5=3 messages in ME: the handset lists a message that it has removed <= AT+CMGD=5: "
              "|OK|;AT+CMGD=3: |OK|;AT+CMGR=3: " +
                  cmgr + "2C462B118||OK|~" + cmgr + "2C462B118||OK|~|OK|;AT+CMGR=5: " + cmgr +
                  "1C462B118||OK|~" + cmgr + "1C462B118||OK|~|OK|",
              "kept messages in ME: the message is not at its place any more <= AT+CMGD=5: |OK|;AT+CMGR=5: " +
                  part + "1C462B118||OK|"});
}

TEST(AtHandset, NeverSendsTwiceAndNeverClaimsTooMuch) {
  const auto sending = [](const std::string& text, const std::string& number = someone) {
    return with(140'000, [number, text](Session& at) {
      const std::string outcome = at.handset.send(number, text) ? "sent, " : "not sent, ";
      const std::size_t texts = at.modem.texts.size();
      // Nothing of it is left over: the next one goes out, once.
      at.modem.learn("AT+CMGS=20: |> ;<text>: |+CMGS: 8||OK|");
      EXPECT_TRUE(at.handset.send(someone, "Hello."));
      EXPECT_EQ(at.modem.texts.size(), texts + 1);
      EXPECT_EQ(at.modem.texts.back(), "0011000B911306000000F10000AA06C8329BFD7601");
      return outcome + std::to_string(texts) + ' ';
    });
  };
  const std::string noCentre = "<text>: |+CMS ERROR: 330|";
  expectEach(
      sending("Hello."),
      {"sent, 1  <=  <= AT+CMGS=20: > <= AT+CMGS=20: |> | <= AT+CMGS=20: |RING|+CMT: ,9|0011>22|> ",
       "not sent, 1 the handset does not confirm the message <= <text>: |OK|",
       "not sent, 1 the handset does not answer <= <text>: |+CMGS: 7| <= <text>: ",
       // Nothing has gone out before the service centre was known.
       "sent, 2  <= " + noCentre + "~|+CMGS: 7||OK|;AT+CSCA?: |+CSCA: '+31',145||OK|;AT+CSCA='+31',145: |OK|",
       "not sent, 1 the SIM names no service centre (+CMS ERROR: 330) <= " + noCentre,
       "not sent, 1 no network (+CMS ERROR: 331) <= <text>: |+CMS ERROR: 331|",
       "not sent, 0 the handset does not answer <= AT+CMGS=20: ",
       "not sent, 0 the handset refuses (ERROR) <= AT+CMGS=20: |ERROR|",
       "not sent, 0 the handset refuses (OK) <= AT+CMGS=20: |OK|"});
  expectEach(sending(longText),
             {"sent, 2  <= ", "not sent, 1 the handset refuses (ERROR) <= <text>: |ERROR|"});
  EXPECT_EQ(sending("x", "Anna")(""), "not sent, 0 this is no number to send to");
  EXPECT_EQ(sending(std::string(40'000, 'x'))(""), "not sent, 0 the text is too long");
}

TEST(AtHandset, TellsOnceWhatBecameOfAMessage) {
  const std::string tail = "0B911306000000F16211127151044062111271510440",
                    reports = "|+CDS: 24|07911326040000F006";
  Session at{
      "<report>: yes;<text>: |+CMGS: 7||OK|~|+CMGS: 8||OK|;AT+CPMS='SR': |OK|;AT+CMGR=4: |+CMGR: 0,,24|"
      "07911326040000F00608" +
      tail + "00||OK|"};
  ASSERT_TRUE(at.open() && at.handset.send("31600000001", longText));
  EXPECT_EQ(at.modem.texts.at(0).substr(2, 2), "71");
  // Of the first part, of another number and of none; then word that the second one was stored.
  at.modem.output = wire(reports + "07" + tail + "00" + reports + "08" + "0B911306000000F2" +
                         tail.substr(16) + "00" + reports + "09" + tail + "00|");
  EXPECT_EQ(at.handset.nextDelivery(), "");
  at.modem.output = wire("|+CDSI: 'SR',4|");
  EXPECT_EQ(at.handset.nextDelivery(), "31600000001\t(delivered 2026-11-21 17:15)");
  EXPECT_EQ(at.handset.nextDelivery(), "");
}

TEST(AtHandset, KeepsItsDeadlines) {
  // Silence, lines and bytes without a line: nothing that comes moves the deadline.
  for (const char* idle : {"", "|^RSSI: 9|", "yy"}) {
    const auto sending = with(200'000, [idle](Session& at) {
      at.modem.learn("<idle>: "s + idle);
      const std::int64_t begin = at.modem.clock.now;
      EXPECT_FALSE(at.handset.send(someone, "Hello."));
      return std::to_string((at.modem.clock.now - begin) / 3000) + ' ';
    });
    expectEach(sending, {"20 the handset does not answer <= <text>: ",
                         "3 the handset does not answer <= AT+CMGS=20: "});
  }
}

TEST(AtHandset, SaysWhoItIsWhateverTheModemTells) {
  expectEach(with(3000, [](Session& at) { return at.handset.describe(); }),
             {"COM3 <= ", "M at COM3 <= AT+CGMM: |+CGMM: 'M'||OK|", "COM3 <= AT+CGMI: ;AT+CGMM: |M||OK|"});
}

TEST(AtHandset, TakesNothingForAnAnswerThatIsNone) {
  Session at;
  ASSERT_TRUE(at.open());
  const auto received = [&at](const std::string& selected) {
    at.modem.commands.clear();
    at.modem.learn("AT+CPMS='SM': " + selected);
    std::string all = Shown::of(at.handset.simReceived());
    for (const std::string& command : at.modem.commands) all += command + ' ';
    return all;
  };
  at.modem.output = "\r\n+CPMS: 9\r\nERROR\r\n";  // left on the line
  EXPECT_EQ(received("|OK|+CPMS: 8|ERR"), hello + "AT+CPMS='SM' AT+CMGL=4 ");
  EXPECT_EQ(received("|+CMT: ,9|half a line"), "noneAT+CPMS='SM' ");
  EXPECT_EQ(received("OK|"), hello + "AT+CSCS=? AT+CPMS='SM' AT+CMGL=4 ");
  // Too late, just before the next command and just behind it.
  at.modem.learn("AT+CMGS=20: ~|> ;<text>: ;AT+CSCS=?: |ERROR||+CSCS: 0||OK|~|+CSCS: 0||OK|");
  for (int again = 0; again < 2; ++again) {
    EXPECT_FALSE(at.handset.send(someone, "Hello."));
    EXPECT_EQ(received("|OK|"), hello + "AT+CSCS=? AT+CPMS='SM' AT+CMGL=4 ");
  }
  // Nobody there any more: the command is not even sent.
  EXPECT_EQ(received(""), "noneAT+CPMS='SM' ");
  at.modem.learn("AT+CSCS=?: ");
  EXPECT_EQ(received("|OK|"), "noneAT+CSCS=? ");
}

TEST(AtHandset, ReadsPhonebooksInTheBestCharacterSetAndPutsItBack) {
  const auto phonebook = with(125'000, [](Session& at) {
    const std::string given = Shown::of(at.handset.simContacts());
    return given + at.modem.commands.back().substr(8);
  });
  const std::string none = "none'GSM'phonebook SM: ", ucs2 = "'0055004300530032'";
  expectEach(phonebook,
             {contacts + "'GSM' <= AT+CSCS?: |+CSCS: 'IRA'||ERROR| <= AT+CSCS=?: |+CSCS: 0||OK|",
              contacts + "'GSM' <= AT+CPBR=?: |OK|;AT+CPBS?: |+CPBS: 'SM',2,100||OK|",
              contacts + "'GSM' <= AT+CPBR=101,150 SM: |+CPBR: 2,'112',129,'0042'||OK|",
              "112=a_; 'IRA' <= AT+CSCS?: |+CSCS: 'IRA'||OK|;AT+CSCS=?: |+CSCS: "
              "('IRA','GSM')||OK|;AT+CPBR=1,100 SM: |+CPBR: 1,'112',129,'a\x11'||OK|",
              "112=A; " + ucs2 + " <= AT+CSCS=?: |+CSCS: ('00470053004D'," + ucs2 +
                  ")||OK|;AT+CSCS='UCS2': |ERROR|;" + "AT+CSCS?: |+CSCS: " + ucs2 + "||OK|;AT+CSCS=" + ucs2 +
                  ": |OK|;AT+CPBS='SM': |ERROR|;" +
                  "AT+CPBS='0053004D': |OK|;AT+CPBR=1,100 00: |+CPBR: 1,'003100310032',129,'0041'||OK|",
              none + "its size is not known <= AT+CPBR=?: |OK|;AT+CPBS?: |ERROR|",
              "none" + contacts + none.substr(4) + "the handset does not answer <= AT+CPBR=101,150 SM: "});
  // A phonebook is readable when one of the two is.
  const auto either = with(1000, [](Session& at) { return at.handset.initPhonebook() ? "yes" : "no, "; });
  const std::string noSim = "AT+CPBS='SM': |ERROR|";
  EXPECT_EQ(either(noSim), "yes");
  EXPECT_EQ(either(noSim + ";AT+CPBS='ME': |ERROR|"), "no, phonebook ME: the handset refuses (ERROR)");
}

}  // namespace
}  // namespace handset::at
