#include "handset/at/at_handset.h"

#include <gtest/gtest.h>

#include "handset_at/fake_modem.h"

namespace handset::at {
namespace {

using Texts = std::vector<std::string>;

const std::string ok = "\r\nOK\r\n";
const std::string received = "07911326040000F0040B911306000000F100006211127151044005C8329BFD06";
const std::string stored = "0001000B911306000000F1000005C8329BFD06";
const std::string part1 = "07911326040000F0440B911306000000F10000621112715104400B050003000201C462B118";
const std::string part2 = "07911326040000F0440B911306000000F10000621112715104400B050003000202C462B118";

std::string with(const std::string& values) {
  return "\r\n" + values + "\r\n" + ok;
}

FakeModem usualModem() {
  FakeModem modem;
  for (const char* command : {"AT", "ATE0", "ATV1", "AT+CMEE=1", "AT+CMGF=0", "AT+CNMI=2,1,0,0,0"})
    modem.answers[command] = {ok};
  for (const char* set : {"UCS2", "GSM", "IRA"}) modem.answers["AT+CSCS=\"" + std::string{set} + '"'] = {ok};
  for (const char* store : {"SM", "ME"}) {
    modem.answers["AT+CPMS=\"" + std::string{store} + '"'] = {with("+CPMS: 2,50,2,50,2,50")};
    modem.answers["AT+CPBS=\"" + std::string{store} + '"'] = {ok};
  }
  modem.answers["AT+CPIN?"] = {with("+CPIN: READY")};
  modem.answers["AT+CSCS=?"] = {with("+CSCS: (\"GSM\",\"IRA\",\"UCS2\")")};
  modem.answers["AT+CSCS?"] = {with("+CSCS: \"GSM\"")};
  modem.answers["AT+CPMS=?"] = {with("+CPMS: (\"SM\",\"ME\"),(\"SM\",\"ME\"),(\"SM\")")};
  modem.answers["AT+CNMI=?"] = {with("+CNMI: (0-2),(0-3),(0,2),(0,1),(0,1)")};
  modem.answers["AT+CNMI?"] = {with("+CNMI: 2,1,0,0,0")};
  modem.answers["AT+CMGL=4 SM"] = {with("+CMGL: 1,1,,24\r\n" + received + "\r\n+CMGL: 7,3,,18\r\n" + stored)};
  modem.answers["AT+CMGL=4 ME"] = {with("+CMGL: 3,0,,29\r\n" + part2 +
                                        "\r\n+CMGL: 4,1,,24\r\nxyz\r\n+CMGL: 5,1,,29\r\n" + part1 +
                                        "\r\n+CMGL: 6,2,,18\r\n" + stored)};
  modem.answers["AT+CPBR=?"] = {with("+CPBR: (1-150),40,14")};
  modem.answers["AT+CPBR=1,100 SM"] = {
      with("+CPBR: 1,\"31600000001\",145,\"0041\"\r\n+CPBR: 2,\"112\",129,\"0042\"")};
  modem.answers["AT+CPBR=101,150 SM"] = {"\r\n+CME ERROR: 22\r\n"};
  modem.answers["AT+CPBR=1,100 ME"] = {ok};
  modem.answers["AT+CPBR=101,150 ME"] = {with("+CPBR: 120,\"113\",129,\"D55C\"")};
  modem.answers["<text>"] = {with("+CMGS: 7")};
  for (const char* length : {"154", "28"}) modem.answers["AT+CMGS=" + std::string{length}] = {"\r\n> "};
  return modem;
}

// Everything a handset is used for, once.
struct Session {
  bool open = false, init = false;
  std::optional<std::vector<Message>> received, outgoing, phone;
  bool sent = false, phonebook = false;
  std::optional<std::vector<Contact>> simContacts, phoneContacts;

  bool operator==(const Session&) const = default;
};

class AtHandsetTest : public testing::Test {
 protected:
  void use(FakeModem other) {
    modem = std::move(other);
    problem = PortProblem::none;
  }
  bool reopen() { return handset.open(3, 115200) && handset.init(); }
  Session session() {
    Session s;
    s.open = handset.open(3, 115200);
    s.init = s.open && handset.init();
    if (!s.init) return s;
    s.received = handset.simReceived();
    s.outgoing = handset.simOutgoing();
    s.phone = handset.phoneMessages();
    s.sent = handset.send("+31600000001", longText);
    s.phonebook = handset.initPhonebook();
    s.simContacts = handset.simContacts();
    s.phoneContacts = handset.phoneContacts();
    return s;
  }

  const std::string longText = std::string(161, 'x');
  FakeModem modem = usualModem();
  PortProblem problem = PortProblem::none;
  AtHandset handset{[this](int port, int baud) {
                      EXPECT_EQ(port, 3);
                      EXPECT_EQ(baud, 115200);
                      if (problem != PortProblem::none) return OpenedPort{problem, nullptr};
                      return OpenedPort{PortProblem::none, std::make_unique<FakeLine>(modem)};
                    },
                    modem.clock};
};

TEST_F(AtHandsetTest, ReadsAndSendsEverything) {
  const Session s = session();
  EXPECT_EQ(handset.lastProblem(), "");
  const std::string someone = "+31600000001";
  const std::string then = "26112117154004";
  EXPECT_EQ(s.received, (std::vector<Message>{{someone, then, "Hello", 1, 1}}));
  EXPECT_EQ(s.outgoing, (std::vector<Message>{{someone, "", "Hello", 7, 7}}));
  EXPECT_EQ(s.phone, (std::vector<Message>{{someone, then, "bbbbbbbb", 3, 5},
                                           {"", "", "(unreadable message) xyz", 1, 4},
                                           {someone, "", "Hello", 7, 6}}));
  EXPECT_TRUE(s.sent);
  ASSERT_EQ(modem.texts.size(), 2U);
  EXPECT_TRUE(modem.texts[0].starts_with("0051000B911306000000F10000AAA0050003"));
  EXPECT_EQ(s.simContacts, (std::vector<Contact>{{"A", someone}, {"B", "112"}}));
  EXPECT_EQ(s.phoneContacts, (std::vector<Contact>{{"한", "113"}}));
  EXPECT_TRUE(handset.offersUnicode());
  const Texts opening{
      "AT",        "AT",          "ATE0",      "ATV1",     "AT+CMEE=1",      "AT+CPIN?",  "AT+CSCS=?",
      "AT+CMGF=0", "AT+CPMS=?",   "AT+CNMI=?", "AT+CNMI?", "AT+CPMS=\"SM\"", "AT+CMGL=4", "AT+CPMS=\"ME\"",
      "AT+CMGL=4", "AT+CMGS=154", "AT+CMGS=28"};
  EXPECT_EQ(Texts(modem.commands.begin(), modem.commands.begin() + 17), opening);
  EXPECT_EQ(modem.commands.back(), "AT+CSCS=\"GSM\"");
  // Waiting is what takes time here, and nothing was waited for but the line's silence at first.
  EXPECT_LE(modem.clock.now, 300);

  // Parts of different messages can be told apart.
  const auto reference = [&](std::size_t part) { return modem.texts.at(part).substr(36, 2); };
  EXPECT_TRUE(handset.send(someone, longText));
  EXPECT_EQ(reference(1), reference(0));
  EXPECT_NE(reference(2), reference(0));
}

TEST_F(AtHandsetTest, DoesNotCareHowTheBytesComeOrWhatComesBetween) {
  const Session expected = session();
  const std::size_t bytes = modem.said, lines = modem.lines;
  const auto expectSame = [&](const std::string& how, FakeModem other) {
    SCOPED_TRACE(how);
    use(std::move(other));
    EXPECT_TRUE(session() == expected) << handset.lastProblem();
    EXPECT_EQ(modem.texts.size(), 2U);
  };
  for (std::size_t cut = 1; cut < bytes; ++cut) {
    FakeModem other = usualModem();
    other.cutAt = cut;
    expectSame("cut at " + std::to_string(cut), other);
  }
  for (const bool echo : {false, true}) {
    for (std::size_t chunk = 1; chunk < 20; ++chunk) {
      FakeModem other = usualModem();
      other.chunk = chunk;
      other.echo = echo;
      expectSame("in chunks of " + std::to_string(chunk), other);
    }
  }
  const Texts unsolicited{"^RSSI: 7\r\n",
                          "+ECIND: 3\r\n",
                          "RING\r\n",
                          "\r\n+CMTI: \"SM\",4\r\n",
                          "\r\n+CMT: ,24\r\n" + received + "\r\n",
                          "+CDS: 25\r\n" + received + "\r\nNO CARRIER\r\n"};
  for (std::size_t line = 0; line < lines; ++line) {
    for (const std::string& text : unsolicited) {
      FakeModem other = usualModem();
      other.insertAt = line;
      other.inserted = text;
      expectSame("line " + std::to_string(line) + " after " + text, other);
    }
  }
}

TEST_F(AtHandsetTest, EndsAtOnceWhereverTheLineGoesAway) {
  const Session expected = session();
  const std::size_t bytes = modem.passed;
  for (std::size_t left = 0; left < bytes; ++left) {
    SCOPED_TRACE(left);
    use(usualModem());
    modem.goneAfter = left;
    const Session s = session();
    // At the very end only the way back to the old character set is missing, and a line feed.
    const bool complete = left + std::string{"AT+CSCS=\"GSM\"\r\r\nOK\r\n\n"}.size() >= bytes;
    EXPECT_EQ(s == expected, complete);
    EXPECT_EQ(handset.lastProblem().empty(), complete);
    EXPECT_LE(modem.clock.now, 1000);
    // Half a list is no list, and an unconfirmed message is none either.
    EXPECT_TRUE(!s.received || s.received == expected.received);
    EXPECT_TRUE(!s.outgoing || s.outgoing == expected.outgoing);
    EXPECT_TRUE(!s.phone || s.phone == expected.phone);
    EXPECT_TRUE(!s.simContacts || s.simContacts == expected.simContacts);
    EXPECT_FALSE(s.phoneContacts && s.phoneContacts != expected.phoneContacts);
    EXPECT_LE(modem.texts.size(), 2U);
    if (s.sent) {
      EXPECT_EQ(modem.texts.size(), 2U);
    }
    if (left % 50 != 0) continue;
    use(usualModem());
    EXPECT_TRUE(session() == expected);
  }
}

TEST_F(AtHandsetTest, SaysWhyAPortWillNotDo) {
  struct Case {
    const char* name;
    PortProblem problem;
    std::string idle;
    std::string answer;
    bool echo;
    const char* reason;
  };
  const Case cases[] = {
      {"absent", PortProblem::absent, "", "", false, "there is no COM3"},
      {"busy", PortProblem::busy, "", "", false, "COM3 is used by another program"},
      {"denied", PortProblem::denied, "", "", false, "COM3 may not be used"},
      {"no serial port", PortProblem::notSerial, "", "", false, "COM3 is no serial port"},
      {"failed", PortProblem::failed, "", "", false, "COM3 cannot be opened"},
      {"silent", PortProblem::none, "", "", false, "nothing answers"},
      {"only echo", PortProblem::none, "", "", true, "only the echo comes back"},
      {"something else", PortProblem::none, "$GPGGA,1,2*47\r\n", "", false, "what answers is no modem"},
      {"refuses", PortProblem::none, "", "\r\nERROR\r\n", false, "what answers is no modem"},
      {"bytes without end", PortProblem::none, std::string(9000, '\xFF'), "", false,
       "what answers is no modem"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    use(usualModem());
    problem = c.problem;
    modem.idle = c.idle;
    modem.answers["AT"] = {c.answer};
    modem.echo = c.echo;
    EXPECT_FALSE(handset.open(3, 115200));
    EXPECT_EQ(handset.lastProblem(), c.reason);
    EXPECT_LE(modem.clock.now, 4000);
    EXPECT_FALSE(handset.init());
    EXPECT_FALSE(handset.simReceived() || handset.simOutgoing() || handset.phoneMessages());
    EXPECT_FALSE(handset.send("1", "x") || handset.initPhonebook() || handset.simContacts() ||
                 handset.phoneContacts());
    use(usualModem());
    EXPECT_TRUE(reopen());
    EXPECT_EQ(handset.lastProblem(), "");
  }
}

TEST_F(AtHandsetTest, FindsModemsThatNeedTime) {
  for (const Texts& turns :
       {Texts{"", ok}, Texts{"", "", "", ok}, Texts{"\r\nERROR\r\n", ok}, Texts{"0\r"}}) {
    use(usualModem());
    modem.answers["AT"] = turns;
    modem.answers["ATE0"] = {turns.back()};
    EXPECT_TRUE(handset.open(3, 115200));
    EXPECT_LE(modem.clock.now, 4500);
    EXPECT_TRUE(handset.init());
  }
}

TEST_F(AtHandsetTest, IsReadyOnlyForMessagesAsPdus) {
  struct Case {
    const char* command;
    Texts answers;
    bool ready;
    std::string reason = {};
  };
  const std::string refused = "\r\nERROR\r\n", busy = "\r\n+CME ERROR: 14\r\n";
  const Case cases[] = {
      {"ATE0", {refused}, true},
      {"AT+CMEE=1", {"\r\nCOMMAND NOT SUPPORT\r\n"}, true},
      {"ATV1", {""}, false, "the handset does not answer"},
      {"AT+CPIN?", {refused}, true},
      {"AT+CPIN?", {"\r\n+CME ERROR: 4\r\n"}, true},
      {"AT+CPIN?", {busy, busy, with("+CPIN: READY")}, true},
      {"AT+CPIN?", {busy}, false, "the SIM is busy (+CME ERROR: 14)"},
      {"AT+CPIN?", {"\r\n+CME ERROR: 10\r\n"}, false, "no SIM (+CME ERROR: 10)"},
      {"AT+CPIN?", {with("+CPIN: SIM PIN")}, false, "the handset asks for SIM PIN"},
      {"AT+CSCS=?", {refused}, true},
      {"AT+CSCS=?", {with("+CSCS: 0")}, true},
      {"AT+CMGF=0", {refused}, false, "no messages as PDUs: the handset refuses (ERROR)"},
      {"AT+CPMS=?", {refused, refused, with("+CPMS: (\"SM\")")}, true},
      {"AT+CPMS=?", {refused}, true},
      {"AT+CNMI=?", {refused}, true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.command + c.answers.front());
    use(usualModem());
    modem.answers[c.command] = c.answers;
    EXPECT_EQ(reopen(), c.ready);
    EXPECT_EQ(handset.lastProblem(), c.reason);
    EXPECT_LE(modem.clock.now, 10'000);
  }
  // New messages are kept where nobody would take them.
  use(usualModem());
  modem.answers["AT+CNMI?"] = {with("+CNMI: 2,2,0,0,0")};
  EXPECT_TRUE(reopen());
  EXPECT_EQ(modem.commands.back(), "AT+CNMI=2,1,0,0,0");
}

TEST_F(AtHandsetTest, ListsStoresOfEveryKind) {
  struct Case {
    const char* name;
    std::map<std::string, Texts> answers;
    std::optional<std::size_t> messages;
  };
  const std::string busy = "\r\n+CMS ERROR: 314\r\n", refused = "\r\n+CMS ERROR: 302\r\n";
  const Case cases[] = {
      {"selected without counts", {{"AT+CPMS=\"SM\"", {ok}}}, 1},
      {"more counted than listed", {{"AT+CPMS=\"SM\"", {with("+CPMS: 40,50")}}}, 1},
      {"stores without brackets", {{"AT+CPMS=?", {with("+CPMS: \"SM\",\"ME\"")}}}, 1},
      {"one group of stores", {{"AT+CPMS=?", {with("+CPMS: ((\"SM\",\"BM\",\"SR\"),(\"SM\"))")}}}, 1},
      {"stores with half their quotes", {{"AT+CPMS=?", {with("+CPMS: (\"SM,\"ME\"),(\"SM\")")}}}, 1},
      {"no stores said", {{"AT+CPMS=?", {with("+CPMS: (),(),()")}}}, 1},
      {"not among the stores", {{"AT+CPMS=?", {with("+CPMS: (\"ME\"),(\"SM\")")}}}, 0},
      {"busy for a while", {{"AT+CPMS=\"SM\"", {busy, busy, ok}}}, 1},
      {"parameters in digits",
       {{"AT+CPMS=\"SM\"", {refused}},
        {"AT+CPMS=\"0053004D\"", {ok}},
        {"AT+CMGL=4 00", {with("+CMGL: 1,1,,24\r\n" + received)}}},
       1},
      {"empty", {{"AT+CMGL=4 SM", {ok}}}, 0},
      {"empty with an error", {{"AT+CMGL=4 SM", {"\r\n+CMS ERROR: 321\r\n"}}}, 0},
      {"counted as empty, refused",
       {{"AT+CPMS=\"SM\"", {with("+CPMS: 0,50")}}, {"AT+CMGL=4 SM", {"\r\nERROR\r\n"}}},
       0},
      {"glued and garbled",
       {{"AT+CMGL=4 SM", {with("junk+CMGL: 1,1,,24\r\n" + received + "+CMGL: 2,1,,24\r\n" + received)}}},
       2},
      {"cannot be selected", {{"AT+CPMS=\"SM\"", {refused}}}, std::nullopt},
      {"refused", {{"AT+CMGL=4 SM", {refused}}}, std::nullopt},
      {"ends in an error",
       {{"AT+CMGL=4 SM", {"\r\n+CMGL: 1,1,,24\r\n" + received + "\r\nMODEM ERROR: 9\r\n"}}},
       std::nullopt},
      {"never ends", {{"AT+CMGL=4 SM", {"\r\n+CMGL: 1,1,,24\r\n" + received + "\r\n"}}}, std::nullopt},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    use(usualModem());
    for (const auto& [command, answers] : c.answers) modem.answers[command] = answers;
    ASSERT_TRUE(reopen());
    const auto messages = handset.simReceived();
    EXPECT_EQ(messages ? std::optional{messages->size()} : std::nullopt, c.messages);
    EXPECT_EQ(handset.lastProblem().empty(), c.messages.has_value());
    EXPECT_LE(modem.clock.now, 125'000);
  }
}

TEST_F(AtHandsetTest, NeverSendsTwiceAndNeverClaimsTooMuch) {
  struct Case {
    const char* name;
    std::string number, text, prompt, result;
    bool sent;
    std::size_t texts;  // that the modem got
    std::string reason = {};
  };
  const std::string prompt = "\r\n> ";
  const std::string done = with("+CMGS: 7");
  const Case cases[] = {
      {"sent", "+31600000001", "Hello.", prompt, done, true, 1},
      {"bare prompt", "+31600000001", "Hello.", ">", done, true, 1},
      {"in parts", "+31600000001", longText, prompt, done, true, 2},
      {"OK alone", "+31600000001", "Hello.", prompt, ok, false, 1,
       "the handset does not confirm the message"},
      {"no result", "+31600000001", "Hello.", prompt, "\r\n+CMGS: 7\r\n", false, 1,
       "the handset does not answer"},
      {"no network", "+31600000001", "Hello.", prompt, "\r\n+CMS ERROR: 331\r\n", false, 1,
       "no network (+CMS ERROR: 331)"},
      {"first part fails", "+31600000001", longText, prompt, "\r\nERROR\r\n", false, 1,
       "the handset refuses (ERROR)"},
      {"no prompt", "+31600000001", "Hello.", "", done, false, 0, "the handset does not answer"},
      {"error for a prompt", "+31600000001", "Hello.", "\r\n+CMS ERROR: 304\r\n", done, false, 0,
       "the handset takes the message for malformed (+CMS ERROR: 304)"},
      {"no number", "Anna", "Hello.", prompt, done, false, 0, "this is no number to send to"},
      {"no end of it", "1", std::string(40'000, 'x'), prompt, done, false, 0, "the text is too long"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    use(usualModem());
    for (const char* length : {"20", "154", "28"})
      modem.answers["AT+CMGS=" + std::string{length}] = {c.prompt};
    modem.answers["<text>"] = {c.result};
    ASSERT_TRUE(reopen());
    modem.clock.now = 0;
    EXPECT_EQ(handset.send(c.number, c.text), c.sent);
    EXPECT_EQ(modem.texts.size(), c.texts);
    EXPECT_EQ(handset.lastProblem(), c.reason);
    EXPECT_LE(modem.clock.now, 60'000);
    // Nothing of it is left over: the next one goes out, once.
    modem.answers["AT+CMGS=20"] = {prompt};
    modem.answers["<text>"] = {done};
    EXPECT_TRUE(handset.send("+31600000001", "Hello."));
    EXPECT_EQ(modem.texts.size(), c.texts + 1);
  }
}

TEST_F(AtHandsetTest, ReadsPhonebooksInTheBestCharacterSetAndPutsItBack) {
  struct Case {
    const char* name;
    std::map<std::string, Texts> answers;
    std::optional<std::string> names;
    std::string last;  // command
  };
  const std::string refused = "\r\nERROR\r\n";
  const std::string plain = with("+CPBR: 1,\"112\",129,\"0041\"");
  const Case cases[] = {
      {"UCS2", {}, "A B ", "AT+CSCS=\"GSM\""},
      {"other set before", {{"AT+CSCS?", {with("+CSCS: \"IRA\"")}}}, "A B ", "AT+CSCS=\"IRA\""},
      {"set before not known", {{"AT+CSCS?", {refused}}}, "A B ", "AT+CSCS=\"GSM\""},
      {"UCS2 refused",
       {{"AT+CSCS=\"UCS2\"", {refused}}, {"AT+CPBR=1,100 SM", {plain}}},
       "0041 ",
       "AT+CSCS=\"GSM\""},
      {"UCS2 not offered",
       {{"AT+CSCS=?", {with("+CSCS: (\"IRA\")")}}, {"AT+CPBR=1,100 SM", {plain}}},
       "0041 ",
       "AT+CSCS=\"GSM\""},
      {"sets offered as 0", {{"AT+CSCS=?", {with("+CSCS: 0")}}}, "A B ", "AT+CSCS=\"GSM\""},
      {"GSM keeps more than IRA",
       {{"AT+CSCS=?", {with("+CSCS: (\"IRA\",\"GSM\")")}},
        {"AT+CSCS?", {with("+CSCS: \"IRA\"")}},
        {"AT+CPBR=1,100 SM", {with("+CPBR: 1,\"112\",129,\"a\x11\"")}}},
       "a_ ",
       "AT+CSCS=\"IRA\""},
      {"in UCS2 and all in digits",
       {{"AT+CSCS=?", {with("+CSCS: (\"00470053004D\",\"0055004300530032\")")}},
        {"AT+CPMS=?", {ok}},
        {"AT+CSCS?", {with("+CSCS: \"0055004300530032\"")}},
        {"AT+CSCS=\"UCS2\"", {refused}},
        {"AT+CSCS=\"0055004300530032\"", {ok}},
        {"AT+CPBS=\"SM\"", {refused}},
        {"AT+CPBS=\"0053004D\"", {ok}},
        {"AT+CPBR=1,100 00", {with("+CPBR: 1,\"003100310032\",129,\"0041\"")}},
        {"AT+CPBR=101,150 00", {ok}}},
       "A ",
       "AT+CSCS=\"0055004300530032\""},
      {"size from the store",
       {{"AT+CPBR=?", {ok}}, {"AT+CPBS?", {with("+CPBS: \"SM\",2,100")}}},
       "A B ",
       "AT+CSCS=\"GSM\""},
      {"more than asked",
       {{"AT+CPBR=101,150 SM", {with("+CPBR: 2,\"112\",129,\"0042\"")}}},
       "A B ",
       "AT+CSCS=\"GSM\""},
      {"size not known", {{"AT+CPBR=?", {ok}}, {"AT+CPBS?", {refused}}}, std::nullopt, "AT+CSCS=\"GSM\""},
      {"not selected", {{"AT+CPBS=\"SM\"", {refused}}}, std::nullopt, "AT+CSCS=\"GSM\""},
      {"no SIM", {{"AT+CPBR=1,100 SM", {"\r\n+CME ERROR: 10\r\n"}}}, std::nullopt, "AT+CSCS=\"GSM\""},
      {"no end", {{"AT+CPBR=101,150 SM", {""}}}, std::nullopt, "AT+CSCS=\"GSM\""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    use(usualModem());
    for (const auto& [command, answers] : c.answers) modem.answers[command] = answers;
    ASSERT_TRUE(reopen());
    const auto contacts = handset.simContacts();
    ASSERT_EQ(contacts.has_value(), c.names.has_value()) << handset.lastProblem();
    std::string names;
    if (contacts)
      for (const Contact& contact : *contacts) names += contact.name + ' ';
    EXPECT_EQ(names, c.names.value_or(""));
    EXPECT_EQ(handset.lastProblem().empty(), contacts.has_value());
    EXPECT_EQ(modem.commands.back(), c.last);
  }
  // A phonebook is readable when one of the two is.
  use(usualModem());
  modem.answers["AT+CPBS=\"SM\""] = {refused};
  ASSERT_TRUE(reopen());
  EXPECT_TRUE(handset.initPhonebook());
  modem.answers["AT+CPBS=\"ME\""] = {refused};
  EXPECT_FALSE(handset.initPhonebook());
}

}  // namespace
}  // namespace handset::at
