#include "handset/at/channel.h"

#include <gtest/gtest.h>

#include "handset_at/fake_modem.h"

namespace handset::at {
namespace {

using Outcome = Answer::Outcome;
using Lines = std::vector<std::string>;

// A modem and a channel to it.
struct Talk {
  Answer ask(const std::string& answer, const std::string& prefix = "+CPMS:") {
    modem.answers["AT+X"] = {answer};
    return channel.command("AT+X", prefix, 3000);
  }
  Answer send(const std::string& prompt, const std::string& result) {
    modem.answers["AT+CMGS=9"] = {prompt};
    modem.answers["<text>"] = {result};
    return channel.commandWithText("AT+CMGS=9", "0011AB", "+CMGS:", 10'000, 60'000);
  }

  FakeModem modem;
  FakeLine line{modem};
  Channel channel{line, modem.clock};
};

class ChannelTest : public testing::Test, protected Talk {};

TEST_F(ChannelTest, TellsAnswersFromWhatComesOfItself) {
  const std::string nuls(3, '\0');
  struct Case {
    const char* name;
    std::string answer;
    Outcome outcome;
    Lines lines;
    std::string prefix = "+CPMS:";
  };
  const Case cases[] = {
      {"plain", "\r\nOK\r\n", Outcome::ok, {}},
      {"values", "\r\n+CPMS: 1,2\r\n\r\nOK\r\n", Outcome::ok, {"+CPMS: 1,2"}},
      {"line feeds only", "+CPMS: 1\nOK\n", Outcome::ok, {"+CPMS: 1"}},
      {"returns only", "\r+CPMS: 1\rOK\r", Outcome::ok, {"+CPMS: 1"}},
      {"leading NULs", nuls + "\r\n" + nuls + "OK\r\n", Outcome::ok, {}},
      {"echo", "AT+X\r\r\n+CPMS: 1\r\n\r\nOK\r\n", Outcome::ok, {"+CPMS: 1"}},
      {"echo glued to the answer", "AT+X+CPMS: 1\r\n\r\nOK\r\n", Outcome::ok, {"+CPMS: 1"}},
      {"unsolicited",
       "\r\n^RSSI: 12\r\n+CPMS: 1\r\n+ECIND: 3\r\nRING\r\n+CMTI: \"SM\",3\r\nOK\r\n",
       Outcome::ok,
       {"+CPMS: 1"}},
      {"call ended", "\r\nNO CARRIER\r\nBUSY\r\nOK\r\n", Outcome::ok, {}},
      {"message handed through", "\r\n+CMT: ,23\r\n07911326\r\n0011\r\nOK\r\n", Outcome::ok, {"0011"}},
      {"message with a name", "\r\n+CMT: \"Anna\",23\r\n07911326\r\n0011\r\nOK\r\n", Outcome::ok, {"0011"}},
      {"report handed through", "\r\n+CDS: 25\r\nRING\r\n0006\r\nOK\r\n", Outcome::ok, {}},
      {"message as text",
       "\r\n+CMT: \"+31\",,\"26/11/21\"\r\nOK\r\n+CPMS: 1\r\nOK\r\n",
       Outcome::ok,
       {"+CPMS: 1"}},
      {"report as text",
       "\r\n+CDS: 6,23,\"+31\",145,\"26/11/21\",\"26/11/21\",0\r\n+CPMS: 1\r\nOK\r\n",
       Outcome::ok,
       {"+CPMS: 1"}},
      {"announced, but none comes",
       "\r\n+CMT: ,23\r\n+CPMS: 1\r\n0011\r\nOK\r\n",
       Outcome::ok,
       {"+CPMS: 1", "0011"}},
      {"values of another command", "\r\n+CPMS: 1\r\nOK\r\n", Outcome::ok, {}, "+CMGL:"},
      {"line break in a number",
       "+CPBR: 1,\"+31\r\n+49\",145\r\nOK\r\n",
       Outcome::ok,
       {"+CPBR: 1,\"+31", "+49\",145"},
       "+CPBR:"},
      {"glued to the line before",
       "0011+CMGL: 2,1,,9\r\n22\r\nOK\r\n",
       Outcome::ok,
       {"0011", "+CMGL: 2,1,,9", "22"},
       "+CMGL:"},
      {"not glued in quotes",
       "+CPBR: 1,\"a+CPBR: b\"+CPBR: 2\r\nOK\r\n",
       Outcome::ok,
       {"+CPBR: 1,\"a+CPBR: b\"", "+CPBR: 2"},
       "+CPBR:"},
      {"error", "\r\nERROR\r\n", Outcome::refused, {}},
      {"equipment error", "\r\n+CME ERROR: 14\r\n", Outcome::refused, {}},
      {"message error", "\r\n+CMS ERROR: 330\r\n", Outcome::refused, {}},
      {"error in words", "\r\n+CME ERROR: SIM busy\r\n", Outcome::refused, {}},
      {"error of extensions", "\r\n+EXT ERROR: 3\r\n", Outcome::refused, {}},
      {"modem error", "\r\nMODEM ERROR: 5\r\n", Outcome::refused, {}},
      {"not supported", "\r\nCOMMAND NOT SUPPORT\r\n", Outcome::refused, {}},
      {"not available", "\r\nNA\r\n", Outcome::refused, {}},
      {"no end", "\r\n+CPMS: 1\r\nOKAY\r\n O K\r\nOK", Outcome::timedOut, {"+CPMS: 1", "OKAY", "O K"}},
  };
  for (const Case& c : cases) {
    for (const std::size_t chunk : {never, std::size_t{1}, std::size_t{2}, std::size_t{5}}) {
      SCOPED_TRACE(std::string{c.name} + ", " + std::to_string(chunk));
      modem.chunk = chunk;
      modem.answers["AT"] = {"\r\nOK\r\n"};
      const Answer answer = ask(c.answer, c.prefix);
      EXPECT_EQ(answer.outcome, c.outcome);
      EXPECT_EQ(answer.lines, c.lines);
    }
  }
}

TEST_F(ChannelTest, PutsErrorsIntoWords) {
  struct Case {
    const char* line;
    const char* reason;
    bool busy;
  };
  const Case cases[] = {
      {"ERROR", "the handset refuses (ERROR)", false},
      {"+CME ERROR: 11", "the SIM wants its PIN (+CME ERROR: 11)", false},
      {"+CME ERROR:14", "the SIM is busy (+CME ERROR:14)", true},
      {"+CMS ERROR: 314", "the SIM is busy (+CMS ERROR: 314)", true},
      {"+CMS ERROR: 303", "the handset does not allow it (+CMS ERROR: 303)", false},
      {"+CMS ERROR: 322", "the memory is full (+CMS ERROR: 322)", false},
      {"+CMS ERROR: 330", "the SIM names no service centre (+CMS ERROR: 330)", false},
      {"+CMS ERROR: 331", "no network (+CMS ERROR: 331)", false},
      {"+CMS ERROR: 28", "the receiver is unknown (+CMS ERROR: 28)", false},
      {"+CME ERROR: 28", "the handset refuses (+CME ERROR: 28)", false},
      {"+EXT ERROR: 10", "the handset refuses (+EXT ERROR: 10)", false},
  };
  for (const Case& c : cases) {
    const std::optional<FinalResult> result = finalResultIn(c.line);
    ASSERT_TRUE(result) << c.line;
    EXPECT_EQ(reasonOf(*result), c.reason);
    EXPECT_EQ(isBusy(*result), c.busy) << c.line;
  }
}

TEST_F(ChannelTest, SendsTextOnlyWhenAskedForIt) {
  struct Case {
    const char* name;
    std::string prompt;
    std::string result;
    Outcome outcome;
    bool sent;
  };
  const std::string done = "\r\n+CMGS: 7\r\n\r\nOK\r\n";
  const Case cases[] = {
      {"usual prompt", "\r\n> ", done, Outcome::ok, true},
      {"bare prompt", ">", done, Outcome::ok, true},
      {"prompt as a line", "\r\n> \r\n", done, Outcome::ok, true},
      {"NULs before it", std::string{"\0\0\r\n> ", 6}, done, Outcome::ok, true},
      {"something before it", "\r\nRING\r\n+CMT: ,9\r\n0011>22\r\n> ", done, Outcome::ok, true},
      {"refused afterwards", "\r\n> ", "\r\n+CMS ERROR: 500\r\n", Outcome::refused, true},
      {"nothing afterwards", "\r\n> ", "", Outcome::timedOut, true},
      {"error instead", "\r\n+CMS ERROR: 304\r\n", done, Outcome::refused, false},
      {"OK instead", "\r\nOK\r\n", done, Outcome::refused, false},
      {"nothing instead", "", done, Outcome::timedOut, false},
  };
  for (const Case& c : cases) {
    for (const bool echo : {false, true}) {
      for (const std::size_t chunk : {never, std::size_t{1}, std::size_t{3}}) {
        SCOPED_TRACE(std::string{c.name} + ", " + std::to_string(chunk));
        Talk fresh;
        fresh.modem.echo = echo;
        fresh.modem.chunk = chunk;
        const Answer answer = fresh.send(c.prompt, c.result);
        EXPECT_EQ(answer.outcome, c.outcome);
        EXPECT_EQ(fresh.modem.commands, Lines{"AT+CMGS=9"});
        EXPECT_EQ(fresh.modem.texts, c.sent ? Lines{"0011AB"} : Lines{});
        EXPECT_EQ(answer.lines, c.outcome == Outcome::ok ? Lines{"+CMGS: 7"} : Lines{});
      }
    }
  }
}

TEST_F(ChannelTest, KeepsItsDeadlines) {
  // Silence, lines and bytes without a line: nothing that comes moves the deadline.
  for (const std::string& idle : {std::string{}, std::string{"\r\n^RSSI: 9\r\n"}, std::string{"x"},
                                  std::string(5000, 'y'), std::string{"\r\nz\r\n"}}) {
    SCOPED_TRACE(idle.substr(0, 10));
    Talk fresh;
    const std::int64_t& now = fresh.modem.clock.now;
    constexpr int callingOff = 1000 + 400 + 200;
    fresh.modem.idle = idle;
    fresh.modem.answers["AT"] = {"\r\nOK\r\n"};
    EXPECT_EQ(fresh.ask("").outcome, Outcome::timedOut);
    EXPECT_EQ(now, 3000);
    EXPECT_EQ(fresh.send("", "").outcome, Outcome::timedOut);
    EXPECT_LE(now, 3000 + 10'000 + callingOff);
    const std::int64_t before = now;
    EXPECT_EQ(fresh.send("\r\n> ", "").outcome, Outcome::timedOut);
    EXPECT_GE(now - before, 60'000);
    EXPECT_LE(now - before, 60'000 + callingOff);
  }
}

TEST_F(ChannelTest, EndsEndlessAnswers) {
  struct Flood : ByteStream {
    explicit Flood(std::string bytes) : more{std::move(bytes)} {}
    bool write(std::string_view) override { return true; }
    Arrival read(std::string& bytes, int) override {
      bytes += more;
      return Arrival::bytes;
    }
    void discardInput() override {}
    std::string more;
  };
  // The clock stands still: only the bounds end it.
  for (const std::string& bytes :
       {std::string(65'536, 'x'), std::string{"\r\n+CPMS: 1\r\n"}, std::string(4096, '\n')}) {
    Flood flood{bytes};
    Channel flooded{flood, modem.clock};
    const Answer answer = flooded.command("AT+X", "+CPMS:", 3000);
    EXPECT_EQ(answer.outcome, Outcome::timedOut);
    EXPECT_LE(answer.lines.size(), Channel::mostLines);
  }
  EXPECT_EQ(ask("\r\n+CPMS: " + std::string(100'000, '1') + "\r\nOK\r\n").lines.at(0).size(),
            LineReader::longestLine);
}

TEST_F(ChannelTest, TakesNoLateAnswerForTheNextOne) {
  modem.answers["AT"] = {"\r\nOK\r\n"};
  EXPECT_EQ(ask("").outcome, Outcome::timedOut);
  // Too late, just before the next command and just behind it.
  modem.output = "\r\n+CPMS: 9\r\nERROR\r\n";
  EXPECT_TRUE(ask("\r\n+CPMS: 1\r\nOK\r\n").ok());
  EXPECT_EQ(ask("").outcome, Outcome::timedOut);
  modem.answers["AT"] = {"\r\nERROR\r\n\r\nOK\r\n", "\r\nOK\r\n"};
  EXPECT_EQ(ask("\r\n+CPMS: 2\r\nOK\r\n").lines, Lines{"+CPMS: 2"});

  // Nobody there any more: the command is not even sent.
  EXPECT_EQ(ask("").outcome, Outcome::timedOut);
  modem.answers["AT"] = {""};
  modem.commands.clear();
  EXPECT_EQ(ask("\r\nOK\r\n").outcome, Outcome::timedOut);
  EXPECT_EQ(modem.commands, Lines{"AT"});
}

TEST_F(ChannelTest, EndsAtOnceWhenTheLineIsGone) {
  modem.goneAfter = 4;
  EXPECT_EQ(ask("\r\nOK\r\n").outcome, Outcome::gone);
  EXPECT_TRUE(channel.gone());
  EXPECT_EQ(send("\r\n> ", "\r\nOK\r\n").outcome, Outcome::gone);
  EXPECT_TRUE(modem.commands.empty());
  EXPECT_EQ(modem.clock.now, 0);
}

}  // namespace
}  // namespace handset::at
