#include <gtest/gtest.h>

#include "control_host.h"

namespace {

using skin::CCustomListCtrl;
using Texts = std::vector<std::string>;

// Three rows of two cells, row 1 selected and focused.
class CellEditing : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(list_.createChild(WC_LISTVIEWW, 0, host_.whole(), host_.handle(), 7));
    for (int column = 0; column < 2; ++column) list_.insertColumn(column, "Heading", LVCFMT_LEFT, 150);
    for (int row = 0; row < 3; ++row) {
      list_.insertItem(row, "name " + std::to_string(row));
      list_.setItemText(row, 1, "cell " + std::to_string(row));
    }
    ListView_SetItemState(list_.handle(), 1, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    list_.allowEditing(true);
    SetFocus(list_.handle());
  }

  HWND box() const { return FindWindowExW(list_.handle(), nullptr, WC_EDITW, nullptr); }
  bool boxShown() const { return IsWindowVisible(box()) != FALSE; }

  // Opens the cell of row 1 and column 1, and types over its text.
  void editWith(const char* text) {
    clickCell(list_, 1, 1);
    ASSERT_TRUE(boxShown());
    typeText(box(), text);
  }

  ControlHost host_;
  CCustomListCtrl list_;
};

TEST_F(CellEditing, OpensOverTheCellOfTheActiveRowOnly) {
  struct Case {
    int row;
    UINT message;
    bool allowed;
    bool opens;
  };
  for (const Case& c : {Case{1, WM_LBUTTONDOWN, true, true}, Case{1, WM_LBUTTONDBLCLK, true, true},
                        Case{1, WM_LBUTTONDOWN, false, false}, Case{1, WM_RBUTTONDOWN, true, false},
                        Case{1, WM_RBUTTONDBLCLK, true, false}, Case{1, WM_MBUTTONDOWN, true, false},
                        Case{1, WM_MBUTTONDBLCLK, true, false}, Case{2, WM_LBUTTONDOWN, true, false}}) {
    list_.allowEditing(c.allowed);
    clickCell(list_, c.row, 1, c.message);
    EXPECT_EQ(list_.editing(), c.opens) << c.row << ' ' << c.message;
    EXPECT_EQ(boxShown(), c.opens) << c.row << ' ' << c.message;
    list_.endEdit(false);
  }
  list_.allowEditing(true);
  clickCell(list_, 2, 0);  // the click before made this row the active one
  EXPECT_TRUE(list_.editing());
}

TEST_F(CellEditing, BoxMatchesTheCell) {
  clickCell(list_, 1, 1);
  ASSERT_TRUE(boxShown());
  RECT cell{};
  ListView_GetSubItemRect(list_.handle(), 1, 1, LVIR_LABEL, &cell);
  RECT place{};
  GetWindowRect(box(), &place);
  MapWindowPoints(nullptr, list_.handle(), reinterpret_cast<POINT*>(&place), 2);
  InflateRect(&cell, 0, GetSystemMetrics(SM_CYBORDER));  // its frame
  EXPECT_TRUE(EqualRect(&place, &cell));
  EXPECT_EQ(SendMessageW(box(), WM_GETFONT, 0, 0), list_.send(WM_GETFONT));
  EXPECT_EQ(GetFocus(), box());
  wchar_t text[32] = L"";
  GetWindowTextW(box(), text, 32);
  EXPECT_STREQ(text, L"cell 1");
}

TEST_F(CellEditing, KeysKeepOrDropTheText) {
  struct Case {
    const char* typed;
    UINT key;
    const char* cell;
    std::size_t messages;
  };
  for (const Case& c : {Case{"new", VK_ESCAPE, "cell 1", 0}, Case{"cell 1", VK_RETURN, "cell 1", 0},
                        Case{"", VK_RETURN, "cell 1", 0}, Case{"new", VK_RETURN, "new", 1}}) {
    host_.changed.clear();
    editWith(c.typed);
    pressKey(box(), c.key, {}, host_.handle());
    EXPECT_FALSE(list_.editing());
    EXPECT_FALSE(boxShown());
    EXPECT_EQ(GetFocus(), list_.handle());
    EXPECT_EQ(list_.itemText(1, 1), c.cell);
    EXPECT_EQ(host_.changed, ControlHost::Pairs(c.messages, {1, 1}));
  }
}

TEST_F(CellEditing, WhateverElseHappensKeepsTheTextOnce) {
  const std::pair<const char*, std::function<void()>> causes[] = {
      {"focus", [&] { SetFocus(host_.handle()); }},
      {"other cell", [&] { clickCell(list_, 1, 0); }},
      {"right click", [&] { clickCell(list_, 0, 0, WM_RBUTTONDOWN); }},
      {"text", [&] { list_.setItemText(0, 0, "name 0"); }},
      {"insert", [&] { list_.insertItem(3, "other"); }},
      {"delete", [&] { list_.deleteItem(2); }},
      {"insert column", [&] { list_.insertColumn(2, "", 0, 10); }},
      {"delete column", [&] { list_.deleteColumn(2); }},
      {"sort", [&] { list_.sort(0, true); }},
      {"column width", [&] { ListView_SetColumnWidth(list_.handle(), 0, 120); }},
      {"scroll", [&] { list_.send(WM_VSCROLL, SB_LINEDOWN); }},
  };
  for (const auto& [name, cause] : causes) {
    host_.changed.clear();
    SetFocus(list_.handle());
    ListView_SetItemState(list_.handle(), 1, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    editWith(name);
    cause();
    EXPECT_FALSE(list_.editing()) << name;
    EXPECT_EQ(list_.itemText(1, 1), name);
    EXPECT_EQ(host_.changed, (ControlHost::Pairs{{1, 1}})) << name;
  }
}

TEST_F(CellEditing, DeletingByStateGivesTheTextUp) {
  editWith("lost");
  EXPECT_EQ(list_.deleteItems(CCustomListCtrl::notSelected), 2);
  EXPECT_EQ(columnOf(list_, 1), Texts{"cell 1"});
  EXPECT_TRUE(host_.changed.empty());
  EXPECT_FALSE(boxShown());
}

TEST_F(CellEditing, LongTextOfSeveralLinesStaysWhole) {
  const std::string lines = "first\r\nsecond " + std::string(40000, 'x');
  list_.setItemText(1, 1, lines);
  clickCell(list_, 1, 1);
  ASSERT_TRUE(boxShown());
  pressKey(box(), VK_RETURN);
  EXPECT_EQ(list_.itemText(1, 1), lines);
  EXPECT_TRUE(host_.changed.empty());
}

TEST_F(CellEditing, EndsWithTheWindow) {
  editWith("lost");
  DestroyWindow(list_.handle());
  EXPECT_FALSE(list_.editing());
  EXPECT_TRUE(host_.changed.empty());
}

}  // namespace
