#include "framework/clipboard.h"
#include "running_app.h"

// The New message dialog with its address book, and the reader.
namespace {

const std::string silent = "Can not connect,Please Check Connection";
const Step send = press(IDC_SEND), cancel = press(IDC_MESSAGE_CANCEL);
const std::vector<UINT> message{IDC_RECEIVERS, IDC_MESSAGE_CONTENT, IDC_CONTACT};

Step text(const std::string& words) {
  return type(IDC_MESSAGE_CONTENT, words);
}
Step to(const std::string& numbers) {
  return type(IDC_RECEIVERS, numbers);
}
Step pick(UINT list, const Rows& rows) {
  return [=](HWND dialog) { select(item(dialog, list), rows); };
}
// The second column of the phonebook and the chosen numbers.
Step lists(const Texts& phonebook, const Texts& chosen) {
  return [=](HWND dialog) {
    EXPECT_EQ(columnOf(item(dialog, IDC_PHONEBOOK), 1), phonebook);
    EXPECT_EQ(columnOf(item(dialog, IDC_CHOSEN), 0), chosen);
  };
}

class Dialogs : public Program {
 protected:
  void SetUp() override {
    folder_.receive("first");
    folder_.receive("second", "+2", "2005/03/14");
    folder_.receive("third");
    ASSERT_TRUE(app_.start());
    folder_.log();
  }
  void newMessage(Steps steps) { app_.command(ID_NEW, std::move(steps)); }
};

TEST_F(Dialogs, AMessageIsSentToEveryReceiverFiledAndReported) {
  app_.show(pSent);
  newMessage({shows({0, IDC_SEND}, "New SMS|Send"), to("123;+456"), text("a\r\nb"), send,
              answer("2/2 message(s)  sent.")});
  EXPECT_EQ(folder_.log(), "zelCloseSIM zelOpenSIM(3,115200) zelInitSMS zelSendSMS zelSendSMS ");
  const auto sent = std::as_bytes(std::span{folder_.script().sent}).subspan<212, 212>();
  EXPECT_EQ(phonelink::decodeMessage(sent).phone + phonelink::decodeMessage(sent).narrowText(), "+456a\r\nb");
  EXPECT_EQ(app_.look() + " " + app_.status(), "3 0 0 2 0: a b,a b Sent to +456 (2 of 2)");
  // A receiver that fails, or that does not fit, is kept as a draft.
  strcpy(folder_.script().unreachable, "222");
  newMessage({to("111;222;;12345678901234567"), text("c\r\nd"), send, answer("1/4 message(s)  sent.")});
  EXPECT_EQ(app_.status(),
            "1 of 4 sent; not sent: 222 (refused), 12345678901234567 (number too long). F4 shows all.");
  app_.show(pDraft);
  EXPECT_EQ(app_.look() + " " + app_.rows(1), "3 0 0 3 2: c  d,c  d 222,12345678901234567");
  // Buttons pressed while the library works do nothing.
  folder_.script().pressed = IDC_SEND;
  newMessage({to("123"), text("once"), [this](HWND dialog) { folder_.script().dialog = dialog; }, send,
              answer("1/1 message(s)  sent.")});
  folder_.script().dialog = nullptr;
  EXPECT_EQ(folder_.script().sentCount, 5);
  // A text that the library cannot take is not sent with question marks in it.
  newMessage({to("123"), text("жёлтый"), send, answer("0/1 message(s)  sent.")});
  EXPECT_EQ(app_.look(), "3 0 0 4 3: c  d,c  d,жёлтый");
  EXPECT_EQ(app_.status(), "0 of 1 sent; not sent: 123 (text cannot be carried). F4 shows all.");
  EXPECT_EQ(folder_.script().sentCount, 5);
}

TEST_F(Dialogs, TheLastSendIsListedAndTriedAgain) {
  const auto rows = [](const std::string& expected) {
    return [=](HWND dialog) {
      const HWND list = item(dialog, IDC_OUTCOMES);
      SetFocus(list);
      PostMessageW(list, WM_KEYDOWN, 'C', 1);
      holding({VK_CONTROL}, [&] { runMessages(dialog); });
      EXPECT_EQ(toUtf8(framework::clipboardText(dialog)), expected);
    };
  };
  const Step again = press(IDC_TRY_AGAIN);
  app_.command(ID_LAST_SEND);
  strcpy(folder_.script().unreachable, "222");
  app_.show(pDraft);
  newMessage({to("111;222;.;333"), text("c\r\nd"), send, answer("2/4 message(s)  sent.")});
  app_.key(app_.list(), VK_F4, {},
           {rows("111\tSent\r\n222\tNot sent: refused\r\n.\tNot sent: not a number\r\n333\tSent\r\n"),
            shows({0, IDC_TRY_AGAIN}, "Last send|Try again"), again,
            [this](HWND) { EXPECT_EQ(app_.look(), "3 0 0 2 1: c  d"); },
            [this](HWND) { folder_.script().unreachable[0] = '\0'; }, again,
            [](HWND dialog) { select(item(dialog, IDC_OUTCOMES), {1}); }, rows("222\tSent\r\n"),
            shows({IDC_TRY_AGAIN, IDCANCEL}, "(Try again)|Close"), press(IDCANCEL)});
  EXPECT_EQ(app_.look(), "3 0 0 3 0: ");
  EXPECT_EQ(folder_.values(pSent, "Phone"), (Texts{"111", "333", "222"}));
}

TEST_F(Dialogs, TheCounterCountsAndCutsWhileTyping) {
  std::string wide;
  for (int i = 0; i < 70; ++i) wide += "ж";
  const auto typed = [](WPARAM unit) {
    return [unit](HWND dialog) { SendMessageW(item(dialog, IDC_MESSAGE_CONTENT), WM_CHAR, unit, 1); };
  };
  const Step o = typed('o'), e = typed(0xE9),
             undo = [](HWND dialog) { SendMessageW(item(dialog, IDC_MESSAGE_CONTENT), EM_UNDO, 0, 0); };
  const auto counts = [](const std::string& counter) { return shows({IDC_COUNTER}, counter); };
  newMessage({text("hell"),
              o,
              counts("5/160"),
              text("hellö"),
              counts("5/70"),
              text(wide + wide),
              shows({IDC_COUNTER, IDC_MESSAGE_CONTENT}, "70/70|" + wide),
              text(std::string(159, 'x')),
              o,
              o,
              counts("160/160"),
              text(std::string(145, 'x')),
              e,
              counts("70/70"),
              undo,
              counts("145/160"),
              text("a"),
              typed(0xD83D),
              typed(0xDE00),
              o,
              shows({IDC_COUNTER, IDC_MESSAGE_CONTENT}, "4/70|a😀o"),
              text(""),
              cancel});
  EXPECT_EQ(folder_.log(), "");
}

TEST_F(Dialogs, WhatCannotBeSentStaysWithItsText) {
  const Step stays = shows(message, "123;456|text|Contact");
  newMessage({to("123"), send, answer("Empty Message,Please type."), to(""), text("text"), send,
              answer("No Phone Number Entered."), shows(message, "|text|Contact"), to("+-."), send,
              answer("0/1 message(s)  sent."), shows(message, "+-.|text|Contact"), text(""), cancel});
  // Neither the window nor the session ends over a text in the making.
  newMessage({to("123;456"), text("text"), [this](HWND) { SendMessageW(app_.window(), WM_CLOSE, 0, 0); },
              [this](HWND) { EXPECT_EQ(SendMessageW(app_.window(), WM_QUERYENDSESSION, 0, 0), 0); }, stays,
              text(""), cancel});
  EXPECT_NE(SendMessageW(app_.window(), WM_QUERYENDSESSION, 0, 0), 0);
  folder_.script().openResult = 0;
  newMessage({to("123;456"), text("text"), send, answer(silent), press(IDC_CONTACT), answer(silent), stays,
              text(""), cancel});
  EXPECT_EQ(folder_.script().sentCount, 0);
}

TEST_F(Dialogs, WhatIsSentButNotFiledIsFiledAgainAndNotSentAgain) {
  const Steps ends[] = {{send, answer("2/2 message(s)  sent.")}, {cancel, press(IDOK)}};
  for (const Steps& last : ends) {
    folder_.script().sentCount = 0;
    folder_.put(pSent, {});
    app_.command(ID_REFRESH);
    auto held = folder_.hold("pcSent.dat");
    newMessage({to("123;456"), text("text"), shows(message, "123;456|text|Contact"), send,
                answer("pcSent.dat"), shows(message, "(123;456)|(text)|(Contact)"), send,
                answer("pcSent.dat"), [&](HWND) { held.reset(); }, last[0], last[1]});
    EXPECT_EQ(folder_.script().sentCount, 2);
    EXPECT_EQ(folder_.values(pSent, "Phone"), (Texts{"123", "456"}));
    EXPECT_EQ(app_.label(pSent), "Sent(2)");
  }
}

TEST_F(Dialogs, ATextIsThrownAwayOnlyAfterAQuestion) {
  app_.show(pDraft);
  newMessage({to("123; 4"), text("keep"), cancel, press(IDOK)});
  newMessage({text("drop"), [](HWND dialog) { PostMessageW(dialog, WM_CLOSE, 0, 0); }, press(IDCANCEL)});
  EXPECT_EQ(app_.look() + " " + app_.rows(1), "3 0 0 0 1: keep 123; 4");
  auto held = folder_.hold("pcDraft.dat");
  newMessage({text("stays"), cancel, press(IDOK), answer("pcDraft.dat"), shows(message, "|stays|Contact"),
              [&](HWND) { held.reset(); }, cancel, press(IDOK)});
  EXPECT_EQ(app_.look(), "3 0 0 0 2: keep,stays");
  EXPECT_EQ(folder_.log(), "");
}

TEST_F(Dialogs, ReceiversArePickedFromBothPhonebooks) {
  ScriptedLink& script = folder_.script();
  auto entries = std::as_writable_bytes(std::span{script.contacts}).subspan(phonelink::contactHeadSize);
  for (const char* number : {"100", "200", "300", "1;2"}) {
    phonelink::encodeContact({number, std::string("Name ") + number}, entries.first<40>());
    entries = entries.subspan(40);
  }
  phonelink::encodeWideContact({u"Анна", "400"},
                               std::as_writable_bytes(std::span{script.wideContacts}).subspan<4, 2836>());
  script.contactResult = 4, script.wideContactResult = 1;
  const Step add = press(IDC_ADD_CONTACT),
             receivers = shows({IDC_RECEIVERS, IDC_RECEIVER_COUNT}, "400;300;100;|Receivers: 3");
  const auto mouse = [](int row) {
    return [row](HWND dialog) {
      RECT cell{};
      ListView_GetItemRect(item(dialog, IDC_PHONEBOOK), row, &cell, LVIR_LABEL);
      for (const UINT button : {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP})
        PostMessageW(item(dialog, IDC_PHONEBOOK), button, 0, MAKELPARAM(cell.left + 9, cell.top + 5));
    };
  };
  const std::string refusal = "1;2 is not added: a number must not hold \";\".";
  const Texts phonebook{"100", "200", "300", "1;2", "400"};
  newMessage({to("555;"), text("x"), press(IDC_CONTACT), lists(phonebook, {"555"}),
              pick(IDC_PHONEBOOK, {0, 2, 3, 4}), add, add, lists(phonebook, {"555", "400", "300", "100"}),
              pick(IDC_CHOSEN, {0}), press(IDC_REMOVE_CONTACT), press(IDC_ADDRESS_OK), receivers,
              // Cancel leaves the field alone.
              press(IDC_CONTACT), mouse(1), mouse(1), mouse(3),
              lists(phonebook, {"400", "300", "100", "200"}), shows({IDC_ADDRESS_NOTE}, refusal),
              press(IDC_ADDRESS_CANCEL), receivers, send, answer("3/3 message(s)  sent.")});
  script.phonebookResult = 0;  // without a phonebook the chosen can still be edited
  const Step del = [](HWND dialog) { SendMessageW(item(dialog, IDC_CHOSEN), WM_KEYDOWN, VK_DELETE, 1); };
  newMessage({to(";;"), press(IDC_CONTACT), lists({}, {"", ""}), pick(IDC_CHOSEN, {-1}), del,
              press(IDC_ADDRESS_OK), shows({IDC_RECEIVERS}, ""), cancel});
}

TEST_F(Dialogs, TheReceiversTakeNumbersAndAPasteAsAWhole) {
  const Step characters = [](HWND dialog) {
    for (UINT character = ' '; character < 0x250; ++character)
      SendMessageW(item(dialog, IDC_RECEIVERS), WM_CHAR, character, 1);
    EXPECT_EQ(textOf(dialog, IDC_RECEIVERS), "+-.0123456789;");
  };
  const Step pastes = [](HWND dialog) {
    const HWND field = item(dialog, IDC_RECEIVERS), content = item(dialog, IDC_MESSAGE_CONTENT);
    const std::string fits(120, '7');
    const std::pair<std::string, std::string> rows[] = {
        {"a+1\r\n\t2", "a+1;2"}, {fits + "7", "a+1;2"}, {fits, "a+1;2" + fits}};
    for (const auto& [copied, held] : rows) {
      SetWindowTextW(content, toWide(copied).c_str());
      SendMessageW(content, EM_SETSEL, 0, -1);
      SendMessageW(content, WM_COPY, 0, 0);
      PostMessageW(field, WM_KEYDOWN, 'V', 1);
      holding({VK_CONTROL}, [&] { runMessages(dialog); });
      EXPECT_EQ(textOf(field), held);
    }
  };
  newMessage({characters, to(""), pastes, text(""), cancel});
}

TEST_F(Dialogs, TheReaderStepsThroughTheFolder) {
  const auto reads = [](const std::string& shown) {
    return shows({IDC_READER_CONTENT, IDC_READER_PHONE, IDC_READER_TIME, IDC_PREVIOUS, IDC_NEXT}, shown);
  };
  const auto choose = [](WPARAM entry) {
    return [entry](HWND reader) {
      SendMessageW(item(reader, IDC_READER_PHONE), CB_SETCURSEL, entry, 0);
      SendMessageW(reader, WM_COMMAND, MAKEWPARAM(IDC_READER_PHONE, CBN_SELCHANGE), 0);
    };
  };
  const Step first = reads("(first)|+1|(2026-03-02 11:22:33)|(<<)|>>"),
             second = reads("(second)|+2|(2005/03/14)|<<|>>"),
             third = reads("(third)|+1|(2026-03-02 11:22:33)|<<|(>>)"), next = press(IDC_NEXT),
             back = press(IDC_PREVIOUS);
  app_.choose(mInbox, {1});
  app_.clickTwice({shows({0}, "Open SMS"), second, next, third, choose(0), first, choose(2), third, back,
                   second, back, first, [](HWND reader) { PostMessageW(reader, WM_CLOSE, 0, 0); }});
  for (const auto& [letter, start] :
       {std::pair{'R', "+2||Contact"}, {'L', "|second|Contact"}, {'E', "+2|second|Contact"}})
    app_.key(app_.list(), static_cast<UINT>(letter), {VK_CONTROL}, {shows(message, start), text(""), cancel});
  app_.clickHeading(1);  // the handset's table stays: the row opens its own message
  app_.choose(mInbox, {2});
  app_.key(app_.list(), VK_RETURN, {}, {second, end(IDCANCEL)});
}

TEST_F(Dialogs, AMessageIsAnsweredPassedOnOrWrittenAnew) {
  const std::string longText(165, 'x');
  folder_.put(pDraft, {{"x y", "22"}, {longText, "ANNA"}});
  app_.command(ID_REFRESH);
  const auto open = [&](const Rows& rows, const Steps& steps) {
    app_.choose(pDraft, rows);
    app_.clickTwice(steps);
  };
  const auto starts = [](const std::string& shown) {
    return shows({IDC_RECEIVERS, IDC_RECEIVER_COUNT, IDC_COUNTER, IDC_MESSAGE_CONTENT}, shown);
  };
  const Step edit = press(IDC_EDIT_AS_NEW);
  open({1}, {shows({IDC_REPLY}, "(Reply)"), press(IDC_PREVIOUS), press(IDC_REPLY),
             starts("22|Receivers: 1|0/160|"), cancel});
  open({0}, {press(IDC_FORWARD), starts("||3/160|x y"), text(""), cancel});
  // Saved, it takes its draft's place; a text that did not fit leaves the draft.
  open({0}, {edit, starts("22|Receivers: 1|3/160|x y"), text("z"), cancel, press(IDCANCEL)});
  EXPECT_EQ(app_.rows(), "x y," + longText);
  open({0}, {edit, text("z"), cancel, press(IDOK)});
  EXPECT_EQ(app_.rows(), longText + ",z");
  open({0}, {edit, starts("ANNA||160/160|" + longText.substr(5)),
             [this](HWND) { EXPECT_EQ(app_.status(), "5 character(s) did not fit and were left out."); },
             to("1"), send, answer("1/1")});
  EXPECT_EQ(app_.look(), "3 0 0 1 2: " + longText + ",z");
  open({1}, {edit, to("."), send, answer("0/1"), to("1"), send, answer("1/1")});
  EXPECT_EQ(app_.look(), "3 0 0 2 1: " + longText);
}

}  // namespace
