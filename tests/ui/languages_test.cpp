#include "framework/resources.h"
#include "running_app.h"

namespace {

// No text is clipped, no button is without one, no control covers another or reaches out of the dialog.
void fits(HWND dialog) {
  std::vector<RECT> places;
  RECT whole{}, inner{}, place{}, shared{};
  GetWindowRect(dialog, &whole);
  for (HWND child = nullptr; (child = FindWindowExW(dialog, child, nullptr, nullptr));) {
    const std::wstring text = framework::windowWideText(child);
    SCOPED_TRACE(toUtf8(text) + " in " + textOf(dialog));
    GetClientRect(child, &inner);
    GetWindowRect(child, &place);
    EXPECT_TRUE(UnionRect(&shared, &whole, &place) && EqualRect(&shared, &whole));
    for (const RECT& other : places) EXPECT_FALSE(IntersectRect(&shared, &other, &place));
    places.push_back(place);
    const bool wrapped = inner.bottom >= 2 * framework::textSize(child, L"X").cy;
    const SIZE size = framework::textSize(child, text, wrapped ? inner.right : 0);
    const LRESULT kind = SendMessageW(child, WM_GETDLGCODE, 0, 0);
    EXPECT_TRUE(!(kind & DLGC_BUTTON) || (size.cx > 0 && size.cx + 8 <= inner.right));
    EXPECT_TRUE(!(kind & DLGC_STATIC) || (size.cx <= inner.right && size.cy <= inner.bottom));
    wchar_t heading[64] = L"";
    LVCOLUMNW column{.mask = LVCF_TEXT | LVCF_WIDTH, .pszText = heading, .cchTextMax = 64};
    for (int i = 0; ListView_GetColumn(child, i, &column); ++i)
      EXPECT_TRUE(*heading && framework::textSize(child, heading).cx + 12 <= column.cx) << toUtf8(heading);
  }
}

TEST_F(Program, HasRoomForTheTextsOfEveryLanguage) {
  const std::span contacts = std::as_writable_bytes(std::span{folder_.script().contacts});
  phonelink::encodeContact({"+12345678;901234", "Name"}, contacts.subspan<phonelink::contactHeadSize, 40>());
  folder_.script().contactResult = 1;
  folder_.put(pDraft, {{"d"}});
  ASSERT_TRUE(app_.start());
  std::vector<std::string> files{"", framework::moduleDirectory() + "strings_only.dll"};
  for (const auto& entry : std::filesystem::directory_iterator(QUILLET_LANGUAGES))
    if (const auto file = entry.path() / "zelSMS.dll"; exists(file)) files.push_back(toUtf8(file.wstring()));
  for (const std::string& file : files) {
    SCOPED_TRACE(file);
    const auto texts = framework::loadResourceLibrary(file);
    framework::setResourceModule(texts.get());
    app_.command(ID_NEW, {type(IDC_RECEIVERS, "1;22"), fits, press(IDC_CONTACT),
                          [](HWND book) { select(item(book, IDC_PHONEBOOK), {0}); }, press(IDC_ADD_CONTACT),
                          fits, end(IDCANCEL), type(IDC_MESSAGE_CONTENT, "x"), press(IDC_SEND), end(IDOK)});
    for (const UINT id : {ID_LAST_SEND, ID_APP_ABOUT}) app_.command(id, {fits, end(IDOK)});
    app_.choose(pDraft, {0});
    app_.clickTwice({fits, press(IDC_EDIT_AS_NEW), press(IDC_MESSAGE_CANCEL), fits, press(IDCANCEL)});
    for (const UINT id : {ID_DELETE, ID_DELETE_ALL}) app_.command(id, {fits, end(IDCANCEL)});
  }
  EXPECT_GT(files.size(), 16U);
}

}  // namespace
