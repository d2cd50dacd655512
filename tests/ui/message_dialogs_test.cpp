#include <gtest/gtest.h>

#include "dialog_visit.h"
#include "dialogs/address_book_dialog.h"
#include "dialogs/compose_state.h"
#include "dialogs/reader_dialog.h"
#include "framework/text.h"
#include "resources/resource_ids.h"
#include "running_app.h"
#include "store/folder_state.h"

namespace {

using framework::toWide;
using framework::windowText;
using store::Folder;
using Texts = std::vector<std::string>;
using Step = DialogVisit::Step;

std::string textOf(HWND dialog, UINT id) {
  return windowText(item(dialog, id));
}

Step compose(const std::string& receivers, const std::string& text) {
  return [=](HWND dialog) {
    enter(dialog, IDC_RECEIVERS, receivers);
    enter(dialog, IDC_MESSAGE_CONTENT, text);
  };
}

std::string group(const std::string& content, const std::string& phone) {
  return "Content = " + content + " \r\nPhone = " + phone + " \r\nTime = ";
}

class MessageDialogs : public testing::Test {
 protected:
  void SetUp() override {
    dialogs::composeState() = {};
    putReceived(folder_.script(), entryOf("first", "+1", "26030211223304"));
    putReceived(folder_.script(), entryOf("second", "+2", "2005/03/14"));
    putReceived(folder_.script(), entryOf("third", "+1", "26030211223304"));
    ASSERT_TRUE(app_.start());
    app_.settle();
    folder_.script().logLength = 0;
  }

  void newMessage(std::vector<Step> steps) {
    const DialogVisit visit(std::move(steps));
    app_.frame()->send(WM_COMMAND, ID_NEW);
    app_.settle();
  }

  phonelink::MessageEntry sent(std::size_t index) {
    const auto bytes =
        std::as_bytes(std::span{folder_.script().sent}).subspan(index * phonelink::messageEntrySize);
    return phonelink::decodeMessage(bytes.first<phonelink::messageEntrySize>());
  }
  std::string log() { return {folder_.script().log, folder_.script().logLength}; }
  std::size_t groupsIn(const std::string& file) {
    const std::string bytes = folder_.read(file);
    std::size_t count = 0;
    for (std::size_t at = 0; (at = bytes.find("Content = ", at)) != std::string::npos; ++at) ++count;
    return count;
  }

  ProgramFolder folder_;
  RunningApp app_{folder_};
};

TEST_F(MessageDialogs, SendsToEveryReceiverFilesAndReports) {
  app_.selectFolder(Folder::PSent);
  newMessage({compose("123;+456", "a\r\nb"), press(IDC_SEND), answer("2/2 message(s)  sent.")});
  EXPECT_EQ(log(), "zelCloseSIM zelOpenSIM(3,115200) zelInitSMS zelSendSMS zelSendSMS ");
  EXPECT_EQ(sent(0).phone, "123");
  EXPECT_EQ(sent(1).phone, "+456");
  EXPECT_EQ(sent(1).narrowText(), "a\r\nb");
  EXPECT_EQ(sent(1).coding, phonelink::codingDefault);
  const std::string file = folder_.read("pcSent.dat");
  EXPECT_EQ(file.find("[PCSENT] \r\n" + group("a b", "123")), 0U) << file;
  EXPECT_NE(file.find(" \r\nIndex =  \r\n" + group("a b", "+456")), std::string::npos) << file;
  EXPECT_EQ(app_.label(Folder::PSent), "Sent(2)");
  EXPECT_EQ(app_.column(1), (Texts{"123", "+456"}));  // the folder shown is shown anew
}

TEST_F(MessageDialogs, KeepsWhatCouldNotBeSentAsADraft) {
  strcpy(folder_.script().unreachable, "222");
  newMessage(
      {compose("111;222;;12345678901234567", "a\r\nb"), press(IDC_SEND), answer("1/4 message(s)  sent.")});
  EXPECT_EQ(folder_.script().sentCount, 2);  // the number that does not fit was not handed over at all
  EXPECT_EQ(groupsIn("pcSent.dat"), 1U);
  const std::string drafts = folder_.read("pcDraft.dat");
  EXPECT_NE(drafts.find(group("a  b", "222")), std::string::npos) << drafts;
  EXPECT_NE(drafts.find(group("a  b", "12345678901234567")), std::string::npos) << drafts;
  EXPECT_EQ(app_.label(Folder::PDraft), "Draft(2)");
}

TEST_F(MessageDialogs, NeverSendsATextThatTheLibraryCannotTake) {
  newMessage({compose("123", "жёлтый"), press(IDC_SEND), answer("0/1 message(s)  sent.")});
  EXPECT_EQ(folder_.script().sentCount, 0);
  EXPECT_NE(folder_.read("pcDraft.dat").find("Content = жёлтый \r\n"), std::string::npos);
  EXPECT_EQ(folder_.read("pcDraft.dat").find("\xEF\xBB\xBF"), 0U);
}

TEST_F(MessageDialogs, CountsWhileTyping) {
  const auto expectCounter = [](const char* text, const char* counter) {
    return [=](HWND dialog) {
      enter(dialog, IDC_MESSAGE_CONTENT, text);
      EXPECT_EQ(textOf(dialog, IDC_COUNTER), counter) << text;
    };
  };
  std::string hundred;
  for (int i = 0; i < 100; ++i) hundred += "ж";
  newMessage({[](HWND dialog) { EXPECT_EQ(textOf(dialog, IDC_COUNTER), "0/160"); },
              expectCounter("hello", "5/160"), expectCounter("hellö", "5/70"),
              expectCounter("hello", "5/160"),
              [&](HWND dialog) {
                enter(dialog, IDC_MESSAGE_CONTENT, hundred);
                EXPECT_EQ(textOf(dialog, IDC_COUNTER), "70/70");
                EXPECT_EQ(textOf(dialog, IDC_MESSAGE_CONTENT), hundred.substr(0, 140));
                enter(dialog, IDC_MESSAGE_CONTENT, "");
              },
              press(IDC_MESSAGE_CANCEL)});
  EXPECT_EQ(log(), "");
}

TEST_F(MessageDialogs, SaysWhatIsMissingAndStaysOpen) {
  newMessage({compose("123", ""), press(IDC_SEND), answer("Empty Message,Please type."), compose("", "text"),
              press(IDC_SEND), answer("No Phone Number Entered."),
              [](HWND dialog) {
                EXPECT_EQ(textOf(dialog, IDC_MESSAGE_CONTENT), "text");
                enter(dialog, IDC_MESSAGE_CONTENT, "");
              },
              press(IDC_MESSAGE_CANCEL)});
  EXPECT_EQ(folder_.script().sentCount, 0);
}

TEST_F(MessageDialogs, StaysOpenWhenTheHandsetCannotBeReopened) {
  folder_.script().openResult = 0;
  newMessage({compose("123", "text"), press(IDC_SEND), answer("Can not connect,Please Check Connection"),
              press(IDC_CONTACT), answer("Can not connect,Please Check Connection"),
              [](HWND dialog) {
                EXPECT_EQ(textOf(dialog, IDC_MESSAGE_CONTENT), "text");
                enter(dialog, IDC_MESSAGE_CONTENT, "");
              },
              press(IDC_MESSAGE_CANCEL)});
  EXPECT_EQ(app_.list().itemCount(), 0);
  app_.selectFolder(Folder::MOutbox);
  app_.selectFolder(Folder::MInbox);
  EXPECT_EQ(app_.list().itemCount(), 0);
}

TEST_F(MessageDialogs, LosesNothingWhenTheFileCannotBeWritten) {
  folder_.write("pcSent.dat", "[PCSENT] \r\n");
  app_.press(app_.list().handle(), VK_F5);
  const HANDLE lock = CreateFileW(toWide(folder_.path() + "pcSent.dat").c_str(), GENERIC_READ,
                                  FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
  newMessage({compose("123;456", "text"), press(IDC_SEND), answer("pcSent.dat"),
              [&](HWND dialog) {
                EXPECT_EQ(textOf(dialog, IDC_RECEIVERS), "123;456");
                EXPECT_EQ(textOf(dialog, IDC_MESSAGE_CONTENT), "text");
              },
              press(IDC_SEND), answer("pcSent.dat"), [&](HWND) { CloseHandle(lock); }, press(IDC_SEND),
              answer("2/2 message(s)  sent.")});
  EXPECT_EQ(folder_.script().sentCount, 2);  // filing again is not sending again
  EXPECT_EQ(groupsIn("pcSent.dat"), 2U);
  EXPECT_EQ(app_.label(Folder::PSent), "Sent(2)");
}

TEST_F(MessageDialogs, AsksBeforeATextIsThrownAway) {
  app_.selectFolder(Folder::PDraft);
  newMessage({compose("123; 4", "keep"), press(IDC_MESSAGE_CANCEL), press(IDOK)});
  EXPECT_NE(folder_.read("pcDraft.dat").find(group("keep", "123; 4")), std::string::npos);
  EXPECT_EQ(app_.label(Folder::PDraft), "Draft(1)");
  EXPECT_EQ(app_.column(0), Texts{"keep"});
  newMessage(
      {compose("123", "drop"), [](HWND dialog) { PostMessageW(dialog, WM_CLOSE, 0, 0); }, press(IDCANCEL)});
  EXPECT_EQ(groupsIn("pcDraft.dat"), 1U);
  EXPECT_EQ(log(), "");
}

TEST_F(MessageDialogs, PicksReceiversFromBothPhonebooks) {
  ScriptedLink& script = folder_.script();
  const auto buffer = std::as_writable_bytes(std::span{script.contacts}).subspan(phonelink::contactHeadSize);
  for (const char* number : {"100", "200", "300"})
    phonelink::encodeContact(
        {number, std::string("Name ") + number},
        buffer.subspan(phonelink::contactEntrySize * static_cast<std::size_t>(script.contactResult++))
            .first<phonelink::contactEntrySize>());
  phonelink::encodeWideContact({u"Анна", "400"},
                               std::as_writable_bytes(std::span{script.wideContacts})
                                   .subspan<phonelink::contactHeadSize, phonelink::wideContactEntrySize>());
  script.wideContactResult = 1;

  const auto select = [](UINT list, std::initializer_list<int> rows) {
    return [=](HWND dialog) {
      for (const int row : rows) ListView_SetItemState(item(dialog, list), row, LVIS_SELECTED, LVIS_SELECTED);
    };
  };
  newMessage({compose("555;", "x"), press(IDC_CONTACT),
              [](HWND book) {
                EXPECT_EQ(windowText(book), "Contacts");
                EXPECT_EQ(ListView_GetItemCount(item(book, IDC_PHONEBOOK)), 4);
                EXPECT_EQ(ListView_GetItemCount(item(book, IDC_CHOSEN)), 1);
              },
              select(IDC_PHONEBOOK, {0, 2, 3}), press(IDC_ADD_CONTACT), press(IDC_ADD_CONTACT),
              select(IDC_CHOSEN, {0}), press(IDC_REMOVE_CONTACT), press(IDC_ADDRESS_OK),
              [](HWND dialog) { EXPECT_EQ(textOf(dialog, IDC_RECEIVERS), "400;300;100;"); },
              // Cancel leaves the field alone.
              press(IDC_CONTACT), select(IDC_PHONEBOOK, {1}), press(IDC_ADD_CONTACT),
              press(IDC_ADDRESS_CANCEL),
              [](HWND dialog) { EXPECT_EQ(textOf(dialog, IDC_RECEIVERS), "400;300;100;"); }, press(IDC_SEND),
              answer("3/3 message(s)  sent.")});
  EXPECT_EQ(sent(0).phone, "400");
}

TEST_F(MessageDialogs, WindowDoesNotCloseOverATextInTheMaking) {
  newMessage({compose("123", "text"), [this](HWND) { app_.frame()->send(WM_CLOSE); },
              [this](HWND dialog) {
                EXPECT_NE(app_.frame()->handle(), nullptr);
                EXPECT_EQ(app_.frame()->send(WM_QUERYENDSESSION), 0);
                EXPECT_EQ(textOf(dialog, IDC_MESSAGE_CONTENT), "text");
                enter(dialog, IDC_MESSAGE_CONTENT, "");
              },
              press(IDC_MESSAGE_CANCEL)});
}

TEST_F(MessageDialogs, PasteIsTakenWholeOrNotAtAll) {
  const auto paste = [](const std::string& text) {
    return [text](HWND dialog) {
      const std::wstring wide = toWide(text);
      ASSERT_TRUE(OpenClipboard(dialog));
      EmptyClipboard();
      const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, (wide.size() + 1) * sizeof(wchar_t));
      memcpy(GlobalLock(memory), wide.c_str(), (wide.size() + 1) * sizeof(wchar_t));
      GlobalUnlock(memory);
      SetClipboardData(CF_UNICODETEXT, memory);
      CloseClipboard();
      SendMessageW(item(dialog, IDC_RECEIVERS), WM_PASTE, 0, 0);
    };
  };
  const std::string longest(120, '7');
  newMessage({paste(longest), paste("123456"),
              [&](HWND dialog) { EXPECT_EQ(textOf(dialog, IDC_RECEIVERS), longest); }, paste("12345"),
              [&](HWND dialog) { EXPECT_EQ(textOf(dialog, IDC_RECEIVERS), longest + "12345"); },
              press(IDC_MESSAGE_CANCEL)});
}

TEST_F(MessageDialogs, AddressBookWithoutAPhonebookStillEditsTheChosen) {
  folder_.script().phonebookResult = 0;
  newMessage({compose(";;", "x"), press(IDC_CONTACT),
              [](HWND book) {
                EXPECT_EQ(ListView_GetItemCount(item(book, IDC_PHONEBOOK)), 0);
                EXPECT_EQ(ListView_GetItemCount(item(book, IDC_CHOSEN)), 2);
                ListView_SetItemState(item(book, IDC_CHOSEN), -1, LVIS_SELECTED, LVIS_SELECTED);
              },
              press(IDC_REMOVE_CONTACT), press(IDC_ADDRESS_OK),
              [](HWND dialog) { EXPECT_EQ(textOf(dialog, IDC_RECEIVERS), ""); }, press(IDC_MESSAGE_CANCEL),
              press(IDCANCEL)});
  EXPECT_EQ(log().find("zelGetPB"), std::string::npos);
}

TEST_F(MessageDialogs, ReaderStepsThroughTheFolder) {
  const auto expectShown = [](const char* content, const char* time, bool previous, bool next) {
    return [=](HWND reader) {
      EXPECT_EQ(textOf(reader, IDC_READER_CONTENT), content);
      EXPECT_EQ(textOf(reader, IDC_READER_TIME), time);
      EXPECT_EQ(IsWindowEnabled(item(reader, IDC_PREVIOUS)) != 0, previous);
      EXPECT_EQ(IsWindowEnabled(item(reader, IDC_NEXT)) != 0, next);
    };
  };
  const auto choose = [](int entry) {
    return [entry](HWND reader) {
      SendMessageW(item(reader, IDC_READER_PHONE), CB_SETCURSEL, static_cast<WPARAM>(entry), 0);
      SendMessageW(reader, WM_COMMAND, MAKEWPARAM(IDC_READER_PHONE, CBN_SELCHANGE),
                   reinterpret_cast<LPARAM>(item(reader, IDC_READER_PHONE)));
    };
  };
  ListView_SetItemState(app_.list().handle(), 1, LVIS_SELECTED, LVIS_SELECTED);
  const DialogVisit visit({[](HWND reader) {
                             EXPECT_EQ(windowText(reader), "Open SMS");
                             EXPECT_EQ(SendMessageW(item(reader, IDC_READER_PHONE), CB_GETCOUNT, 0, 0), 3);
                           },
                           expectShown("second", "2005/03/14", true, true), press(IDC_NEXT),
                           expectShown("third", "2026-03-02 11:22:33", true, false), choose(0),
                           expectShown("first", "2026-03-02 11:22:33", false, true), choose(2),
                           expectShown("third", "2026-03-02 11:22:33", true, false), press(IDC_PREVIOUS),
                           press(IDC_PREVIOUS), expectShown("first", "2026-03-02 11:22:33", false, true),
                           [](HWND reader) { PostMessageW(reader, WM_CLOSE, 0, 0); }});
  app_.clickTwice();
}

TEST_F(MessageDialogs, ReaderNeedsASelection) {
  const BoxWatcher boxes;
  app_.clickTwice();
  EXPECT_TRUE(boxes.seen().empty());
}

}  // namespace
