#include <gtest/gtest.h>

#include "app/about_dialog.h"
#include "dialog_visit.h"
#include "framework/resources.h"
#include "framework/text.h"
#include "framework/wnd.h"
#include "resources/resource_ids.h"
#include "running_app.h"
#include "skin/delete_confirm_dialog.h"
#include "skin/save_question_dialog.h"
#include "skin/settings.h"
#include "skin/skin_state.h"
#include "version.h"

namespace {

using framework::toWide;

const std::string layoutFile = "Skin\\Default\\SMS\\skin.ini";

std::string textOf(HWND dialog, int id = 0) {
  wchar_t text[512] = L"";
  GetWindowTextW(id ? GetDlgItem(dialog, id) : dialog, text, 512);
  return framework::toUtf8(text);
}

using Place = std::array<LONG, 4>;  // left, top, width, height

// Of a control in its dialog, of the dialog on the screen.
Place placeOf(HWND dialog, int id = 0) {
  RECT r{};
  GetWindowRect(id ? GetDlgItem(dialog, id) : dialog, &r);
  if (id) MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&r), 2);
  return {r.left, r.top, r.right - r.left, r.bottom - r.top};
}

// The same in dialog units; each number is mapped for itself, as the dialog manager does it.
Place inUnits(HWND dialog, LONG left, LONG top, LONG width, LONG height) {
  RECT r{left, top, width, height};
  MapDialogRect(dialog, &r);
  return {r.left, r.top, r.right, r.bottom};
}

class SkinDialog : public testing::Test {
 protected:
  SkinDialog() {
    skin::skinState() = {};
    skin::skinState().moduleDirectory = folder_.path();
  }
  ~SkinDialog() override { skin::skinState() = {}; }

  ProgramFolder folder_{ProgramFolder::Link::none};
};

// Notes what it is asked to do.
class NotingButton : public skin::CButtonEx {
 public:
  explicit NotingButton(std::vector<std::string>& log) : log_(log) {}
  void SetSkinImage(const std::string& path) override {
    log_.push_back(std::to_string(GetDlgCtrlID(handle())) + " " + path);
    CButtonEx::SetSkinImage(path);
  }

 private:
  std::vector<std::string>& log_;
};

struct DeleteAllDialog : skin::DeleteConfirmDialog {
  DeleteAllDialog() { deleteAll = 1; }
};

template <typename Dialog>
INT_PTR show() {
  return Dialog().doModal(nullptr);
}

class ProbeDialog : public skin::CSkinDialog {
 public:
  ProbeDialog() : CSkinDialog(IDD_SAVE_QUESTION) {}

  std::vector<std::string> log;
  NotingButton ok{log};
  NotingButton cancel{log};

  INT_PTR visit(const DialogVisit::Step& step, HWND owner = nullptr) {
    const DialogVisit visit({step});
    return doModal(owner);
  }

 protected:
  bool onInitDialog() override {
    static constexpr skin::ControlPlace places[] = {{"TextRect", IDC_SAVE_QUESTION},
                                                    {"OkRect", IDOK},
                                                    {"CancelRect", IDCANCEL},
                                                    {"DlgRect", skin::theDialog}};
    CSkinDialog::onInitDialog();
    skinButtons({{cancel, IDCANCEL}, {ok, IDOK}});
    placeControls("Probe", places);
    return true;
  }
};

TEST_F(SkinDialog, SmallDialogsShowTheirTextsWhateverTheSkinIsLike) {
  struct Case {
    const char* name;
    INT_PTR (*show)();
    int text;
    std::string words;
    Place size, ok, cancel, place;  // in dialog units
  };
  const Place delSize{0, 0, 152, 65}, delOk{20, 37, 50, 14}, delCancel{85, 37, 50, 14},
      delText{36, 10, 78, 14};
  const Case cases[] = {
      {"delete", show<skin::DeleteConfirmDialog>, 1031, "Delete?", delSize, delOk, delCancel, delText},
      {"delete all", show<DeleteAllDialog>, 1031, "Delete All?", delSize, delOk, delCancel, delText},
      {"save",
       show<skin::SaveQuestionDialog>,
       1030,
       "Do you want to save the message?",
       {0, 0, 157, 68},
       {20, 39, 50, 14},
       {85, 39, 50, 14},
       {7, 9, 141, 14}},
      {"about",
       show<app::AboutDialog>,
       IDC_ABOUT_TITLE,
       std::string("Quillet ") + QUILLET_VERSION_TEXT,
       {0, 0, 200, 92},
       {75, 70, 50, 14},
       {},
       {}},
  };
  const auto check = [&](const char* skin) {
    for (const Case& c : cases) {
      const DialogVisit visit({[&](HWND dialog) {
        SCOPED_TRACE(std::string(c.name) + ", " + skin);
        EXPECT_EQ(textOf(dialog), "Quillet");
        EXPECT_EQ(textOf(dialog, c.text), c.words);
        EXPECT_EQ(textOf(dialog, IDOK), "Ok");
        RECT inside{};
        GetClientRect(dialog, &inside);
        const auto units = [&](const Place& r) { return inUnits(dialog, r[0], r[1], r[2], r[3]); };
        EXPECT_EQ((Place{0, 0, inside.right, inside.bottom}), units(c.size));
        EXPECT_EQ(placeOf(dialog, IDOK), units(c.ok));
        if (c.cancel[2]) {
          EXPECT_EQ(textOf(dialog, IDCANCEL), "Cancel");
          EXPECT_EQ(placeOf(dialog, IDCANCEL), units(c.cancel));
          EXPECT_EQ(placeOf(dialog, c.text), units(c.place));
        }
        SendDlgItemMessageW(dialog, IDOK, BM_CLICK, 0, 0);
      }});
      EXPECT_EQ(c.show(), IDOK) << c.name;
    }
  };
  check("whole skin");
  folder_.remove("Skin\\Default\\SMS\\button.png");
  check("no image");
  folder_.write(layoutFile, "[Button]\r\n[Probe]\r\nimage=button.png\r\n");
  check("no image key");
  folder_.remove(layoutFile);
  check("no layout file");
  skin::skinState().moduleDirectory += "nowhere\\";
  check("no folder");
}

TEST_F(SkinDialog, GivesTheButtonsImageAndFontInItsOwnOrder) {
  const auto fontOf = [](HWND button) {
    LOGFONTW font{};
    GetObjectW(reinterpret_cast<HFONT>(SendMessageW(button, WM_GETFONT, 0, 0)), sizeof font, &font);
    return framework::toUtf8(font.lfFaceName);
  };
  skin::skinState().fontFace = "Courier New";
  folder_.write(layoutFile, "[Button]\r\nimage=my face.png\r\n");
  ProbeDialog skinned;
  skinned.visit([&](HWND dialog) {
    EXPECT_EQ(skinned.ok.SkinEnabled, 1);
    EXPECT_EQ(skinned.cancel.SkinEnabled, 1);
    EXPECT_EQ(fontOf(GetDlgItem(dialog, IDOK)), "Courier New");
    EXPECT_EQ(fontOf(GetDlgItem(dialog, IDCANCEL)), "Courier New");
  });
  const std::string image = folder_.path() + "Skin\\Default\\SMS\\my face.png";
  EXPECT_EQ(skinned.log, (std::vector<std::string>{"2 " + image, "1 " + image}));

  folder_.write(layoutFile, "[Button]\r\n");
  ProbeDialog plain;
  plain.visit([&](HWND dialog) {
    EXPECT_NE(plain.ok.handle(), nullptr);
    EXPECT_EQ(plain.ok.SkinEnabled, 0);
    EXPECT_EQ(fontOf(GetDlgItem(dialog, IDOK)), fontOf(dialog));
  });
  EXPECT_TRUE(plain.log.empty());
}

TEST_F(SkinDialog, PlacesWhatTheLayoutFileNamesAfreshAtEachOpening) {
  folder_.write(layoutFile,
                "[Probe]\r\nTextRect=10,20,110,45\r\nOkRect=1,2,3\r\nDlgRect=30,40,330,240\r\n"
                "[Other]\r\nCancelRect=0,0,9,9\r\n");
  ProbeDialog first;
  first.visit([](HWND dialog) {
    EXPECT_EQ(placeOf(dialog), (Place{30, 40, 300, 200}));
    EXPECT_EQ(placeOf(dialog, IDC_SAVE_QUESTION), (Place{10, 20, 100, 25}));
    EXPECT_EQ(placeOf(dialog, IDOK), inUnits(dialog, 20, 39, 50, 14)) << "not a rectangle";
    EXPECT_EQ(placeOf(dialog, IDCANCEL), inUnits(dialog, 85, 39, 50, 14)) << "another section's";
  });
  folder_.write(layoutFile, "[PROBE]\r\nokrect = 5, 6, 50, 30\r\n");
  ProbeDialog second;
  second.visit([](HWND dialog) {
    EXPECT_EQ(placeOf(dialog, IDC_SAVE_QUESTION), inUnits(dialog, 7, 9, 141, 14));
    EXPECT_EQ(placeOf(dialog, IDOK), (Place{5, 6, 45, 24}));
  });
}

TEST_F(SkinDialog, StandsInTheMiddleOfItsOwnerAndOnTheScreen) {
  folder_.remove(layoutFile);
  RECT work{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  struct Case {
    const char* name;
    LONG left, top;
    bool visible;
  };
  for (const Case& c :
       {Case{"inside", 300, 200, true}, Case{"over the left edge", -380, 200, true},
        Case{"over the lower edge", 300, work.bottom - 40, true}, Case{"hidden", 300, 200, false}}) {
    const HWND owner = CreateWindowExW(
        0, L"Static", L"owner", WS_OVERLAPPEDWINDOW | (c.visible ? WS_VISIBLE : 0), static_cast<int>(c.left),
        static_cast<int>(c.top), 500, 400, nullptr, nullptr, nullptr, nullptr);
    ASSERT_NE(owner, nullptr);
    const Place around = placeOf(owner);
    ProbeDialog dialog;
    dialog.visit(
        [&](HWND window) {
          const auto [left, top, width, height] = placeOf(window);
          LONG wantedLeft = around[0] + (around[2] - width) / 2;
          LONG wantedTop = around[1] + (around[3] - height) / 2;
          if (!c.visible) wantedLeft = (work.right - width) / 2, wantedTop = (work.bottom - height) / 2;
          EXPECT_NEAR(left, std::max(wantedLeft, work.left), 1) << c.name;
          EXPECT_NEAR(top, std::min(wantedTop, work.bottom - height), 1) << c.name;
        },
        owner);
    DestroyWindow(owner);
  }
}

TEST_F(SkinDialog, WearsTheSkinsColours) {
  skin::skinState().dialogBackground = RGB(10, 200, 30);
  skin::skinState().dialogText = RGB(250, 0, 60);
  ProbeDialog dialog;
  dialog.visit([](HWND window) {
    const std::vector<COLORREF> ground = pictureOf(window);
    EXPECT_EQ(ground.front(), RGB(10, 200, 30));
    const std::vector<COLORREF> text = pictureOf(GetDlgItem(window, IDC_SAVE_QUESTION));
    EXPECT_EQ(text.front(), RGB(10, 200, 30));
    SetDlgItemTextW(window, IDC_SAVE_QUESTION, L"Words");
    const std::vector<COLORREF> words = pictureOf(GetDlgItem(window, IDC_SAVE_QUESTION));
    EXPECT_NE(std::find(words.begin(), words.end(), RGB(250, 0, 60)), words.end());
  });
}

// The shipped places are pixels, while fonts grow with the system's resolution.
TEST_F(SkinDialog, ShippedPlacesLeaveRoomForTheTexts) {
  enum class Kind { label, button, field };
  struct Case {
    const char* section;
    const char* key;
    const wchar_t* text;
    Kind kind;
  };
  const Case cases[] = {
      {"New MMS", "ReceiverRect", L"Receiver", Kind::label},
      {"New MMS", "PhoneRect", L"+31612345678", Kind::field},
      {"New MMS", "ContactRect", L"Contact", Kind::button},
      {"New MMS", "ContentRect", L"Content", Kind::label},
      {"New MMS", "CountRect", L"160/160", Kind::label},
      {"New MMS", "SMSRect", L"A message of some words", Kind::field},
      {"New MMS", "OkRect", L"Send", Kind::button},
      {"New MMS", "CancelRect", L"Cancel", Kind::button},
      {"Open MMS", "SPhoneRect", L"Phone", Kind::label},
      {"Open MMS", "STimeRect", L"Time", Kind::label},
      {"Open MMS", "TimeRect", L"2026-03-02 11:22:33", Kind::field},
      {"Open MMS", "ContentRect", L"Content", Kind::label},
      {"Open MMS", "SmsRect", L"A message of some words", Kind::field},
      {"Open MMS", "PrevRect", L"<<", Kind::button},
      {"Open MMS", "NextRect", L">>", Kind::button},
  };
  const std::string file = skin::skinFile(folder_.path());
  const HDC dc = GetDC(nullptr);
  for (const int dpi : {96, 144})
    for (const Case& c : cases) {
      RECT place{}, dialog{};
      ASSERT_TRUE(skin::zl_GetSettingRect(c.section, c.key, file, place)) << c.key;
      ASSERT_TRUE(skin::zl_GetSettingRect(c.section, "DlgRect", file, dialog)) << c.section;
      const bool button = c.kind == Kind::button;
      const framework::UniqueFont font(CreateFontW(-MulDiv(button ? 9 : 8, dpi, 72), 0, 0, 0, FW_NORMAL,
                                                   FALSE, FALSE, FALSE, DEFAULT_CHARSET, 0, 0, 0, 0,
                                                   L"Tahoma"));
      const HGDIOBJ former = SelectObject(dc, font.get());
      SIZE text{};
      GetTextExtentPoint32W(dc, c.text, lstrlenW(c.text), &text);
      SelectObject(dc, former);
      // A button has its rings around the text, a field its edge and one row above the text.
      const SIZE room = button ? SIZE{12, 10} : c.kind == Kind::field ? SIZE{8, 5} : SIZE{0, 0};
      EXPECT_LE(text.cx + room.cx, place.right - place.left) << c.section << c.key << dpi;
      EXPECT_LE(text.cy + room.cy, place.bottom - place.top) << c.section << c.key << dpi;
      EXPECT_LE(place.right + 8 + 16, dialog.right - dialog.left) << c.section << c.key;
      EXPECT_LE(place.bottom + 8 + 54, dialog.bottom - dialog.top) << c.section << c.key;
    }
  ReleaseDC(nullptr, dc);
}

}  // namespace
