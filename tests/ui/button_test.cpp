#include <gtest/gtest.h>

#include "dialog_visit.h"
#include "framework/text.h"
#include "resources/resource_ids.h"
#include "running_app.h"
#include "skin/skin_dialog.h"
#include "skin/skin_state.h"

namespace {

using Picture = std::vector<COLORREF>;

// Answers itself whether the focus is to be shown, which Windows decides by the last input.
class CueButton : public skin::CButtonEx {
 public:
  void hide(LRESULT cues) {
    hidden_ = cues;
    send(WM_UPDATEUISTATE, MAKEWPARAM(UIS_INITIALIZE, 0));
  }

 protected:
  const framework::MessageMap* messageMap() const override {
    static constexpr framework::MessageEntry entries[] = {
        framework::onPlain<&CueButton::onQuery>(WM_QUERYUISTATE)};
    static const framework::MessageMap map{entries, CButtonEx::messageMap()};
    return &map;
  }

 private:
  LRESULT onQuery() { return hidden_; }

  LRESULT hidden_ = 0;
};

// Two buttons in a dialog of the program's, with whatever the test does once they are there.
class ButtonsDialog : public skin::CSkinDialog {
 public:
  explicit ButtonsDialog(bool skinned = true) : CSkinDialog(IDD_SAVE_QUESTION), skinned_(skinned) {}

  skin::CButtonEx first;  // IDOK
  CueButton second;       // IDCANCEL

  // Opens the dialog for the steps.
  INT_PTR visit(std::vector<DialogVisit::Step> steps) {
    const DialogVisit visit(std::move(steps));
    return doModal(nullptr);
  }

 protected:
  bool onInitDialog() override {
    CSkinDialog::onInitDialog();
    skinButtons({{first, IDOK}, {second, IDCANCEL}});
    first.setText("&First");
    second.setText("&Second");
    for (skin::CButtonEx* button : {&first, static_cast<skin::CButtonEx*>(&second)})
      button->SkinEnabled &= skinned_;
    return true;
  }

 private:
  bool skinned_;
};

class SkinnedButton : public testing::Test {
 protected:
  SkinnedButton() {
    skin::skinState() = {};
    skin::skinState().moduleDirectory = folder_.path();
  }
  ~SkinnedButton() override { skin::skinState() = {}; }

  ProgramFolder folder_{ProgramFolder::Link::none};
};

TEST_F(SkinnedButton, RepaintsItselfInEveryState) {
  ButtonsDialog dialog;
  dialog.visit({[&](HWND) {
    CueButton& button = dialog.second;
    std::vector<std::pair<std::string, Picture>> pictures;
    const auto take = [&](const char* name) { pictures.emplace_back(name, pictureOf(button.handle())); };
    button.send(WM_MOUSELEAVE);
    take("normal");
    button.send(WM_MOUSEMOVE, 0, MAKELPARAM(5, 5));
    button.send(WM_MOUSEHOVER, 0, MAKELPARAM(5, 5));
    take("hot");
    button.send(BM_SETSTATE, TRUE);
    take("pressed");
    button.send(BM_SETSTATE, FALSE);
    button.send(WM_MOUSELEAVE);
    button.send(BM_SETSTYLE, BS_DEFPUSHBUTTON, TRUE);
    take("default");
    SetFocus(button.handle());
    take("focused");
    button.hide(UISF_HIDEFOCUS);
    EXPECT_TRUE(pictureOf(button.handle()) == pictures[3].second) << "focus not to be shown";
    button.hide(0);
    SetFocus(dialog.first.handle());
    button.send(BM_SETSTYLE, BS_PUSHBUTTON, TRUE);
    button.EnableWindow(0);
    take("disabled");
    button.EnableWindow(1);
    button.setText("&Other");
    take("another text");
    for (std::size_t i = 0; i < pictures.size(); ++i)
      for (std::size_t j = 0; j < i; ++j)
        EXPECT_FALSE(pictures[i].second == pictures[j].second)
            << pictures[i].first << ", " << pictures[j].first;
    button.setText("&Second");
    EXPECT_TRUE(pictureOf(button.handle()) == pictures[0].second) << "normal again";
  }});
}

TEST_F(SkinnedButton, KeepsItsCornersAtAnySize) {
  ButtonsDialog dialog;
  dialog.visit({[&](HWND) {
    const HWND button = dialog.second.handle();
    dialog.second.setText("");
    const auto corners = [&](int width, int height) {
      MoveWindow(button, 0, 0, width, height, TRUE);
      const Picture all = pictureOf(button);
      EXPECT_EQ(all.size(), static_cast<std::size_t>(width * height));
      Picture found;
      for (const int y : {0, 1, 2, 3, height - 4, height - 3, height - 2, height - 1})
        for (const int x : {0, 1, 2, 3, width - 4, width - 3, width - 2, width - 1})
          found.push_back(all[static_cast<std::size_t>(y * width + x)]);
      EXPECT_EQ(found[0], skin::skinState().dialogBackground);
      EXPECT_NE(found[3], skin::skinState().dialogBackground);
      return found;
    };
    EXPECT_EQ(corners(60, 24), corners(150, 48));
  }});
}

TEST_F(SkinnedButton, LooksLikeAnyOtherWithoutSkinOrImage) {
  const auto faces = [] {
    std::pair<Picture, Picture> pictures;
    ButtonsDialog dialog;
    dialog.visit({[&](HWND) {
      for (const HWND button : {dialog.first.handle(), dialog.second.handle()}) SetWindowTextW(button, L"");
      pictures.first = pictureOf(dialog.second.handle());
      dialog.second.SkinEnabled = 0;
      InvalidateRect(dialog.second.handle(), nullptr, TRUE);
      pictures.second = pictureOf(dialog.second.handle());
    }});
    return pictures;
  };
  const auto [skinned, plain] = faces();
  EXPECT_NE(skinned, plain);
  folder_.write("Skin\\Default\\SMS\\button.png", "not an image");
  EXPECT_EQ(faces().first, plain) << "broken image";
  folder_.remove("Skin\\Default\\SMS\\button.png");
  EXPECT_EQ(faces().first, plain) << "no image";
}

TEST_F(SkinnedButton, TakesFaceAndSizeAndKeepsWhatIsNotNamed) {
  const std::string plain = "[Button]\r\n";
  folder_.write("Skin\\Default\\SMS\\skin.ini", plain);
  ButtonsDialog dialog;
  dialog.visit({[&](HWND window) {
    const auto fontOf = [](HWND control) {
      LOGFONTW font{};
      GetObjectW(reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0)), sizeof font, &font);
      return font;
    };
    const LOGFONTW usual = fontOf(window);
    const std::string usualFace = framework::toUtf8(usual.lfFaceName);
    const HDC dc = GetDC(nullptr);
    const auto points = [dpi = GetDeviceCaps(dc, LOGPIXELSY)](int size) { return -MulDiv(size, dpi, 72); };
    ReleaseDC(nullptr, dc);
    struct Case {
      const char* face;
      int size;
      std::uint8_t style;
      std::string wantedFace;
      LONG wantedHeight;
    };
    for (const Case& c :
         {Case{"Courier New", 14, 0, "Courier New", points(14)}, Case{"", 11, 1, usualFace, points(11)},
          Case{"Tahoma", 0, 2, "Tahoma", usual.lfHeight}, Case{"", 0, 4, usualFace, usual.lfHeight},
          Case{"", -3, 0, usualFace, usual.lfHeight}, Case{"", 2000000000, 0, usualFace, points(200)},
          Case{"A name that is far longer than any face may be", 9, 7, "A name that is far longer than ",
               points(9)}}) {
      dialog.first.SetTextFont(c.face, c.size, 0, c.style);
      const LOGFONTW font = fontOf(dialog.first.handle());
      EXPECT_EQ(framework::toUtf8(font.lfFaceName), c.wantedFace);
      EXPECT_EQ(font.lfHeight, c.wantedHeight) << c.face << c.size;
      EXPECT_EQ(font.lfWeight == FW_BOLD, (c.style & 1) != 0) << c.face << c.size;
      EXPECT_EQ(font.lfItalic != 0, (c.style & 2) != 0) << c.face << c.size;
      EXPECT_EQ(font.lfUnderline != 0, (c.style & 4) != 0) << c.face << c.size;
    }
  }});
}

TEST_F(SkinnedButton, WritesInTheColourGiven) {
  ButtonsDialog dialog;
  dialog.visit({[&](HWND) {
    const auto shows = [&](COLORREF colour) {
      const Picture picture = pictureOf(dialog.second.handle());
      return std::find(picture.begin(), picture.end(), colour) != picture.end();
    };
    const COLORREF red = RGB(200, 0, 0);
    EXPECT_TRUE(shows(skin::skinState().dialogText));
    EXPECT_FALSE(shows(red));
    dialog.second.SetTextFont("", 0, red, 1);
    EXPECT_TRUE(shows(red));
    EXPECT_FALSE(shows(skin::skinState().dialogText));
  }});
}

TEST_F(SkinnedButton, HandsTheFocusOnWhenItIsDisabled) {
  ButtonsDialog dialog;
  dialog.visit({[&](HWND) {
    ASSERT_EQ(GetFocus(), dialog.first.handle());
    EXPECT_EQ(dialog.first.EnableWindow(0), 0);
    EXPECT_EQ(GetFocus(), dialog.second.handle());
    EXPECT_FALSE(IsWindowEnabled(dialog.first.handle()));
    EXPECT_NE(dialog.first.EnableWindow(1), 0);
    EXPECT_TRUE(IsWindowEnabled(dialog.first.handle()));
    EXPECT_EQ(dialog.first.EnableWindow(1), 0);
    EXPECT_EQ(GetFocus(), dialog.second.handle());
  }});
}

TEST_F(SkinnedButton, IsPressedLikeAnyOther) {
  const auto key = [](UINT code) {
    return [code](HWND) {
      PostMessageW(GetFocus(), WM_KEYDOWN, code, 0);
      PostMessageW(GetFocus(), WM_KEYUP, code, 0xC0000000);
    };
  };
  const auto mnemonic = [](wchar_t letter) {
    return [letter](HWND) { PostMessageW(GetFocus(), WM_SYSCHAR, letter, 1 << 29); };
  };
  const auto click = [](HWND w) {
    PostMessageW(GetDlgItem(w, IDCANCEL), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(9, 9));
    PostMessageW(GetDlgItem(w, IDCANCEL), WM_LBUTTONUP, 0, MAKELPARAM(9, 9));
  };
  const auto makeDefault = [](HWND w) {
    SendMessageW(w, DM_SETDEFID, IDCANCEL, 0);
    SetFocus(w);
  };
  struct Case {
    const char* name;
    std::vector<DialogVisit::Step> steps;
    INT_PTR result;
  };
  const Case cases[] = {
      {"Enter", {key(VK_RETURN)}, IDOK},
      {"Escape", {key(VK_ESCAPE)}, IDCANCEL},
      {"Space", {key(VK_SPACE)}, IDOK},
      {"Tab, Space", {key(VK_TAB), key(VK_SPACE)}, IDCANCEL},
      {"Tab, Enter", {key(VK_TAB), key(VK_RETURN)}, IDCANCEL},
      {"Tab, Tab, Enter", {key(VK_TAB), key(VK_TAB), key(VK_RETURN)}, IDOK},
      {"Alt+F", {mnemonic(L'f')}, IDOK},
      {"Alt+S", {mnemonic(L's')}, IDCANCEL},
      {"Alt+X", {mnemonic(L'x')}, DialogVisit::notEnded},
      {"pressed by a program", {press(IDOK)}, IDOK},
      {"mouse", {click}, IDCANCEL},
      {"another default", {makeDefault, key(VK_RETURN)}, IDCANCEL},
      {"close box", {[](HWND w) { PostMessageW(w, WM_SYSCOMMAND, SC_CLOSE, 0); }}, IDCANCEL},
  };
  for (const bool skinned : {true, false})
    for (const Case& c : cases) {
      ButtonsDialog dialog(skinned);
      EXPECT_EQ(dialog.visit(c.steps), c.result) << c.name << (skinned ? "" : ", plain");
    }
}

}  // namespace
