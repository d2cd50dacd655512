#include "framework/resources.h"
#include "running_app.h"

// Every language in every dialog.
namespace {

SIZE sizeOf(HWND window, const std::wstring& text, LONG width = 0) {
  const HDC dc = GetDC(window);
  const HGDIOBJ former = SelectObject(dc, reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)));
  RECT drawn{0, 0, width, 0};
  DrawTextW(dc, text.c_str(), -1, &drawn, DT_CALCRECT | (width ? DT_WORDBREAK : DT_SINGLELINE));
  SelectObject(dc, former);
  ReleaseDC(window, dc);
  return {drawn.right, drawn.bottom};
}

// No text is clipped, no control is without one, none covers another or reaches out of the dialog.
void fits(HWND dialog) {
  std::vector<RECT> places;
  for (HWND child = nullptr; (child = FindWindowExW(dialog, child, nullptr, nullptr));) {
    const std::wstring text = framework::windowWideText(child);
    SCOPED_TRACE(toUtf8(text) + " in " + textOf(dialog));
    RECT client{}, place{}, shared{};
    GetClientRect(child, &client);
    GetWindowRect(child, &place);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
    for (const RECT& other : places) EXPECT_FALSE(IntersectRect(&shared, &other, &place));
    places.push_back(place);
    GetClientRect(dialog, &shared);
    EXPECT_TRUE(place.left > 0 && place.right < shared.right && place.bottom < shared.bottom);
    const LONG line = sizeOf(child, L"X").cy, wrapped = client.bottom < 2 * line ? 0 : client.right;
    if (SendMessageW(child, WM_GETDLGCODE, 0, 0) & DLGC_BUTTON) {
      EXPECT_TRUE(!text.empty() && sizeOf(child, text).cx <= client.right - 8);
    } else if (SendMessageW(child, WM_GETDLGCODE, 0, 0) & DLGC_STATIC) {
      const SIZE size = sizeOf(child, text, wrapped);
      EXPECT_TRUE(size.cx <= client.right && size.cy <= client.bottom) << size.cx << "x" << size.cy;
    }
    wchar_t heading[64] = L"";
    LVCOLUMNW column{.mask = LVCF_TEXT | LVCF_WIDTH, .pszText = heading, .cchTextMax = 64};
    for (int i = 0; ListView_GetColumn(child, i, &column); ++i)
      EXPECT_TRUE(*heading && sizeOf(child, heading).cx <= column.cx - 12) << toUtf8(heading);
  }
}

TEST_F(Program, EveryTextOfEveryLanguageHasRoom) {
  phonelink::encodeContact(
      {"+12345678;901234", "Name"},
      std::as_writable_bytes(std::span{folder_.script().contacts}).subspan<phonelink::contactHeadSize, 40>());
  folder_.script().contactResult = 1;
  folder_.put(pDraft, {{"d"}});
  ASSERT_TRUE(app_.start());
  std::vector<std::wstring> files{L"", toWide(framework::moduleDirectory() + "strings_only.dll")};
  for (const auto& entry : std::filesystem::directory_iterator(QUILLET_LANGUAGES))
    if (exists(entry.path() / "zelSMS.dll")) files.push_back(entry.path() / "zelSMS.dll");
  EXPECT_GE(files.size(), 17U);
  const Step unchanged = [](HWND dialog) {
    RECT wanted{0, 0, 272, 159}, client{};
    MapDialogRect(dialog, &wanted);
    GetClientRect(dialog, &client);
    EXPECT_TRUE(EqualRect(&wanted, &client));
  };
  for (const std::wstring& file : files) {
    SCOPED_TRACE(toUtf8(file));
    const auto texts = framework::loadResourceLibrary(toUtf8(file));
    framework::setResourceModule(texts.get());
    app_.command(ID_NEW, {type(IDC_RECEIVERS, "1;22"), file.empty() ? unchanged : fits, fits,
                          press(IDC_CONTACT), [](HWND dialog) { select(item(dialog, IDC_PHONEBOOK), {0}); },
                          press(IDC_ADD_CONTACT), fits, press(IDC_ADDRESS_CANCEL),
                          type(IDC_MESSAGE_CONTENT, "x"), press(IDC_MESSAGE_CANCEL), fits, press(IDCANCEL)});
    app_.command(ID_NEW,
                 {type(IDC_RECEIVERS, "1"), type(IDC_MESSAGE_CONTENT, "x"), press(IDC_SEND), end(IDOK)});
    app_.command(ID_LAST_SEND, {fits, end(IDOK)});
    app_.command(ID_APP_ABOUT, {fits, end(IDOK)});
    app_.choose(pDraft, {0});
    app_.clickTwice({fits, end(IDOK)});
    for (const UINT question : {ID_DELETE, ID_DELETE_ALL}) app_.command(question, {fits, end(IDCANCEL)});
  }
}

}  // namespace
