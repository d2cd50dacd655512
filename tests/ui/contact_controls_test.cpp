#include <gtest/gtest.h>

#include "control_host.h"
#include "framework/text.h"
#include "skin/contact_list.h"
#include "skin/number_entry.h"

namespace {

using Texts = std::vector<std::string>;

class ContactList : public testing::Test {
 protected:
  void SetUp() override {
    host_.addControl(WC_LISTVIEWW, LVS_REPORT, 1);
    host_.addControl(WC_LISTVIEWW, LVS_REPORT, 2);
    ASSERT_TRUE(contacts_.subclass(host_.handle(), 1));
    ASSERT_TRUE(picked_.subclass(host_.handle(), 2));
    contacts_.insertColumn(0, "Name", LVCFMT_LEFT, 100);
    contacts_.insertColumn(1, "Phone", LVCFMT_LEFT, 200);
    picked_.insertColumn(0, "Phone", LVCFMT_CENTER, 300);
    contacts_.setPickedList(picked_);
    addContact("Ann", "123");
    addContact("Bob", "45a");
    addContact("Eve", longNumber_);
  }

  void addContact(const char* name, const std::string& number) {
    contacts_.setItemText(contacts_.insertItem(contacts_.itemCount(), name), 1, number);
  }

  void doubleClick(int row) {
    clickCell(contacts_, row, 0);
    clickCell(contacts_, row, 0, WM_LBUTTONDBLCLK);
  }

  const std::string longNumber_ = std::string(700, '7') + "1";
  ControlHost host_;
  skin::CCustomListCtrl picked_;
  skin::CContactList contacts_;
};

TEST_F(ContactList, CtrlASelectsAllAndADoesNot) {
  SetFocus(contacts_.handle());
  pressKey(contacts_.handle(), 'A');
  EXPECT_LE(ListView_GetSelectedCount(contacts_.handle()), 1U);  // the list's own search by letter
  pressKey(contacts_.handle(), 'A', {VK_CONTROL});
  EXPECT_EQ(ListView_GetSelectedCount(contacts_.handle()), 3U);
}

TEST_F(ContactList, DoubleClickPicksTheFirstSelectedNumberOnce) {
  doubleClick(1);
  doubleClick(1);
  EXPECT_EQ(columnOf(picked_, 0), Texts{"45a"});
  picked_.setItemText(0, 0, "45A");
  doubleClick(1);
  doubleClick(0);
  doubleClick(2);
  doubleClick(2);
  EXPECT_EQ(columnOf(picked_, 0), (Texts{"45A", "123", longNumber_}));

  picked_.deleteItems(skin::CCustomListCtrl::anyRow);
  NMITEMACTIVATE click{};
  click.hdr = {contacts_.handle(), 1, static_cast<UINT>(NM_DBLCLK)};
  const auto notify = [&] { return host_.send(WM_NOTIFY, 1, reinterpret_cast<LPARAM>(&click)); };
  contacts_.select(-1, false);
  EXPECT_EQ(notify(), 0);
  EXPECT_EQ(picked_.itemCount(), 0);
  contacts_.select(-1);
  EXPECT_EQ(notify(), 0);
  EXPECT_EQ(columnOf(picked_, 0), Texts{"123"});
}

class NumberEntry : public testing::Test {
 protected:
  void SetUp() override {
    edit_ = host_.addControl(WC_EDITW, ES_AUTOHSCROLL, 1);
    ASSERT_TRUE(entry_.subclass(host_.handle(), 1));
    SetFocus(edit_);
  }

  void putOnClipboard(const wchar_t* text) {
    const HWND source = host_.addControl(WC_EDITW, 0, 9);
    SetWindowTextW(source, text);
    SendMessageW(source, EM_SETSEL, 0, -1);
    SendMessageW(source, WM_COPY, 0, 0);
    DestroyWindow(source);
  }

  ControlHost host_;
  HWND edit_ = nullptr;
  skin::CNumberEntry entry_;
};

TEST_F(NumberEntry, TakesTheCharactersOfNumbersOnly) {
  typeText(edit_, "12a;+3");
  EXPECT_EQ(entry_.text(), "12;+3");
  entry_.setText("");
  std::string taken;
  for (UINT character = 1; character < 0x250; ++character) {
    if (character == 8) continue;
    const LRESULT answer = SendMessageW(edit_, WM_CHAR, character, 1);
    if (entry_.text().size() > taken.size())
      taken = entry_.text();
    else
      EXPECT_EQ(answer, static_cast<LRESULT>(character));
  }
  EXPECT_EQ(taken, "+-.0123456789;");
  typeText(edit_, "\b\b");
  EXPECT_EQ(entry_.text(), "+-.012345678");
}

TEST_F(NumberEntry, ServesTheShortcutsOfAnEditBox) {
  putOnClipboard(L"a+1 b");
  pressKey(edit_, 'V', {VK_CONTROL});
  EXPECT_EQ(entry_.text(), "a+1 b");  // once, and not filtered
  pressKey(edit_, 'Z', {VK_CONTROL});
  EXPECT_EQ(entry_.text(), "");

  entry_.setText("123");
  pressKey(edit_, 'A', {VK_CONTROL});
  pressKey(edit_, 'C', {VK_CONTROL});
  EXPECT_EQ(entry_.text(), "123");
  pressKey(edit_, 'X', {VK_CONTROL});
  EXPECT_EQ(entry_.text(), "");
  pressKey(edit_, 'V', {VK_CONTROL});
  pressKey(edit_, 'V', {VK_CONTROL});
  EXPECT_EQ(entry_.text(), "123123");

  pressKey(edit_, 'V');                         // the letter
  pressKey(edit_, 'V', {VK_CONTROL, VK_MENU});  // a character on some keyboards
  EXPECT_EQ(entry_.text(), "123123");
}

}  // namespace
