#include <gtest/gtest.h>

#include "control_host.h"

namespace {

using skin::CCustomListCtrl;
using Texts = std::vector<std::string>;

class CustomList : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(list_.createChild(WC_LISTVIEWW,
                                  LVS_SMALLICON | LVS_EDITLABELS | LVS_NOSCROLL | LVS_SHOWSELALWAYS,
                                  host_.whole(), host_.handle(), 7));
    list_.addExtendedStyle(LVS_EX_CHECKBOXES);
    EXPECT_EQ(list_.insertColumn(0, "Name", LVCFMT_LEFT, 150), 0);
    EXPECT_EQ(list_.insertColumn(1, "Number", LVCFMT_LEFT, 150), 1);
  }

  void fill(const Texts& numbers) {
    for (const std::string& number : numbers) {
      const int row = list_.insertItem(list_.itemCount(), "n" + number, std::stoi(number, nullptr, 16));
      ASSERT_TRUE(list_.setItemText(row, 1, number));
    }
  }

  void clickHeading(int column) {
    const HWND header = ListView_GetHeader(list_.handle());
    RECT place{};
    Header_GetItemRect(header, column, &place);
    const LPARAM at = MAKELPARAM((place.left + place.right) / 2, place.bottom / 2);
    SendMessageW(header, WM_LBUTTONDOWN, MK_LBUTTON, at);
    SendMessageW(header, WM_LBUTTONUP, 0, at);
  }

  void setFocused(int row) { ListView_SetItemState(list_.handle(), row, LVIS_FOCUSED, LVIS_FOCUSED); }

  LRESULT drawStage(DWORD stage, int row, int column, NMLVCUSTOMDRAW& draw) {
    draw.nmcd.hdr = {list_.handle(), 7, NM_CUSTOMDRAW};
    draw.nmcd.dwDrawStage = stage;
    draw.nmcd.dwItemSpec = static_cast<DWORD_PTR>(row);
    draw.iSubItem = column;
    return host_.send(WM_NOTIFY, 7, reinterpret_cast<LPARAM>(&draw));
  }

  ControlHost host_;
  CCustomListCtrl list_;
};

TEST_F(CustomList, IsCreatedAsAScrollingReport) {
  const auto style = static_cast<DWORD>(GetWindowLongW(list_.handle(), GWL_STYLE));
  EXPECT_EQ(style & LVS_TYPEMASK, static_cast<DWORD>(LVS_REPORT));
  EXPECT_EQ(style & (LVS_EDITLABELS | LVS_NOSCROLL), 0U);
  EXPECT_NE(style & LVS_SHOWSELALWAYS, 0U);
  EXPECT_NE(style & WS_VISIBLE, 0U);
  constexpr DWORD lines = LVS_EX_GRIDLINES | LVS_EX_FULLROWSELECT;
  EXPECT_EQ(ListView_GetExtendedListViewStyle(list_.handle()) & lines, lines);
}

TEST_F(CustomList, HoldsTextsOfAnyLengthAndLanguage) {
  const std::string text = std::string(5000, 'x') + "\xC3\xA9\xED\x95\x9C\xF0\x9F\x99\x82";
  ASSERT_EQ(list_.insertItem(99, text, 5), 0);
  EXPECT_EQ(list_.itemText(0, 0), text);
  EXPECT_EQ(list_.itemText(0, 1), "");
  EXPECT_EQ(list_.itemText(3, 0), "");
  EXPECT_EQ(list_.itemData(0), 5);
  EXPECT_TRUE(list_.setItemData(0, 6));
  EXPECT_EQ(list_.itemData(0), 6);
  EXPECT_FALSE(list_.setItemText(1, 0, "none"));
  EXPECT_FALSE(list_.deleteItem(1));
  EXPECT_EQ(list_.findItem(text), 0);
  EXPECT_EQ(list_.findItem(text.substr(0, 300)), -1);
  EXPECT_FALSE(list_.appendIfMissing("X" + text.substr(1)));
  EXPECT_TRUE(list_.appendIfMissing("abc"));
  EXPECT_FALSE(list_.appendIfMissing("ABC"));
  EXPECT_TRUE(list_.appendIfMissing("ab"));
  EXPECT_EQ(columnOf(list_, 0), (Texts{text, "abc", "ab"}));
}

TEST_F(CustomList, DrawsEachCellInItsColours) {
  fill({"1", "2"});
  list_.setTextColor(1, 1, RGB(1, 2, 3));
  list_.setBackgroundColor(1, 0, RGB(4, 5, 6));
  list_.insertColumn(1, "Between", LVCFMT_LEFT, 50);
  EXPECT_EQ(list_.textColor(1, 2), RGB(1, 2, 3));

  NMLVCUSTOMDRAW draw{};
  EXPECT_EQ(drawStage(CDDS_PREPAINT, 0, 0, draw), CDRF_NOTIFYITEMDRAW);
  EXPECT_EQ(drawStage(CDDS_ITEMPREPAINT, 0, 0, draw), CDRF_NOTIFYSUBITEMDRAW);
  for (int row = 0; row < 2; ++row)
    for (int column = 0; column < 3; ++column) {
      EXPECT_EQ(drawStage(CDDS_ITEMPREPAINT | CDDS_SUBITEM, row, column, draw), CDRF_DODEFAULT);
      EXPECT_EQ(draw.clrText, row == 1 && column == 2 ? RGB(1, 2, 3) : GetSysColor(COLOR_WINDOWTEXT));
      EXPECT_EQ(draw.clrTextBk, row == 1 && column == 0 ? RGB(4, 5, 6) : GetSysColor(COLOR_WINDOW));
    }

  EXPECT_TRUE(list_.deleteColumn(0));
  EXPECT_FALSE(list_.deleteColumn(2));
  EXPECT_EQ(list_.textColor(1, 1), RGB(1, 2, 3));
  EXPECT_EQ(list_.backgroundColor(1, 0), GetSysColor(COLOR_WINDOW));
  list_.setTextColor(1, 1, std::nullopt);
  EXPECT_EQ(list_.textColor(1, 1), GetSysColor(COLOR_WINDOWTEXT));
  list_.setTextColor(9, 9, 1);  // no such cell
}

TEST_F(CustomList, PutsTheColourOnTheScreen) {
  fill({"1", "2"});
  const COLORREF paint = RGB(10, 200, 30);
  list_.setBackgroundColor(1, 1, paint);
  UpdateWindow(list_.handle());
  const HDC screen = GetDC(list_.handle());
  for (int row = 0; row < 2; ++row)
    for (int column = 0; column < 2; ++column) {
      RECT cell{};
      ListView_GetSubItemRect(list_.handle(), row, column, LVIR_LABEL, &cell);
      const COLORREF seen = GetPixel(screen, cell.right - 10, (cell.top + cell.bottom) / 2);
      EXPECT_EQ(seen == paint, row == 1 && column == 1) << row << ", " << column;
    }
  ReleaseDC(list_.handle(), screen);
}

TEST_F(CustomList, SortsByHeadingAndTurnsAround) {
  fill({"10", "9", "A"});
  clickHeading(1);
  EXPECT_EQ(columnOf(list_, 1), (Texts{"9", "A", "10"}));
  clickHeading(1);
  EXPECT_EQ(columnOf(list_, 1), (Texts{"10", "A", "9"}));
  clickHeading(0);
  EXPECT_EQ(columnOf(list_, 0), (Texts{"n10", "n9", "nA"}));
  clickHeading(1);
  EXPECT_EQ(columnOf(list_, 1), (Texts{"9", "A", "10"}));
  list_.sort(-1, true);
  list_.sort(2, true);
  EXPECT_EQ(host_.sorted, (ControlHost::Pairs{{1, 1}, {1, 0}, {0, 1}, {1, 1}}));
  EXPECT_EQ(list_.sortColumn(), 1);
}

TEST_F(CustomList, SortsDatesAsTheSystemReadsThem) {
  fill({"1", "2", "3"});
  const Texts dates{"12/24/2004", "3/1/2005", "11/30/2004"};
  for (int row = 0; row < 3; ++row) list_.setItemText(row, 1, dates.at(static_cast<std::size_t>(row)));
  list_.sort(1, true);
  EXPECT_EQ(columnOf(list_, 1), (Texts{"11/30/2004", "12/24/2004", "3/1/2005"}));
}

TEST_F(CustomList, SortMovesEverythingOfARowAndKeepsSeparators) {
  fill({"3", "1", "0", "5", "4"});
  list_.setSeparator("0");
  list_.select(0);
  list_.select(3);
  list_.setChecked(1, true);
  setFocused(4);
  list_.setTextColor(0, 1, RGB(1, 1, 1));

  list_.sort(1, true);
  EXPECT_EQ(columnOf(list_, 1), (Texts{"1", "3", "0", "4", "5"}));
  EXPECT_EQ(columnOf(list_, 0), (Texts{"n1", "n3", "n0", "n4", "n5"}));
  using enum CCustomListCtrl::RowState;
  const unsigned expected[] = {notSelected | checked | notFocused, selected | notChecked | notFocused,
                               notSelected | notChecked | notFocused, notSelected | notChecked | focused,
                               selected | notChecked | notFocused};
  const LPARAM values[] = {1, 3, 0, 4, 5};
  for (int row = 0; row < 5; ++row) {
    EXPECT_EQ(list_.stateOf(row), anyRow | expected[row]) << row;
    EXPECT_EQ(list_.itemData(row), values[row]);
  }
  EXPECT_EQ(list_.textColor(1, 1), RGB(1, 1, 1));
  EXPECT_EQ(list_.stateOf(5), 0U);
}

TEST_F(CustomList, DeletesByState) {
  using enum CCustomListCtrl::RowState;
  struct Case {
    unsigned mask;
    Texts left;
  };
  // Rows 1 and 2 are selected, 2 and 3 checked, 1 has the focus.
  for (const Case& c : {Case{anyRow, {}}, Case{selected, {"0", "3"}}, Case{notSelected, {"1", "2"}},
                        Case{checked, {"0", "1"}}, Case{notChecked, {"2", "3"}},
                        Case{focused, {"0", "2", "3"}}, Case{notFocused, {"1"}},
                        Case{selected | checked, {"0", "1", "3"}}, Case{anyRow | selected, {"0", "3"}},
                        Case{selected | notSelected, {"0", "1", "2", "3"}}, Case{0, {"0", "1", "2", "3"}}}) {
    list_.deleteItems(anyRow);
    fill({"0", "1", "2", "3"});
    list_.select(1);
    list_.select(2);
    list_.setChecked(2, true);
    list_.setChecked(3, true);
    setFocused(1);
    EXPECT_EQ(list_.deleteItems(c.mask), 4 - static_cast<int>(c.left.size())) << c.mask;
    EXPECT_EQ(columnOf(list_, 1), c.left) << c.mask;
    for (int row = 0; row < list_.itemCount(); ++row)
      EXPECT_EQ(std::to_string(list_.itemData(row)), list_.itemText(row, 1));
  }
}

TEST_F(CustomList, ReportsCheckMarksSetByTheMouse) {
  fill({"0", "1"});
  list_.allowEditing(true);
  list_.select(1);
  setFocused(1);
  std::vector<std::pair<int, bool>> reports;
  list_.reportChecks([&](int row, bool checked, UINT message) {
    EXPECT_EQ(message, static_cast<UINT>(WM_LBUTTONDOWN));
    reports.emplace_back(row, checked);
  });
  RECT label{};
  ListView_GetItemRect(list_.handle(), 1, &label, LVIR_LABEL);
  const LPARAM box = MAKELPARAM(label.left - 8, (label.top + label.bottom) / 2);
  for (int click = 0; click < 2; ++click) {
    list_.send(WM_LBUTTONDOWN, MK_LBUTTON, box);
    list_.send(WM_LBUTTONUP, 0, box);
    EXPECT_FALSE(list_.editing());
  }
  list_.setChecked(0, true);  // not by the mouse
  clickCell(list_, 0, 1);
  EXPECT_EQ(reports, (std::vector<std::pair<int, bool>>{{1, true}, {1, false}}));
}

TEST_F(CustomList, SurvivesItsWindowAndServesTheNextDialog) {
  fill({"1", "2"});
  list_.sort(1, true);
  list_.setSmallImages(framework::UniqueImageList(ImageList_Create(16, 16, ILC_COLOR32, 1, 1)));
  list_.setSmallImages(framework::UniqueImageList(ImageList_Create(8, 8, ILC_COLOR32, 1, 1)));
  DestroyWindow(list_.handle());
  EXPECT_EQ(list_.handle(), nullptr);

  EXPECT_FALSE(list_.subclass(host_.handle(), 8));
  const HWND plain = host_.addControl(WC_LISTVIEWW, LVS_REPORT, 8);
  LVCOLUMNW column{};
  ListView_InsertColumn(plain, 0, &column);
  ASSERT_TRUE(list_.subclass(host_.handle(), 8));
  EXPECT_EQ(list_.sortColumn(), -1);
  list_.insertItem(0, "again");
  list_.setTextColor(0, 0, RGB(9, 9, 9));
  EXPECT_EQ(list_.textColor(0, 0), RGB(9, 9, 9));
}

}  // namespace
