#include "running_app.h"
#include "skin/custom_list_ctrl.h"
#include "skin/skin_dialog.h"

// The controls and dialogs that wear the skin, in a dialog of their own.
namespace {

using skin::CCustomListCtrl;
using enum CCustomListCtrl::RowState;

constexpr COLORREF ground = RGB(0xD4, 0xDE, 0xEA), ink = RGB(0x0B, 0x4F, 0x95), red = RGB(200, 0, 0);

class Probe : public skin::CSkinDialog {
 public:
  Probe() : CSkinDialog(IDD_SAVE_QUESTION) {}

  skin::CButtonEx ok, cancel;

  void show(const Step& step) {
    const Answerer answerer({step, end(IDOK)});
    doModal(nullptr);
  }

 protected:
  bool onInitDialog() override {
    static constexpr skin::ControlPlace places[] = {{"TextRect", IDC_SAVE_QUESTION}, {"DlgRect", 0}};
    CSkinDialog::onInitDialog();
    skinButtons({{cancel, IDCANCEL}, {ok, IDOK}});
    placeControls("Probe", places);
    return true;
  }
};

class Controls : public Program {
 protected:
  void SetUp() override { ASSERT_TRUE(app_.start()); }

  // The probe with a list of two columns, the second of which holds `cells`.
  void withList(const Texts& cells, const Step& body) {
    probe_.show([&](HWND dialog) {
      constexpr RECT room{0, 0, 400, 300};
      MoveWindow(dialog, 0, 0, 500, 350, TRUE);
      list_.createChild(nullptr, LVS_SMALLICON | LVS_SHOWSELALWAYS, room, dialog, 7);
      list_.addExtendedStyle(LVS_EX_CHECKBOXES);
      for (const int column : {0, 1}) EXPECT_EQ(list_.insertColumn(column, "", LVCFMT_LEFT, 150), column);
      for (const std::string& cell : cells)
        EXPECT_TRUE(list_.setItemText(list_.insertItem(list_.itemCount(), "n" + cell, cell[0]), 1, cell));
      body(dialog);
    });
  }
  std::string cells(int column = 1) { return joined(columnOf(list_.handle(), column), " "); }
  // Presses and releases the mouse button on a cell.
  void click(int row, int column) {
    RECT cell{};
    ListView_GetSubItemRect(list_.handle(), row, column, LVIR_LABEL, &cell);
    const LPARAM at = MAKELPARAM(cell.left + 50, cell.top + 5);
    // The list may wait within the press until the button is released.
    PostMessageW(list_.handle(), WM_LBUTTONUP, 0, at);
    list_.send(WM_LBUTTONDOWN, MK_LBUTTON, at);
    runMessages(probe_.handle());
  }

  CCustomListCtrl list_;
  Probe probe_;
};

TEST_F(Controls, AListColorsAndDeletesRows) {
  withList({"0", "1", "2", "3"}, [&](HWND) {
    list_.setTextColor(0, 1, red);
    list_.setBackgroundColor(1, 1, ink);
    const Picture picture = pictureOf(list_.handle());
    EXPECT_TRUE(contains(picture, red) && contains(picture, ink));
    select(list_.handle(), {1, 2});
    for (const int row : {2, 3}) list_.setChecked(row, true);
    EXPECT_EQ(list_.deleteItems(selected | checked), 1);
    EXPECT_EQ(list_.deleteItems(notSelected), 2);
    EXPECT_EQ(cells(), "1");
  });
}

TEST_F(Controls, AListSortsByHeadingsWithAllThatBelongsToARow) {
  withList({"10", "9", "A"}, [&](HWND) {
    select(list_.handle(), {0});
    list_.setChecked(1, true);
    list_.setTextColor(0, 1, red);
    std::string sorted;
    for (const int column : {1, 1, 0, 1}) {
      for (const UINT button : {WM_LBUTTONDOWN, WM_LBUTTONUP})
        SendMessageW(ListView_GetHeader(list_.handle()), button, 0, MAKELPARAM(150 * column + 50, 5));
      sorted += cells() + "|";
    }
    EXPECT_EQ(sorted, "9 A 10|10 A 9|10 9 A|9 A 10|");
    EXPECT_TRUE(list_.stateOf(0) & checked && list_.stateOf(2) & selected && list_.stateOf(2) & notChecked);
    EXPECT_TRUE(cells(0) == "n9 nA n10" && list_.itemData(1) == 'A' && list_.textColor(2, 1) == red);
  });
}

TEST_F(Controls, AClickEditsTheCellOfTheActiveRow) {
  withList({"0", "1"}, [&](HWND dialog) {
    const HWND box = FindWindowExW(list_.handle(), nullptr, WC_EDITW, nullptr);
    list_.allowEditing(true);
    for (const WPARAM key : {VK_ESCAPE, VK_RETURN}) {
      SetFocus(list_.handle());
      select(list_.handle(), {1});
      click(1, 1);
      EXPECT_TRUE(list_.editing() && GetFocus() == box);
      for (const char c : {'n', 'e', 'w'}) SendMessageW(box, WM_CHAR, c, 1);
      PostMessageW(box, WM_KEYDOWN, key, 1), runMessages(dialog);
      EXPECT_FALSE(list_.editing() || IsWindowVisible(box));
      EXPECT_EQ(cells(), key == VK_ESCAPE ? "0 1" : "0 new");
    }
  });
}

TEST_F(Controls, AButtonShowsItsStateAndHandsTheFocusOn) {
  probe_.show([&](HWND) {
    skin::CButtonEx& button = probe_.cancel;
    const Picture calm = pictureOf(button.handle());
    EXPECT_TRUE(contains(calm, ink) && calm[0] == ground);
    button.send(WM_MOUSEMOVE, 0, 0x50005), button.send(WM_MOUSEHOVER, 0, 0x50005);
    const Picture hot = pictureOf(button.handle());
    button.send(BM_SETSTATE, TRUE);
    EXPECT_TRUE(hot != calm && pictureOf(button.handle()) != hot);
    // A button that is disabled hands the focus on.
    SetFocus(button.handle());
    EXPECT_TRUE(!button.EnableWindow(0) && GetFocus() == probe_.ok.handle());
  });
}

TEST_F(Controls, ADialogStandsWhereTheLayoutFileSays) {
  folder_.write("Skin/Default/SMS/skin.ini", "[Probe]\r\nTextRect=10,20,110,45\r\nDlgRect=30,40,330,240\r\n");
  probe_.show([](HWND dialog) {
    const HWND text = item(dialog, IDC_SAVE_QUESTION);
    RECT place{}, inner{};
    GetWindowRect(dialog, &place);
    GetClientRect(text, &inner);
    EXPECT_EQ((Rows{place.left, place.top, place.right, place.bottom, inner.right}),
              (Rows{30, 40, 330, 240, 100}));
    EXPECT_TRUE(pictureOf(dialog)[0] == ground && contains(pictureOf(text), ink));
  });
}

}  // namespace
