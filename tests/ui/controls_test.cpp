#include "running_app.h"
#include "skin/skin_dialog.h"

// Buttons and dialogs that wear the skin.
namespace {

constexpr COLORREF ground = RGB(0xD4, 0xDE, 0xEA), ink = RGB(0x0B, 0x4F, 0x95);

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

  Probe probe_;
};

TEST_F(Controls, AButtonShowsItsStateAndHandsTheFocusOn) {
  probe_.show([&](HWND) {
    skin::CButtonEx& button = probe_.cancel;
    button.setText("Second");
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
  const Step stands = [](HWND dialog) {
    const HWND text = item(dialog, IDC_SAVE_QUESTION);
    SetWindowTextW(text, L"Words");
    RECT at{}, inner{};
    GetWindowRect(dialog, &at);
    GetClientRect(text, &inner);
    EXPECT_EQ((Rows{at.left, at.top, at.right, at.bottom, inner.right}), (Rows{30, 40, 330, 240, 100}));
    EXPECT_TRUE(pictureOf(dialog)[0] == ground && contains(pictureOf(text), ink));
  };
  probe_.show(stands);
  // Off the screen it keeps its size only.
  folder_.write("Skin/Default/SMS/skin.ini", "[Probe]\r\nDlgRect=-300,40,0,240\r\n");
  probe_.show([](HWND dialog) {
    RECT at{}, work{};
    GetWindowRect(dialog, &at);
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    EXPECT_EQ(
        (Rows{at.left, at.top, at.right, at.bottom}),
        (Rows{work.right / 2 - 150, work.bottom / 2 - 100, work.right / 2 + 150, work.bottom / 2 + 100}));
  });
}

}  // namespace
