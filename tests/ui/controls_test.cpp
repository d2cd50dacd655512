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
  std::string told;  // what a list has told: "sorted 1 1, changed 0 1, "

  void show(const Step& step, HWND owner = nullptr) {
    const Answerer answerer({step, end(IDOK)});
    doModal(owner);
  }

 protected:
  bool onInitDialog() override {
    static constexpr skin::ControlPlace places[] = {
        {"TextRect", IDC_SAVE_QUESTION}, {"OkRect", IDOK}, {"DlgRect", 0}};
    CSkinDialog::onInitDialog();
    skinButtons({{cancel, IDCANCEL}, {ok, IDOK}});
    placeControls("Probe", places);
    return true;
  }
  LRESULT windowProc(UINT message, WPARAM a, LPARAM b) override {
    const bool sorted = message == CCustomListCtrl::sortedMessage;
    if (sorted || message == CCustomListCtrl::cellChangedMessage)
      told += (sorted ? "sorted " : "changed ") + std::to_string(a) + " " + std::to_string(b) + ", ";
    return CSkinDialog::windowProc(message, a, b);
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
      fill(cells);
      body(dialog);
    });
  }
  void fill(const Texts& cells) {
    list_.deleteItems(anyRow);
    for (const std::string& cell : cells)
      EXPECT_TRUE(list_.setItemText(list_.insertItem(list_.itemCount(), "n" + cell, cell[0]), 1, cell));
  }
  void activate(int row, UINT states = LVIS_SELECTED | LVIS_FOCUSED) {
    ListView_SetItemState(list_.handle(), row, states, states);
  }
  std::string cells(int column = 1) { return joined(columnOf(list_.handle(), column), " "); }
  RECT cell(int row, int column) {
    RECT cell{};
    if (column == 0) ListView_GetItemRect(list_.handle(), row, &cell, LVIR_LABEL);
    if (column > 0) ListView_GetSubItemRect(list_.handle(), row, column, LVIR_LABEL, &cell);
    return cell;
  }
  // Presses and releases a mouse button, so far right of a cell's left edge.
  void click(int row, int column, UINT down = WM_LBUTTONDOWN, int right = 50) {
    const LPARAM at = MAKELPARAM(cell(row, column).left + right, cell(row, column).top + 5);
    // The list may wait within the press until the button is released.
    PostMessageW(list_.handle(), WM_LBUTTONUP + (down - WM_LBUTTONDOWN) / 3 * 3, 0, at);
    list_.send(down, MK_LBUTTON, at);
    runMessages(probe_.handle());
  }

  CCustomListCtrl list_;
  Probe probe_;
};

TEST_F(Controls, AListHoldsTextsOfAnyLengthAndColors) {
  withList({"a", "b"}, [&](HWND) {
    const std::string text = std::string(5000, 'x') + "é한🙂";
    EXPECT_TRUE(list_.appendIfMissing(text) && !list_.appendIfMissing("X" + text.substr(1)));
    EXPECT_TRUE(list_.appendIfMissing(text.substr(1)) && !list_.appendIfMissing("NA"));
    EXPECT_EQ(cells(0), "na nb " + text + " " + text.substr(1));
    EXPECT_FALSE(list_.setItemText(9, 0, "") || list_.deleteItem(9) || list_.deleteColumn(2) ||
                 list_.deleteColumn(-1));
    const auto colors = [&] {
      const Picture picture = pictureOf(list_.handle());
      return std::pair(contains(picture, red), contains(picture, ink));
    };
    list_.setTextColor(0, 1, red);
    list_.setBackgroundColor(1, 1, ink);
    EXPECT_EQ(colors(), std::pair(true, true));
    list_.insertColumn(1, "Between", LVCFMT_LEFT, 50);
    EXPECT_TRUE(list_.textColor(0, 2) == red && list_.backgroundColor(1, 1) == GetSysColor(COLOR_WINDOW));
    list_.deleteColumn(1);
    list_.setTextColor(0, 1, std::nullopt);
    EXPECT_EQ(colors(), std::pair(false, true));
    list_.setBackgroundColor(1, 1, std::nullopt);
    EXPECT_EQ(colors(), std::pair(false, false));
  });
}

TEST_F(Controls, AListSortsByHeadingsWithAllThatBelongsToARow) {
  withList({"10", "9", "A"}, [&](HWND) {
    std::string sorted;
    for (const int column : {1, 1, 0, 1}) {
      for (const UINT button : {WM_LBUTTONDOWN, WM_LBUTTONUP})
        SendMessageW(ListView_GetHeader(list_.handle()), button, 0, MAKELPARAM(150 * column + 50, 5));
      sorted += cells() + "|";
    }
    EXPECT_EQ(sorted, "9 A 10|10 A 9|10 9 A|9 A 10|");
    EXPECT_EQ(probe_.told, "sorted 1 1, sorted 1 0, sorted 0 1, sorted 1 1, ");
    fill({"3/1/2005", "12/24/2004"});  // dates as the system reads them
    list_.sort(1, true);
    EXPECT_EQ(cells(), "12/24/2004 3/1/2005");
    fill({"3", "1", "0", "5", "4"});
    list_.setSeparator("0");
    activate(0, LVIS_SELECTED);
    activate(4, LVIS_FOCUSED);
    list_.setChecked(1, true);
    list_.setTextColor(0, 1, red);
    list_.sort(1, true);
    std::string states;
    for (int row = 0; row < 6; ++row) states += std::to_string(list_.stateOf(row)) + " ";
    EXPECT_EQ(states + cells(0), "77 83 85 53 85 0 n1 n3 n0 n4 n5");  // checked, selected, none, focused
    EXPECT_TRUE(list_.itemData(0) == '1' && list_.itemData(4) == '5' && list_.textColor(1, 1) == red);
  });
}

TEST_F(Controls, AListDeletesByStateAndServesTheNextDialog) {
  for (int dialog = 0; dialog < 2; ++dialog)
    withList({}, [&](HWND) {
      EXPECT_EQ(list_.sortColumn(), -1);
      list_.setSmallImages(framework::UniqueImageList(ImageList_Create(16, 16, ILC_COLOR32, 1, 1)));
      std::string left;
      for (const unsigned mask : {unsigned{anyRow}, unsigned{selected}, unsigned{notChecked},
                                  unsigned{notFocused}, selected | checked, selected | notSelected, 0U}) {
        fill({"0", "1", "2", "3"});
        for (const int row : {1, 2}) activate(row, LVIS_SELECTED), list_.setChecked(row + 1, true);
        activate(1, LVIS_FOCUSED);
        left += std::to_string(list_.deleteItems(mask));
        left += ": " + cells() + ", ";
      }
      EXPECT_EQ(left, "4: , 2: 0 3, 2: 2 3, 3: 1, 1: 0 1 3, 0: 0 1 2 3, 0: 0 1 2 3, ");
      list_.sort(1, true);
      list_.allowEditing(true);
      std::string reports;
      list_.reportChecks([&](int row, bool is, UINT) { reports += std::to_string(row) + (is ? "+" : "-"); });
      activate(1);
      for (int times = 0; times < 2; ++times) click(1, 0, WM_LBUTTONDOWN, -24);
      EXPECT_FALSE(list_.editing());
      EXPECT_EQ(reports, "1+1-");
    });
}

TEST_F(Controls, AClickEditsTheCellOfTheActiveRow) {
  withList({"0", "1", "2"}, [&](HWND dialog) {
    const HWND box = FindWindowExW(list_.handle(), nullptr, WC_EDITW, nullptr);
    std::string opened;
    const auto tryButton = [&](int row, UINT button) {
      click(row, 1, button);
      opened += list_.editing() != IsWindowVisible(box) ? "half " : list_.editing() ? "yes " : "no ";
      list_.endEdit(false);
    };
    activate(1);
    tryButton(1, WM_LBUTTONDOWN);
    list_.allowEditing(true);
    for (UINT button = WM_LBUTTONDOWN; button <= WM_MBUTTONDBLCLK; ++button)
      if (button % 3 != WM_LBUTTONUP % 3) tryButton(1, button);
    for (int times = 0; times < 2; ++times) tryButton(2, WM_LBUTTONDOWN);
    EXPECT_EQ(opened, "no yes yes no no no no no yes ");
    // Opens the cell, types over its text, and has the edit ended; the cell and what the parent was told.
    const auto edit = [&](const std::string& text, const std::function<void()>& end) {
      SetFocus(list_.handle());
      activate(1);
      probe_.told.clear();
      click(1, 1);
      EXPECT_EQ(GetFocus(), box);
      for (const char c : text) SendMessageW(box, WM_CHAR, c, 1);
      end();
      EXPECT_FALSE(list_.editing() || IsWindowVisible(box)) << text;
      return list_.itemText(1, 1) + ": " + probe_.told;
    };
    const auto key = [&](WPARAM code) {
      return [=] { PostMessageW(box, WM_KEYDOWN, code, 1), runMessages(dialog); };
    };
    EXPECT_EQ(edit("", key(VK_RETURN)), "1: ");
    EXPECT_EQ(edit("new", key(VK_ESCAPE)), "1: ");
    EXPECT_EQ(edit("new", key(VK_RETURN)), "new: changed 1 1, ");
    EXPECT_EQ(GetFocus(), list_.handle());
    const std::function<void()> ends[] = {
        [&] { SetFocus(dialog); },
        [&] { click(1, 0); },
        [&] { click(0, 0, WM_RBUTTONDOWN); },
        [&] { list_.setItemText(0, 0, "n0"); },
        [&] { list_.insertItem(3, "other"); },
        [&] { list_.deleteItem(2); },
        [&] { list_.insertColumn(2, "", 0, 10); },
        [&] { list_.deleteColumn(2); },
        [&] { list_.sort(0, true), probe_.told.erase(probe_.told.find("sorted")); },
        [&] { ListView_SetColumnWidth(list_.handle(), 0, 120); },
        [&] { list_.send(WM_VSCROLL, SB_LINEDOWN); },
    };
    for (const auto& end : ends) {
      const std::string text = std::to_string(&end - ends);
      EXPECT_EQ(edit(text, end), text + ": changed 1 1, ");
    }
    edit("lost", [&] { list_.deleteItems(notSelected); });
    EXPECT_EQ(cells() + probe_.told, "10");
  });
}

TEST_F(Controls, AButtonLooksDifferentInEveryState) {
  probe_.show([&](HWND dialog) {
    skin::CButtonEx &button = probe_.cancel, &other = probe_.ok;
    std::vector<Picture> pictures;
    const std::function<void()> states[] = {
        [&] { button.send(WM_MOUSELEAVE), button.setText("Second"); },
        [&] { button.send(WM_MOUSEMOVE, 0, 0x50005), button.send(WM_MOUSEHOVER, 0, 0x50005); },
        [&] { button.send(BM_SETSTATE, TRUE); },
        [&] { button.send(BM_SETSTATE), button.send(WM_MOUSELEAVE), button.send(BM_SETSTYLE, 1, 1); },
        [&] { SetFocus(button.handle()); },
        [&] { SetFocus(other.handle()), button.send(BM_SETSTYLE, 0, 1), button.EnableWindow(0); },
        [&] { button.EnableWindow(1), button.setText("Other"); },
        [&] { button.SetTextFont("", 0, red, 1); },
        [&] { button.SkinEnabled = 0, button.send(WM_UPDATEUISTATE); },
        [&] { button.SkinEnabled = 1, button.SetTextFont("", 0, 0, 0), button.SetSkinImage("none"); },
    };
    for (const auto& enter : states) {
      enter();
      pictures.push_back(pictureOf(button.handle()));
      EXPECT_EQ(std::ranges::count(pictures, pictures.back()), 1) << pictures.size();
      EXPECT_EQ(contains(pictures.back(), red), pictures.size() == 8) << pictures.size();
    }
    EXPECT_TRUE(contains(pictures[0], ink) && pictures[0][0] == ground);
    // A button that is disabled hands the focus on.
    EXPECT_TRUE(GetFocus() == other.handle() && !other.EnableWindow(0) && GetFocus() == button.handle());
    EXPECT_TRUE(other.EnableWindow(1) && !other.EnableWindow(1) && GetFocus() == button.handle());
    const std::tuple<const char*, int, std::uint8_t, std::string> fonts[] = {
        {"Arial", 14, 0, "Arial -19"},
        {"", 11, 7, "MS Shell Dlg -15 bold italic underlined"},
        {"", -3, 0, fontOf(dialog)}};
    for (const auto& [name, size, style, wanted] : fonts) {
      probe_.ok.SetTextFont(name, size, 0, style);
      EXPECT_EQ(fontOf(other.handle()), wanted);
    }
  });
}

TEST_F(Controls, ADialogStandsWhereTheLayoutFileSaysOrInTheMiddleOfItsOwner) {
  // Of a control in its dialog, of the dialog on the screen.
  const auto placeOf = [](HWND dialog, UINT id = 0) {
    RECT r{};
    GetWindowRect(item(dialog, id), &r);
    if (id) MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&r), 2);
    return Rows{r.left, r.top, r.right - r.left, r.bottom - r.top};
  };
  Rows usual;
  probe_.show([&](HWND dialog) { usual = placeOf(dialog, IDOK); });
  folder_.write("Skin/Default/SMS/skin.ini",
                "[Probe]\r\nTextRect=10,20,110,45\r\nOkRect=1,2,3\r\nDlgRect=30,40,330,240\r\n[Other]"
                "\r\nOkRect=0,0,9,9\r\n");
  Probe().show([&](HWND dialog) {
    EXPECT_EQ(placeOf(dialog), (Rows{30, 40, 300, 200}));
    EXPECT_EQ(placeOf(dialog, IDC_SAVE_QUESTION), (Rows{10, 20, 100, 25}));
    EXPECT_EQ(placeOf(dialog, IDOK), usual) << "not a rectangle";
    SetDlgItemTextW(dialog, IDC_SAVE_QUESTION, L"Words");
    const Picture text = pictureOf(item(dialog, IDC_SAVE_QUESTION));
    EXPECT_TRUE(pictureOf(dialog)[0] == ground && text[0] == ground && contains(text, ink));
  });
  folder_.write("Skin/Default/SMS/skin.ini", "");
  RECT work{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  const std::tuple<int, int, DWORD> owners[] = {
      {300, 200, WS_VISIBLE}, {-380, 200, WS_VISIBLE}, {300, work.bottom - 40, WS_VISIBLE}, {300, 200, 0}};
  for (const auto& [x, y, visible] : owners) {
    const HWND owner = CreateWindowExW(0, L"Static", L"", WS_OVERLAPPEDWINDOW | visible, x, y, 500, 400,
                                       nullptr, nullptr, nullptr, nullptr);
    Probe().show(
        [&](HWND dialog) {
          const Rows place = placeOf(dialog);
          const int left = visible ? x + (500 - place[2]) / 2 : (work.right - place[2]) / 2;
          const int top = visible ? y + (400 - place[3]) / 2 : (work.bottom - place[3]) / 2;
          EXPECT_NEAR(place[0], std::max(left, 0), 1) << x;
          EXPECT_NEAR(place[1], std::min<int>(top, work.bottom - place[3]), 1) << y;
        },
        owner);
    DestroyWindow(owner);
  }
}

}  // namespace
